// The four C functions: what the raw record holds, and what positions mean while others change the file.
#include "HistoryFixture.h"

#include <statistics/ZelkStatistics.h>

#include <QtTest>

#include <cstring>
#include <memory>
#include <vector>

using zelk::ConnectionHistory;
using zelk::Record;
using zelk::ResultCode;

namespace {

constexpr long success = static_cast<long>(ResultCode::Success);
constexpr long noSuchRecord = static_cast<long>(ResultCode::NoSuchRecord);

struct Release {
    void operator()(_ZELK_ST_CONNRECORD *records) const { ZELK_Statistics_ReleaseConnRecord(records); }
};

struct All {
    std::unique_ptr<_ZELK_ST_CONNRECORD[], Release> records;
    int count = 0;
};

All readAll()
{
    _ZELK_ST_CONNRECORD *records = nullptr;
    All all;
    if (ZELK_Statistics_GetAllConnRecord(&records, &all.count) != success)
        qFatal("the history could not be read");
    all.records.reset(records);
    return all;
}

QString nameOf(const _ZELK_ST_CONNRECORD &record)
{
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(record.profile));
}

/// Records whose profiles are their numbers, so that lists can be compared at a glance.
Record numbered(int number)
{
    Record record = sampleRecord(number);
    record.profile = std::to_string(number);
    return record;
}

void addNumbered(ConnectionHistory &history, std::initializer_list<int> numbers)
{
    for (const int number : numbers)
        history.add(numbered(number));
}

QStringList remaining(const HistoryFixture &fixture)
{
    QStringList names;
    for (const Record &record : ConnectionHistory(fixture.path()).list())
        names += QString::fromStdString(record.profile);
    return names;
}

std::int64_t keyOf(ConnectionHistory &history, int number)
{
    zelk::Filter filter;
    filter.profile = std::to_string(number);
    return history.list(filter).at(0).key;
}

long removeAt(int position)
{
    return ZELK_Statistics_ConnRecord_RemoveRecord(position);
}

} // namespace

class TestService : public QObject
{
    Q_OBJECT

private slots:
    void emptyHistory();
    void rawRecordHoldsEveryField();
    void longNamesAreCut_data();
    void longNamesAreCut();
    void invalidTextInTheFileIsReplaced();
    void lastIsTheLatestEnd();
    void releaseOfNothing();
    void missingArguments();
    void positionsMoveUp();
    void highestFirst();
    void everythingFromTheFront();
    void positionsBeforeAnyReading();
    void positionsThatDoNotExist();
    void removedByAnother();
    void removedByAnotherAndAllFromTheFront_data();
    void removedByAnotherAndAllFromTheFront();
    void addedByAnother();
    void failedReadingKeepsPositions();
    void anotherFileHasItsOwnPositions();
    void fileReplacedWhileOpen();
    void manyPositionsAgreeWithAList();
};

void TestService::emptyHistory()
{
    const HistoryFixture fixture;
    QCOMPARE(readAll().count, 0);
    _ZELK_ST_CONNRECORD record;
    std::memset(&record, 0x5A, sizeof record);
    const _ZELK_ST_CONNRECORD before = record;
    QCOMPARE(ZELK_Statistics_GetLastConnRecord(&record), noSuchRecord);
    QVERIFY(std::memcmp(&record, &before, sizeof record) == 0);
}

void TestService::rawRecordHoldsEveryField()
{
    const HistoryFixture fixture;
    Record record = sampleRecord(1);
    record.profile = "internet.example \xC3\xBC\xE2\x82\xAC\xF0\x9F\x93\xB6";
    record.start = 1700000000;
    record.end = 1700000100;
    record.connectedSeconds = 99;
    record.bytesUploaded = 12345;
    record.bytesDownloaded = 9007199254740992;
    record.quality = 15;
    record.endReason = zelk::EndReason::Unplugged;
    ConnectionHistory(fixture.path()).add(record);
    const All all = readAll();
    QCOMPARE(all.count, 1);
    _ZELK_ST_CONNRECORD last;
    std::memset(&last, 0xFF, sizeof last);
    QCOMPARE(ZELK_Statistics_GetLastConnRecord(&last), success);
    QVERIFY(std::memcmp(&last, &all.records[0], sizeof last) == 0);
    QCOMPARE(nameOf(last), QString::fromStdString(record.profile));
    QCOMPARE(last.startTime, "1700000000");
    QCOMPARE(last.endTime, "1700000100");
    QCOMPARE(last.connectedTime, "99");
    QCOMPARE(last.uploaded, "12345");
    QCOMPARE(last.downloaded, "9007199254740992");
    QCOMPARE(last.reserved1, "");
    QCOMPARE(last.reserved2, "");
    QCOMPARE(last.aux1, "resumed+recovered+counter+clock");
    QCOMPARE(last.aux2, "unplugged");
}

