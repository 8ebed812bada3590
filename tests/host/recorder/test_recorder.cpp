// The recorder's state machine, driven by a source and a clock of the test's own, on a real history file.
#include "FakeSource.h"

#include "host/recorder/Recorder.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>

using namespace recorder;

namespace {

constexpr std::int64_t noon = 1'700'000'000'000;
constexpr std::int64_t nightMs = 28'800'000;

} // namespace

class TestRecorder : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void announcesAndRecords();
    void countsFromWhereTheSourceSays();
    void lastWordOnlyRaises();
    void fallingCounterIsANewStart();
    void samplesByItselfWhileUp();
    void resumesAfterADeath();
    void doesNotResume_data();
    void doesNotResume();
    void leftoverTakesTheRemainder();
    void leftoverOfAnotherBoot();
    void serviceComesBack();
    void serviceComesBackWithoutIt();
    void endsWhileTheServiceIsAway();
    void endBySleepHeardAfterwards();
    void looksAgainAfterSleep();
    void historyInTheWayIsWaitedFor();
    void recordThatCannotBeWrittenIsKept();
    void rowTakenAwayIsWrittenAgain();
    void rowClosedBySomeoneElseIsNotRecordedAgain();
    void worstStatusWins();
    void namesTheHistoryCannotTake();
    void rowsOfOthersAreLeftAlone();

private:
    void startRecorder();
    void passTime(std::int64_t ms) { m_now = {m_now.wall + ms, m_now.boot + ms, m_now.monotonic + ms}; }
    std::vector<zelk::Record> records() const { return zelk::ConnectionHistory(path().toStdString()).list(); }
    std::vector<zelk::OpenConnection> openRows() const
    {
        return zelk::ConnectionHistory(path().toStdString()).openConnections();
    }
    QString path() const { return m_folder->filePath(QStringLiteral("sub/history.sqlite")); }
    void changeRow(const std::function<void(zelk::OpenConnection &)> &change) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Recorder> m_recorder;
    FakeSource *m_source = nullptr; // owned by the recorder
    Moment m_now;
};

void TestRecorder::init()
{
    qRegisterMetaType<Announcement>();
    m_folder = std::make_unique<QTemporaryDir>();
    m_now = {noon, 50'000, 40'000};
    startRecorder();
}

void TestRecorder::cleanup()
{
    m_recorder.reset();
}

// The process before this one has died if there was one: nothing of it but the file is left.
void TestRecorder::startRecorder()
{
    RecorderOptions options;
    options.historyPath = path();
    options.sampleMs = 20;
    options.retryMs = 20;
    options.clock = [this] { return m_now; };
    m_recorder = std::make_unique<Recorder>(options);
    m_source = new FakeSource;
}

void TestRecorder::changeRow(const std::function<void(zelk::OpenConnection &)> &change) const
{
    zelk::ConnectionHistory history(path().toStdString());
    zelk::OpenConnection row = history.openConnections().at(0);
    change(row);
    history.checkpoint(row);
}

