// Removed records leave nothing readable behind, neither in the file nor in what lies beside it.
#include "ChildProcess.h"
#include "HistoryFixture.h"

#include <statistics/ZelkStatistics.h>

#include <QtTest>

#include <random>

using zelk::ConnectionHistory;
using zelk::Record;

namespace {

/// Every byte of the history on the disk: the file, its log and the log's index.
QByteArray everything(const HistoryFixture &fixture)
{
    QByteArray bytes;
    const QDir folder(QFileInfo(fixture.file()).path());
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden))
        bytes += HistoryFixture::contents(folder.filePath(name));
    return bytes;
}

Record marked(int number)
{
    Record record = sampleRecord(number);
    record.profile =
        "PROFILE" + std::to_string(1000000 + number) + std::string(static_cast<std::size_t>(number % 97), 'p');
    record.profileName = "OWNNAME" + std::to_string(1000000 + number);
    record.originDetail = "DETAIL" + std::to_string(1000000 + number);
    return record;
}

QStringList tracesOf(const QByteArray &bytes, int number)
{
    QStringList found;
    for (const char *field : {"PROFILE", "OWNNAME", "DETAIL"}) {
        if (bytes.contains(field + QByteArray::number(1000000 + number)))
            found += QLatin1String(field) + QString::number(number);
    }
    return found;
}

} // namespace

class TestTraces : public QObject
{
    Q_OBJECT

private slots:
    void oneRemovalWhileOpen();
    void allRemovedWhileOpen();
    void manyRemovedThenClosed();
    void removedByAKilledProcess();
};

void TestTraces::oneRemovalWhileOpen()
{
    const HistoryFixture fixture;
    ConnectionHistory history(fixture.path());
    history.add(marked(1));
    const std::int64_t key = history.add(marked(2));
    QCOMPARE(tracesOf(everything(fixture), 2).size(), qsizetype(3));
    QVERIFY(history.remove(key));
    QCOMPARE(tracesOf(everything(fixture), 2), QStringList());
    QCOMPARE(tracesOf(everything(fixture), 1).size(), qsizetype(3));
}

void TestTraces::allRemovedWhileOpen()
{
    const HistoryFixture fixture;
    std::vector<Record> records;
    records.reserve(500);
    for (int number = 0; number < 500; ++number)
        records.push_back(marked(number));
    ConnectionHistory(fixture.path()).add(records);
    _ZELK_ST_CONNRECORD *array = nullptr;
    int count = 0;
    QCOMPARE(ZELK_Statistics_GetAllConnRecord(&array, &count), 0L);
    ZELK_Statistics_ReleaseConnRecord(array);
    QCOMPARE(count, 500);
    for (int i = 0; i < count; ++i)
        QCOMPARE(ZELK_Statistics_ConnRecord_RemoveRecord(0), 0L);
    const QByteArray bytes = everything(fixture);
    for (int number = 0; number < 500; ++number)
        QCOMPARE(tracesOf(bytes, number), QStringList());
}

/// Enough of them, in an order that makes SQLite move what remains from page to page.
void TestTraces::manyRemovedThenClosed()
{
    const HistoryFixture fixture;
    std::mt19937 random(7);
    std::map<int, std::int64_t> alive;
    std::vector<int> dead;
    {
        ConnectionHistory history(fixture.path());
        QVERIFY(runSql(fixture.path(), "PRAGMA synchronous = OFF"));
        for (int number = 0; number < 3000; ++number) {
            std::vector<Record> batch(1, marked(number));
            alive[number] = history.add(batch[0]);
            while (!alive.empty() && random() % 100 < 44) {
                auto victim = alive.begin();
                std::advance(victim, static_cast<std::ptrdiff_t>(random() % alive.size()));
                QVERIFY(history.remove(victim->second));
                dead.push_back(victim->first);
                alive.erase(victim);
            }
        }
    }
    QVERIFY(dead.size() > 1500 && alive.size() > 300);
    const QByteArray bytes = everything(fixture);
    for (const int number : dead)
        QCOMPARE(tracesOf(bytes, number), QStringList());
    for (const auto &entry : alive)
        QCOMPARE(tracesOf(bytes, entry.first).size(), qsizetype(3));
}

/// The process dies with its removals still in the log; whoever opens the history next cleans up.
void TestTraces::removedByAKilledProcess()
{
    const HistoryFixture fixture;
    std::vector<Record> records;
    records.reserve(200);
    for (int number = 0; number < 200; ++number)
        records.push_back(marked(number));
    ConnectionHistory(fixture.path()).add(records);
    const ChildResult result =
        runChild({QStringLiteral("remove-all-and-die"), QString::fromStdString(marked(5).profileName)});
    QVERIFY(result.crashed);
    ConnectionHistory history(fixture.path());
    QCOMPARE(history.list().size(), std::size_t(1));
    const QByteArray bytes = everything(fixture);
    QCOMPARE(tracesOf(bytes, 5).size(), qsizetype(3));
    for (int number = 0; number < 200; ++number) {
        if (number != 5)
            QCOMPARE(tracesOf(bytes, number), QStringList());
    }
}

QTEST_GUILESS_MAIN(TestTraces)
#include "test_traces.moc"
