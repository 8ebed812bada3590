// Files that are damaged, locked, newer, read-only, out of reach or on a full disk: each ends in its own result code
// and one line on standard error, and the file stays as it was.
#include "ChildProcess.h"
#include "HistoryFixture.h"

#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

using zelk::ConnectionHistory;
using zelk::Record;
using zelk::ResultCode;

namespace {

QByteArray codeText(ResultCode code)
{
    return QByteArray::number(static_cast<int>(code));
}

void fill(const HistoryFixture &fixture, int count)
{
    std::vector<Record> records;
    records.reserve(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number)
        records.push_back(sampleRecord(number));
    ConnectionHistory(fixture.path()).add(records);
}

/// All three calls of the contract in a child fail with the code and one line each that names the file.
void verifyEveryCallFails(const HistoryFixture &fixture, ResultCode code, const QByteArray &remedy,
                          const QStringList &options = {})
{
    for (const char *call : {"all", "last", "remove"}) {
        const ChildResult result = runChild(options + QStringList{QStringLiteral("service"), QLatin1String(call)});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.lines, QByteArrayList{QByteArray(call) + ' ' + codeText(code) + " -1"});
        QCOMPARE(result.errors.count('\n'), 1);
        QVERIFY(result.errors.startsWith("netinfo: "));
        QVERIFY2(result.errors.contains(fixture.file().toUtf8()), result.errors.constData());
        QVERIFY2(result.errors.contains(remedy), result.errors.constData());
    }
}

ResultCode codeOf(const std::function<void()> &work)
{
    const auto error = errorOf(work);
    return error ? error->code() : ResultCode::Success;
}

QStringList entries(const HistoryFixture &fixture)
{
    return QDir(QFileInfo(fixture.file()).path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void damaged_data();
    void damaged();
    void damagedInTheMiddle();
    void logWithoutItsFile();
    void newer();
    void newerInTheLogAlone();
    void lockedForLonger_data();
    void lockedForLonger();
    void lockedForAMoment();
    void readOnlyFile();
    void readOnlyFolder();
    void unreadable();
    void missingParent();
    void missingFolderIsMade();
    void folderInsteadOfFile();
    void openedForReadingOnly();
    void missingFileReadsAsEmpty();
    void fullDiskAtEveryWrite();
    void fullDiskByLimit();
    void fullDiskWhenBeginning();
    void oddFileNames_data();
    void oddFileNames();
    void oneLineWhateverTheName();
    void fileDeletedWhileOpen();
    void filesArePrivate();
};

void TestFaults::damaged_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const HistoryFixture fixture;
    fill(fixture, 300);
    const QByteArray sound = HistoryFixture::contents(fixture.file());
    QVERIFY(sound.size() > 40000);
    QTest::newRow("text") << QByteArray("This is not a history.\n").repeated(500);
    QTest::newRow("one byte") << QByteArray("S");
    QTest::newRow("first page lost") << QByteArray(4096, '\0') + sound.mid(4096);
    QTest::newRow("first letter changed") << 's' + sound.mid(1);
    QTest::newRow("cut in half") << sound.left(sound.size() / 8192 * 4096);
    QTest::newRow("cut to the first page") << sound.left(4096);
    QVERIFY(runSql(fixture.path() + ".other", "CREATE TABLE t (a); INSERT INTO t VALUES (1)"));
    QTest::newRow("another program's") << HistoryFixture::contents(
        fixture.file(QStringLiteral("history.sqlite.other")));
    QVERIFY(
        runSql(fixture.path() + ".named", "PRAGMA application_id = 7; PRAGMA user_version = 1; CREATE TABLE t (a)"));
    QTest::newRow("another named one") << HistoryFixture::contents(
        fixture.file(QStringLiteral("history.sqlite.named")));
}

void TestFaults::damaged()
{
    QFETCH(QByteArray, bytes);
    const HistoryFixture fixture;
    QVERIFY(HistoryFixture::write(fixture.file(), bytes));
    QCOMPARE(codeOf([&] { ConnectionHistory(fixture.path()).add(sampleRecord(1)); }), ResultCode::Damaged);
    QCOMPARE(codeOf([&] { ConnectionHistory(fixture.path(), ConnectionHistory::Access::ReadOnly).list(); }),
             ResultCode::Damaged);
    verifyEveryCallFails(fixture, ResultCode::Damaged, "put a backup in its place");
    QCOMPARE(HistoryFixture::contents(fixture.file()), bytes);
}