void TestService::longNamesAreCut_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const QString x126(126, QLatin1Char('x'));
    const QString pair = QString::fromUtf8("\xF0\x9F\x93\xB6");
    QTest::newRow("127 units") << x126 + QLatin1Char('y') << x126 + QLatin1Char('y');
    QTest::newRow("128 units") << x126 + QStringLiteral("yz") << x126 + QLatin1Char('y');
    QTest::newRow("pair across the end") << x126 + pair << x126;
    QTest::newRow("pair before the end") << x126.mid(1) + pair << x126.mid(1) + pair;
    QTest::newRow("pair, then more") << x126.mid(1) + pair + pair << x126.mid(1) + pair;
}

void TestService::longNamesAreCut()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    const HistoryFixture fixture;
    Record record = sampleRecord(1);
    record.profile = name.toStdString();
    ConnectionHistory(fixture.path()).add(record);
    const All all = readAll();
    QCOMPARE(nameOf(all.records[0]), shown);
    QCOMPARE(all.records[0].profile[127], quint16(0));
    QCOMPARE(ConnectionHistory(fixture.path()).list().at(0).profile, name.toStdString());
}

void TestService::invalidTextInTheFileIsReplaced()
{
    const HistoryFixture fixture;
    ConnectionHistory(fixture.path()).add(sampleRecord(1));
    QVERIFY(runSql(fixture.path(), "UPDATE records SET profile = CAST(x'61FF62' AS TEXT)"));
    QCOMPARE(nameOf(readAll().records[0]), QString::fromUtf8("a\xEF\xBF\xBD"
                                                             "b"));
}

void TestService::lastIsTheLatestEnd()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    Record longest = numbered(1);
    longest.end = numbered(9).end;
    history.add(longest);
    addNumbered(history, {2, 3});
    _ZELK_ST_CONNRECORD record{};
    QCOMPARE(ZELK_Statistics_GetLastConnRecord(&record), success);
    QCOMPARE(nameOf(record), QStringLiteral("1"));
    addNumbered(history, {9});
    QCOMPARE(ZELK_Statistics_GetLastConnRecord(&record), success);
    QCOMPARE(nameOf(record), QStringLiteral("9"));
}

void TestService::releaseOfNothing()
{
    ZELK_Statistics_ReleaseConnRecord(nullptr);
}

void TestService::missingArguments()
{
    const HistoryFixture fixture;
    constexpr long invalid = static_cast<long>(ResultCode::InvalidRecord);
    int count = 0;
    _ZELK_ST_CONNRECORD *records = nullptr;
    QCOMPARE(ZELK_Statistics_GetAllConnRecord(nullptr, &count), invalid);
    QCOMPARE(ZELK_Statistics_GetAllConnRecord(&records, nullptr), invalid);
    QCOMPARE(ZELK_Statistics_GetLastConnRecord(nullptr), invalid);
    QVERIFY(records == nullptr);
}

void TestService::positionsMoveUp()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    addNumbered(history, {0, 1, 2, 3, 4});
    readAll();
    QCOMPARE(removeAt(1), success);
    QCOMPARE(removeAt(1), success);
    QCOMPARE(removeAt(2), success);
    QCOMPARE(remaining(fixture), QStringList({"0", "3"}));
    QCOMPARE(readAll().count, 2);
}

void TestService::highestFirst()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    addNumbered(history, {0, 1, 2, 3, 4, 5});
    readAll();
    for (const int position : {4, 3, 1})
        QCOMPARE(removeAt(position), success);
    QCOMPARE(remaining(fixture), QStringList({"0", "2", "5"}));
}

void TestService::everythingFromTheFront()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    addNumbered(history, {0, 1, 2});
    readAll();
    for (int i = 0; i < 3; ++i)
        QCOMPARE(removeAt(0), success);
    QCOMPARE(removeAt(0), noSuchRecord);
    QCOMPARE(remaining(fixture), QStringList());
}

void TestService::positionsBeforeAnyReading()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    addNumbered(history, {0, 1, 2});
    QCOMPARE(removeAt(1), success);
    addNumbered(history, {3});
    QCOMPARE(removeAt(1), success);
    QCOMPARE(removeAt(1), noSuchRecord);
    QCOMPARE(remaining(fixture), QStringList({"0", "3"}));
}