void TestRecorder::announcesAndRecords()
{
    m_recorder->addSource(m_source);
    QSignalSpy established(m_recorder.get(), &Recorder::connectionEstablished);
    QSignalSpy ended(m_recorder.get(), &Recorder::connectionEnded);
    const auto counters = m_source->bringUp("1");
    QCOMPARE(established.count(), 1);
    QCOMPARE(established.at(0).at(0).value<Announcement>().profile, QStringLiteral("internet.example"));
    QCOMPARE(openRows().size(), std::size_t(1));
    std::size_t durable = 0;
    connect(m_recorder.get(), &Recorder::connectionEnded, this, [&] { durable = records().size(); });
    passTime(61'400);
    counters->now = Counters{1000 + 300, 2000 + 70'000};
    emit m_source->connectionDown("1", zelk::EndReason::User);
    QCOMPARE(ended.count(), 1);
    QCOMPARE(durable, std::size_t(1)); // it was in the file when it was announced
    QVERIFY(openRows().empty());
    const zelk::Record record = records().at(0);
    QCOMPARE(record.key, std::int64_t(ended.at(0).at(0).value<Announcement>().record));
    QCOMPARE(record.profile, std::string("internet.example"));
    QCOMPARE(record.profileName, std::string("Web Mobile"));
    QCOMPARE(record.start, noon / 1000);
    QCOMPARE(record.end, noon / 1000 + 61);
    QCOMPARE(record.connectedSeconds, std::int64_t(61));
    QCOMPARE(record.bytesUploaded, std::int64_t(300));
    QCOMPARE(record.bytesDownloaded, std::int64_t(70'000));
    QCOMPARE(record.quality, unsigned(zelk::QualityExact));
    QCOMPARE(record.endReason, zelk::EndReason::User);
    QCOMPARE(record.origin, zelk::Origin::Recorded);
}

void TestRecorder::countsFromWhereTheSourceSays()
{
    m_source->baseline = Counters{0, 0};
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    emit m_source->connectionDown("1", zelk::EndReason::User);
    QCOMPARE(records().at(0).bytesUploaded, std::int64_t(1000));
    QCOMPARE(records().at(0).bytesDownloaded, std::int64_t(2000));
}

void TestRecorder::lastWordOnlyRaises()
{
    m_recorder->addSource(m_source);
    const auto counters = m_source->bringUp("1");
    counters->now = Counters{1500, 2600};
    m_recorder->checkpoint();
    counters->now.reset(); // pulled
    emit m_source->lastCounters("1", Counters{1700, 0});
    emit m_source->connectionDown("1", zelk::EndReason::Unplugged);
    QCOMPARE(records().at(0).bytesUploaded, std::int64_t(700));
    QCOMPARE(records().at(0).bytesDownloaded, std::int64_t(600));
    QCOMPARE(records().at(0).quality, unsigned(zelk::QualityExact));
}

void TestRecorder::fallingCounterIsANewStart()
{
    m_recorder->addSource(m_source);
    const auto counters = m_source->bringUp("1");
    counters->now = Counters{5000, 2500};
    m_recorder->checkpoint();
    counters->now = Counters{100, 2600};
    m_recorder->checkpoint();
    counters->now = Counters{150, 2700};
    emit m_source->connectionDown("1", zelk::EndReason::User);
    QCOMPARE(records().at(0).bytesUploaded, std::int64_t(4000 + 50)); // nothing for the fall
    QCOMPARE(records().at(0).bytesDownloaded, std::int64_t(700));
    QCOMPARE(records().at(0).quality, unsigned(zelk::QualityCounterRestarted));
}

void TestRecorder::samplesByItselfWhileUp()
{
    m_recorder->addSource(m_source);
    const auto counters = m_source->bringUp("1");
    counters->now = Counters{4321, 2000};
    QTRY_COMPARE(openRows().at(0).bytesUploaded, std::int64_t(3321));
}

void TestRecorder::resumesAfterADeath()
{
    m_recorder->addSource(m_source);
    const auto counters = m_source->bringUp("1");
    const std::int64_t key = openRows().at(0).key;
    startRecorder();
    m_source->settlesAtOnce = false;
    m_recorder->addSource(m_source);
    QCOMPARE(m_recorder->activeConnections().size(), 1);
    QVERIFY(!m_recorder->activeConnections().at(0).confirmed);
    QVERIFY(!m_recorder->isSettled());
    counters->now = Counters{9000, 2000};
    QSignalSpy established(m_recorder.get(), &Recorder::connectionEstablished);
    passTime(10'000);
    m_source->bringUp("1", "uuid-1", counters);
    emit m_source->settled();
    QVERIFY(m_recorder->isSettled());
    QCOMPARE(established.count(), 1);
    QCOMPARE(std::int64_t(established.at(0).at(0).value<Announcement>().connection), key); // the same to a listener
    emit m_source->connectionDown("1", zelk::EndReason::Network);
    QCOMPARE(records().size(), std::size_t(1));
    const zelk::Record record = records().at(0);
    QCOMPARE(record.bytesUploaded, std::int64_t(8000));
    QCOMPARE(record.connectedSeconds, std::int64_t(10));
    QCOMPARE(record.quality, unsigned(zelk::QualityResumed));
    QCOMPARE(record.endReason, zelk::EndReason::Network);
}

void TestRecorder::doesNotResume_data()
{
    QTest::addColumn<QString>("what");
    for (const char *what : {"another profile", "another link", "another boot", "dialled anew"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void TestRecorder::doesNotResume()
{
    QFETCH(QString, what);
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    startRecorder();
    m_source->settlesAtOnce = false;
    if (what == "another boot")
        changeRow([](zelk::OpenConnection &row) { row.bootId = "another"; });
    m_recorder->addSource(m_source);
    if (what == "another link")
        m_source->interfaceIndex = 8;
    m_source->bringUp(what == "dialled anew" ? "2" : "1", what == "another profile" ? "uuid-2" : "uuid-1");
    emit m_source->settled();
    QCOMPARE(records().size(), std::size_t(1));
    QCOMPARE(records().at(0).quality, unsigned(zelk::QualityRecovered));
    QCOMPARE(openRows().size(), std::size_t(1));
    QCOMPARE(openRows().at(0).quality, unsigned(zelk::QualityExact));
}

void TestRecorder::leftoverTakesTheRemainder()
{
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    passTime(5000);
    m_recorder->checkpoint();
    startRecorder();
    passTime(3'600'000);
    m_source->left = std::make_shared<FakeCounters>();
    m_source->left->now = Counters{7000, 2100};
    QSignalSpy ended(m_recorder.get(), &Recorder::connectionEnded);
    m_recorder->addSource(m_source);
    QCOMPARE(ended.count(), 1);
    const zelk::Record record = records().at(0);
    QCOMPARE(record.bytesUploaded, std::int64_t(6000));
    QCOMPARE(record.connectedSeconds, std::int64_t(5)); // nobody knows of a longer time
    QCOMPARE(record.end, noon / 1000 + 5);
    QCOMPARE(record.quality, unsigned(zelk::QualityRecovered));
    QCOMPARE(record.endReason, zelk::EndReason::Unknown);
}

void TestRecorder::leftoverOfAnotherBoot()
{
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    passTime(5000);
    m_recorder->checkpoint();
    startRecorder();
    changeRow([](zelk::OpenConnection &row) { row.bootId = "another"; });
    m_source->left = std::make_shared<FakeCounters>(); // the link's name is in use again
    m_source->left->now = Counters{7000, 2100};
    m_now = {noon + 3'600'000, 10, 10};
    m_recorder->addSource(m_source);
    QCOMPARE(records().at(0).bytesUploaded, std::int64_t(0));
    QCOMPARE(records().at(0).connectedSeconds, std::int64_t(5));
    QCOMPARE(records().at(0).quality, unsigned(zelk::QualityRecovered));
}

void TestRecorder::serviceComesBack()
{
    m_recorder->addSource(m_source);
    QSignalSpy established(m_recorder.get(), &Recorder::connectionEstablished);
    const auto counters = m_source->bringUp("1");
    emit m_source->interrupted();
    QVERIFY(!m_recorder->isSettled());
    counters->now = Counters{3000, 2000};
    QTRY_COMPARE(openRows().at(0).bytesUploaded, std::int64_t(2000)); // it goes on being sampled
    m_source->owner = ":1.9";
    counters->now = Counters{4000, 2000};
    m_source->bringUp("2", "uuid-1", counters);
    emit m_source->settled();
    emit m_source->connectionDown("2", zelk::EndReason::User);
    QCOMPARE(established.count(), 1); // still the same connection
    QCOMPARE(records().size(), std::size_t(1));
    QCOMPARE(records().at(0).bytesUploaded, std::int64_t(3000));
    QCOMPARE(records().at(0).quality, unsigned(zelk::QualityResumed));
}

void TestRecorder::serviceComesBackWithoutIt()
{
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    emit m_source->interrupted();
    emit m_source->settled();
    QCOMPARE(records().at(0).quality, unsigned(zelk::QualityRecovered));
    QVERIFY(m_recorder->activeConnections().isEmpty());
}

void TestRecorder::endsWhileTheServiceIsAway()
{
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    emit m_source->interrupted();
    emit m_source->connectionDown("1", zelk::EndReason::Unplugged);
    QCOMPARE(records().at(0).endReason, zelk::EndReason::Unplugged);
    emit m_source->settled();
    QCOMPARE(records().size(), std::size_t(1));
}

void TestRecorder::endBySleepHeardAfterwards()
{
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    passTime(30'000);
    m_recorder->checkpoint();
    m_now.wall += nightMs; // a night, of which the monotonic clock knows nothing
    m_now.boot += nightMs;
    emit m_source->connectionDown("1", zelk::EndReason::Sleep);
    QCOMPARE(records().at(0).connectedSeconds, std::int64_t(30));
    QCOMPARE(records().at(0).end, noon / 1000 + 30);
}

void TestRecorder::looksAgainAfterSleep()
{
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    passTime(5000);
    m_recorder->checkpoint();
    QCOMPARE(m_source->refreshed, 0);
    m_now.wall += 60'000;
    m_now.boot += 60'000;
    QTRY_COMPARE(m_source->refreshed, 1); // noticed by the clocks alone
    emit m_source->connectionDown("1", zelk::EndReason::User);
    QCOMPARE(records().at(0).connectedSeconds, std::int64_t(65)); // the link stayed up meanwhile
}

void TestRecorder::historyInTheWayIsWaitedFor()
{
    QFile inTheWay(m_folder->filePath("sub"));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QSignalSpy changed(m_recorder.get(), &Recorder::statusChanged);
    m_recorder->addSource(m_source);
    QVERIFY(!m_source->started);
    QCOMPARE(m_recorder->status().code, Status::NoHistory);
    QVERIFY2(m_recorder->status().text().contains(m_folder->filePath("sub")), qPrintable(m_recorder->status().text()));
    QCOMPARE(changed.count(), 1);
    QVERIFY(inTheWay.remove());
    QTRY_VERIFY(m_source->started);
    QCOMPARE(m_recorder->status().code, Status::Ok);
}

// A full disk, as far as the history can tell: no file of this process may grow.
void TestRecorder::recordThatCannotBeWrittenIsKept()
{
    m_recorder->addSource(m_source);
    const auto counters = m_source->bringUp("1");
    QSignalSpy ended(m_recorder.get(), &Recorder::connectionEnded);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit full{0, usual.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &full), 0);
    counters->now = Counters{1800, 2000};
    emit m_source->connectionDown("1", zelk::EndReason::User);
    const Status status = m_recorder->status();
    const auto announcedTooEarly = ended.count();
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &usual), 0);
    QCOMPARE(status.code, Status::NoHistory);
    QCOMPARE(announcedTooEarly, 0);
    QTRY_COMPARE(ended.count(), 1);
    QCOMPARE(m_recorder->status().code, Status::Ok);
    QCOMPARE(records().size(), std::size_t(1));
    QCOMPARE(records().at(0).bytesUploaded, std::int64_t(800));
}

void TestRecorder::rowTakenAwayIsWrittenAgain()
{
    m_recorder->addSource(m_source);
    const auto counters = m_source->bringUp("1");
    {
        zelk::ConnectionHistory history(path().toStdString());
        const zelk::OpenConnection row = history.openConnections().at(0);
        history.closeConnection(row.key, zelk::Record());
        history.remove(history.list().at(0).key);
    }
    counters->now = Counters{1600, 2000};
    m_recorder->checkpoint();
    m_recorder->checkpoint();
    QCOMPARE(openRows().size(), std::size_t(1));
    QCOMPARE(openRows().at(0).bytesUploaded, std::int64_t(600));
}

void TestRecorder::rowClosedBySomeoneElseIsNotRecordedAgain()
{
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    QSignalSpy ended(m_recorder.get(), &Recorder::connectionEnded);
    {
        zelk::ConnectionHistory history(path().toStdString());
        history.closeConnection(history.openConnections().at(0).key, zelk::Record());
    }
    emit m_source->connectionDown("1", zelk::EndReason::User);
    QCOMPARE(records().size(), std::size_t(1));
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended.at(0).at(0).value<Announcement>().record, qint64(0));
}

void TestRecorder::worstStatusWins()
{
    m_recorder->addSource(m_source);
    QCOMPARE(m_recorder->status().code, Status::Ok);
    QVERIFY(m_recorder->status().text().isEmpty());
    m_source->trouble = {Status::NoNetworkManager, {}};
    QSignalSpy changed(m_recorder.get(), &Recorder::statusChanged);
    emit m_source->statusChanged();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_recorder->status().text(),
             QStringLiteral("Connections are not recorded: NetworkManager is not running"));
}

void TestRecorder::namesTheHistoryCannotTake()
{
    m_recorder->addSource(m_source);
    ConnectionInfo info;
    info.id = "1";
    info.profile = QString(5000, QChar(0x00FC)) + QChar(0);
    info.profileName = QStringLiteral("a") + QChar(0) + "b";
    info.activePath = "/fake/1";
    info.counters = std::make_shared<FakeCounters>();
    emit m_source->connectionUp(info);
    emit m_source->connectionDown("1", zelk::EndReason::User);
    QCOMPARE(records().at(0).profile, QString(512, QChar(0x00FC)).toStdString());
    QCOMPARE(records().at(0).profileName, std::string("ab"));
}

void TestRecorder::rowsOfOthersAreLeftAlone()
{
    m_recorder->addSource(m_source);
    m_source->bringUp("1");
    startRecorder();
    changeRow([](zelk::OpenConnection &row) { row.activePath = "/somebody/else"; });
    m_recorder->addSource(m_source);
    QVERIFY(records().empty());
    QCOMPARE(openRows().size(), std::size_t(1));
}

QTEST_GUILESS_MAIN(TestRecorder)
#include "test_recorder.moc"
