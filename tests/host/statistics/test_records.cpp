// Adding, listing, removing, totals and the recorder's open connections, through the C++ interface on a real file.
#include "HistoryFixture.h"

#include <QtTest>

#include <limits>

using zelk::ConnectionHistory;
using zelk::Filter;
using zelk::OpenConnection;
using zelk::PeriodTotal;
using zelk::Record;
using zelk::ResultCode;

namespace {

OpenConnection sampleConnection()
{
    OpenConnection connection;
    connection.profile = "internet.example";
    connection.profileName = "Web Mobile";
    connection.profileUuid = "11111111-2222-3333-4444-555555555555";
    connection.type = "gsm";
    connection.interfaceName = "wwan0";
    connection.interfaceIndex = 7;
    connection.bootId = "99999999-8888-7777-6666-555555555555";
    connection.serviceOwner = ":1.42";
    connection.activePath = "/org/example/Active/3";
    connection.startWallMs = 1700000000123;
    connection.startBootMs = 5000;
    connection.seenWallMs = 1700000001123;
    connection.seenBootMs = 6000;
    connection.lastTx = 100;
    connection.lastRx = 200;
    connection.bytesUploaded = 10;
    connection.bytesDownloaded = 20;
    connection.quality = zelk::QualityRecovered;
    return connection;
}

bool equal(const OpenConnection &a, const OpenConnection &b)
{
    return a.key == b.key && a.profile == b.profile && a.profileName == b.profileName &&
           a.profileUuid == b.profileUuid && a.type == b.type && a.interfaceName == b.interfaceName &&
           a.interfaceIndex == b.interfaceIndex && a.bootId == b.bootId && a.serviceOwner == b.serviceOwner &&
           a.activePath == b.activePath && a.startWallMs == b.startWallMs && a.startBootMs == b.startBootMs &&
           a.seenWallMs == b.seenWallMs && a.seenBootMs == b.seenBootMs && a.lastTx == b.lastTx &&
           a.lastRx == b.lastRx && a.bytesUploaded == b.bytesUploaded && a.bytesDownloaded == b.bytesDownloaded &&
           a.quality == b.quality;
}

Record connectionOf(const std::string &profile, qint64 start, qint64 seconds, qint64 up, qint64 down)
{
    Record record;
    record.profile = profile;
    record.start = start;
    record.end = start + seconds;
    record.connectedSeconds = seconds;
    record.bytesUploaded = up;
    record.bytesDownloaded = down;
    return record;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(Record &)>)

class TestRecords : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldComesBack();
    void orderIsThatOfAdding();
    void severalAreAddedOrNone();
    void keysAreNeverUsedAgain();
    void filterRestricts();
    void lastIsTheLatestEnd();
    void totalsByPeriodAndProfile();
    void totalsDoNotOverflow();
    void profilesAreSortedByCodePoint();
    void refused_data();
    void refused();
    void widestValuesAreKept();
    void wordsFitTheRawRecord();
    void wordsAreReadBack();
    void openConnectionsComeBack();
    void checkpointOfClosedConnection();
    void closingAddsOnce();
    void closingWithBadRecordChangesNothing();
    void dataVersionTellsOfOthers();
    void defaultPathFollowsTheEnvironment();
};

void TestRecords::everyFieldComesBack()
{
    const HistoryFixture fixture;
    Record record = sampleRecord(5);
    record.origin = zelk::Origin::Imported;
    record.originDetail = "pppd";
    record.quality = zelk::QualityResumed | zelk::QualityClockChanged;
    record.endReason = zelk::EndReason::Carrier;
    record.endZoneOffset = -12600;
    const std::int64_t key = ConnectionHistory(fixture.path()).add(record);
    const std::vector<Record> records = ConnectionHistory(fixture.path()).list();
    QCOMPARE(records.size(), std::size_t(1));
    QCOMPARE(records[0].key, key);
    QVERIFY(key > 0);
    QVERIFY(sameButKey(records[0], record));
}

void TestRecords::orderIsThatOfAdding()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    for (const int number : {3, 1, 2})
        history.add(sampleRecord(number));
    const std::vector<Record> records = history.list();
    QCOMPARE(history.count(), std::int64_t(3));
    QVERIFY(sameButKey(records[0], sampleRecord(3)));
    QVERIFY(sameButKey(records[1], sampleRecord(1)));
    QVERIFY(sameButKey(records[2], sampleRecord(2)));
    QVERIFY(records[0].key < records[1].key && records[1].key < records[2].key);
}

void TestRecords::severalAreAddedOrNone()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    Record bad = sampleRecord(2);
    bad.end = bad.start - 1;
    QVERIFY(errorOf([&] { history.add({sampleRecord(1), bad}); }));
    QCOMPARE(history.count(), std::int64_t(0));
    history.add({sampleRecord(1), sampleRecord(2)});
    QCOMPARE(history.count(), std::int64_t(2));
}