/// The first page is sound, so the file opens; what cannot be read is said when it is read.
void TestFaults::damagedInTheMiddle()
{
    const HistoryFixture fixture;
    fill(fixture, 2000);
    QByteArray bytes = HistoryFixture::contents(fixture.file());
    const auto middle = bytes.size() / 8192 * 4096;
    bytes.replace(middle, 40960, QByteArray(40960, '\xA5'));
    QVERIFY(HistoryFixture::write(fixture.file(), bytes));
    QCOMPARE(codeOf([&] { ConnectionHistory(fixture.path()).list(); }), ResultCode::Damaged);
    const ChildResult result = runChild({QStringLiteral("service"), QStringLiteral("all")});
    QCOMPARE(result.lines, QByteArrayList{"all " + codeText(ResultCode::Damaged) + " -1"});
    QCOMPARE(result.errors.count('\n'), 1);
    QCOMPARE(HistoryFixture::contents(fixture.file()), bytes);
}

void TestFaults::logWithoutItsFile()
{
    const HistoryFixture fixture;
    const QString log = fixture.file(QStringLiteral("history.sqlite-wal"));
    QVERIFY(HistoryFixture::write(log, "records that are not in the file yet"));
    const auto error = errorOf([&] { ConnectionHistory history(fixture.path()); });
    QVERIFY(error && error->code() == ResultCode::Damaged);
    QVERIFY(QByteArray(error->what()).contains(log.toUtf8()));
    QCOMPARE(HistoryFixture::contents(log), QByteArray("records that are not in the file yet"));
    QVERIFY(!QFile::exists(fixture.file()));
}

void TestFaults::newer()
{
    const HistoryFixture fixture;
    fill(fixture, 10);
    QVERIFY(runSql(fixture.path(), "PRAGMA user_version = 3"));
    const QByteArray before = HistoryFixture::contents(fixture.file());
    const QStringList beside = entries(fixture);
    QCOMPARE(codeOf([&] { ConnectionHistory history(fixture.path()); }), ResultCode::NewerFile);
    QCOMPARE(codeOf([&] { ConnectionHistory history(fixture.path(), ConnectionHistory::Access::ReadOnly); }),
             ResultCode::NewerFile);
    verifyEveryCallFails(fixture, ResultCode::NewerFile, "update this program");
    QCOMPARE(HistoryFixture::contents(fixture.file()), before);
    QCOMPARE(entries(fixture), beside);
}

/// The newer program was killed before its new number went from the log into the file.
void TestFaults::newerInTheLogAlone()
{
    const HistoryFixture fixture;
    fill(fixture, 10);
    QProcess child;
    child.start(childProgram(), {QStringLiteral("hold"), QStringLiteral("PRAGMA user_version = 3")});
    QVERIFY(child.waitForReadyRead());
    child.kill();
    QVERIFY(child.waitForFinished());
    const QString log = fixture.file(QStringLiteral("history.sqlite-wal"));
    const QByteArray before = HistoryFixture::contents(fixture.file());
    const QByteArray logBefore = HistoryFixture::contents(log);
    QVERIFY(!logBefore.isEmpty());
    QCOMPARE(codeOf([&] { ConnectionHistory history(fixture.path()); }), ResultCode::NewerFile);
    verifyEveryCallFails(fixture, ResultCode::NewerFile, "update this program");
    QCOMPARE(HistoryFixture::contents(fixture.file()), before);
    QCOMPARE(HistoryFixture::contents(log), logBefore);
}

void TestFaults::lockedForLonger_data()
{
    QTest::addColumn<QString>("lock");
    QTest::addColumn<bool>("readable");
    QTest::newRow("by a writer") << QStringLiteral("BEGIN IMMEDIATE") << true;
    QTest::newRow("altogether") << QStringLiteral("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT") << false;
}

