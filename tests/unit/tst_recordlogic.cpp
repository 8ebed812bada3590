// The record store: which service calls it makes, in which order, and what it makes of their answers.
#include "ProductFixture.h"

#include <limits>

using FakeStatistics::Call;
using FakeStatistics::Function;
using FakeStatistics::state;

namespace {

ConnectionRecord lastOf(const _ZELK_ST_CONNRECORD &raw)
{
    state().last = raw;
    NetInfoRecordLogic::Instance()->GetLastConnectedRecord();
    return NetInfoRecordLogic::Instance()->m_lastRecord;
}

QString uploadedOf(const char *bytes)
{
    return lastOf(FakeStatistics::record(u"", "0", "0", "0", bytes, "0")).strUploaded;
}

QString durationOf(const char *seconds)
{
    return lastOf(FakeStatistics::record(u"", "0", "0", seconds, "0", "0")).strConnectedTime;
}

QString startOf(const char *seconds)
{
    return lastOf(FakeStatistics::record(u"", seconds, "0", "0", "0", "0")).strStartTime;
}

bool isEmptyNotNull(const QString &text)
{
    return text.isEmpty() && !text.isNull();
}

} // namespace

class TestRecordLogic : public QObject
{
    Q_OBJECT

private slots:
    void init() { fixture::reset(); }
    void cleanup()
    {
        if (NetInfoRecordLogic::m_pNetInfoRecordLogicInst)
            qDeleteAll(NetInfoRecordLogic::m_pNetInfoRecordLogicInst->m_hash);
        fixture::reset();
    }

    // The store