void TestRecords::keysAreNeverUsedAgain()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    const std::int64_t first = history.add(sampleRecord(1));
    QVERIFY(history.remove(first));
    QVERIFY(!history.remove(first));
    QVERIFY(history.add(sampleRecord(2)) > first);
}

void TestRecords::filterRestricts()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    for (int number = 0; number < 9; ++number)
        history.add(sampleRecord(number));
    Filter filter;
    filter.profile = "profile1";
    QCOMPARE(history.list(filter).size(), std::size_t(3));
    filter.startFrom = sampleRecord(4).start;
    QCOMPARE(history.list(filter).size(), std::size_t(2));
    filter.startBefore = sampleRecord(7).start;
    QCOMPARE(history.list(filter).size(), std::size_t(1));
    QVERIFY(sameButKey(history.list(filter)[0], sampleRecord(4)));
    filter.profile = "none' OR 1 --";
    QVERIFY(history.list(filter).empty());
}

void TestRecords::lastIsTheLatestEnd()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    QVERIFY(!history.last());
    Record longest = sampleRecord(1);
    longest.end = sampleRecord(5).end + 1;
    history.add(longest);
    history.add(sampleRecord(5));
    QVERIFY(sameButKey(*history.last(), longest));
    Record equal = sampleRecord(6);
    equal.end = longest.end;
    equal.start = longest.start;
    history.add(equal);
    QVERIFY(sameButKey(*history.last(), equal));
}

void TestRecords::totalsByPeriodAndProfile()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    history.add({connectionOf("b", 1000, 10, 1, 2), connectionOf("a", 1999, 20, 3, 4),
                 connectionOf("b", 1500, 5, 10, 20), connectionOf("a", 2000, 7, 5, 6), connectionOf("a", 999, 1, 1, 1),
                 connectionOf("a", 4000, 1, 1, 1)});
    const std::vector<PeriodTotal> totals = history.totals({1000, 2000, 3000, 4000});
    QCOMPARE(totals.size(), std::size_t(3));
    QCOMPARE(totals[0].profile, std::string("a"));
    QCOMPARE(totals[0].periodStart, std::int64_t(1000));
    QCOMPARE(totals[0].connections, std::int64_t(1));
    QCOMPARE(totals[1].profile, std::string("b"));
    QCOMPARE(totals[1].connections, std::int64_t(2));
    QCOMPARE(totals[1].connectedSeconds, std::int64_t(15));
    QCOMPARE(totals[1].bytesUploaded, std::int64_t(11));
    QCOMPARE(totals[1].bytesDownloaded, std::int64_t(22));
    QCOMPARE(totals[2].profile, std::string("a"));
    QCOMPARE(totals[2].periodStart, std::int64_t(2000));
    QCOMPARE(totals[2].connectedSeconds, std::int64_t(7));

    QCOMPARE(history.totals({0, 10000}, std::string("b")).size(), std::size_t(1));
    QCOMPARE(history.totals({0, 10000}, std::string("b"))[0].connections, std::int64_t(2));
    QVERIFY(history.totals({1000}).empty());
    QVERIFY(history.totals({5000, 6000}).empty());
    const auto error = errorOf([&] { history.totals({2000, 1000}); });
    QVERIFY(error && error->code() == ResultCode::InvalidRecord);
}

void TestRecords::totalsDoNotOverflow()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    const std::int64_t most = std::int64_t(1) << 53;
    history.add(std::vector<Record>(1025, connectionOf("a", 1000, 1, most, 1)));
    const std::vector<PeriodTotal> totals = history.totals({0, 2000});
    QCOMPARE(totals[0].bytesUploaded, std::numeric_limits<std::int64_t>::max());
    QCOMPARE(totals[0].bytesDownloaded, std::int64_t(1025));
}

void TestRecords::profilesAreSortedByCodePoint()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    QVERIFY(history.profiles().empty());
    // In UTF-16 the last two would come the other way round.
    const std::vector<std::string> sorted = {"", "B", "a", "\xC3\xA4", "\xEF\xBF\xBD", "\xF0\x9F\x93\xB6"};
    for (const int index : {4, 0, 5, 2, 1, 3, 2})
        history.add(connectionOf(sorted[static_cast<std::size_t>(index)], 1000, 1, 1, 1));
    QCOMPARE(history.profiles(), sorted);
}