void TestFaults::lockedForLonger()
{
    QFETCH(QString, lock);
    QFETCH(bool, readable);
    const HistoryFixture fixture;
    fill(fixture, 3);
    QProcess child;
    child.start(childProgram(), {QStringLiteral("hold"), lock});
    QVERIFY(child.waitForReadyRead());
    QElapsedTimer clock;
    clock.start();
    const ChildResult removal = runChild({QStringLiteral("service"), QStringLiteral("remove")});
    QVERIFY2(clock.elapsed() >= 4900, qPrintable(QString::number(clock.elapsed())));
    QVERIFY2(clock.elapsed() < 15000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(removal.lines, QByteArrayList{"remove " + codeText(ResultCode::Busy) + " -1"});
    QCOMPARE(removal.errors.count('\n'), 1);
    QVERIFY(removal.errors.contains(fixture.file().toUtf8()));
    const ChildResult reading = runChild({QStringLiteral("service"), QStringLiteral("all")});
    QCOMPARE(reading.lines.value(0), readable ? QByteArray("all 0 3") : "all " + codeText(ResultCode::Busy) + " -1");
    child.closeWriteChannel();
    QVERIFY(child.waitForFinished());
    QCOMPARE(ConnectionHistory(fixture.path()).count(), std::int64_t(3));
}

void TestFaults::lockedForAMoment()
{
    const HistoryFixture fixture;
    fill(fixture, 1);
    QProcess child;
    child.start(childProgram(), {QStringLiteral("hold"), QStringLiteral("BEGIN IMMEDIATE")});
    QVERIFY(child.waitForReadyRead());
    QProcess waiting;
    waiting.start(childProgram(), {QStringLiteral("add"), QStringLiteral("later"), QStringLiteral("1")});
    QVERIFY(!waiting.waitForReadyRead(1000)); // It waits for the lock instead of giving up.
    child.closeWriteChannel();
    QCOMPARE(finish(waiting).lines, QByteArrayList{"added later0"});
    QVERIFY(child.waitForFinished());
}

void TestFaults::readOnlyFile()
{
    const HistoryFixture fixture;
    fill(fixture, 3);
    QVERIFY(::chmod(QFileInfo(fixture.file()).path().toLocal8Bit().constData(), 0755) == 0);
    QVERIFY(::chmod(fixture.path().c_str(), 0444) == 0);
    const QByteArray before = HistoryFixture::contents(fixture.file());
    const QStringList nobody{QStringLiteral("--nobody")};
    const ChildResult reading = runChild(nobody + QStringList{QStringLiteral("service"), QStringLiteral("all"),
                                                              QStringLiteral("last"), QStringLiteral("remove")});
    QCOMPARE(reading.lines,
             QByteArrayList({"all 0 3", "last 0 -1", "remove " + codeText(ResultCode::ReadOnly) + " -1"}));
    QCOMPARE(reading.errors.count('\n'), 1);
    QVERIFY2(reading.errors.contains(fixture.file().toUtf8()) && reading.errors.contains("the right to write"),
             reading.errors.constData());
    const ChildResult adding =
        runChild(nobody + QStringList{QStringLiteral("add"), QStringLiteral("x"), QStringLiteral("1")});
    QVERIFY(adding.lines.value(0).startsWith("error " + codeText(ResultCode::ReadOnly)));
    QCOMPARE(HistoryFixture::contents(fixture.file()), before);
}

/// The file itself could be written, but not the log that belongs beside it.
void TestFaults::readOnlyFolder()
{
    const HistoryFixture fixture;
    fill(fixture, 3);
    const QByteArray folder = QFileInfo(fixture.file()).path().toLocal8Bit();
    QVERIFY(::chmod(fixture.path().c_str(), 0666) == 0);
    QVERIFY(::chmod(folder.constData(), 0555) == 0);
    const QStringList nobody{QStringLiteral("--nobody")};
    const ChildResult adding =
        runChild(nobody + QStringList{QStringLiteral("add"), QStringLiteral("x"), QStringLiteral("1")});
    const ChildResult reading = runChild(nobody + QStringList{QStringLiteral("service"), QStringLiteral("all")});
    QVERIFY(::chmod(folder.constData(), 0755) == 0);
    QVERIFY2(adding.lines.value(0).startsWith("error " + codeText(ResultCode::ReadOnly)),
             adding.lines.join().constData());
    QCOMPARE(reading.lines, QByteArrayList{"all 0 3"});
    QCOMPARE(ConnectionHistory(fixture.path()).count(), std::int64_t(3));
}

void TestFaults::unreadable()
{
    const HistoryFixture fixture;
    fill(fixture, 3);
    QVERIFY(::chmod(QFileInfo(fixture.file()).path().toLocal8Bit().constData(), 0755) == 0);
    QVERIFY(::chmod(fixture.path().c_str(), 0000) == 0);
    verifyEveryCallFails(fixture, ResultCode::ReadOnly, "the right to write", {QStringLiteral("--nobody")});
    QVERIFY(::chmod(fixture.path().c_str(), 0600) == 0);
}

void TestFaults::missingParent()
{
    const HistoryFixture fixture;
    QVERIFY(HistoryFixture::write(fixture.file(QStringLiteral("file")), "a file where a folder should be"));
    const QString inside = fixture.file(QStringLiteral("file/deeper/history.sqlite"));
    qputenv("NETINFO_HISTORY", inside.toLocal8Bit());
    const ChildResult result = runChild({QStringLiteral("service"), QStringLiteral("all"), QStringLiteral("remove")});
    const QByteArray code = codeText(ResultCode::MissingFolder);
    QCOMPARE(result.lines, QByteArrayList({"all " + code + " -1", "remove " + code + " -1"}));
    QCOMPARE(result.errors.count('\n'), 2);
    QVERIFY2(result.errors.contains(fixture.file(QStringLiteral("file/deeper")).toUtf8()), result.errors.constData());
    QVERIFY(result.errors.contains("NETINFO_HISTORY"));
    QCOMPARE(HistoryFixture::contents(fixture.file(QStringLiteral("file"))),
             QByteArray("a file where a folder should be"));
}

void TestFaults::missingFolderIsMade()
{
    const HistoryFixture fixture;
    const std::string path = fixture.file(QStringLiteral("a/b/history.sqlite")).toStdString();
    ConnectionHistory(path).add(sampleRecord(1));
    QCOMPARE(ConnectionHistory(path).count(), std::int64_t(1));
}

void TestFaults::folderInsteadOfFile()
{
    const HistoryFixture fixture;
    QVERIFY(QDir().mkpath(fixture.file()));
    verifyEveryCallFails(fixture, ResultCode::Damaged, "not a connection history");
    QVERIFY(QFileInfo(fixture.file()).isDir());
}

void TestFaults::openedForReadingOnly()
{
    const HistoryFixture fixture;
    fill(fixture, 2);
    ConnectionHistory history(fixture.path(), ConnectionHistory::Access::ReadOnly);
    QCOMPARE(history.list().size(), std::size_t(2));
    QCOMPARE(codeOf([&] { history.add(sampleRecord(1)); }), ResultCode::ReadOnly);
    QCOMPARE(codeOf([&] { history.remove(1); }), ResultCode::ReadOnly);
    QCOMPARE(history.count(), std::int64_t(2));
    ConnectionHistory(fixture.path()).add(sampleRecord(5));
    QCOMPARE(history.count(), std::int64_t(3));
}

void TestFaults::missingFileReadsAsEmpty()
{
    const HistoryFixture fixture;
    const std::string path = fixture.file(QStringLiteral("none/history.sqlite")).toStdString();
    ConnectionHistory history(path, ConnectionHistory::Access::ReadOnly);
    QCOMPARE(history.count(), std::int64_t(0));
    QVERIFY(history.list().empty() && !history.last() && history.profiles().empty());
    QVERIFY(history.totals({0, 1}).empty() && history.openConnections().empty());
    QVERIFY(!QFile::exists(fixture.file(QStringLiteral("none"))));
    const std::int64_t before = history.dataVersion();
    ConnectionHistory(path).add(sampleRecord(1));
    QVERIFY(history.dataVersion() != before);
    QCOMPARE(history.count(), std::int64_t(1));
}

/// From the N-th write on the disk is full, for every N that adding five records takes.
void TestFaults::fullDiskAtEveryWrite()
{
    int refused = 0;
    for (int change = 1;; ++change) {
        const HistoryFixture fixture;
        const ChildResult result = runChild({QStringLiteral("add"), QStringLiteral("x"), QStringLiteral("5")},
                                            "full " + QByteArray::number(change));
        QVERIFY(!result.crashed);
        const auto added =
            static_cast<std::int64_t>(std::count_if(result.lines.begin(), result.lines.end(),
                                                    [](const QByteArray &line) { return line.startsWith("added "); }));
        if (result.exitCode == 0) {
            QCOMPARE(added, std::int64_t(5));
            break;
        }
        ++refused;
        const QByteArray last = result.lines.last();
        QVERIFY2(last.startsWith("error " + codeText(ResultCode::DiskFull)), last.constData());
        QVERIFY2(last.contains(fixture.file().toUtf8()) && last.contains("free some space"), last.constData());
        QCOMPARE(ConnectionHistory(fixture.path()).count(), added);
        QCOMPARE(querySql(fixture.path(), "PRAGMA integrity_check"), QByteArray("ok"));
    }
    QVERIFY2(refused > 20, qPrintable(QString::number(refused)));
}

void TestFaults::fullDiskByLimit()
{
    const HistoryFixture fixture;
    fill(fixture, 200);
    const ChildResult result = runChild({QStringLiteral("--limit"), QStringLiteral("120000"), QStringLiteral("add"),
                                         QStringLiteral("x"), QStringLiteral("100000")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.lines.last().startsWith("error " + codeText(ResultCode::DiskFull)),
             result.lines.last().constData());
    QCOMPARE(ConnectionHistory(fixture.path()).count(), std::int64_t(200 + result.lines.size() - 1));
    QCOMPARE(querySql(fixture.path(), "PRAGMA integrity_check"), QByteArray("ok"));
}

void TestFaults::fullDiskWhenBeginning()
{
    const HistoryFixture fixture;
    const QStringList limit{QStringLiteral("--limit"), QStringLiteral("1000")};
    verifyEveryCallFails(fixture, ResultCode::DiskFull, "free some space", limit);
    ConnectionHistory(fixture.path()).add(sampleRecord(1));
    QCOMPARE(ConnectionHistory(fixture.path()).count(), std::int64_t(1));
}

void TestFaults::oddFileNames_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"file:history?mode=memory", "100% #1?.sqlite", "h\xC3\xA4user \xF0\x9F\x93\xB6.db", ":memory:"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestFaults::oddFileNames()
{
    QFETCH(QString, name);
    const HistoryFixture fixture;
    const QString there = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QFileInfo(fixture.file()).path()));
    {
        ConnectionHistory history(name.toStdString());
        QDir::setCurrent(there);
        history.add(sampleRecord(1));
        QCOMPARE(QString::fromStdString(history.path()), fixture.file(name));
    }
    QVERIFY(QFileInfo(fixture.file(name)).size() > 0);
    ConnectionHistory reader(fixture.file(name).toStdString(), ConnectionHistory::Access::ReadOnly);
    QCOMPARE(reader.count(), std::int64_t(1));
}

