// Files of earlier versions: brought up to date with nothing lost, also when the process is killed at any moment.
#include "ChildProcess.h"
#include "HistoryFixture.h"

#include <QtTest>

using zelk::ConnectionHistory;
using zelk::Record;

namespace {

/// A file that the first version wrote, in the fixture's place.
bool placeOldFile(const HistoryFixture &fixture)
{
    return QFile::copy(QStringLiteral(TEST_DATA "/history-v1.sqlite"), fixture.file()) &&
           QFile::setPermissions(fixture.file(), QFile::ReadOwner | QFile::WriteOwner);
}

void verifyOldRecords(ConnectionHistory &history)
{
    const std::vector<Record> records = history.list();
    QCOMPARE(records.size(), std::size_t(2));
    QCOMPARE(records[0].key, std::int64_t(1));
    QCOMPARE(records[0].profile, std::string("internet.example"));
    QCOMPARE(records[0].profileName, std::string("Web Mobile"));
    QCOMPARE(records[0].start, std::int64_t(1690000000));
    QCOMPARE(records[0].end, std::int64_t(1690003600));
    QCOMPARE(records[0].endZoneOffset, 7200);
    QCOMPARE(records[0].connectedSeconds, std::int64_t(3600));
    QCOMPARE(records[0].bytesUploaded, std::int64_t(1234567));
    QCOMPARE(records[0].bytesDownloaded, std::int64_t(89012345));
    QVERIFY(records[0].origin == zelk::Origin::Recorded);
    QVERIFY(records[0].endReason == zelk::EndReason::User);
    QCOMPARE(records[1].profile, std::string("Gasthaus Krone"));
    QVERIFY(records[1].origin == zelk::Origin::Imported);
    QCOMPARE(records[1].originDetail, std::string("csv"));
    QCOMPARE(records[1].quality, 9U);
}

QByteArray version(const HistoryFixture &fixture)
{
    return querySql(fixture.path(), "PRAGMA user_version");
}

} // namespace

class TestMigration : public QObject
{
    Q_OBJECT

private slots:
    void oldFileIsBroughtUpToDate();
    void oldFileIsReadAsItIs();
    void migrationStepsAreTheirOwnTransactions();
    void killedAtEveryWrite();
    void killedWhileBeginning();
    void severalAtOnce();
};

void TestMigration::oldFileIsBroughtUpToDate()
{
    const HistoryFixture fixture;
    QVERIFY(placeOldFile(fixture));
    QCOMPARE(version(fixture), QByteArray("1"));
    ConnectionHistory history(fixture.path());
    verifyOldRecords(history);
    QCOMPARE(version(fixture), QByteArray("2"));
    QVERIFY(history.openConnections().empty());
    QVERIFY(history.openConnection({}) > 0);
    QVERIFY(history.add(sampleRecord(1)) > 3); // The third was removed by the first version; its key stays unused.
}

void TestMigration::oldFileIsReadAsItIs()
{
    const HistoryFixture fixture;
    QVERIFY(placeOldFile(fixture));
    const QByteArray before = HistoryFixture::contents(fixture.file());
    {
        ConnectionHistory history(fixture.path(), ConnectionHistory::Access::ReadOnly);
        verifyOldRecords(history);
        QVERIFY(history.openConnections().empty());
    }
    QCOMPARE(HistoryFixture::contents(fixture.file()), before);
}

/// The number of a version and its tables come and go together.
void TestMigration::migrationStepsAreTheirOwnTransactions()
{
    const HistoryFixture fixture;
    QVERIFY(placeOldFile(fixture));
    QVERIFY(runSql(fixture.path(), "CREATE TABLE open_connections (in_the_way)"));
    const auto error = errorOf([&] { ConnectionHistory history(fixture.path()); });
    QVERIFY(error.has_value());
    QCOMPARE(version(fixture), QByteArray("1"));
    QVERIFY(runSql(fixture.path(), "DROP TABLE open_connections"));
    ConnectionHistory history(fixture.path());
    verifyOldRecords(history);
}

void TestMigration::killedAtEveryWrite()
{
    int killed = 0;
    bool sawOld = false;
    bool sawNew = false;
    for (int change = 1;; ++change) {
        const HistoryFixture fixture;
        QVERIFY(placeOldFile(fixture));
        const ChildResult result = runChild({QStringLiteral("open")}, "kill " + QByteArray::number(change));
        if (!result.crashed) {
            QCOMPARE(result.lines, QByteArrayList{"opened 2"});
            break;
        }
        ++killed;
        const QByteArray left = version(fixture);
        QVERIFY2(left == "1" || left == "2", left.constData());
        sawOld |= left == "1";
        sawNew |= left == "2";
        const bool hasTable =
            !querySql(fixture.path(), "SELECT 1 FROM sqlite_master WHERE name = 'open_connections'").isNull();
        QCOMPARE(hasTable, left == "2");
        QCOMPARE(querySql(fixture.path(), "PRAGMA integrity_check"), QByteArray("ok"));
        ConnectionHistory history(fixture.path());
        verifyOldRecords(history);
        QVERIFY(history.openConnection({}) > 0);
    }
    QVERIFY2(killed > 5, qPrintable(QString::number(killed)));
    QVERIFY(sawOld && sawNew);
}

void TestMigration::killedWhileBeginning()
{
    int killed = 0;
    for (int change = 1;; ++change) {
        const HistoryFixture fixture;
        const ChildResult result = runChild({QStringLiteral("open")}, "kill " + QByteArray::number(change));
        ConnectionHistory history(fixture.path());
        history.add(sampleRecord(1));
        QCOMPARE(history.count(), std::int64_t(1));
        QCOMPARE(querySql(fixture.path(), "PRAGMA integrity_check"), QByteArray("ok"));
        if (!result.crashed)
            break;
        ++killed;
    }
    QVERIFY2(killed > 10, qPrintable(QString::number(killed)));
}

void TestMigration::severalAtOnce()
{
    for (int round = 0; round < 10; ++round) {
        const HistoryFixture fixture;
        if (round % 2 == 0)
            QVERIFY(placeOldFile(fixture));
        std::vector<std::unique_ptr<QProcess>> children;
        for (int i = 0; i < 6; ++i) {
            children.push_back(std::make_unique<QProcess>());
            children.back()->start(childProgram(), {QStringLiteral("open")});
        }
        for (const auto &child : children)
            QCOMPARE(finish(*child).lines, QByteArrayList{round % 2 == 0 ? "opened 2" : "opened 0"});
        QCOMPARE(version(fixture), QByteArray("2"));
    }
}

QTEST_GUILESS_MAIN(TestMigration)
#include "test_migration.moc"