    void instanceIsOneObjectUntilDestroyed()
    {
        QVERIFY(!NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        QVERIFY(store);
        QCOMPARE(NetInfoRecordLogic::Instance(), store);
        QCOMPARE(NetInfoRecordLogic::m_pNetInfoRecordLogicInst, store);
        QVERIFY(store->m_hash.isEmpty());
        QVERIFY(store->m_vecAccumulate.isEmpty());
        QCOMPARE(store->m_lastRecord.nId, -1);
        QVERIFY(state().calls.empty());
    }

    void destroyTwice()
    {
        NetInfoRecordLogic::Instance();
        NetInfoRecordLogic::Destroy();
        QVERIFY(!NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
        NetInfoRecordLogic::Destroy();
        QVERIFY(!NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
    }

    void destroyLeavesTheRecords()
    {
        fixture::fillService(1);
        NetInfoRecordLogic::Instance()->GetAllConnectedRecords();
        ConnectionRecord *const record = NetInfoRecordLogic::Instance()->m_hash.value(0);
        NetInfoRecordLogic::Destroy();
        QCOMPARE(record->strApn, QStringLiteral("apn-0")); // still ours to read and to delete
        delete record;
    }

    // Loading

    void loadConvertsAllInOrderAndReleases()
    {
        fixture::fillService(3);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        QVERIFY(store->GetAllConnectedRecords());
        QCOMPARE(store->m_hash.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QVERIFY(store->m_hash.value(i));
            QCOMPARE(store->m_hash.value(i)->nId, i);
            QCOMPARE(store->m_hash.value(i)->strApn, QStringLiteral("apn-%1").arg(i));
        }
        QCOMPARE(state().calls.size(), std::size_t(2));
        QVERIFY(state().calls.at(0) == (Call{Function::GetAll, 0, nullptr, 0, false})); // both cleared before the call
        QCOMPARE(state().calls.at(1).function, Function::Release);
        QVERIFY(state().calls.at(1).records);
        QVERIFY(state().handedOut.empty());
    }

    void loadOfNothingStillReleases()
    {
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        QVERIFY(store->GetAllConnectedRecords());
        QVERIFY(store->m_hash.isEmpty());
        QCOMPARE(FakeStatistics::count(Function::Release), 1);
        QVERIFY(state().handedOut.empty());
    }

    void failedLoadConvertsNothingAndReleasesNull()
    {
        fixture::fillService(2);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        QVERIFY(store->GetAllConnectedRecords());
        const QHash<int, ConnectionRecord *> before = store->m_hash;
        for (long code : {1L, -1L, 3L}) {
            state().calls.clear();
            state().getAllCode = code;
            QVERIFY(!store->GetAllConnectedRecords());
            QCOMPARE(store->m_hash, before);
            QCOMPARE(state().calls.size(), std::size_t(2));
            QVERIFY(state().calls.at(1) == (Call{Function::Release, 0, nullptr, 0, false}));
        }
    }

    void secondLoadReplacesWithoutClearing()
    {
        fixture::fillService(3);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        store->GetAllConnectedRecords();
        const QHash<int, ConnectionRecord *> first = store->m_hash;
        state().records.pop_back();
        store->GetAllConnectedRecords();
        QCOMPARE(store->m_hash.size(), 3);
        QVERIFY(store->m_hash.value(0) != first.value(0));
        QVERIFY(store->m_hash.value(1) != first.value(1));
        QCOMPARE(store->m_hash.value(2), first.value(2));
        QCOMPARE(first.value(0)->strApn, QStringLiteral("apn-0")); // replaced, not deleted
        delete first.value(0);
        delete first.value(1);
    }

    void recordOfNoRawRecord()
    {
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        const MessageLog log;
        store->populateSDKtoUIStructure(4, nullptr);
        QVERIFY(store->m_hash.isEmpty());
        QCOMPARE(
            log.shapes(),
            QStringList({QStringLiteral("Enter: TIME: PATH/NetInfoRecordLogic: populateSDKtoUIStructure LINE"),
                         QStringLiteral("Arg is NULL: TIME: PATH/NetInfoRecordLogic: populateSDKtoUIStructure LINE")}));
    }

    void recordGoesUnderItsIndex()
    {
        _ZELK_ST_CONNRECORD raw = fixture::numbered(5);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        store->populateSDKtoUIStructure(42, &raw);
        QCOMPARE(store->m_hash.keys(), QList<int>({42}));
        QCOMPARE(store->m_hash.value(42)->nId, 42);
        QCOMPARE(store->m_hash.value(42)->strApn, QStringLiteral("apn-5"));
    }

    // The last connection

    void lastConnection()
    {
        state().last = fixture::numbered(7);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        store->m_lastRecord.nId = 12;
        store->m_lastRecord.strSpare = QStringLiteral("kept");
        QVERIFY(store->GetLastConnectedRecord());
        QCOMPARE(state().calls.size(), std::size_t(1));
        QVERIFY(state().calls.at(0) == (Call{Function::GetLast, 0, nullptr, 0, true}));
        QCOMPARE(store->m_lastRecord.nId, 12);
        QCOMPARE(store->m_lastRecord.strSpare, QStringLiteral("kept"));
        QCOMPARE(store->m_lastRecord.strApn, QStringLiteral("apn-7"));
        QCOMPARE(store->m_lastRecord.strStartTime, QStringLiteral("20240101190000"));
        QCOMPARE(store->m_lastRecord.strEndTime, QStringLiteral("20240101190100"));
        QCOMPARE(store->m_lastRecord.strConnectedTime, QStringLiteral("00:01:00"));
        QCOMPARE(store->m_lastRecord.strUploaded, QStringLiteral("7.00 KB"));
        QCOMPARE(store->m_lastRecord.strDownloaded, QStringLiteral("14.00 KB"));
        QCOMPARE(store->m_lastRecord.strAux1, QStringLiteral("exact"));
        QCOMPARE(store->m_lastRecord.strAux2, QStringLiteral("user"));
        QVERIFY(store->m_hash.isEmpty());
    }

    void failedLastConnectionKeepsTheEarlierOne()
    {
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        state().last = fixture::numbered(7);
        state().getLastCode = 2;
        QVERIFY(!store->GetLastConnectedRecord());
        QVERIFY(isEmptyNotNull(store->m_lastRecord.strUploaded));
        state().getLastCode = 0;
        QVERIFY(store->GetLastConnectedRecord());
        state().getLastCode = -1;
        state().last = fixture::numbered(9);
        QVERIFY(!store->GetLastConnectedRecord());
        QCOMPARE(store->m_lastRecord.strApn, QStringLiteral("apn-7"));
        QCOMPARE(FakeStatistics::count(Function::Release), 0);
    }

    // Removing

    void deleteRecordAsksOnceAndLeavesTheHash()
    {
        fixture::fillService(4);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        store->GetAllConnectedRecords();
        const QHash<int, ConnectionRecord *> before = store->m_hash;
        QVERIFY(store->DeleteRecord(2));
        QCOMPARE(FakeStatistics::removedPositions(), std::vector<int>({2}));
        QCOMPARE(state().records.size(), std::size_t(3));
        QCOMPARE(QString::fromUtf16(reinterpret_cast<const char16_t *>(state().records.at(2).profile)),
                 QStringLiteral("apn-3"));
        QCOMPARE(store->m_hash, before);
    }

    void deleteRecordTellsFailure()
    {
        for (long code : {1L, -5L}) {
            state().removeCodes = {code};
            QVERIFY(!NetInfoRecordLogic::Instance()->DeleteRecord(0));
        }
        QVERIFY(!NetInfoRecordLogic::Instance()->DeleteRecord(17)); // the service judges, not the store
        QCOMPARE(FakeStatistics::removedPositions(), std::vector<int>({0, 0, 17}));
    }

    void deleteAllRemovesTheFirstEachTime()
    {
        fixture::fillService(3);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        store->GetAllConnectedRecords();
        const QHash<int, ConnectionRecord *> before = store->m_hash;
        QVERIFY(store->DeleteAll());
        QCOMPARE(FakeStatistics::removedPositions(), std::vector<int>({0, 0, 0}));
        QCOMPARE(store->m_hash, before);
        QVERIFY(state().records.empty());
    }

    void deleteAllOfAnEmptyStoreAsksNothing()
    {
        fixture::fillService(3); // the service's records are not the store's until it has loaded them
        QVERIFY(!NetInfoRecordLogic::Instance()->DeleteAll());
        QVERIFY(FakeStatistics::removedPositions().empty());
    }

    void deleteAllIsTrueOnceAnyRemovalWorked_data()
    {
        QTest::addColumn<QList<int>>("codes");
        QTest::addColumn<bool>("result");
        QTest::newRow("all fail") << QList<int>({1, 1, 1}) << false;
        QTest::newRow("first works") << QList<int>({0, 1, 1}) << true;
        QTest::newRow("middle works") << QList<int>({1, 0, 1}) << true;
        QTest::newRow("last works") << QList<int>({1, 1, 0}) << true;
    }
    void deleteAllIsTrueOnceAnyRemovalWorked()
    {
        QFETCH(QList<int>, codes);
        QFETCH(bool, result);
        fixture::fillService(3);
        NetInfoRecordLogic::Instance()->GetAllConnectedRecords();
        for (int code : codes)
            state().removeCodes.push_back(code);
        QCOMPARE(NetInfoRecordLogic::Instance()->DeleteAll(), result);
        QCOMPARE(FakeStatistics::removedPositions(), std::vector<int>({0, 0, 0})); // never stops early
    }

    // Conversion

    void freshRecord()
    {
        const ConnectionRecord record;
        QCOMPARE(record.nId, -1);
        for (const QString *text :
             {&record.strApn, &record.strStartTime, &record.strEndTime, &record.strSpare, &record.strUploaded,
              &record.strDownloaded, &record.strAux1, &record.strAux2, &record.strConnectedTime})
            QVERIFY(isEmptyNotNull(*text));
    }

    void recordOfZeros()
    {
        const ConnectionRecord record = lastOf(_ZELK_ST_CONNRECORD());
        QVERIFY(record.strApn.isEmpty());
        QCOMPARE(record.strStartTime, QStringLiteral("19700101000000"));
        QCOMPARE(record.strEndTime, QStringLiteral("19700101000000"));
        QCOMPARE(record.strConnectedTime, QStringLiteral("00:00:00"));
        QCOMPARE(record.strUploaded, QStringLiteral("0.00 KB"));
        QCOMPARE(record.strDownloaded, QStringLiteral("0.00 KB"));
        QVERIFY(record.strAux1.isEmpty());
        QVERIFY(record.strAux2.isEmpty());
        QVERIFY(record.strSpare.isEmpty());
    }

    void stampsAreLocalTime()
    {
        const ZoneSwitch zone("Europe/Berlin");
        QCOMPARE(startOf("0"), QStringLiteral("19700101010000"));
        QCOMPARE(startOf("1719835200"), QStringLiteral("20240701140000")); // summer time
        QCOMPARE(startOf("1711846799"), QStringLiteral("20240331015959")); // the last second before it
        QCOMPARE(startOf("1711846800"), QStringLiteral("20240331030000")); // and the first of it
    }

    void stampsOfOddNumbers_data()
    {
        QTest::addColumn<QByteArray>("seconds");
        QTest::addColumn<QString>("stamp");
        QTest::newRow("no number") << QByteArray("soon") << QStringLiteral("19700101000000");
        QTest::newRow("number and more") << QByteArray("12x") << QStringLiteral("19700101000000");
        QTest::newRow("before 1970") << QByteArray("-1") << QStringLiteral("19691231235959");
        QTest::newRow("largest") << QByteArray("2147483647") << QStringLiteral("20380119031407");
        QTest::newRow("smallest") << QByteArray("-2147483648") << QStringLiteral("19011213204552");
        QTest::newRow("beyond 32 bits") << QByteArray("2147483648") << QStringLiteral("19700101000000");
    }
    void stampsOfOddNumbers()
    {
        QFETCH(QByteArray, seconds);
        QFETCH(QString, stamp);
        QCOMPARE(startOf(seconds.constData()), stamp);
        QCOMPARE(lastOf(FakeStatistics::record(u"", "0", seconds.toStdString(), "0", "0", "0")).strEndTime, stamp);
    }

    void durations_data()
    {
        QTest::addColumn<QByteArray>("seconds");
        QTest::addColumn<QString>("text");
        const char *const rows[][2] = {{"0", "00:00:00"},      {"59", "00:00:59"},      {"3599", "00:59:59"},
                                       {"3600", "01:00:00"},   {"86399", "23:59:59"},   {"86400", "00:00:00"},
                                       {"90061", "01:01:01"},  {"-1", "23:59:59"},      {"-86400", "00:00:00"},
                                       {"-86401", "23:59:59"}, {"2147483", "20:31:23"}, {"long", "00:00:00"},
                                       {"1.5", "00:00:00"}};
        for (const auto &row : rows)
            QTest::newRow(row[0]) << QByteArray(row[0]) << QString::fromLatin1(row[1]);
    }
    void durations()
    {
        QFETCH(QByteArray, seconds);
        QFETCH(QString, text);
        QCOMPARE(durationOf(seconds.constData()), text);
    }

    void amounts_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const char *const rows[][2] = {{"0", "0.00 KB"},
                                       {"128", "0.12 KB"}, // an exact tie, to the even neighbour
                                       {"384", "0.38 KB"}, // likewise
                                       {"123.5", "0.12 KB"},
                                       {"1000", "0.98 KB"},
                                       {"1048575", "1024.00 KB"},
                                       {"1048576", "1.00 MB"},
                                       {"1073741823", "1024.00 MB"},
                                       {"1073741824", "1.00 GB"},
                                       {"1099511627776", "1024.00 GB"},
                                       {"5497558138880", "5120.00 GB"},
                                       {"-2097152", "-2048.00 KB"},
                                       {"nan", "nan KB"},
                                       {"much", "0.00 KB"},
                                       {"1,5", "0.00 KB"},
                                       {" 2048 ", "2.00 KB"},
                                       {"1e6", "976.56 KB"}};
        for (const auto &row : rows)
            QTest::newRow(row[0]) << QByteArray(row[0]) << QString::fromLatin1(row[1]);
    }
    void amounts()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(uploadedOf(bytes.constData()), text);
        QCOMPARE(lastOf(FakeStatistics::record(u"", "0", "0", "0", "0", bytes.toStdString())).strDownloaded, text);
    }

    void transformUnitsTakesKilobytes()
    {
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        QCOMPARE(store->TransformUnits(1023.994), QStringLiteral("1023.99 KB"));
        QCOMPARE(store->TransformUnits(1024), QStringLiteral("1.00 MB"));
        QCOMPARE(store->TransformUnits(1048575.999), QStringLiteral("1024.00 MB"));
        QCOMPARE(store->TransformUnits(1048576), QStringLiteral("1.00 GB"));
        QCOMPARE(store->TransformUnits(-5000000), QStringLiteral("-5000000.00 KB"));
        QCOMPARE(store->TransformUnits(std::numeric_limits<double>::quiet_NaN()), QStringLiteral("nan KB"));
        QCOMPARE(store->TransformUnits(std::numeric_limits<double>::infinity()), QStringLiteral("inf GB"));
    }

    void profileNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << QString();
        QTest::newRow("127 units") << QString(127, QLatin1Char('n'));
        QTest::newRow("not Latin") << QString::fromUtf8("Интернет-接続");
        QTest::newRow("outside the first plane") << QString::fromUtf8("📶 mobile");
        QTest::newRow("spaces") << QStringLiteral("  a  b  ");
    }
    void profileNames()
    {
        QFETCH(QString, name);
        const ConnectionRecord record = lastOf(FakeStatistics::record(name.toStdU16String(), "0", "0", "0", "0", "0"));
        QCOMPARE(record.strApn, name);
    }

