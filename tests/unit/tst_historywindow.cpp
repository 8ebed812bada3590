// The history page: its making, its widgets and texts, its placement, and its end.
#include "ProductFixture.h"

#include "ui/ExtendDialog.h"

#include <QAction>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMetaMethod>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QVBoxLayout>

using FakeHostUi::state;

namespace {

const char *const s_headerIds[] = {"IDS_LIST_APN",           "IDS_LIST_STARTTIME", "IDS_LIST_ENDTIME",
                                   "IDS_LIST_CONNECTEDTIME", "IDS_LIST_UPLOADED",  "IDS_LIST_DOWNLOADED"};

const int s_widths[] = {110, 135, 135, 110, 110, 110};

/// Lets a test call what a view would.
class DelegateProbe : public GridDelegateLayout
{
public:
    using GridDelegateLayout::drawFocus;
};

QImage focusDrawnWith(QStyle::State state, QPen *penAfterwards)
{
    QImage image(20, 20, QImage::Format_ARGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::blue, 3));
    QStyleOptionViewItem option;
    option.state = state;
    DelegateProbe().drawFocus(&painter, option, QRect(2, 2, 10, 10));
    *penAfterwards = painter.pen();
    return image;
}

} // namespace

class TestHistoryWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { fixture::reset(); }
    void cleanup() { fixture::reset(); }

    // The singleton and what its constructor leaves

    void instanceIsOneUninitialisedObject()
    {
        fixture::fillService(2);
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        QCOMPARE(ConnectionHistoryDlg::Instance(), page);
        QCOMPARE(ConnectionHistoryDlg::m_pConnectionHistoryInst, page);
        QVERIFY(!page->parent());
        QCOMPARE(page->m_pNetInfoRecordLogic, NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
        QVERIFY(page->m_pNetInfoRecordLogic);
        QVERIFY(FakeStatistics::state().calls.empty());
        QVERIFY(state().trCalls.isEmpty());
        QCOMPARE(page->m_pConnectionTblTreeWidget->columnCount(), 0);
        QVERIFY(page->m_pConnectionTblTreeWidget->objectName().isEmpty());
        QVERIFY(!page->m_pConnectionHistoryWidget->layout());
    }

    void constructorMakesFiveObjects()
    {
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        QVERIFY(page->m_pConnectionHistoryWidget);
        QVERIFY(!page->m_pConnectionHistoryWidget->parent());
        QVERIFY(page->m_pConnectionTblTreeWidget);
        QCOMPARE(page->m_pConnectionTblTreeWidget->parent(), page->m_pConnectionHistoryWidget);
        QVERIFY(page->m_pGridDelegate);
        QVERIFY(!page->m_pGridDelegate->parent());
        QVERIFY(page->m_pDeleteShortcut);
        QCOMPARE(page->m_pDeleteShortcut->parent(), page->m_pConnectionTblTreeWidget);
        QVERIFY(page->m_pNoteLabel);
        QVERIFY(!page->m_pNoteLabel->parent());
        delete page->m_pNoteLabel; // an uninitialised page leaves these two behind
        delete page->m_pGridDelegate;
        page->m_pGridDelegate = nullptr;
        page->m_pNoteLabel = nullptr;
    }

    void constructorLeavesTheRestNull()
    {
        const ConnectionHistoryDlg *const page = fixture::initialisedPage();
        const QList<const void *> members = {page->m_pTableMenu,
                                             page->m_pDeleteAction,
                                             page->m_pDeleteAllAction,
                                             page->m_pLastConnectionDlg,
                                             page->m_pLastConnectionWidget,
                                             page->m_pStatisticGroup,
                                             page->m_pOkButton,
                                             page->m_pDownloadedValueLabel,
                                             page->m_pUploadedValueLabel,
                                             page->m_pTransferTimeValueLabel,
                                             page->m_pDownloadedCaptionLabel,
                                             page->m_pUploadedCaptionLabel,
                                             page->m_pTransferTimeCaptionLabel,
                                             page->m_pMenuDeleteShortcut,
                                             page->m_pMenuDShortcut,
                                             page->m_pMenuAShortcut};
        for (const void *member : members)
            QVERIFY(!member);
    }

    void destroyMakesRoomForAFreshOne()
    {
        QPointer<ConnectionHistoryDlg> page = fixture::initialisedPage();
        ConnectionHistoryDlg::Destroy();
        QVERIFY(page.isNull());
        QVERIFY(!ConnectionHistoryDlg::m_pConnectionHistoryInst);
        ConnectionHistoryDlg::Destroy();
        QCOMPARE(ConnectionHistoryDlg::Instance()->m_pConnectionTblTreeWidget->columnCount(), 0);
        ConnectionHistoryDlg::Instance()->Init();
        QCOMPARE(ConnectionHistoryDlg::Instance()->m_pConnectionTblTreeWidget->columnCount(), 6);
    }

    // The meta-object

    void metaObject()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        const QMetaObject *const meta = page->metaObject();
        QCOMPARE(meta->className(), "ConnectionHistoryDlg");
        QCOMPARE(meta->superClass(), &QWidget::staticMetaObject);
        QCOMPARE(meta->propertyCount(), QWidget::staticMetaObject.propertyCount());
        QCOMPARE(meta->enumeratorCount(), QWidget::staticMetaObject.enumeratorCount());
        QCOMPARE(meta->classInfoCount(), 0);
        const QByteArray slotNames[] = {"OnAccumulateClicked()", "showTableContextMenu(QPoint)", "onDelete()",
                                        "onDeleteAll()", "onClickOkButton()"};
        QCOMPARE(meta->methodCount() - meta->methodOffset(), 5);
        for (int i = 0; i < 5; ++i) {
            const QMetaMethod method = meta->method(meta->methodOffset() + i);
            QCOMPARE(method.methodSignature(), slotNames[i]);
            QCOMPARE(method.methodType(), QMetaMethod::Slot);
            QCOMPARE(method.access(), QMetaMethod::Public);
        }
        QCOMPARE(meta->method(meta->methodOffset() + 1).parameterNames(), QList<QByteArray>({QByteArray()}));
        QCOMPARE(page->qt_metacast("ConnectionHistoryDlg"), static_cast<void *>(page));
        QCOMPARE(page->qt_metacast("QWidget"), static_cast<void *>(static_cast<QWidget *>(page)));
        QVERIFY(!page->qt_metacast("GridDelegateLayout"));
    }

    void accumulateSlotChangesNothing()
    {
        fixture::fillService(2);
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        const int widgets = static_cast<int>(QApplication::allWidgets().size());
        const auto trCalls = state().trCalls.size();
        const MessageLog log;
        QVERIFY(page->metaObject()->method(page->metaObject()->methodOffset()).invoke(page));
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Enter: PATH/ConnectionHistoryDlg: OnAccumulateClicked: LINE: TIME:"),
                              QStringLiteral("Exit: PATH/ConnectionHistoryDlg: OnAccumulateClicked: LINE: TIME:")}));
        QCOMPARE(static_cast<int>(QApplication::allWidgets().size()), widgets);
        QCOMPARE(state().trCalls.size(), trCalls);
        QVERIFY(state().dialogs.isEmpty());
        QCOMPARE(page->m_pConnectionTblTreeWidget->rowCount(), 2);
    }

    // Init

    void widgetTree()
    {
        const ConnectionHistoryDlg *const page = fixture::initialisedPage();
        const QBoxLayout *const outer = qobject_cast<QVBoxLayout *>(page->m_pConnectionHistoryWidget->layout());
        QVERIFY(outer);
        QCOMPARE(outer->count(), 2);
        QCOMPARE(outer->itemAt(0)->widget(), page->m_pConnectionTblTreeWidget);
        QCOMPARE(outer->stretch(0), 0);
        QCOMPARE(outer->itemAt(0)->alignment(), Qt::Alignment());
        const QBoxLayout *const row = qobject_cast<QHBoxLayout *>(outer->itemAt(1)->layout());
        QVERIFY(row);
        QCOMPARE(outer->stretch(1), 0);
        QCOMPARE(row->count(), 1);
        QCOMPARE(row->itemAt(0)->widget(), page->m_pNoteLabel);
        QCOMPARE(row->stretch(0), 1);
        QCOMPARE(row->itemAt(0)->alignment(), Qt::Alignment());
        QCOMPARE(page->m_pNoteLabel->minimumHeight(), 35);
        QCOMPARE(page->m_pNoteLabel->maximumHeight(), 35);
        QCOMPARE(page->m_pNoteLabel->parentWidget(), page->m_pConnectionHistoryWidget);
        QWidget plain;
        const QVBoxLayout *const plainLayout = new QVBoxLayout(&plain);
        QCOMPARE(outer->contentsMargins(), plainLayout->contentsMargins());
        QCOMPARE(outer->spacing(), plainLayout->spacing());
    }

    void tableIsNamedEmptyEvenWithRows()
    {
        fixture::fillService(1);
        const ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QCOMPARE(page->m_pConnectionTblTreeWidget->rowCount(), 1);
        QCOMPARE(page->m_pConnectionTblTreeWidget->objectName(), QStringLiteral("Empty Table"));
        QCOMPARE(page->m_pNoteLabel->objectName(), QStringLiteral("NetInfoRecordUIPlugin_LabelNote"));
        QVERIFY(page->m_pConnectionHistoryWidget->objectName().isEmpty());
    }

    void tableSettings()
    {
        const QTableWidget *const table = fixture::initialisedPage()->m_pConnectionTblTreeWidget;
        QCOMPARE(table->columnCount(), 6);
        QVERIFY(!table->wordWrap());
        QCOMPARE(table->itemDelegate(), ConnectionHistoryDlg::Instance()->m_pGridDelegate);
        QCOMPARE(table->contextMenuPolicy(), Qt::CustomContextMenu);
        QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(table->selectionMode(), QAbstractItemView::ExtendedSelection);
        QVERIFY(!table->showGrid());
        QVERIFY(table->verticalHeader()->isHidden());
        QCOMPARE(table->horizontalHeader()->defaultAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
        QCOMPARE(table->horizontalHeader()->textElideMode(), Qt::ElideRight);
        QVERIFY(!table->isSortingEnabled());
        for (int column = 0; column < 6; ++column)
            QCOMPARE(table->columnWidth(column), s_widths[column]);
    }

    void initLoadsAndShowsTheRecords()
    {
        fixture::fillService(3);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        ConnectionRecord *const earlier = new ConnectionRecord;
        store->m_hash.insert(99, earlier);
        store->m_vecAccumulate.resize(2);
        const ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QVERIFY(store->m_vecAccumulate.isEmpty());
        QCOMPARE(store->m_hash.size(), 3); // the earlier entry is gone from the hash...
        QCOMPARE(earlier->nId, -1);        // ...and still ours
        delete earlier;
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetAll), 1);
        QCOMPARE(fixture::columnTexts(page->m_pConnectionTblTreeWidget, 0),
                 QStringList({QStringLiteral("apn-0"), QStringLiteral("apn-1"), QStringLiteral("apn-2")}));
    }

    void initOfAFailingServiceShowsAnEmptyTable()
    {
        FakeStatistics::state().getAllCode = 4;
        const ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QCOMPARE(page->m_pConnectionTblTreeWidget->rowCount(), 0);
        QVERIFY(state().messages.isEmpty());
    }

    void initConnectsKeyAndMenu()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QCOMPARE(page->m_pDeleteShortcut->key(), QKeySequence(Qt::Key_Delete));
        QCOMPARE(page->m_pDeleteShortcut->context(), Qt::WindowShortcut);
        const MessageLog log;
        QMetaObject::invokeMethod(page->m_pDeleteShortcut, "activated");
        QVERIFY(log.shapes().contains(QStringLiteral("Entered: PATH/ConnectionHistoryDlg: onDelete: LINE: TIME:")));
        emit page->m_pConnectionTblTreeWidget->customContextMenuRequested(QPoint(5, -1));
        QVERIFY(log.shapes().contains(
            QStringLiteral("Start: PATH/ConnectionHistoryDlg showTableContextMenu: LINE: TIME:")));
    }

    void initWithoutAPiece_data()
    {
        QTest::addColumn<QString>("piece");
        for (const char *piece : {"table", "page", "shortcut", "note"})
            QTest::newRow(piece) << QString::fromLatin1(piece);
    }
    void initWithoutAPiece()
    {
        QFETCH(QString, piece);
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        QTableWidget *const table = page->m_pConnectionTblTreeWidget;
        QWidget *const widget = page->m_pConnectionHistoryWidget;
        QLabel *const note = page->m_pNoteLabel;
        if (piece == QLatin1String("table"))
            page->m_pConnectionTblTreeWidget = nullptr;
        else if (piece == QLatin1String("page"))
            page->m_pConnectionHistoryWidget = nullptr;
        else if (piece == QLatin1String("shortcut"))
            page->m_pDeleteShortcut = nullptr;
        else
            page->m_pNoteLabel = nullptr;
        const MessageLog log;
        page->Init();
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Start File: PATH/ConnectionHistoryDlg Init: LINE: TIME:"),
                              QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: Init LINE")}));
        QVERIFY(FakeStatistics::state().calls.empty());
        QVERIFY(!widget->layout());
        QCOMPARE(table->columnCount(), 0);
        page->m_pConnectionTblTreeWidget = table;
        page->m_pConnectionHistoryWidget = widget;
        delete note;
        page->m_pNoteLabel = nullptr;
        delete page->m_pGridDelegate;
    }

    void initWithoutAStore()
    {
        fixture::fillService(1);
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        page->m_pNetInfoRecordLogic = nullptr;
        const MessageLog log;
        page->Init();
        QVERIFY(FakeStatistics::state().calls.empty());
        QCOMPARE(page->m_pConnectionTblTreeWidget->columnCount(), 6);
        QVERIFY(
            log.shapes().contains(QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: populateTable LINE")));
        QCOMPARE(log.shapes().last(), QStringLiteral("End File: PATH/ConnectionHistoryDlg: Init: LINE: TIME:"));
    }

    // Texts

    void textsComeFromTheHostInOrder()
    {
        fixture::initialisedPage();
        QList<QPair<QString, QString>> expected;
        const QString context = QStringLiteral("NetInfoRecordUIPlugin");
        for (const char *id : s_headerIds)
            expected.append(qMakePair(QString::fromLatin1(id), context));
        expected.append(qMakePair(QStringLiteral("IDS_STC_EXPLAIN_TEXT"), context));
        QCOMPARE(state().trCalls, expected);
    }

    void literalsReachTheHostToo()
    {
        state().texts[QStringLiteral("x")][QStringLiteral("IDS_ANY")] = QStringLiteral("Irgendwas");
        state().language = QStringLiteral("x");
        const MessageLog log;
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        const auto before = log.lines.size();
        QCOMPARE(page->tr("IDS_ANY"), QStringLiteral("Irgendwas"));
        QCOMPARE(log.shapes().mid(before),
                 QStringList(QStringLiteral("Start: PATH/ConnectionHistoryDlg tr: LINE: TIME:")));
        page->Init();
    }

    void languageChangeRenewsTextsAndWidthsAndLeavesTheRows()
    {
        fixture::fillService(3);
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QTableWidget *const table = page->m_pConnectionTblTreeWidget;
        const QTableWidgetItem *const cell = table->item(1, 1);
        const QString cellText = cell->text();
        table->selectRow(1);
        table->setColumnWidth(2, 300);
        QHash<QString, QString> &german = state().texts[QStringLiteral("de")];
        for (const char *id : s_headerIds)
            german[QString::fromLatin1(id)] = QStringLiteral("de ") + QString::fromLatin1(id);
        german[QStringLiteral("IDS_STC_EXPLAIN_TEXT")] = QStringLiteral("Hinweis");
        state().language = QStringLiteral("de");
        page->uiSetText();
        for (int column = 0; column < 6; ++column) {
            QCOMPARE(table->horizontalHeaderItem(column)->text(),
                     QStringLiteral("de ") + QString::fromLatin1(s_headerIds[column]));
            QCOMPARE(table->columnWidth(column), s_widths[column]);
        }
        QCOMPARE(page->m_pNoteLabel->text(), QStringLiteral("Hinweis"));
        QCOMPARE(table->rowCount(), 3);
        QCOMPARE(static_cast<const QTableWidgetItem *>(table->item(1, 1)), cell);
        QCOMPARE(cell->text(), cellText);
        QCOMPARE(table->selectedItems().size(), 6);
        QCOMPARE(table->selectedItems().first()->row(), 1);
        QCOMPARE(table->rowHeight(0), 14);
    }

    void headerItemsAreRenewedAndTheOldOnesDeleted()
    {
        class Item : public QTableWidgetItem
        {
        public:
            explicit Item(int *deletions) : m_deletions(deletions) {}
            ~Item() override { ++*m_deletions; }

        private:
            int *m_deletions;
        };
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        int deletions = 0;
        for (int column = 0; column < 6; ++column)
            page->m_pConnectionTblTreeWidget->setHorizontalHeaderItem(column, new Item(&deletions));
        page->uiSetText();
        QCOMPARE(deletions, 6);
        for (int column = 0; column < 6; ++column)
            page->m_pConnectionTblTreeWidget->setHorizontalHeaderItem(column, new Item(&deletions));
        ConnectionHistoryDlg::Destroy();
        QCOMPARE(deletions, 12);
    }

    void textsWithoutAPiece()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        state().trCalls.clear();
        const MessageLog log;
        QLabel *const note = page->m_pNoteLabel;
        page->m_pNoteLabel = nullptr;
        page->uiSetText();
        page->m_pNoteLabel = note;
        QTableWidget *const table = page->m_pConnectionTblTreeWidget;
        page->m_pConnectionTblTreeWidget = nullptr;
        page->uiSetText();
        page->m_pConnectionTblTreeWidget = table;
        const QStringList once = {QStringLiteral("Start File: PATH/ConnectionHistoryDlg uiSetText: LINE: TIME:"),
                                  QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: uiSetText LINE")};
        QCOMPARE(log.shapes(), once + once);
        QVERIFY(state().trCalls.isEmpty());
    }

    void textsWithoutADelegate()
    {
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        delete page->m_pGridDelegate;
        page->m_pGridDelegate = nullptr;
        page->Init();
        QVERIFY(page->m_pConnectionTblTreeWidget->itemDelegate()); // the table's own
        QCOMPARE(page->m_pConnectionTblTreeWidget->columnCount(), 6);
    }

    // Placement

    void showEmbedsThePage()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QWidget host;
        host.show();
        QRect rect(QPoint(10, 20), QPoint(109, 219));
        QVERIFY(page->ShowWindow(&host, rect));
        QWidget *const widget = page->m_pConnectionHistoryWidget;
        QCOMPARE(widget->parentWidget(), &host);
        QCOMPARE(widget->geometry(), QRect(10, 20, 100, 200));
        QCOMPARE(widget->objectName(), QStringLiteral("NetInfoRecordUIPlugin_ConnectionHistoryWidget"));
        QVERIFY(widget->isVisible());
        QVERIFY(widget->hasMouseTracking());
        QVERIFY(!page->isVisible());
        page->Hide();
        QVERIFY(!widget->isVisible());
        QCOMPARE(widget->parentWidget(), &host);
        QCOMPARE(widget->geometry(), QRect(10, 20, 100, 200));
        QVERIFY(page->ShowWindow(&host, rect));
        QVERIFY(widget->isVisible());
        widget->setParent(nullptr);
    }

    void fitMovesThenResizes()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QWidget host;
        host.show();
        QRect rect(0, 0, 200, 200);
        page->ShowWindow(&host, rect);
        GeometryLog log(page->m_pConnectionHistoryWidget);
        rect = QRect(7, 8, 400, 410);
        page->FitSize(rect);
        QCOMPARE(log.takeEvents(), QStringList({QStringLiteral("move 7,8"), QStringLiteral("resize 400x410")}));
        page->m_pConnectionHistoryWidget->setParent(nullptr);
    }

    void showOfFilledTableScrollsUpAndLeavesNoCurrentCell()
    {
        fixture::fillService(100);
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QWidget host;
        host.resize(800, 300);
        host.show();
        QRect rect(0, 0, 800, 300);
        page->ShowWindow(&host, rect);
        QTableWidget *const table = page->m_pConnectionTblTreeWidget;
        table->setCurrentCell(80, 2);
        table->scrollToBottom();
        QVERIFY(table->verticalScrollBar()->value() > 0);
        page->ShowWindow(&host, rect);
        QCOMPARE(table->verticalScrollBar()->value(), 0);
        QCOMPARE(table->currentRow(), -1);
        QCOMPARE(table->currentColumn(), -1);
        QVERIFY(table->selectedItems().isEmpty());
        page->m_pConnectionHistoryWidget->setParent(nullptr);
    }

    void showOfEmptyTableTouchesNoCurrentCell()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QTableWidget *const table = page->m_pConnectionTblTreeWidget;
        table->setRowCount(3); // rows, but no cell at the top left: nothing to scroll to
        table->setCurrentCell(2, 1);
        QWidget host;
        QRect rect(0, 0, 100, 100);
        page->ShowWindow(&host, rect);
        QCOMPARE(table->currentRow(), 2);
        table->setRowCount(0);
        page->m_pConnectionHistoryWidget->setParent(nullptr);
    }

    void showWithoutAParentOrASize()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QRect null;
        QVERIFY(page->ShowWindow(nullptr, null));
        QVERIFY(!page->m_pConnectionHistoryWidget->parentWidget());
        QVERIFY(page->m_pConnectionHistoryWidget->isVisible());
        page->Hide();
    }

    void showWithoutATable()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QTableWidget *const table = page->m_pConnectionTblTreeWidget;
        page->m_pConnectionTblTreeWidget = nullptr;
        QWidget host;
        QRect rect(0, 0, 100, 100);
        QVERIFY(page->ShowWindow(&host, rect));
        page->m_pConnectionTblTreeWidget = table;
        page->m_pConnectionHistoryWidget->setParent(nullptr);
    }

    void placementWithoutAPage()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QWidget *const widget = page->m_pConnectionHistoryWidget;
        const QRect before = widget->geometry();
        page->m_pConnectionHistoryWidget = nullptr;
        const MessageLog log;
        QRect rect(1, 2, 3, 4);
        QVERIFY(!page->ShowWindow(nullptr, rect));
        page->FitSize(rect);
        page->Hide();
        page->m_pConnectionHistoryWidget = widget;
        QCOMPARE(widget->geometry(), before);
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Start File: PATH/ConnectionHistoryDlg ShowWindow: LINE: TIME:"),
                              QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: ShowWindow LINE"),
                              QStringLiteral("Start of PATH/ConnectionHistoryDlg: FitSize: LINE: "),
                              QStringLiteral("End of PATH/ConnectionHistoryDlg: FitSize: LINE: "),
                              QStringLiteral("Start: PATH/ConnectionHistoryDlg Hide: LINE: TIME:"),
                              QStringLiteral("End: PATH/ConnectionHistoryDlg Hide: LINE: TIME:")}));
    }

    // The focus rectangle

    void focusIsNotDrawn()
    {
        QImage untouched(20, 20, QImage::Format_ARGB32);
        untouched.fill(Qt::red);
        QPen pen;
        QCOMPARE(focusDrawnWith(QStyle::State_HasFocus | QStyle::State_Enabled, &pen), untouched);
        QCOMPARE(pen.color(), QColor(Qt::white));
        QCOMPARE(pen.width(), 0);
        QVERIFY(pen.isCosmetic());
        QCOMPARE(focusDrawnWith(QStyle::State_Enabled, &pen), untouched);
        QCOMPARE(pen, QPen(Qt::blue, 3));
    }

    void delegateHasNoMetaObjectOfItsOwn()
    {
        const GridDelegateLayout delegate;
        QCOMPARE(delegate.metaObject(), &QItemDelegate::staticMetaObject);
        QVERIFY(!delegate.parent());
    }

    // The end

    void destroyTakesEverythingAlong()
    {
        fixture::fillService(2);
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        page->createTableRightClickAction();
        page->ShowDialogOfLastConnectedRecord(nullptr);
        const QList<QPointer<QObject>> objects = {page->m_pConnectionHistoryWidget,
                                                  page->m_pConnectionTblTreeWidget,
                                                  page->m_pGridDelegate,
                                                  page->m_pDeleteShortcut,
                                                  page->m_pNoteLabel,
                                                  page->m_pTableMenu,
                                                  page->m_pDeleteAction,
                                                  page->m_pDeleteAllAction,
                                                  page->m_pMenuAShortcut,
                                                  page->m_pLastConnectionDlg,
                                                  page->m_pStatisticGroup};
        for (const QPointer<QObject> &object : objects)
            QVERIFY(object);
        QString share(10, QLatin1Char('r'));
        page->m_pNetInfoRecordLogic->m_hash.value(1)->strSpare = share;
        ConnectionHistoryDlg::Destroy();
        for (const QPointer<QObject> &object : objects)
            QVERIFY(!object);
        QVERIFY(share.isDetached()); // its record is gone
        QVERIFY(!NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
    }

    void destroyInsideAHostWindow()
    {
        QWidget host;
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QRect rect(0, 0, 100, 100);
        page->ShowWindow(&host, rect);
        ConnectionHistoryDlg::Destroy();
        QVERIFY(host.children().isEmpty());
    }

    void hostsWindowThatDiesFirst()
    {
        fixture::fillService(2);
        QWidget *const host = new QWidget;
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QRect rect(0, 0, 100, 100);
        page->ShowWindow(host, rect);
        const QList<ConnectionRecord *> records = page->m_pNetInfoRecordLogic->m_hash.values();
        delete host; // takes the page's widgets along, before the host has said goodbye
        QVERIFY(!page->m_pConnectionHistoryWidget);
        QVERIFY(!page->m_pConnectionTblTreeWidget);
        QVERIFY(!page->ShowWindow(nullptr, rect));
        page->FitSize(rect);
        page->Hide();
        page->uiSetText();
        page->populateTable();
        page->onDelete();
        page->onDeleteAll();
        ConnectionHistoryDlg::Destroy();
        qDeleteAll(records); // nobody knew them any more
    }

    void destroyOfAnUninitialisedPage()
    {
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        delete page->m_pNoteLabel;
        delete page->m_pGridDelegate;
        page->m_pGridDelegate = nullptr;
        ConnectionHistoryDlg::Destroy();
        QVERIFY(!ConnectionHistoryDlg::m_pConnectionHistoryInst);
    }

    void traceOfTheSingleton()
    {
        fixture::initialisedPage();
        ConnectionHistoryDlg::Destroy();
        const MessageLog log;
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        delete page->m_pNoteLabel;
        ConnectionHistoryDlg::Destroy();
        QStringList own;
        for (const QString &shape : log.shapes()) {
            if (shape.contains(QLatin1String("ConnectionHistoryDlg")) && !shape.contains(QLatin1String("ReleaseTable")))
                own.append(shape);
        }
        QCOMPARE(own, QStringList(
                          {QStringLiteral("Start: PATH/ConnectionHistoryDlg Instance: LINE: TIME:"),
                           QStringLiteral("Start File: PATH/ConnectionHistoryDlg ConnectionHistoryDlg: LINE: TIME:"),
                           QStringLiteral("End File: PATH/ConnectionHistoryDlg: ConnectionHistoryDlg: LINE: TIME:"),
                           QStringLiteral("End: PATH/ConnectionHistoryDlg Instance: LINE: TIME:"),
                           QStringLiteral("Start: PATH/ConnectionHistoryDlg Destroy: LINE: TIME:"),
                           QStringLiteral("Start File: PATH/ConnectionHistoryDlg ~ConnectionHistoryDlg: LINE: TIME:"),
                           QStringLiteral("End File: PATH/ConnectionHistoryDlg: ~ConnectionHistoryDlg: LINE: TIME:"),
                           QStringLiteral("End: PATH/ConnectionHistoryDlg Destroy: LINE: TIME:")}));
    }

private:
    /// Notes the moves and resizes of a widget.
    class GeometryLog : public QObject
    {
    public:
        explicit GeometryLog(QWidget *widget) : m_widget(widget) { widget->installEventFilter(this); }
        QStringList takeEvents()
        {
            const QStringList events = m_events;
            m_events.clear();
            return events;
        }

    protected:
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Move)
                m_events.append(QStringLiteral("move %1,%2").arg(m_widget->x()).arg(m_widget->y()));
            else if (event->type() == QEvent::Resize)
                m_events.append(QStringLiteral("resize %1x%2").arg(m_widget->width()).arg(m_widget->height()));
            return false;
        }

    private:
        QWidget *m_widget;
        QStringList m_events;
    };
};

QTEST_MAIN(TestHistoryWindow)
#include "tst_historywindow.moc"