void TestFaults::oneLineWhateverTheName()
{
    const HistoryFixture fixture;
    const QString name = fixture.file(QStringLiteral("two\nlines"));
    QVERIFY(HistoryFixture::write(name, "not a history"));
    qputenv("NETINFO_HISTORY", name.toLocal8Bit());
    const ChildResult result = runChild({QStringLiteral("service"), QStringLiteral("all")});
    QCOMPARE(result.errors.count('\n'), 1);
    QVERIFY(result.errors.contains("two?lines"));
}

/// Whoever has a file open that is deleted is told, while its log still holds records; once that is gone too, a new
/// file is begun. Nothing is written into the void.
void TestFaults::fileDeletedWhileOpen()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    history.add(sampleRecord(1));
    QVERIFY(QFile::remove(fixture.file()));
    const auto error = errorOf([&] { history.add(sampleRecord(2)); });
    QVERIFY(error && error->code() == ResultCode::Damaged);
    QVERIFY(QByteArray(error->what()).contains("-wal"));
    QVERIFY(QFile::remove(fixture.file(QStringLiteral("history.sqlite-wal"))));
    history.add(sampleRecord(2));
    const std::vector<Record> records = ConnectionHistory(fixture.path()).list();
    QCOMPARE(records.size(), std::size_t(1));
    QVERIFY(sameButKey(records[0], sampleRecord(2)));
}

void TestFaults::filesArePrivate()
{
    const HistoryFixture fixture;
    const QString path = fixture.file(QStringLiteral("new/history.sqlite"));
    ConnectionHistory history(path.toStdString());
    history.add(sampleRecord(1));
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    for (const QString &name : {path, path + QStringLiteral("-wal"), fixture.file(QStringLiteral("new"))}) {
        QVERIFY2(QFile::exists(name), qPrintable(name));
        QVERIFY2(!(QFile::permissions(name) & others), qPrintable(name));
    }
}

QTEST_GUILESS_MAIN(TestFaults)
#include "test_faults.moc"
