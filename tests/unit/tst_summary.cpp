// The summary of the last connection: when the box appears, how it is built, and what of it is kept and reset.
#include "ProductFixture.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

using FakeHostUi::state;

namespace {

void deliverDeletions()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class TestSummary : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fixture::reset();
        FakeStatistics::state().last = fixture::numbered(3);
        m_page = fixture::initialisedPage();
        m_main.reset(new QWidget);
        m_main->show();
        FakeStatistics::state().calls.clear();
        state().trCalls.clear();
    }
    void cleanup()
    {
        fixture::reset();
        m_main.reset();
    }

    void frameIsMadeToTheLetter()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        QCOMPARE(state().dialogs.size(), 1);
        const FakeHostUi::DialogCall &call = state().dialogs.first();
        QCOMPARE(call.dialog.data(), m_page->m_pLastConnectionDlg);
        QCOMPARE(call.parent, m_main.get());
        QCOMPARE(static_cast<int>(call.flags), 0x08000000);
        QCOMPARE(static_cast<int>(call.type), 1);
        QVERIFY(!call.isResizable);
        QCOMPARE(call.mainWidgets, QList<QWidget *>({m_page->m_pLastConnectionWidget}));
        QCOMPARE(call.titles, QStringList(QStringLiteral("IDS_TITLE_SINGLE")));
        const ExtendDialog *const box = m_page->m_pLastConnectionDlg;
        QCOMPARE(box->minimumSize(), QSize(382, 217));
        QCOMPARE(box->maximumSize(), QSize(382, 217));
        QCOMPARE(box->size(), QSize(382, 217));
        QCOMPARE(box->windowModality(), Qt::WindowModal);
        QVERIFY(box->isVisible());
        QVERIFY(state().centred.isEmpty());
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetLast), 1);
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetAll), 0);
    }

    void contentIsLaidOutToTheLetter()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        QWidget *const widget = m_page->m_pLastConnectionWidget;
        QVERIFY(m_page->m_pLastConnectionDlg->isAncestorOf(widget));
        const QBoxLayout *const page = qobject_cast<QVBoxLayout *>(widget->layout());
        QVERIFY(page);
        QCOMPARE(page->contentsMargins(), QMargins(14, 11, 15, 15));
        QCOMPARE(page->count(), 2);
        QCOMPARE(page->itemAt(0)->widget(), m_page->m_pStatisticGroup);
        QCOMPARE(page->itemAt(0)->alignment(), Qt::Alignment());
        QCOMPARE(page->stretch(0), 0);
        QCOMPARE(page->stretch(1), 0);
        const QBoxLayout *const row = qobject_cast<QHBoxLayout *>(page->itemAt(1)->layout());
        QVERIFY(row);
        QCOMPARE(row->count(), 1);
        QCOMPARE(row->itemAt(0)->widget(), m_page->m_pOkButton);
        QCOMPARE(row->stretch(0), 132);
        QCOMPARE(row->itemAt(0)->alignment(), Qt::Alignment());
        QCOMPARE(m_page->m_pStatisticGroup->minimumHeight(), 106);
        QCOMPARE(m_page->m_pStatisticGroup->maximumHeight(), 106);
        const QFormLayout *const form = qobject_cast<QFormLayout *>(m_page->m_pStatisticGroup->layout());
        QVERIFY(form);
        QCOMPARE(form->contentsMargins(), QMargins(10, 20, 10, 10));
        QCOMPARE(form->rowCount(), 3);
        QLabel *const cells[][2] = {{m_page->m_pUploadedCaptionLabel, m_page->m_pUploadedValueLabel},
                                    {m_page->m_pDownloadedCaptionLabel, m_page->m_pDownloadedValueLabel},
                                    {m_page->m_pTransferTimeCaptionLabel, m_page->m_pTransferTimeValueLabel}};
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(form->itemAt(i, QFormLayout::LabelRole)->widget(), cells[i][0]);
            QCOMPARE(form->itemAt(i, QFormLayout::FieldRole)->widget(), cells[i][1]);
            QVERIFY(m_page->m_pLastConnectionDlg->isAncestorOf(cells[i][1]));
        }
        QApplication::processEvents();
        const QMargins margins = page->contentsMargins();
        QCOMPARE(m_page->m_pOkButton->width(), widget->width() - margins.left() - margins.right());
    }

    void textsAndFigures()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        QCOMPARE(m_page->m_pStatisticGroup->title(), QStringLiteral("IDS_GROUP_STATISTIC"));
        QCOMPARE(m_page->m_pOkButton->text(), QStringLiteral("IDS_BTN_OK"));
        QCOMPARE(m_page->m_pUploadedCaptionLabel->text(), QStringLiteral("IDS_TREE_UPLOADED_DATA"));
        QCOMPARE(m_page->m_pDownloadedCaptionLabel->text(), QStringLiteral("IDS_TREE_DOWNLOADED_DATA"));
        QCOMPARE(m_page->m_pTransferTimeCaptionLabel->text(), QStringLiteral("IDS_TREE_TIME_TRANSFER"));
        QCOMPARE(m_page->m_pUploadedValueLabel->text(), QStringLiteral("3.00 KB"));
        QCOMPARE(m_page->m_pDownloadedValueLabel->text(), QStringLiteral("6.00 KB"));
        QCOMPARE(m_page->m_pTransferTimeValueLabel->text(), QStringLiteral("00:01:00"));
        for (const auto &call : std::as_const(state().trCalls))
            QCOMPARE(call.second, QStringLiteral("NetInfoRecordUIPlugin"));
        QCOMPARE(state().trCalls.size(), 6);
    }

    void sizeStaysWhateverTheTexts()
    {
        QHash<QString, QString> &texts = state().texts[QStringLiteral("x")];
        for (const char *id : {"IDS_TITLE_SINGLE", "IDS_GROUP_STATISTIC", "IDS_BTN_OK", "IDS_TREE_UPLOADED_DATA",
                               "IDS_TREE_DOWNLOADED_DATA", "IDS_TREE_TIME_TRANSFER"})
            texts[QString::fromLatin1(id)] = QString(300, QLatin1Char('W'));
        state().language = QStringLiteral("x");
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        QApplication::processEvents();
        QCOMPARE(m_page->m_pLastConnectionDlg->size(), QSize(382, 217));
        QCOMPARE(m_page->m_pStatisticGroup->height(), 106);
    }

    void openBoxKeepsFiguresAndLanguage()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        m_page->m_pNetInfoRecordLogic->m_lastRecord.strUploaded = QStringLiteral("other");
        state().texts[QStringLiteral("x")][QStringLiteral("IDS_BTN_OK")] = QStringLiteral("anders");
        state().language = QStringLiteral("x");
        m_page->uiSetText();
        QCOMPARE(m_page->m_pUploadedValueLabel->text(), QStringLiteral("3.00 KB"));
        QCOMPARE(m_page->m_pOkButton->text(), QStringLiteral("IDS_BTN_OK"));
    }

    void noRecordNoBox()
    {
        FakeStatistics::state().getLastCode = 1;
        const MessageLog log;
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        QVERIFY(state().dialogs.isEmpty());
        QVERIFY(!m_page->m_pLastConnectionDlg);
        QStringList own;
        for (const QString &shape : log.shapes()) {
            if (shape.contains(QLatin1String("ConnectionHistoryDlg")))
                own.append(shape);
        }
        QCOMPARE(own, QStringList(QStringLiteral(
                          "Enter: PATH/ConnectionHistoryDlg: ShowDialogOfLastConnectedRecord: LINE: TIME:")));
    }

    void noRecordDiscardsAnOpenBox()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        const QPointer<ExtendDialog> box = m_page->m_pLastConnectionDlg;
        FakeStatistics::state().getLastCode = 1;
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        checkReset();
        QVERIFY(box);
        deliverDeletions();
        QVERIFY(!box);
    }

    void noStoreLeavesAnOpenBox()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        const ExtendDialog *const box = m_page->m_pLastConnectionDlg;
        NetInfoRecordLogic *const store = m_page->m_pNetInfoRecordLogic;
        m_page->m_pNetInfoRecordLogic = nullptr;
        const MessageLog log;
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        m_page->m_pNetInfoRecordLogic = store;
        deliverDeletions();
        QCOMPARE(static_cast<const ExtendDialog *>(m_page->m_pLastConnectionDlg), box);
        QVERIFY(box->isVisible());
        QCOMPARE(log.shapes(),
                 QStringList(
                     {QStringLiteral("Enter: PATH/ConnectionHistoryDlg: ShowDialogOfLastConnectedRecord: LINE: TIME:"),
                      QStringLiteral(
                          "Arg is NULL: TIME: PATH/ConnectionHistoryDlg: ShowDialogOfLastConnectedRecord LINE")}));
    }

    void okClosesAndDiscards()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        const QPointer<ExtendDialog> box = m_page->m_pLastConnectionDlg;
        QLabel *const uploaded = m_page->m_pUploadedValueLabel;
        QLabel *const time = m_page->m_pTransferTimeValueLabel;
        QTest::mouseClick(m_page->m_pOkButton, Qt::LeftButton);
        QVERIFY(box);
        QVERIFY(!box->isVisible()); // closed at once, deleted later
        checkReset();
        QCOMPARE(m_page->m_pUploadedValueLabel, uploaded);
        QCOMPARE(m_page->m_pTransferTimeValueLabel, time);
        deliverDeletions();
        QVERIFY(!box);
        QCOMPARE(m_page->m_pNetInfoRecordLogic->m_lastRecord.strUploaded, QStringLiteral("3.00 KB"));
    }

    void okWithoutABox()
    {
        const MessageLog log;
        m_page->onClickOkButton();
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Enter: PATH/ConnectionHistoryDlg: onClickOkButton: LINE: TIME:"),
                              QStringLiteral("Exit: PATH/ConnectionHistoryDlg: onClickOkButton: LINE: TIME:")}));
    }

    void closedOtherwiseTheBoxIsKeptHidden()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        const QPointer<ExtendDialog> box = m_page->m_pLastConnectionDlg;
        box->close();
        deliverDeletions();
        QVERIFY(box);
        QCOMPARE(m_page->m_pLastConnectionDlg, box.data());
        QVERIFY(!box->isVisible());
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        deliverDeletions();
        QVERIFY(!box);
        QVERIFY(m_page->m_pLastConnectionDlg->isVisible());
    }

    void secondSummaryReplacesTheFirst()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        const QPointer<ExtendDialog> first = m_page->m_pLastConnectionDlg;
        FakeStatistics::state().last = fixture::numbered(5);
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        QVERIFY(first);
        QVERIFY(first->isVisible()); // not closed: it goes when control is back in the event loop
        QVERIFY(m_page->m_pLastConnectionDlg != first);
        deliverDeletions();
        QVERIFY(!first);
        QCOMPARE(m_page->m_pUploadedValueLabel->text(), QStringLiteral("5.00 KB"));
        QCOMPARE(m_main->findChildren<ExtendDialog *>().size(), 1);
    }

    void boxThatDiedWithItsParent()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        m_main.reset(); // takes the box along
        m_main.reset(new QWidget);
        m_page->onClickOkButton();
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        QVERIFY(m_page->m_pLastConnectionDlg->isVisible());
        m_main.reset();
        ConnectionHistoryDlg::Destroy();
    }

    void endOfThePageDeletesTheBoxAtOnce()
    {
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        const QPointer<ExtendDialog> box = m_page->m_pLastConnectionDlg;
        ConnectionHistoryDlg::Destroy();
        QVERIFY(!box);
    }

    void trace()
    {
        const MessageLog log;
        m_page->ShowDialogOfLastConnectedRecord(m_main.get());
        QCOMPARE(log.shapes().first(),
                 QStringLiteral("Enter: PATH/ConnectionHistoryDlg: ShowDialogOfLastConnectedRecord: LINE: TIME:"));
        QCOMPARE(log.shapes().last(),
                 QStringLiteral("Exit: PATH/ConnectionHistoryDlg: ShowDialogOfLastConnectedRecord: LINE: TIME:"));
    }

private:
    void checkReset() const
    {
        QVERIFY(!m_page->m_pLastConnectionDlg);
        QVERIFY(!m_page->m_pStatisticGroup);
        QVERIFY(!m_page->m_pOkButton);
        QVERIFY(!m_page->m_pDownloadedValueLabel);
        QVERIFY(!m_page->m_pUploadedCaptionLabel);
        QVERIFY(!m_page->m_pLastConnectionWidget);
        QVERIFY(!m_page->m_pTransferTimeCaptionLabel);
        QVERIFY(!m_page->m_pDownloadedCaptionLabel);
    }

    std::unique_ptr<QWidget> m_main;
    ConnectionHistoryDlg *m_page = nullptr;
};

QTEST_MAIN(TestSummary)
#include "tst_summary.moc"
