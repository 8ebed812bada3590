// Several processes at one history, and processes that are killed: what was acknowledged is there, once.
#include "ChildProcess.h"
#include "HistoryFixture.h"

#include <QtTest>

#include <QMap>
#include <QRandomGenerator>

using zelk::ConnectionHistory;
using zelk::Record;

namespace {

/// How often each name occurs in the history.
QMap<QByteArray, int> namesIn(const HistoryFixture &fixture)
{
    QMap<QByteArray, int> names;
    for (const Record &record : ConnectionHistory(fixture.path()).list())
        ++names[QByteArray::fromStdString(record.profileName)];
    return names;
}

/// What a killed child had acknowledged: names that must be there, and names that may be or not.
struct Expectation {
    QSet<QByteArray> present;
    QSet<QByteArray> undecided;

    void take(const QByteArrayList &lines)
    {
        for (const QByteArray &line : lines) {
            const QByteArray name = line.mid(line.indexOf(' ') + 1);
            if (line.startsWith("added "))
                present.insert(name);
            else if (line.startsWith("removing ")) {
                present.remove(name);
                undecided.insert(name);
            } else if (line.startsWith("removed ")) {
                undecided.remove(name);
            }
        }
    }
};

/// Lets the child churn until it has said `lines` things, and kills it a random moment later.
QByteArrayList churnAndKill(const QString &prefix, int lines)
{
    QProcess child;
    child.start(childProgram(), {QStringLiteral("churn"), prefix});
    QByteArray said;
    while (said.count('\n') < lines && child.waitForReadyRead(30000))
        said += child.readAllStandardOutput();
    QTest::qWait(0);
    const auto moment = static_cast<qint64>(QRandomGenerator::global()->bounded(3000));
    QElapsedTimer clock;
    for (clock.start(); clock.nsecsElapsed() < moment * 1000;) {
    }
    child.kill();
    child.waitForFinished(30000);
    said += child.readAllStandardOutput();
    said.truncate(said.lastIndexOf('\n') + 1); // A line is written in one piece; there is no half one.
    QByteArrayList result = said.split('\n');
    result.removeLast();
    return result;
}

} // namespace

class TestProcesses : public QObject
{
    Q_OBJECT

private slots:
    void manyAddAtOnce();
    void readersSeeWholeTransactions();
    void killedTwoHundredTimes();
    void killedWhileOthersWork();
};

void TestProcesses::manyAddAtOnce()
{
    const HistoryFixture fixture;
    std::vector<std::unique_ptr<QProcess>> children;
    for (int i = 0; i < 5; ++i) {
        children.push_back(std::make_unique<QProcess>());
        children.back()->start(childProgram(),
                               {QStringLiteral("add"), QString::number(i) + QLatin1Char('-'), QStringLiteral("40")});
    }
    for (const auto &child : children)
        QCOMPARE(finish(*child).lines.size(), qsizetype(40));
    const QMap<QByteArray, int> names = namesIn(fixture);
    QCOMPARE(names.size(), qsizetype(200));
    QCOMPARE(names.values().count(1), qsizetype(200));
    QCOMPARE(querySql(fixture.path(), "PRAGMA integrity_check"), QByteArray("ok"));
}

void TestProcesses::readersSeeWholeTransactions()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    ConnectionHistory other(fixture.path());
    const std::vector<Record> seven(7, sampleRecord(1));
    for (int i = 1; i <= 20; ++i) {
        history.add(seven);
        QCOMPARE(other.count(), std::int64_t(7 * i));
        QCOMPARE(other.list().size(), static_cast<std::size_t>(7 * i));
    }
}

void TestProcesses::killedTwoHundredTimes()
{
    const HistoryFixture fixture;
    Expectation expected;
    for (int round = 0; round < 200; ++round) {
        const int lines = static_cast<int>(QRandomGenerator::global()->bounded(25));
        expected.take(churnAndKill(QStringLiteral("r%1-").arg(round), lines));
        // At most one record a round was added without being acknowledged, and each name is there once.
        const QMap<QByteArray, int> names = namesIn(fixture);
        for (const QByteArray &name : std::as_const(expected.present))
            QVERIFY2(names.value(name) == 1,
                     (name + " is there " + QByteArray::number(names.value(name)) + " times").constData());
        int unexpected = 0;
        for (auto name = names.begin(); name != names.end(); ++name) {
            QCOMPARE(name.value(), 1);
            unexpected += expected.present.contains(name.key()) || expected.undecided.contains(name.key()) ? 0 : 1;
        }
        QVERIFY2(unexpected <= 1, "a removed record came back, or one was added that nobody asked for");
        expected.present = QSet<QByteArray>(names.keyBegin(), names.keyEnd());
        expected.undecided.clear();
    }
    QCOMPARE(querySql(fixture.path(), "PRAGMA integrity_check"), QByteArray("ok"));
    QCOMPARE(querySql(fixture.path(), "SELECT count(*) FROM records").toInt(),
             static_cast<int>(expected.present.size()));
}

void TestProcesses::killedWhileOthersWork()
{
    const HistoryFixture fixture;
    QProcess steady;
    steady.start(childProgram(), {QStringLiteral("add"), QStringLiteral("steady"), QStringLiteral("150")});
    for (int round = 0; round < 15; ++round)
        churnAndKill(QStringLiteral("k%1-").arg(round), 5);
    QCOMPARE(finish(steady).lines.size(), qsizetype(150));
    const QMap<QByteArray, int> names = namesIn(fixture);
    for (int i = 0; i < 150; ++i)
        QVERIFY(names.value("steady" + QByteArray::number(i)) <= 1);
    QCOMPARE(querySql(fixture.path(), "PRAGMA integrity_check"), QByteArray("ok"));
}

QTEST_GUILESS_MAIN(TestProcesses)
#include "test_processes.moc"
