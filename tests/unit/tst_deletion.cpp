// Deleting records: the menu, its keys, the question, and what goes in which order.
#include "ProductFixture.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QShortcut>
#include <QSignalSpy>
#include <QTimer>

using FakeHostUi::state;
using Positions = std::vector<int>;

namespace {

const int s_ok = 1024;

/// Runs \a action once a menu has opened, then closes every menu that is still open.
class WhenMenuOpens : public QObject
{
public:
    explicit WhenMenuOpens(std::function<void(QMenu *)> action) : m_action(std::move(action))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] { look(); });
        m_timer.start(5);
    }
    int opened() const { return m_opened; }

private:
    void look()
    {
        QMenu *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        m_timer.stop();
        ++m_opened;
        m_action(menu);
        while (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        m_timer.start(5);
    }

    std::function<void(QMenu *)> m_action;
    QTimer m_timer;
    int m_opened = 0;
};

} // namespace

class TestDeletion : public QObject
{
    Q_OBJECT

private slots:
    void init() { fixture::reset(); }
    void cleanup()
    {
        fixture::reset();
        m_host.reset();
    }

    // The selection

    void selectedRowsGoFromTheLastUp_data()
    {
        QTest::addColumn<QList<int>>("clicked");
        QTest::newRow("ascending") << QList<int>({1, 3, 4});
        QTest::newRow("descending") << QList<int>({4, 3, 1});
        QTest::newRow("mixed") << QList<int>({3, 1, 4});
    }
    void selectedRowsGoFromTheLastUp()
    {
        QFETCH(QList<int>, clicked);
        openPage(6);
        select(clicked);
        state().answers = {s_ok};
        QSignalSpy removed(m_table->model(), &QAbstractItemModel::rowsRemoved);
        m_page->onDelete();
        QCOMPARE(removed.count(), 3);
        const int order[] = {4, 3, 1};
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(removed.at(i).at(1).toInt(), order[i]);
            QCOMPARE(removed.at(i).at(2).toInt(), order[i]);
        }
        QCOMPARE(FakeStatistics::removedPositions(), Positions({4, 3, 1}));
        QCOMPARE(names(), QStringList({QStringLiteral("apn-0"), QStringLiteral("apn-2"), QStringLiteral("apn-5")}));
        QList<int> keys = m_store->m_hash.keys();
        std::sort(keys.begin(), keys.end());
        QCOMPARE(keys, QList<int>({0, 2, 5}));
        QCOMPARE(serviceNames(), names());
    }

    void rowsGoBeforeRecords()
    {
        openPage(3);
        select({0, 2});
        state().answers = {s_ok};
        int removalsAtFirstRow = -1;
        connect(m_table->model(), &QAbstractItemModel::rowsRemoved, this, [&removalsAtFirstRow] {
            if (removalsAtFirstRow < 0)
                removalsAtFirstRow = static_cast<int>(FakeStatistics::removedPositions().size());
        });
        m_page->onDelete();
        QCOMPARE(removalsAtFirstRow, 0);
        QCOMPARE(FakeStatistics::removedPositions(), Positions({2, 0}));
    }

    void deletedRecordsAreFreedAndTheOthersStay()
    {
        openPage(3);
        QString deleted(9, QLatin1Char('d'));
        QString kept(9, QLatin1Char('k'));
        m_store->m_hash.value(1)->strSpare = deleted;
        m_store->m_hash.value(2)->strSpare = kept;
        select({1});
        state().answers = {s_ok};
        m_page->onDelete();
        QVERIFY(deleted.isDetached());
        QVERIFY(!kept.isDetached());
        for (int row = 0; row < m_table->rowCount(); ++row)
            QCOMPARE(fixture::linkedRecord(m_table, row)->strApn, m_table->item(row, 0)->text());
    }

    void laterDeletionUsesTheOldKeys()
    {
        openPage(5);
        state().answers = {s_ok, s_ok};
        select({1});
        m_page->onDelete();
        QCOMPARE(m_table->rowCount(), 4);
        QVERIFY(m_table->selectedItems().isEmpty());
        select({2}); // the record that was in row 3 when it was loaded
        m_page->onDelete();
        QCOMPARE(FakeStatistics::removedPositions(), Positions({1, 3}));
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetAll), 1); // never reloaded
        QCOMPARE(fixture::linkedRecord(m_table, 2)->nId, 4);
    }

    void nothingSelectedAsksNothing()
    {
        openPage(3);
        const MessageLog log;
        m_page->onDelete();
        QVERIFY(state().messages.isEmpty());
        QCOMPARE(log.shapes(),
                 QStringList(QStringLiteral("Entered: PATH/ConnectionHistoryDlg: onDelete: LINE: TIME:")));
    }

    void fewerThanSixCellsAreNoRow()
    {
        openPage(3);
        m_table->setSelectionBehavior(QAbstractItemView::SelectItems);
        for (int column = 0; column < 5; ++column)
            m_table->item(1, column)->setSelected(true);
        m_page->onDelete();
        QVERIFY(state().messages.isEmpty());
        state().answers = {s_ok};
        m_table->item(1, 5)->setSelected(true);
        m_page->onDelete();
        QCOMPARE(state().messages.size(), 1);
        QCOMPARE(FakeStatistics::removedPositions(), Positions({1}));
    }

    void anyOtherAnswerRemovesNothing_data()
    {
        QTest::addColumn<int>("answer");
        for (int answer : {0, 1, -1, 1023, 1025, 2048, 4194304, 16384})
            QTest::newRow(QByteArray::number(answer).constData()) << answer;
    }
    void anyOtherAnswerRemovesNothing()
    {
        QFETCH(int, answer);
        openPage(3);
        m_table->selectAll();
        state().answers = {answer, answer};
        MessageLog log;
        m_page->onDelete();
        QCOMPARE(log.shapes().last(), QStringLiteral("Exit: PATH/ConnectionHistoryDlg: onDelete: LINE: TIME:"));
        m_page->onDeleteAll();
        QCOMPARE(log.shapes().last(), QStringLiteral("Exit: PATH/ConnectionHistoryDlg: onDeleteAll: LINE: TIME:"));
        QCOMPARE(state().messages.size(), 2);
        QVERIFY(FakeStatistics::removedPositions().empty());
        QCOMPARE(m_table->rowCount(), 3);
        QCOMPARE(m_store->m_hash.size(), 3);
        QCOMPARE(m_table->selectedItems().size(), 18);
    }

    void failingServiceIsNotNoticed()
    {
        openPage(3);
        m_table->selectAll();
        state().answers = {s_ok};
        FakeStatistics::state().removeCodes = {5, 0, 5};
        m_page->onDelete();
        QCOMPARE(FakeStatistics::removedPositions(), Positions({2, 1, 0})); // never stops early
        QCOMPARE(m_table->rowCount(), 0);
        QVERIFY(m_store->m_hash.isEmpty());
    }

    void keyThatTheStoreDoesNotHold()
    {
        openPage(2);
        ConnectionRecord *const record = m_store->m_hash.take(1);
        select({1});
        state().answers = {s_ok};
        m_page->onDelete();
        QCOMPARE(FakeStatistics::removedPositions(), Positions({1})); // still asked for
        QCOMPARE(m_table->rowCount(), 1);
        QCOMPARE(record->strApn, QStringLiteral("apn-1")); // and nobody deleted it
        delete record;
    }

    void lastRecordIsNotTouched()
    {
        FakeStatistics::state().last = fixture::numbered(8);
        openPage(2);
        m_store->GetLastConnectedRecord();
        m_table->selectAll();
        state().answers = {s_ok, s_ok};
        m_page->onDelete();
        m_page->onDeleteAll();
        QCOMPARE(m_store->m_lastRecord.strApn, QStringLiteral("apn-8"));
    }

    // The question

    void questionsArguments_data()
    {
        QTest::addColumn<bool>("isAll");
        QTest::addColumn<QString>("textId");
        QTest::newRow("selection") << false << QStringLiteral("IDS_STR_DELETE");
        QTest::newRow("all") << true << QStringLiteral("IDS_STR_CLEARALL");
    }
    void questionsArguments()
    {
        QFETCH(bool, isAll);
        QFETCH(QString, textId);
        QHash<QString, QString> &texts = state().texts[QStringLiteral("x")];
        for (const char *id : {"IDS_PROMPT_CAPTION", "IDS_STR_DELETE", "IDS_STR_CLEARALL", "IDS_OK", "IDS_CANCEL"})
            texts[QString::fromLatin1(id)] = QStringLiteral("x-") + QString::fromLatin1(id);
        state().language = QStringLiteral("x");
        openPage(4);
        select({0, 1, 2});
        if (isAll)
            m_page->onDeleteAll();
        else
            m_page->onDelete();
        QCOMPARE(state().messages.size(), 1);
        const FakeHostUi::MessageCall &call = state().messages.first();
        QCOMPARE(call.icon, QMessageBox::Question);
        QCOMPARE(call.parent, m_page->m_pConnectionHistoryWidget);
        QCOMPARE(call.caption, QStringLiteral("x-IDS_PROMPT_CAPTION"));
        QCOMPARE(call.text, QStringLiteral("x-") + textId);
        QCOMPARE(call.firstButton, QStringLiteral("IDS_OK")); // the host translates these two
        QCOMPARE(call.secondButton, QStringLiteral("IDS_CANCEL"));
        QCOMPARE(call.thirdButton, QStringLiteral(""));
        QVERIFY(call.isModal);
        QCOMPARE(call.flags, Qt::WindowFlags(Qt::WindowCloseButtonHint));
        QCOMPARE(static_cast<int>(call.flags), 0x08000000);
        QVERIFY(!call.dialog);
        QCOMPARE(call.checkText, QStringLiteral(""));
        QVERIFY(call.isCentred);
    }

    // All records

    void deleteAllEmptiesEverything()
    {
        openPage(3);
        m_store->m_vecAccumulate.resize(2);
        QString share(9, QLatin1Char('s'));
        m_store->m_hash.value(2)->strSpare = share;
        state().answers = {s_ok};
        m_page->onDeleteAll();
        QCOMPARE(FakeStatistics::removedPositions(), Positions({0, 0, 0}));
        QVERIFY(share.isDetached());
        QVERIFY(m_store->m_hash.isEmpty());
        QVERIFY(m_store->m_vecAccumulate.isEmpty());
        QCOMPARE(m_table->rowCount(), 0);
        QCOMPARE(m_table->columnCount(), 6);
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetAll), 1);
    }

    void deleteAllStepsInOrder()
    {
        openPage(1);
        state().answers = {s_ok};
        const MessageLog log;
        m_page->onDeleteAll();
        QStringList functions;
        for (const QString &shape : log.shapes()) {
            static const QRegularExpression name(
                QStringLiteral("\\b(DeleteAll|ReleaseTable|populateTable|onDeleteAll)\\b"));
            functions.append(name.match(shape).captured(1));
        }
        functions.removeAll(QString());
        functions.removeDuplicates();
        QCOMPARE(functions, QStringList({QStringLiteral("onDeleteAll"), QStringLiteral("DeleteAll"),
                                         QStringLiteral("ReleaseTable"), QStringLiteral("populateTable")}));
    }

    void deleteAllOfAnEmptyTableStillAsks()
    {
        openPage(0);
        state().answers = {s_ok};
        const MessageLog log;
        m_page->onDeleteAll();
        QCOMPARE(state().messages.size(), 1);
        QVERIFY(log.shapes().contains(QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: DeleteAll LINE")));
        QVERIFY(FakeStatistics::removedPositions().empty());
        QCOMPARE(m_table->rowCount(), 0);
    }

    void deleteAllOfAFailingServiceEmptiesTheTableAllTheSame()
    {
        openPage(2);
        state().answers = {s_ok};
        FakeStatistics::state().removeCodes = {3, 3};
        m_page->onDeleteAll();
        QCOMPARE(m_table->rowCount(), 0);
        QVERIFY(m_store->m_hash.isEmpty());
        QCOMPARE(FakeStatistics::state().records.size(), std::size_t(2));
    }

    // Missing pieces

    void missingPieces()
    {
        openPage(2);
        m_table->selectAll();
        const MessageLog log;
        m_page->m_pNetInfoRecordLogic = nullptr;
        m_page->onDelete();
        m_page->onDeleteAll();
        m_page->m_pNetInfoRecordLogic = m_store;
        m_page->m_pConnectionTblTreeWidget = nullptr;
        m_page->onDelete();
        m_page->onDeleteAll();
        m_page->showTableContextMenu(QPoint(1, 1));
        m_page->m_pConnectionTblTreeWidget = m_table;
        QVERIFY(state().messages.isEmpty());
        QCOMPARE(m_table->rowCount(), 2);
        QStringList expected;
        for (int round = 0; round < 2; ++round) {
            for (const char *slot : {"onDelete", "onDeleteAll"})
                expected
                    << QStringLiteral("Entered: PATH/ConnectionHistoryDlg: %1: LINE: TIME:").arg(QLatin1String(slot))
                    << QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: %1 LINE").arg(QLatin1String(slot));
        }
        expected << QStringLiteral("Start: PATH/ConnectionHistoryDlg showTableContextMenu: LINE: TIME:")
                 << QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: showTableContextMenu LINE");
        QCOMPARE(log.shapes(), expected);
    }

    // While the question is open

    void connectionThatEndsDuringTheQuestion()
    {
        openPage(3);
        select({1});
        state().answers = {s_ok};
        state().duringMessage = [this] {
            FakeStatistics::state().records.push_back(fixture::numbered(3));
            reload();
        };
        m_page->onDelete();
        QCOMPARE(FakeStatistics::removedPositions(), Positions({1}));
        QCOMPARE(names(), QStringList({QStringLiteral("apn-0"), QStringLiteral("apn-2"), QStringLiteral("apn-3")}));
    }

    void recordsThatMovedDuringTheQuestionStay()
    {
        openPage(4);
        select({1});
        state().answers = {s_ok};
        state().duringMessage = [this] {
            FakeStatistics::state().records.erase(FakeStatistics::state().records.begin());
            reload();
        };
        m_page->onDelete(); // row 1 is another record now: deleting it is not what was agreed to
        QVERIFY(FakeStatistics::removedPositions().empty());
        QCOMPARE(names(), QStringList({QStringLiteral("apn-1"), QStringLiteral("apn-2"), QStringLiteral("apn-3")}));
    }

    void secondQuestionThatIsAnsweredFirst()
    {
        openPage(4);
        select({1, 2});
        state().answers = {s_ok, s_ok};
        state().duringMessage = [this] {
            state().duringMessage = nullptr;
            m_page->onDelete();
        };
        m_page->onDelete();
        QCOMPARE(FakeStatistics::removedPositions(), Positions({2, 1})); // once
        QCOMPARE(names(), QStringList({QStringLiteral("apn-0"), QStringLiteral("apn-3")}));
    }

    void pageThatEndsDuringTheQuestion()
    {
        openPage(2);
        m_table->selectAll();
        state().answers = {s_ok, s_ok};
        state().duringMessage = [] { ConnectionHistoryDlg::Destroy(); };
        m_page->onDelete();
        QVERIFY(FakeStatistics::removedPositions().empty());
        openPage(0);
        m_page->onDeleteAll();
        QVERIFY(FakeStatistics::removedPositions().empty());
    }

    // The menu

    void menuHasTwoEntriesAndThreeKeys()
    {
        openPage(1);
        const MessageLog log;
        m_page->createTableRightClickAction();
        QMenu *const menu = m_page->m_pTableMenu;
        QCOMPARE(menu->parentWidget(), m_table);
        QCOMPARE(menu->actions(), QList<QAction *>({m_page->m_pDeleteAction, m_page->m_pDeleteAllAction}));
        QCOMPARE(m_page->m_pDeleteAction->text(), QStringLiteral("IDS_MENU_DELETE"));
        QCOMPARE(m_page->m_pDeleteAllAction->text(), QStringLiteral("IDS_MENU_DELETEALL"));
        for (const QAction *action : menu->actions()) {
            QVERIFY(action->isEnabled());
            QVERIFY(action->icon().isNull());
            QVERIFY(!action->isSeparator());
            QCOMPARE(action->parent(), m_page);
        }
        const QList<QPair<QShortcut *, Qt::Key>> keys = {{m_page->m_pMenuDeleteShortcut, Qt::Key_Delete},
                                                         {m_page->m_pMenuDShortcut, Qt::Key_D},
                                                         {m_page->m_pMenuAShortcut, Qt::Key_A}};
        for (const auto &key : keys) {
            QCOMPARE(key.first->key(), QKeySequence(key.second));
            QCOMPARE(key.first->parent(), menu);
            QCOMPARE(key.first->context(), Qt::WindowShortcut);
        }
        QCOMPARE(log.shapes().first(),
                 QStringLiteral("Enter: PATH/ConnectionHistoryDlg: createTableRightClickAction: LINE: TIME:"));
        QCOMPARE(log.shapes().last(),
                 QStringLiteral("Exit: PATH/ConnectionHistoryDlg: createTableRightClickAction: LINE: TIME:"));
    }

    void menuAnswersToClicksAndKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("entry");
        QTest::addColumn<QString>("question");
        const QString one = QStringLiteral("IDS_STR_DELETE");
        const QString all = QStringLiteral("IDS_STR_CLEARALL");
        QTest::newRow("Delete") << static_cast<int>(Qt::Key_Delete) << -1 << one;
        QTest::newRow("D") << static_cast<int>(Qt::Key_D) << -1 << one;
        QTest::newRow("A") << static_cast<int>(Qt::Key_A) << -1 << all;
        QTest::newRow("first entry") << 0 << 0 << one;
        QTest::newRow("second entry") << 0 << 1 << all;
        QTest::newRow("Escape") << static_cast<int>(Qt::Key_Escape) << -1 << QString();
        QTest::newRow("another letter") << static_cast<int>(Qt::Key_X) << -1 << QString();
    }
    void menuAnswersToClicksAndKeys()
    {
        QFETCH(int, key);
        QFETCH(int, entry);
        QFETCH(QString, question);
        openPage(3);
        select({1});
        state().answers = {s_ok};
        WhenMenuOpens menu([key, entry](QMenu *open) {
            if (entry >= 0)
                QTest::mouseClick(open, Qt::LeftButton, Qt::NoModifier,
                                  open->actionGeometry(open->actions().at(entry)).center());
            else
                QTest::keyClick(open, static_cast<Qt::Key>(key));
        });
        rightClickRow(1);
        QCOMPARE(menu.opened(), 1);
        QCOMPARE(state().messages.size(), question.isEmpty() ? 0 : 1);
        if (!question.isEmpty())
            QCOMPARE(state().messages.first().text, question);
    }

    void menuOpensAtTheCellAndLeavesTraces()
    {
        openPage(3);
        QPoint at;
        WhenMenuOpens menu([&at](QMenu *open) { at = open->pos(); });
        const QPoint pos = m_table->visualItemRect(m_table->item(1, 1)).center();
        const MessageLog log;
        m_page->showTableContextMenu(pos);
        QCOMPARE(at, m_table->viewport()->mapToGlobal(pos));
        QCOMPARE(log.shapes().first(),
                 QStringLiteral("Start: PATH/ConnectionHistoryDlg showTableContextMenu: LINE: TIME:"));
        QCOMPARE(log.shapes().last(),
                 QStringLiteral("End: PATH/ConnectionHistoryDlg showTableContextMenu: LINE: TIME:"));
    }

    void noMenuOutsideTheRows_data()
    {
        QTest::addColumn<QPoint>("pos");
        QTest::newRow("below the last row") << QPoint(10, 200);
        QTest::newRow("above") << QPoint(10, -1);
        QTest::newRow("below the table") << QPoint(10, 401);
        QTest::newRow("right of the last column") << QPoint(100000, 10);
        QTest::newRow("left") << QPoint(-1, 10);
    }
    void noMenuOutsideTheRows()
    {
        QFETCH(QPoint, pos);
        openPage(3);
        const MessageLog log;
        m_page->showTableContextMenu(pos);
        QVERIFY(!m_page->m_pTableMenu); // none is even built
        QCOMPARE(log.shapes(),
                 QStringList(QStringLiteral("Start: PATH/ConnectionHistoryDlg showTableContextMenu: LINE: TIME:")));
    }

    void menuHeightLimitIsTheWholeTables()
    {
        openPage(60); // rows reach beyond the table's lower edge
        WhenMenuOpens menu([](QMenu *) {});
        m_page->showTableContextMenu(QPoint(10, m_table->height() + 1));
        QVERIFY(!m_page->m_pTableMenu);
        QVERIFY(m_table->height() > m_table->viewport()->height());
        QVERIFY(m_table->indexAt(QPoint(10, m_table->height())).isValid());
        m_page->showTableContextMenu(QPoint(10, m_table->height())); // outside the viewport, and still accepted
        QCOMPARE(menu.opened(), 1);
    }

    void menusAccumulateAndEveryNewestOneWorks()
    {
        openPage(5);
        QList<QPointer<QMenu>> menus;
        WhenMenuOpens menu([this, &menus](QMenu *open) {
            menus.append(open);
            QCOMPARE(open, m_page->m_pTableMenu);
            QTest::mouseClick(open, Qt::LeftButton, Qt::NoModifier,
                              open->actionGeometry(m_page->m_pDeleteAction).center());
        });
        state().answers = {s_ok, s_ok, s_ok};
        for (int i = 0; i < 3; ++i) {
            select({0});
            rightClickRow(0);
        }
        QCOMPARE(menus.size(), 3);
        QCOMPARE(state().messages.size(), 3); // one question a click, although older actions stay connected
        QCOMPARE(m_table->rowCount(), 2);
        QCOMPARE(m_table->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly).size(), 3);
        QCOMPARE(m_page->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly).size(), 6);
        for (const QPointer<QMenu> &earlier : menus)
            QVERIFY(earlier && !earlier->isVisible());
    }

    void deleteKeyInTheTable()
    {
        openPage(3);
        state().answers = {s_ok};
        m_table->setFocus();
        QTest::keyClick(m_table, Qt::Key_Delete);
        QVERIFY(state().messages.isEmpty()); // nothing selected
        select({0, 1});
        QTest::keyClick(m_table, Qt::Key_Delete);
        QCOMPARE(state().messages.size(), 1);
        QCOMPARE(names(), QStringList(QStringLiteral("apn-2")));
        QTest::keyClick(m_table, Qt::Key_D); // a letter belongs to the menu alone
        QCOMPARE(state().messages.size(), 1);
    }