    void fullSlotsAreReadWhole()
    {
        const std::string full(31, '1');
        const std::string word(31, 'w');
        const ConnectionRecord record = lastOf(FakeStatistics::record(u"", full, full, full, full, full, word, word));
        QCOMPARE(record.strStartTime, QStringLiteral("19700101000000")); // too long for a number of 32 bits
        QCOMPARE(record.strConnectedTime, QStringLiteral("00:00:00"));
        QVERIFY(record.strUploaded.endsWith(QLatin1String(".00 GB")));
        QCOMPARE(record.strAux1, QString(31, QLatin1Char('w')));
        QCOMPARE(record.strAux2, QString(31, QLatin1Char('w')));
    }

    void auxiliaryTextsAreVerbatim()
    {
        const ConnectionRecord record =
            lastOf(FakeStatistics::record(u"", "0", "0", "0", "0", "0", " resumed+recovered ", "\t1.50%"));
        QCOMPARE(record.strAux1, QStringLiteral(" resumed+recovered "));
        QCOMPARE(record.strAux2, QStringLiteral("\t1.50%"));
    }

    // Trace lines

    void traceOfLoading()
    {
        fixture::fillService(1);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        const MessageLog log;
        store->GetAllConnectedRecords();
        QStringList expected = {
            QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: GetAllConnectedRecords LINE"),
            QStringLiteral("=======> TIME: PATH/NetInfoRecordLogic: GetAllConnectedRecords: LINE: Calling "
                           "ZELK_Statistics_GetAllConnRecord()"),
            QStringLiteral("<======= TIME: PATH/NetInfoRecordLogic: GetAllConnectedRecords: LINE: Finished "
                           "ZELK_Statistics_GetAllConnRecord(), retVal=0"),
            QStringLiteral("Enter: TIME: PATH/NetInfoRecordLogic: populateSDKtoUIStructure LINE")};
        for (int amount = 0; amount < 2; ++amount) {
            expected << QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: TransformUnits LINE")
                     << QStringLiteral("End: TIME: PATH/NetInfoRecordLogic: TransformUnits LINE");
        }
        expected << QStringLiteral("Exit: TIME: PATH/NetInfoRecordLogic: populateSDKtoUIStructure LINE")
                 << QStringLiteral("Exit: TIME: PATH/NetInfoRecordLogic: GetAllConnectedRecords LINE");
        QCOMPARE(log.shapes(), expected);
    }

