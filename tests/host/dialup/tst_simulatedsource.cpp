// Connections that are only played: what they say, when, and with which figures.
#include "host/dialup/SimulatedSource.h"
#include "host/recorder/Clock.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

using recorder::ConnectionInfo;
using recorder::Counters;

namespace {

// Everything that a source says, in order.
class Ear : public QObject
{
public:
    explicit Ear(SimulatedSource &source)
    {
        connect(&source, &SimulatedSource::settled, this, [this] { said << "settled"; });
        connect(&source, &SimulatedSource::connectionUp, this, [this](const ConnectionInfo &info) {
            said << "up";
            infos << info;
        });
        connect(&source, &SimulatedSource::lastCounters, this, [this](const QString &id, const Counters &counters) {
            said << "counters";
            ids << id;
            last = counters;
        });
        connect(&source, &SimulatedSource::connectionDown, this, [this](const QString &id, zelk::EndReason reason) {
            said << "down";
            ids << id;
            reasons << reason;
        });
    }

    QStringList said;
    QList<ConnectionInfo> infos;
    QStringList ids;
    QList<zelk::EndReason> reasons;
    Counters last;
};

zelk::OpenConnection rowOf(const QString &owner)
{
    zelk::OpenConnection row;
    row.serviceOwner = owner.toStdString();
    row.bootId = recorder::bootId().toStdString();
    return row;
}

// As the source names the process that plays a connection; the second part is what distinguishes it.
QString ownerIn(qint64 processId, const QString &beginning)
{
    return QString("netinfo.simulation/%1/%2").arg(processId).arg(beginning);
}

QString beginningOf(qint64 processId)
{
    QFile file(QString("/proc/%1/stat").arg(processId));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QString line = QString::fromLatin1(file.readAll());
    return line.mid(line.lastIndexOf(')') + 2).split(' ').value(19);
}

} // namespace

class SimulatedSourceTest : public QObject
{
    Q_OBJECT

private slots:
    void playsUpThenFiguresThenDown();
    void countersGrowMeanwhile();
    void refusesImpossibleLengths_data();
    void refusesImpossibleLengths();
    void refusesWhileStopped();
    void playsSeveralAtOnce();
    void endsAllAtOnce();
    void fallsSilentWhenStopped();
    void ownsWhatDeadPlayersLeft();
};

void SimulatedSourceTest::playsUpThenFiguresThenDown()
{
    SimulatedSource source;
    Ear ear(source);
    source.start();
    QVERIFY(source.play(1));
    QCOMPARE(ear.said, QStringList({"settled", "up"}));
    QTRY_COMPARE(ear.said, QStringList({"settled", "up", "counters", "down"}));

    const ConnectionInfo &info = ear.infos[0];
    QCOMPARE(ear.ids, QStringList({info.id, info.id}));
    QCOMPARE(info.profile, QString("simulation.example"));
    QVERIFY2(info.baseline && info.baseline->sent == 0 && info.baseline->received == 0, "counts from zero");
    QVERIFY(source.owns(rowOf(info.serviceOwner)));
    QCOMPARE(ear.last.sent, SimulatedSource::sentPerSecond);
    QCOMPARE(ear.last.received, SimulatedSource::receivedPerSecond);
    QCOMPARE(ear.reasons[0], zelk::EndReason::User);
    QVERIFY(source.status().text().isEmpty());
}

void SimulatedSourceTest::countersGrowMeanwhile()
{
    SimulatedSource source;
    Ear ear(source);
    source.start();
    QVERIFY(source.play(SimulatedSource::longestSeconds));
    const auto counters = ear.infos[0].counters;

    const Counters first = *counters->read();
    QTRY_VERIFY(counters->read()->sent > first.sent && counters->read()->received > first.received);
    QVERIFY(counters->read()->received < SimulatedSource::receivedPerSecond * 60);
}

void SimulatedSourceTest::refusesImpossibleLengths_data()
{
    QTest::addColumn<int>("seconds");
    QTest::newRow("none") << 0;
    QTest::newRow("negative") << -5;
    QTest::newRow("over a day") << SimulatedSource::longestSeconds + 1;
    QTest::newRow("largest number") << std::numeric_limits<int>::max();
}

void SimulatedSourceTest::refusesImpossibleLengths()
{
    QFETCH(int, seconds);
    SimulatedSource source;
    Ear ear(source);
    source.start();

    const QString warning = QString("A simulated connection cannot last %1 seconds; choose 1 to 86400.").arg(seconds);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    QVERIFY(!source.play(seconds));
    QCOMPARE(ear.said, QStringList{"settled"});
}

void SimulatedSourceTest::refusesWhileStopped()
{
    SimulatedSource source;
    Ear ear(source);
    QTest::ignoreMessage(QtWarningMsg, "A connection can be simulated only while connections are being recorded.");
    QVERIFY(!source.play(1));
    QVERIFY(ear.said.isEmpty());
}

void SimulatedSourceTest::playsSeveralAtOnce()
{
    SimulatedSource source;
    Ear ear(source);
    source.start();
    QVERIFY(source.play(2));
    QVERIFY(source.play(1));
    QVERIFY(ear.infos[0].id != ear.infos[1].id);
    QVERIFY(ear.infos[0].profileUuid != ear.infos[1].profileUuid);

    QTRY_COMPARE(ear.reasons.size(), 2);
    const QString later = ear.infos[0].id;
    const QString earlier = ear.infos[1].id;
    QCOMPARE(ear.ids, QStringList({earlier, earlier, later, later}));
}

void SimulatedSourceTest::endsAllAtOnce()
{
    SimulatedSource source;
    Ear ear(source);
    source.start();
    source.play(3600);
    source.play(1800);
    source.endAll();

    QCOMPARE(ear.said, QStringList({"settled", "up", "up", "counters", "down", "counters", "down"}));
    QVERIFY(ear.last.received < SimulatedSource::receivedPerSecond * 60);
    source.endAll();
    QCOMPARE(ear.said.size(), 7);
}

void SimulatedSourceTest::fallsSilentWhenStopped()
{
    SimulatedSource source;
    Ear ear(source);
    source.start();
    source.play(1);
    source.stop();

    QVERIFY(ear.infos[0].counters->read().has_value());
    SimulatedSource other;
    Ear otherEar(other);
    other.start();
    other.play(1);
    QTRY_VERIFY(otherEar.said.contains("down")); // By then the stopped one would have ended as well.
    QCOMPARE(ear.said, QStringList({"settled", "up"}));
    source.start();
    source.endAll();
    QCOMPARE(ear.said, QStringList({"settled", "up", "settled"}));
}

void SimulatedSourceTest::ownsWhatDeadPlayersLeft()
{
    QProcess living;
    living.start("sleep", {"600"});
    QVERIFY(living.waitForStarted());
    const qint64 processId = living.processId();
    const QString owner = ownerIn(processId, beginningOf(processId));

    SimulatedSource source;
    QVERIFY2(!source.owns(rowOf(owner)), "another program is still playing it");
    QVERIFY2(source.owns(rowOf(ownerIn(processId, "1"))), "the process id has been given to another program");
    zelk::OpenConnection row = rowOf(owner);
    row.bootId = "an-earlier-boot";
    QVERIFY2(source.owns(row), "no process outlives a boot");
    QVERIFY2(!source.owns(rowOf(":1.5")), "a connection of the network service");

    living.kill();
    QVERIFY(living.waitForFinished());
    QVERIFY2(source.owns(rowOf(owner)), "its player is gone");
}

QTEST_GUILESS_MAIN(SimulatedSourceTest)
#include "tst_simulatedsource.moc"