private:
    void openPage(int records)
    {
        FakeStatistics::state().records.clear();
        fixture::fillService(records);
        m_page = fixture::initialisedPage();
        m_table = m_page->m_pConnectionTblTreeWidget;
        m_store = m_page->m_pNetInfoRecordLogic;
        m_host.reset(new QWidget);
        m_host->resize(900, 500);
        m_host->show();
        QRect rect(0, 0, 900, 460);
        m_page->ShowWindow(m_host.get(), rect);
        m_host->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_host.get()));
    }

    /// Selects rows one click after the other.
    void select(const QList<int> &rows)
    {
        m_table->clearSelection();
        for (int row : rows)
            QTest::mouseClick(m_table->viewport(), Qt::LeftButton, Qt::ControlModifier,
                              m_table->visualItemRect(m_table->item(row, 1)).center());
        QCOMPARE(m_table->selectedItems().size(), rows.size() * 6);
    }

    void rightClickRow(int row)
    {
        emit m_table->customContextMenuRequested(m_table->visualItemRect(m_table->item(row, 1)).center());
    }

    /// What the end of a connection does to table and store.
    void reload()
    {
        m_page->ReleaseTable();
        m_store->m_hash.clear();
        m_store->GetAllConnectedRecords();
        m_page->populateTable();
    }

    QStringList names() const { return fixture::columnTexts(m_table, 0); }

    static QStringList serviceNames()
    {
        QStringList names;
        for (const _ZELK_ST_CONNRECORD &record : FakeStatistics::state().records)
            names.append(QString::fromUtf16(reinterpret_cast<const char16_t *>(record.profile)));
        return names;
    }

    std::unique_ptr<QWidget> m_host;
    ConnectionHistoryDlg *m_page = nullptr;
    QTableWidget *m_table = nullptr;
    NetInfoRecordLogic *m_store = nullptr;
};

QTEST_MAIN(TestDeletion)
#include "tst_deletion.moc"
