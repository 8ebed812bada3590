// The history table: rows in the service's order, cells to the letter, and the links through which records are freed.
#include "ProductFixture.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QSignalSpy>

#include <algorithm>
#include <random>

namespace {

ConnectionRecord *newRecord(int id, const QString &start = QStringLiteral("20240131235959"))
{
    ConnectionRecord *const record = new ConnectionRecord;
    record->nId = id;
    record->strApn = QStringLiteral("apn-%1").arg(id);
    record->strStartTime = start;
    record->strEndTime = QStringLiteral("20240201000058");
    record->strConnectedTime = QStringLiteral("00:00:59");
    record->strUploaded = QStringLiteral("1.00 KB");
    record->strDownloaded = QStringLiteral("2.00 MB");
    return record;
}

} // namespace

class TestHistoryTable : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fixture::reset();
        m_page = fixture::initialisedPage();
        m_table = m_page->m_pConnectionTblTreeWidget;
        m_store = m_page->m_pNetInfoRecordLogic;
    }
    void cleanup() { fixture::reset(); }

    void rowsAreLinkedToTheirRecordsInOrder()
    {
        putIntoStore({0, 1, 2});
        m_page->populateTable();
        QCOMPARE(m_table->rowCount(), 3);
        for (int row = 0; row < 3; ++row) {
            QCOMPARE(fixture::linkedRecord(m_table, row), m_store->m_hash.value(row));
            QCOMPARE(fixture::linkedRecord(m_table, row)->nId, row);
            for (int column = 1; column < 6; ++column) {
                const QVariant link = m_table->item(row, column)->data(Qt::UserRole);
                QCOMPARE(link, QVariant(0)); // an int, and zero
            }
        }
    }

    void rowsAscendByKeyWhateverTheHashSays()
    {
        QList<int> ids;
        for (int i = 0; i < 500; ++i)
            ids.append(i * 7 % 501 * 3);
        putIntoStore(ids);
        m_page->populateTable();
        std::sort(ids.begin(), ids.end());
        for (int row = 0; row < ids.size(); ++row)
            QCOMPARE(fixture::linkedRecord(m_table, row)->nId, ids.at(row));
    }

    void cells()
    {
        putIntoStore({4});
        m_page->populateTable();
        const QVariant values[] = {QStringLiteral("apn-4"),
                                   QDateTime(QDate(2024, 1, 31), QTime(23, 59, 59)),
                                   QDateTime(QDate(2024, 2, 1), QTime(0, 0, 58)),
                                   QStringLiteral("00:00:59"),
                                   QStringLiteral("1.00 KB"),
                                   QStringLiteral("2.00 MB")};
        for (int column = 0; column < 6; ++column) {
            const QTableWidgetItem *const item = m_table->item(0, column);
            QCOMPARE(item->data(Qt::DisplayRole), values[column]);
            QCOMPARE(item->data(Qt::DisplayRole).userType(), values[column].userType());
            QCOMPARE(item->data(Qt::TextAlignmentRole).toInt(), 1);
            QCOMPARE(item->flags(), QTableWidgetItem().flags() & ~Qt::ItemIsEditable);
            QVERIFY(item->flags() & Qt::ItemIsSelectable);
            QVERIFY(item->flags() & Qt::ItemIsEnabled);
            QCOMPARE(item->type(), 0);
            for (int role : {Qt::ToolTipRole, Qt::DecorationRole, Qt::FontRole, Qt::ForegroundRole, Qt::BackgroundRole})
                QVERIFY(!item->data(role).isValid());
        }
    }

    void malformedTimesGiveEmptyCells_data()
    {
        QTest::addColumn<QString>("stamp");
        QTest::newRow("empty") << QString();
        QTest::newRow("word") << QStringLiteral("yesterday");
        QTest::newRow("too short") << QStringLiteral("2024013123595");
        QTest::newRow("no such day") << QStringLiteral("20240231000000");
    }
    void malformedTimesGiveEmptyCells()
    {
        QFETCH(QString, stamp);
        m_store->m_hash.insert(0, newRecord(0, stamp));
        m_page->populateTable();
        QVERIFY(!m_table->item(0, 1)->data(Qt::DisplayRole).toDateTime().isValid());
        QCOMPARE(m_table->item(0, 1)->text(), QString());
        QVERIFY(m_table->item(0, 2)->data(Qt::DisplayRole).toDateTime().isValid());
    }

    void timeCellsAreOrdinaryCells()
    {
        putIntoStore({0});
        m_page->populateTable();
        QTableWidgetItem *const cell = m_table->item(0, 1);
        const QDateTime value(QDate(2024, 1, 31), QTime(23, 59, 59));
        QCOMPARE(m_table->model()->index(0, 1).data(Qt::EditRole).toDateTime(), value);
        QCOMPARE(cell->text(), QVariant(value).toString());
        const std::unique_ptr<QTableWidgetItem> copy(cell->clone());
        QCOMPARE(copy->data(Qt::DisplayRole), QVariant(value));
        QCOMPARE(copy->data(Qt::TextAlignmentRole).toInt(), 1);
        cell->setData(Qt::DisplayRole, QStringLiteral("replaced"));
        QCOMPARE(cell->text(), QStringLiteral("replaced"));
        const ZoneSwitch zone("Europe/Berlin");
        QCOMPARE(m_table->item(0, 2)->data(Qt::DisplayRole).toDateTime().timeSpec(), Qt::LocalTime);
    }

    void rowsAreFourteenPixelsHigh()
    {
        QList<int> ids;
        for (int i = 0; i < 40; ++i)
            ids.append(i);
        putIntoStore(ids);
        m_page->populateTable();
        for (int row = 0; row < 40; ++row)
            QCOMPARE(m_table->rowHeight(row), 14);
        QCOMPARE(m_table->verticalHeader()->length(), 40 * 14);
    }

    void tableScrollsByPixelsSideways()
    {
        m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
        m_page->populateTable();
        QCOMPARE(m_table->horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    }

    void emptyStoreLeavesTheHeaderAlone()
    {
        putIntoStore({0, 1});
        m_page->populateTable();
        m_page->ReleaseTable();
        m_store->m_hash.clear();
        m_page->populateTable();
        QCOMPARE(m_table->rowCount(), 0);
        QCOMPARE(m_table->columnCount(), 6);
        QCOMPARE(m_table->horizontalHeaderItem(0)->text(), QStringLiteral("IDS_LIST_APN"));
    }

    void fewerRecordsRemoveRowsAndOverwriteTheRest()
    {
        putIntoStore({0, 1, 2, 3});
        m_page->populateTable();
        m_page->ReleaseTable();
        m_store->m_hash.clear();
        putIntoStore({7, 9});
        m_page->populateTable();
        QCOMPARE(fixture::columnTexts(m_table, 0), QStringList({QStringLiteral("apn-7"), QStringLiteral("apn-9")}));
        QCOMPARE(fixture::linkedRecord(m_table, 1), m_store->m_hash.value(9));
    }

    void rowsAreFilledOneCellAfterTheOther()
    {
        putIntoStore({0, 1});
        QSignalSpy changed(m_table->model(), &QAbstractItemModel::dataChanged);
        m_page->populateTable();
        QCOMPARE(changed.count(), 12);
        for (int i = 0; i < 12; ++i) {
            const QModelIndex index = changed.at(i).at(0).toModelIndex();
            QCOMPARE(index.row(), i / 6);
            QCOMPARE(index.column(), i % 6);
        }
    }

    void nothingSortsTheRows()
    {
        QVERIFY(!m_table->isSortingEnabled());
        m_store->m_hash.insert(0, newRecord(0, QStringLiteral("20250101000000")));
        m_store->m_hash.insert(1, newRecord(1, QStringLiteral("20200101000000")));
        m_page->populateTable();
        QCOMPARE(fixture::linkedRecord(m_table, 0)->nId, 0);
    }

    void fillingStopsAtTheFirstMissingRecord()
    {
        putIntoStore({0, 1, 2, 3});
        delete m_store->m_hash.value(2);
        m_store->m_hash.insert(2, nullptr);
        const MessageLog log;
        m_page->populateTable();
        QCOMPARE(m_table->rowCount(), 4);
        QVERIFY(m_table->item(1, 5));
        QVERIFY(!m_table->item(2, 0));
        QVERIFY(!m_table->item(3, 0));
        QCOMPARE(log.shapes().last(),
                 QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: populateTable LINE"));
        delete m_store->m_hash.take(3);
    }

    void missingStoreOrTableIsLoggedOnly()
    {
        putIntoStore({0});
        const MessageLog log;
        m_page->m_pNetInfoRecordLogic = nullptr;
        m_page->populateTable();
        m_page->m_pNetInfoRecordLogic = m_store;
        QCOMPARE(m_table->rowCount(), 0);
        m_page->m_pConnectionTblTreeWidget = nullptr;
        m_page->populateTable();
        m_page->PopulateTableRowOfConnectionRecord(m_store->m_hash.value(0), 0);
        m_page->m_pConnectionTblTreeWidget = m_table;
        m_table->setRowCount(1);
        m_page->PopulateTableRowOfConnectionRecord(nullptr, 0);
        QVERIFY(!m_table->item(0, 0));
        QStringList expected;
        for (const char *function : {"populateTable", "populateTable", "PopulateTableRowOfConnectionRecord",
                                     "PopulateTableRowOfConnectionRecord"}) {
            expected
                << QStringLiteral("Start File: PATH/ConnectionHistoryDlg %1: LINE: TIME:").arg(QLatin1String(function))
                << QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: %1 LINE").arg(QLatin1String(function));
        }
        QCOMPARE(log.shapes(), expected);
        m_table->setRowCount(0);
        delete m_store->m_hash.take(0);
    }

    void releaseFreesEveryRecordAndLeavesTheRows()
    {
        putIntoStore({0, 1, 2});
        m_page->populateTable();
        const ConnectionRecord *const link = fixture::linkedRecord(m_table, 1);
        const Deletions deletions(m_store->m_hash);
        m_page->ReleaseTable();
        QCOMPARE(deletions.ids(), QList<int>({0, 1, 2}));
        QCOMPARE(m_table->rowCount(), 3);
        QCOMPARE(fixture::linkedRecord(m_table, 1), link); // not reset
        QCOMPARE(m_store->m_hash.size(), 3);               // nor taken out
        m_table->setRowCount(0);
    }

    void releaseStopsAtTheFirstRowWithoutACell()
    {
        putIntoStore({0, 1, 2, 3});
        m_page->populateTable();
        delete m_table->takeItem(2, 0);
        const Deletions deletions(m_store->m_hash);
        const MessageLog log;
        m_page->ReleaseTable();
        QCOMPARE(deletions.ids(), QList<int>({0, 1}));
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Start File: PATH/ConnectionHistoryDlg ReleaseTable: LINE: TIME:"),
                              QStringLiteral("Arg is NULL: TIME: PATH/ConnectionHistoryDlg: ReleaseTable LINE")}));
        delete m_store->m_hash.value(2);
        delete m_store->m_hash.value(3);
        m_table->setRowCount(0);
    }

    void releasePassesOverRowsWithoutARecord()
    {
        putIntoStore({0, 1});
        m_page->populateTable();
        m_table->item(0, 0)->setData(Qt::UserRole, 0);
        const Deletions deletions(m_store->m_hash);
        m_page->ReleaseTable();
        QCOMPARE(deletions.ids(), QList<int>({1}));
        delete m_store->m_hash.value(0);
        m_table->setRowCount(0);
    }

    void releaseWithoutAStoreFreesNothing()
    {
        putIntoStore({0, 1});
        m_page->populateTable();
        const Deletions deletions(m_store->m_hash);
        m_page->m_pNetInfoRecordLogic = nullptr;
        m_page->ReleaseTable();
        m_page->m_pNetInfoRecordLogic = m_store;
        QCOMPARE(deletions.ids(), QList<int>());
        m_page->m_pConnectionTblTreeWidget = nullptr;
        m_page->ReleaseTable();
        m_page->m_pConnectionTblTreeWidget = m_table;
        QCOMPARE(deletions.ids(), QList<int>());
    }

    void releaseFreesWhatTheCellsSayNotTheStore()
    {
        putIntoStore({0});
        m_page->populateTable();
        ConnectionRecord *const unshown = newRecord(1);
        m_store->m_hash.insert(1, unshown);
        const Deletions deletions(m_store->m_hash);
        m_page->ReleaseTable();
        QCOMPARE(deletions.ids(), QList<int>({0}));
        delete unshown;
        m_table->setRowCount(0);
    }

    void traceOfFillingAndReleasing()
    {
        putIntoStore({0});
        const MessageLog log;
        m_page->populateTable();
        m_page->ReleaseTable();
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Start File: PATH/ConnectionHistoryDlg populateTable: LINE: TIME:"),
                              QStringLiteral("Start File: PATH/ConnectionHistoryDlg "
                                             "PopulateTableRowOfConnectionRecord: LINE: TIME:"),
                              QStringLiteral("End File: PATH/ConnectionHistoryDlg: "
                                             "PopulateTableRowOfConnectionRecord: LINE: TIME:"),
                              QStringLiteral("End File: PATH/ConnectionHistoryDlg: populateTable: LINE: TIME:"),
                              QStringLiteral("Start File: PATH/ConnectionHistoryDlg ReleaseTable: LINE: TIME:"),
                              QStringLiteral("End File: PATH/ConnectionHistoryDlg ReleaseTable: LINE: TIME:")}));
        m_table->setRowCount(0);
    }

private:
    /// Tells which records have been deleted: a deleted record has given up its share of the text that it was given.
    class Deletions
    {
    public:
        explicit Deletions(const QHash<int, ConnectionRecord *> &records)
        {
            QList<int> keys = records.keys();
            std::sort(keys.begin(), keys.end());
            for (int key : std::as_const(keys)) {
                if (!records.value(key))
                    continue;
                m_ids.append(key);
                m_texts.append(QString(20, QLatin1Char('x')));
                records.value(key)->strSpare = m_texts.last();
            }
        }
        QList<int> ids() const
        {
            QList<int> deleted;
            for (int i = 0; i < m_ids.size(); ++i) {
                if (m_texts.at(i).isDetached())
                    deleted.append(m_ids.at(i));
            }
            return deleted;
        }

    private:
        QList<int> m_ids;
        QList<QString> m_texts;
    };

    void putIntoStore(const QList<int> &ids)
    {
        for (int id : ids)
            m_store->m_hash.insert(id, newRecord(id));
    }

    ConnectionHistoryDlg *m_page = nullptr;
    QTableWidget *m_table = nullptr;
    NetInfoRecordLogic *m_store = nullptr;
};

QTEST_MAIN(TestHistoryTable)
#include "tst_historytable.moc"