void TestRecords::refused_data()
{
    using Spoil = std::function<void(Record &)>;
    QTest::addColumn<std::function<void(Record &)>>("spoil");
    QTest::addColumn<QByteArray>("named");
    const auto row = [](const char *name, const Spoil &spoil, const QByteArray &named) {
        QTest::newRow(name) << spoil << named;
    };
    row(
        "end before start", [](Record &r) { r.end = r.start - 1; }, "end (");
    row(
        "start before 1970", [](Record &r) { r.start = -1; }, "start is -1");
    row(
        "end beyond 9999", [](Record &r) { r.end = 253402300800; }, "end is 253402300800");
    row(
        "negative duration", [](Record &r) { r.connectedSeconds = -1; }, "connected time in seconds is -1");
    row(
        "duration beyond the end", [](Record &r) { r.connectedSeconds = r.end - r.start + 61; }, "connected time");
    row(
        "negative upload", [](Record &r) { r.bytesUploaded = -1; }, "uploaded amount in bytes is -1");
    row(
        "absurd upload", [](Record &r) { r.bytesUploaded = (std::int64_t(1) << 53) + 1; }, "uploaded amount");
    row(
        "negative download", [](Record &r) { r.bytesDownloaded = -5; }, "downloaded amount in bytes is -5");
    row(
        "absurd download", [](Record &r) { r.bytesDownloaded = std::numeric_limits<std::int64_t>::max(); },
        "downloaded amount");
    row(
        "zone offset of a day", [](Record &r) { r.endZoneOffset = 86400; }, "zone offset in seconds is 86400");
    row(
        "zone offset with seconds", [](Record &r) { r.endZoneOffset = 3601; }, "zone offset of 3601 seconds");
    row(
        "name too long", [](Record &r) { r.profile.assign(1025, 'x'); }, "profile is 1025 bytes");
    row(
        "cut UTF-8", [](Record &r) { r.profile = "ab\xC3"; }, "profile is not valid UTF-8 at byte 3");
    row(
        "overlong UTF-8", [](Record &r) { r.profile = "\xC0\xAF"; }, "not valid UTF-8 at byte 1");
    row(
        "surrogate in UTF-8", [](Record &r) { r.profile = "a\xED\xA0\x80"; }, "not valid UTF-8 at byte 2");
    row(
        "beyond Unicode", [](Record &r) { r.profile = "\xF4\x90\x80\x80"; }, "not valid UTF-8 at byte 1");
    row(
        "own name invalid", [](Record &r) { r.profileName = "\xFF"; }, "profile's own name is not valid UTF-8");
    row(
        "zero character", [](Record &r) { r.profile = std::string("a\0b", 3); }, "zero character");
    row(
        "origin's detail too long", [](Record &r) { r.originDetail.assign(2000, 'x'); }, "origin's detail is 2000");
    row(
        "unknown quality", [](Record &r) { r.quality = 16; }, "quality is 16");
    row(
        "unknown reason", [](Record &r) { r.endReason = static_cast<zelk::EndReason>(6); }, "reason of the end is 6");
    row(
        "unknown origin", [](Record &r) { r.origin = static_cast<zelk::Origin>(-1); }, "origin is -1");
}

void TestRecords::refused()
{
    QFETCH(std::function<void(Record &)>, spoil);
    QFETCH(QByteArray, named);
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    Record record = sampleRecord(1);
    spoil(record);
    const auto error = errorOf([&] { history.add(record); });
    QVERIFY(error.has_value());
    QCOMPARE(error->code(), ResultCode::InvalidRecord);
    QVERIFY2(QByteArray(error->what()).contains(named), error->what());
    QCOMPARE(history.count(), std::int64_t(0));
}

void TestRecords::widestValuesAreKept()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    Record record;
    record.profile.assign(1024, 'x');
    record.profileName = "\xF4\x8F\xBF\xBF\xEE\x80\x80\xED\x9F\xBF\x7F\n";
    record.end = 253402214399;
    record.connectedSeconds = record.end + 60;
    record.bytesUploaded = record.bytesDownloaded = std::int64_t(1) << 53;
    record.endZoneOffset = -86340;
    record.quality = 15;
    history.add(record);
    history.add(Record());
    QVERIFY(sameButKey(history.list()[0], record));
    QVERIFY(sameButKey(history.list()[1], Record()));
}

void TestRecords::wordsFitTheRawRecord()
{
    for (unsigned quality = 0; quality < 16; ++quality) {
        const std::string raw = zelk::qualityToRawText(quality);
        QVERIFY2(raw.size() <= 31, raw.c_str());
        QCOMPARE(zelk::qualityFromText(raw), std::optional<unsigned>(quality));
        QCOMPARE(zelk::qualityFromText(zelk::qualityToText(quality)), std::optional<unsigned>(quality));
    }
    QCOMPARE(zelk::qualityToText(0), std::string("exact"));
    QCOMPARE(zelk::qualityToText(15), std::string("resumed+recovered+counter-restarted+clock-changed"));
    QCOMPARE(zelk::qualityToRawText(15), std::string("resumed+recovered+counter+clock"));
}

