// A machine short of memory: each single object that the page cannot get ends the operation with its trace line, and
// the host's process lives on.
#include "ProductFixture.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QShortcut>
#include <QVBoxLayout>

#include <cstdlib>
#include <new>

namespace {

int s_allowed = -1; ///< Allocations that may still succeed; -1: all.

} // namespace

// Only the page's own objects are made with the allocation that may answer null.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    if (s_allowed == 0)
        return nullptr;
    if (s_allowed > 0)
        --s_allowed;
    try {
        return ::operator new(size);
    } catch (...) {
        return nullptr;
    }
}

class TestOutOfMemory : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fixture::reset();
        fixture::fillService(2);
    }
    void cleanup()
    {
        s_allowed = -1;
        fixture::reset();
    }

    void layouts_data() { count(2); }
    void layouts()
    {
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        QCOMPARE(lastLineOf([page] { page->Init(); }), nullLine("Init"));
        QVERIFY(!page->m_pConnectionHistoryWidget->layout());
        QVERIFY(FakeStatistics::state().calls.empty());
        delete page->m_pGridDelegate;
        delete page->m_pNoteLabel;
    }

    void headerItems_data() { count(6); }
    void headerItems()
    {
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        FakeHostUi::state().trCalls.clear();
        QCOMPARE(lastLineOf([page] { page->uiSetText(); }), nullLine("uiSetText"));
        QVERIFY(FakeHostUi::state().trCalls.isEmpty());
        QCOMPARE(page->m_pConnectionTblTreeWidget->horizontalHeaderItem(5)->text(),
                 QStringLiteral("IDS_LIST_DOWNLOADED"));
    }

    void cells_data() { count(6); }
    void cells()
    {
        QFETCH(int, allowed);
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QTableWidget *const table = page->m_pConnectionTblTreeWidget;
        table->setRowCount(3);
        ConnectionRecord *const record = page->m_pNetInfoRecordLogic->m_hash.value(0);
        QCOMPARE(lastLineOf([page, record] { page->PopulateTableRowOfConnectionRecord(record, 2); }),
                 nullLine("PopulateTableRowOfConnectionRecord"));
        for (int column = 0; column < 6; ++column)
            QCOMPARE(table->item(2, column) != nullptr, column < allowed); // those already placed stay
        table->setRowCount(2);
    }

    void menuPieces_data() { count(6); }
    void menuPieces()
    {
        QFETCH(int, allowed);
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        QCOMPARE(lastLineOf([page] { page->createTableRightClickAction(); }), nullLine("createTableRightClickAction"));
        QCOMPARE(page->m_pTableMenu != nullptr, allowed > 0);
        if (page->m_pTableMenu)
            QCOMPARE(page->m_pTableMenu->actions().size(), allowed == 5 ? 1 : 0);
        QCOMPARE(page->m_pMenuDeleteShortcut != nullptr, allowed > 1);
    }

    void summaryPieces_data() { count(13); }
    void summaryPieces()
    {
        QFETCH(int, allowed);
        ConnectionHistoryDlg *const page = fixture::initialisedPage();
        FakeStatistics::state().last = fixture::numbered(1);
        QWidget parent;
        QCOMPARE(lastLineOf([page, &parent] { page->ShowDialogOfLastConnectedRecord(&parent); }),
                 nullLine("ShowDialogOfLastConnectedRecord"));
        QCOMPARE(page->m_pLastConnectionDlg != nullptr, allowed > 0);
        if (page->m_pLastConnectionDlg)
            QVERIFY(!page->m_pLastConnectionDlg->isVisible());
        s_allowed = -1; // memory is back: the next request starts afresh
        page->ShowDialogOfLastConnectedRecord(&parent);
        QVERIFY(page->m_pLastConnectionDlg->isVisible());
        ConnectionHistoryDlg::Destroy();
    }

    void pageItself_data() { count(5); }
    void pageItself()
    {
        QFETCH(int, allowed);
        s_allowed = allowed;
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        s_allowed = -1;
        QWidget *const made = page->m_pConnectionHistoryWidget;
        QCOMPARE(made != nullptr, allowed > 0);
        const MessageLog log;
        page->Init(); // says what is missing, or does without it
        if (allowed < 5 && allowed != 2)
            QVERIFY(!log.lines.filter(QStringLiteral("Arg is NULL")).isEmpty());
        QRect rect(0, 0, 10, 10);
        QCOMPARE(page->ShowWindow(nullptr, rect), allowed > 0);
        page->Hide();
        ConnectionHistoryDlg::Destroy();
    }

private:
    /// One row for each number of allocations that succeed before the one that fails.
    static void count(int allocations)
    {
        QTest::addColumn<int>("allowed");
        for (int allowed = 0; allowed < allocations; ++allowed)
            QTest::addRow("%d succeed", allowed) << allowed;
    }

    /// The last trace line of \a operation when memory runs out as the test's row says.
    template <typename Operation> static QString lastLineOf(Operation operation)
    {
        const MessageLog log;
        QFETCH(int, allowed);
        s_allowed = allowed;
        operation();
        s_allowed = -1;
        return log.shapes().isEmpty() ? QString() : log.shapes().last();
    }

    static QString nullLine(const char *function)
    {
        return QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: %1 LINE").arg(QLatin1String(function));
    }
};

QTEST_MAIN(TestOutOfMemory)
#include "tst_outofmemory.moc"
