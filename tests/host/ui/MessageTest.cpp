// The message box: labels, answers, keys, parents, and what the caller may hold on to.
#include "HostUi.h"

#include "ui/CommonUtils.h"

#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <functional>

namespace {

struct Call {
    QWidget *parent = nullptr;
    QString text = QStringLiteral("Really?");
    QString first = QStringLiteral("IDS_OK");
    QString second = QStringLiteral("IDS_CANCEL");
    QString third;
    bool isModal = true;
    QDialog **dialog = nullptr;
    QString checkText;
    bool isCentred = true;
};

int show(const Call &call)
{
    return CommonUtils::ShowMessage(QMessageBox::Question, call.parent, QStringLiteral("Caption"), call.text,
                                    call.first, call.second, call.third, call.isModal, Qt::WindowCloseButtonHint,
                                    call.dialog, call.checkText, call.isCentred);
}

QMessageBox *openBox()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QLatin1String("NetInfoMessage") && widget->isVisible())
            return qobject_cast<QMessageBox *>(widget);
    }
    return nullptr;
}

/// Runs `action` once a box is open. The box must close within ten seconds of it; a box that stays open is closed, so
/// that the test goes on and fails on its answer.
class OnceOpen
{
public:
    explicit OnceOpen(std::function<void(QMessageBox *)> action) : m_action(std::move(action))
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
        m_timer.start(5);
    }

    bool hasRun() const { return m_hasRun; }

private:
    void look()
    {
        QMessageBox *box = openBox();
        if (box == nullptr)
            return;
        if (!m_hasRun) {
            m_hasRun = true;
            m_since.start();
            m_action(box);
        } else if (m_since.elapsed() > 10000) {
            box->done(-1);
        }
    }

    std::function<void(QMessageBox *)> m_action;
    QTimer m_timer;
    QElapsedTimer m_since;
    bool m_hasRun = false;
};

QPushButton *button(const QMessageBox *box, QMessageBox::StandardButton which)
{
    return qobject_cast<QPushButton *>(box->button(which));
}

} // namespace

class MessageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(HostUi::instance()->overrideLanguage(QStringLiteral("en")));
        QCoreApplication::processEvents(); // what an earlier box has left to say
    }

    void answers_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<bool>("isYes");
        QTest::newRow("Return") << Qt::Key_Return << true;
        QTest::newRow("Enter on the number pad") << Qt::Key_Enter << true;
        QTest::newRow("Escape") << Qt::Key_Escape << false;
    }

    void answers()
    {
        QFETCH(Qt::Key, key);
        QFETCH(bool, isYes);
        for (const char *second : {"IDS_CANCEL", ""}) {
            const OnceOpen once([key](QMessageBox *box) { QTest::keyClick(box, key); });
            Call call;
            call.second = QLatin1String(second);
            QCOMPARE(show(call) == 1024, isYes);
            QVERIFY(once.hasRun());
        }
    }

    void buttonsAnswer_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<bool>("isYes");
        QTest::newRow("first") << int(QMessageBox::Ok) << true;
        QTest::newRow("second") << int(QMessageBox::Cancel) << false;
        QTest::newRow("third") << int(QMessageBox::No) << false;
    }

    void buttonsAnswer()
    {
        QFETCH(int, which);
        QFETCH(bool, isYes);
        const OnceOpen once([which](QMessageBox *box) {
            QTest::mouseClick(button(box, static_cast<QMessageBox::StandardButton>(which)), Qt::LeftButton);
        });
        Call call;
        call.third = QStringLiteral("IDS_HOST_CLOSE");
        QCOMPARE(show(call) == 1024, isYes);
        QVERIFY(once.hasRun());
    }

    void closeButtonMeansNo()
    {
        for (const char *second : {"IDS_CANCEL", ""}) {
            const OnceOpen once([](QMessageBox *box) { box->close(); });
            Call call;
            call.second = QLatin1String(second);
            QVERIFY(show(call) != 1024);
            QVERIFY(once.hasRun());
        }
    }

    void labelsAreTranslated()
    {
        QVERIFY(HostUi::instance()->overrideLanguage(QStringLiteral("de")));
        QStringList labels;
        const OnceOpen once([&labels](QMessageBox *box) {
            labels << button(box, QMessageBox::Ok)->text() << button(box, QMessageBox::Cancel)->text()
                   << button(box, QMessageBox::No)->text();
            box->close();
        });
        Call call;
        call.second = QStringLiteral("IDS_CANCEL");    // a plug-in's text
        call.third = QStringLiteral("IDS_HOST_CLOSE"); // one of the host's
        show(call);
        QCOMPARE(labels,
                 QStringList({QStringLiteral("OK"), QStringLiteral("Abbrechen"), QString::fromUtf8("Schließen")}));
    }

    void emptyMeansNoSuchButton()
    {
        int count = 0;
        const OnceOpen once([&count](QMessageBox *box) {
            count = static_cast<int>(box->buttons().size());
            box->close();
        });
        show(Call());
        QCOMPARE(count, 2);
    }

    void captionAndTextAreShownAsTheyAre()
    {
        const OnceOpen once([](QMessageBox *box) {
            QCOMPARE(box->windowTitle(), QStringLiteral("Caption"));
            QCOMPARE(box->text(), QStringLiteral("<b>10 & 20</b>"));
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(box->icon(), QMessageBox::Question);
            QVERIFY(box->isModal());
            QVERIFY(box->windowFlags().testFlag(Qt::WindowCloseButtonHint));
            box->close();
        });
        Call call;
        call.text = QStringLiteral("<b>10 & 20</b>");
        show(call);
        QVERIFY(once.hasRun());
    }

    void notModalOnRequest()
    {
        const OnceOpen once([](QMessageBox *box) {
            QVERIFY(!box->isModal());
            QTest::keyClick(box, Qt::Key_Return);
        });
        Call call;
        call.isModal = false;
        QCOMPARE(show(call), 1024);
    }

    void dialogIsHandedOutWhileOpen()
    {
        QDialog *dialog = nullptr;
        const OnceOpen once([&dialog](QMessageBox *box) {
            QCOMPARE(dialog, static_cast<QDialog *>(box));
            box->close();
        });
        Call call;
        call.dialog = &dialog;
        show(call);
        QVERIFY(once.hasRun());
        QCOMPARE(dialog, static_cast<QDialog *>(nullptr));
    }

    void checkBoxOnRequest()
    {
        const OnceOpen once([](QMessageBox *box) {
            QVERIFY(box->checkBox() != nullptr);
            QCOMPARE(box->checkBox()->text(), QStringLiteral("Delete connections"));
            box->close();
        });
        Call call;
        call.checkText = QStringLiteral("IDS_PROMPT_CAPTION");
        show(call);
        QVERIFY(once.hasRun());
    }

    void centredOverItsParent()
    {
        QWidget parent;
        parent.setGeometry(200, 150, 500, 300);
        parent.show();
        QVERIFY(QTest::qWaitForWindowExposed(&parent));
        const OnceOpen once([&parent](QMessageBox *box) {
            const QPoint distance = box->frameGeometry().center() - parent.frameGeometry().center();
            QVERIFY2(qAbs(distance.x()) <= 1 && qAbs(distance.y()) <= 1,
                     qPrintable(QStringLiteral("%1, %2").arg(distance.x()).arg(distance.y())));
            QCOMPARE(box->parentWidget(), &parent);
            box->close();
        });
        Call call;
        QWidget inner(&parent);
        inner.show();
        call.parent = &inner;
        show(call);
        QVERIFY(once.hasRun());
    }

    void hiddenParentIsReplacedByTheMainWindow()
    {
        QWidget mainWindow;
        mainWindow.show();
        HostUi::instance()->setMainWindow(&mainWindow);
        QWidget hidden;
        for (QWidget *parent : {&hidden, static_cast<QWidget *>(nullptr)}) {
            const OnceOpen once([&mainWindow](QMessageBox *box) {
                QCOMPARE(box->parentWidget(), &mainWindow);
                box->close();
            });
            Call call;
            call.parent = parent;
            show(call);
            QVERIFY(once.hasRun());
        }
    }

    void goesWithItsParent()
    {
        auto *parent = new QWidget;
        parent->show();
        const OnceOpen once([&parent](QMessageBox *) { delete parent; });
        Call call;
        call.parent = parent;
        QVERIFY(show(call) != 1024);
        QVERIFY(once.hasRun());
    }

    void endsWithTheProgram()
    {
        const OnceOpen once([](QMessageBox *) { QCoreApplication::quit(); });
        int answer = 1024;
        QTimer::singleShot(0, [&answer] { answer = show(Call()); });
        QCoreApplication::exec();
        QVERIFY(answer != 1024);
    }

    void saysThatABoxIsOpen()
    {
        HostUi *ui = HostUi::instance();
        QSignalSpy closed(ui, &HostUi::messagesClosed);
        QVERIFY(!ui->isMessageOpen());
        const OnceOpen once([ui](QMessageBox *box) {
            QVERIFY(ui->isMessageOpen());
            box->close();
        });
        show(Call());
        QVERIFY(!ui->isMessageOpen());
        // The caller comes first; those who waited come when it has returned to the event loop.
        QCOMPARE(closed.count(), 0);
        QTRY_COMPARE(closed.count(), 1);
    }
};

QTEST_MAIN(MessageTest)
#include "MessageTest.moc"