void TestRecords::wordsAreReadBack()
{
    for (const char *wrong : {"", "+", "exact+resumed", "resumed+", "+resumed", "Resumed", "resumed,clock-changed"})
        QVERIFY2(!zelk::qualityFromText(wrong), wrong);
    for (int reason = 0; reason <= static_cast<int>(zelk::EndReason::Carrier); ++reason) {
        const auto value = static_cast<zelk::EndReason>(reason);
        QVERIFY(zelk::endReasonFromText(zelk::endReasonToText(value)) == value);
    }
    QCOMPARE(zelk::endReasonToText(zelk::EndReason::Unplugged), std::string("unplugged"));
    QVERIFY(!zelk::endReasonFromText("left"));
    for (const zelk::Origin origin : {zelk::Origin::Recorded, zelk::Origin::Imported, zelk::Origin::Added})
        QVERIFY(zelk::originFromText(zelk::originToText(origin)) == origin);
    QCOMPARE(zelk::originToText(zelk::Origin::Imported), std::string("imported"));
    QVERIFY(!zelk::originFromText(""));
}

void TestRecords::openConnectionsComeBack()
{
    const HistoryFixture fixture;
    OpenConnection connection = sampleConnection();
    {
        ConnectionHistory history(fixture.path());
        connection.key = history.openConnection(connection);
        QVERIFY(equal(history.openConnections().at(0), connection));
        connection.lastTx = 500;
        connection.seenWallMs += 1000;
        connection.bytesUploaded = 400;
        connection.quality = zelk::QualityCounterRestarted;
        history.checkpoint(connection);
    }
    const std::vector<OpenConnection> connections = ConnectionHistory(fixture.path()).openConnections();
    QCOMPARE(connections.size(), std::size_t(1));
    QVERIFY(equal(connections[0], connection));
}

void TestRecords::checkpointOfClosedConnection()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    OpenConnection connection = sampleConnection();
    connection.key = 77;
    const auto error = errorOf([&] { history.checkpoint(connection); });
    QVERIFY(error && error->code() == ResultCode::NoSuchRecord);
    connection.bytesUploaded = -1;
    const auto bad = errorOf([&] { history.openConnection(connection); });
    QVERIFY(bad && bad->code() == ResultCode::InvalidRecord);
    QVERIFY(history.openConnections().empty());
}

void TestRecords::closingAddsOnce()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    ConnectionHistory other(fixture.path());
    const std::int64_t first = history.openConnection(sampleConnection());
    const std::int64_t second = history.openConnection(sampleConnection());
    QVERIFY(second > first);
    QVERIFY(history.closeConnection(first, sampleRecord(1)).has_value());
    QVERIFY(!other.closeConnection(first, sampleRecord(1)).has_value());
    QCOMPARE(history.count(), std::int64_t(1));
    QCOMPARE(other.openConnections().size(), std::size_t(1));
    QCOMPARE(other.openConnections()[0].key, second);
}

void TestRecords::closingWithBadRecordChangesNothing()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    const std::int64_t key = history.openConnection(sampleConnection());
    Record bad = sampleRecord(1);
    bad.bytesUploaded = -1;
    const auto error = errorOf([&] { history.closeConnection(key, bad); });
    QVERIFY(error && error->code() == ResultCode::InvalidRecord);
    QCOMPARE(history.openConnections().size(), std::size_t(1));
    QCOMPARE(history.count(), std::int64_t(0));
}

void TestRecords::dataVersionTellsOfOthers()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    ConnectionHistory other(fixture.path());
    const std::int64_t before = history.dataVersion();
    QCOMPARE(history.dataVersion(), before);
    history.add(sampleRecord(1));
    QCOMPARE(history.dataVersion(), before);
    other.add(sampleRecord(2));
    QVERIFY(history.dataVersion() != before);
}

void TestRecords::defaultPathFollowsTheEnvironment()
{
    qputenv("NETINFO_HISTORY", "/somewhere/own.sqlite");
    QCOMPARE(ConnectionHistory::defaultPath(), std::string("/somewhere/own.sqlite"));
    qunsetenv("NETINFO_HISTORY");
    const QByteArray data = qgetenv("XDG_DATA_HOME");
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", "/home/someone");
    qputenv("XDG_DATA_HOME", "/data");
    QCOMPARE(ConnectionHistory::defaultPath(), std::string("/data/netinfo/history.sqlite"));
    for (const char *ignored : {"", "relative/data"}) {
        qputenv("XDG_DATA_HOME", ignored);
        QCOMPARE(ConnectionHistory::defaultPath(), std::string("/home/someone/.local/share/netinfo/history.sqlite"));
    }
    qputenv("XDG_DATA_HOME", data);
    qputenv("HOME", home);
}

QTEST_GUILESS_MAIN(TestRecords)
#include "test_records.moc"