    void traceOfAFailedLastConnection()
    {
        state().getLastCode = -7;
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        const MessageLog log;
        store->GetLastConnectedRecord();
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: GetLastConnectedRecord LINE"),
                              QStringLiteral("=======> TIME: PATH/NetInfoRecordLogic: GetLastConnectedRecord: LINE: "
                                             "Calling ZELK_Statistics_GetLastConnRecord()"),
                              QStringLiteral("<======= TIME: PATH/NetInfoRecordLogic: GetLastConnectedRecord: LINE: "
                                             "Finished ZELK_Statistics_GetLastConnRecord(), retVal=-7"),
                              QStringLiteral("End: TIME: PATH/NetInfoRecordLogic: GetLastConnectedRecord LINE")}));
    }

    void traceOfDeletions()
    {
        fixture::fillService(2);
        NetInfoRecordLogic *const store = NetInfoRecordLogic::Instance();
        store->GetAllConnectedRecords();
        const QString finished = QStringLiteral("<======= TIME: PATH/NetInfoRecordLogic: %1: LINE: "
                                                "FinishedZELK_Statistics_ConnRecord_RemoveRecord (), retVal=%2");
        const QString calling = QStringLiteral("=======> TIME: PATH/NetInfoRecordLogic: %1: LINE: Calling "
                                               "ZELK_Statistics_ConnRecord_RemoveRecord ()");
        {
            const MessageLog log;
            store->DeleteRecord(9);
            QCOMPARE(log.shapes(),
                     QStringList({QStringLiteral("Enter: TIME: PATH/NetInfoRecordLogic: DeleteRecord LINE"),
                                  QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: DeleteRecord LINE"),
                                  calling.arg(QStringLiteral("DeleteRecord")),
                                  finished.arg(QStringLiteral("DeleteRecord")).arg(1),
                                  QStringLiteral("End: TIME: PATH/NetInfoRecordLogic: DeleteRecord LINE")}));
        }
        const MessageLog log;
        store->DeleteAll();
        QCOMPARE(log.shapes(), QStringList({QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: DeleteAll LINE"),
                                            calling.arg(QStringLiteral("DeleteAll")), // once, whatever the number
                                            finished.arg(QStringLiteral("DeleteAll")).arg(0),
                                            finished.arg(QStringLiteral("DeleteAll")).arg(0),
                                            QStringLiteral("End: TIME: PATH/NetInfoRecordLogic: DeleteAll LINE")}));
    }

    void traceOfTheSingleton()
    {
        const MessageLog log;
        NetInfoRecordLogic::Instance();
        NetInfoRecordLogic::Destroy();
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: Instance LINE"),
                              QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: NetInfoRecordLogic LINE"),
                              QStringLiteral("End  : TIME: PATH/NetInfoRecordLogic: NetInfoRecordLogic LINE"),
                              QStringLiteral("End  : TIME: PATH/NetInfoRecordLogic: Instance LINE"),
                              QStringLiteral("Start  : TIME: PATH/NetInfoRecordLogic: Destroy LINE"),
                              QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: ~NetInfoRecordLogic LINE"),
                              QStringLiteral("End  : TIME: PATH/NetInfoRecordLogic: ~NetInfoRecordLogic LINE"),
                              QStringLiteral("End  : TIME: PATH/NetInfoRecordLogic: Destroy LINE")}));
    }
};

QTEST_MAIN(TestRecordLogic)
#include "tst_recordlogic.moc"