void TestService::positionsThatDoNotExist()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    addNumbered(history, {0, 1});
    readAll();
    for (const int position : {-1, 2, 3, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        QCOMPARE(removeAt(position), noSuchRecord);
    QCOMPARE(remaining(fixture), QStringList({"0", "1"}));
}

void TestService::removedByAnother()
{
    const HistoryFixture fixture;
    ConnectionHistory other(fixture.path());
    addNumbered(other, {0, 1, 2, 3});
    readAll();
    QVERIFY(other.remove(keyOf(other, 1)));
    QCOMPARE(removeAt(1), noSuchRecord);
    QCOMPARE(removeAt(1), noSuchRecord);
    QCOMPARE(remaining(fixture), QStringList({"0", "2", "3"}));
    QCOMPARE(removeAt(2), success);
    QCOMPARE(remaining(fixture), QStringList({"0", "3"}));
    QVERIFY(other.remove(keyOf(other, 0)));
    QCOMPARE(removeAt(0), noSuchRecord);
    QCOMPARE(removeAt(2), success);
    QCOMPARE(remaining(fixture), QStringList());
}

void TestService::removedByAnotherAndAllFromTheFront_data()
{
    QTest::addColumn<QList<int>>("gone");
    QTest::newRow("first") << QList<int>{0};
    QTest::newRow("middle") << QList<int>{2};
    QTest::newRow("last") << QList<int>{4};
    QTest::newRow("two in a row at the front") << QList<int>{0, 1};
    QTest::newRow("several") << QList<int>{1, 2, 4};
    QTest::newRow("all") << QList<int>{0, 1, 2, 3, 4};
}

/// As many removals of position 0 as were read must empty the history, and never touch what came later.
void TestService::removedByAnotherAndAllFromTheFront()
{
    QFETCH(QList<int>, gone);
    const HistoryFixture fixture;
    ConnectionHistory other(fixture.path());
    addNumbered(other, {0, 1, 2, 3, 4});
    const int count = readAll().count;
    for (const int number : gone)
        QVERIFY(other.remove(keyOf(other, number)));
    addNumbered(other, {7});
    int removed = 0;
    for (int i = 0; i < count; ++i)
        removed += removeAt(0) == success ? 1 : 0;
    QCOMPARE(removed, count - static_cast<int>(gone.size()));
    QCOMPARE(remaining(fixture), QStringList({"7"}));
}

void TestService::addedByAnother()
{
    const HistoryFixture fixture;
    ConnectionHistory other(fixture.path());
    addNumbered(other, {0, 1});
    readAll();
    QVERIFY(other.remove(keyOf(other, 1)));
    addNumbered(other, {2, 3});
    QCOMPARE(removeAt(1), noSuchRecord);
    QCOMPARE(removeAt(2), noSuchRecord);
    QCOMPARE(remaining(fixture), QStringList({"0", "2", "3"}));
    QCOMPARE(readAll().count, 3);
    QCOMPARE(removeAt(1), success);
    QCOMPARE(remaining(fixture), QStringList({"0", "3"}));
}

void TestService::failedReadingKeepsPositions()
{
    const HistoryFixture fixture;
    ConnectionHistory other(fixture.path());
    addNumbered(other, {0, 1, 2});
    readAll();
    QCOMPARE(removeAt(0), success);
    int count = 42;
    QVERIFY(ZELK_Statistics_GetAllConnRecord(nullptr, &count) != success);
    QCOMPARE(count, 42);
    QCOMPARE(removeAt(1), success);
    QCOMPARE(remaining(fixture), QStringList({"1"}));
}

void TestService::anotherFileHasItsOwnPositions()
{
    const HistoryFixture first;
    ConnectionHistory firstHistory(first.path());
    addNumbered(firstHistory, {0, 1, 2});
    readAll();
    const HistoryFixture second;
    ConnectionHistory secondHistory(second.path());
    addNumbered(secondHistory, {5});
    QCOMPARE(removeAt(1), noSuchRecord);
    QCOMPARE(removeAt(0), success);
    QCOMPARE(remaining(second), QStringList());
    QCOMPARE(remaining(first), QStringList({"0", "1", "2"}));
    qputenv("NETINFO_HISTORY", first.file().toLocal8Bit());
    QCOMPARE(readAll().count, 3);
}

/// A file put in the place of the open one is another history: keys of the old one mean nothing there.
void TestService::fileReplacedWhileOpen()
{
    const HistoryFixture fixture;
    {
        ConnectionHistory history(fixture.path());
        addNumbered(history, {0, 1});
        ConnectionHistory backup(fixture.path() + ".new");
        addNumbered(backup, {8, 9});
    }
    QCOMPARE(readAll().count, 2);
    QVERIFY(QFile::remove(fixture.file()));
    QVERIFY(QFile::rename(fixture.file(QStringLiteral("history.sqlite.new")), fixture.file()));
    QCOMPARE(removeAt(1), noSuchRecord);
    QCOMPARE(nameOf(readAll().records[0]), QStringLiteral("8"));
    QCOMPARE(removeAt(1), success);
    QCOMPARE(remaining(fixture), QStringList({"8"}));
}

void TestService::manyPositionsAgreeWithAList()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    std::vector<Record> records;
    QStringList expected;
    for (int number = 0; number < 300; ++number) {
        records.push_back(numbered(number));
        expected += QString::number(number);
    }
    history.add(records);
    readAll();
    quint32 random = 12345;
    while (expected.size() > 20) {
        random = random * 1664525 + 1013904223;
        const int position = static_cast<int>((random >> 8) % static_cast<quint32>(expected.size()));
        QCOMPARE(removeAt(position), success);
        expected.removeAt(position);
    }
    QCOMPARE(remaining(fixture), expected);
}

QTEST_GUILESS_MAIN(TestService)
#include "test_service.moc"
