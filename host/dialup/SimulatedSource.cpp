// A timer for the end of each connection, and a counter that the clock drives.
#include "SimulatedSource.h"

#include "host/recorder/Clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <QUuid>

#include <algorithm>

namespace {

const char identity[] = "netinfo.simulation";

// When a process began, as the kernel counts it; empty when there is no such process. With the process id it names a
// process for the length of a boot, also after the id has been given to another one.
QByteArray beginningOf(const QByteArray &processId)
{
    QFile file(QString::fromLatin1("/proc/%1/stat").arg(QString::fromLatin1(processId)));
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    // The second field is the program's name in brackets and may hold anything; fields count from behind it.
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ').value(19);
}

QString ownerName()
{
    const QByteArray processId = QByteArray::number(QCoreApplication::applicationPid());
    return QString::fromLatin1(identity + QByteArray("/") + processId + '/' + beginningOf(processId));
}

bool isAlive(const QByteArray &owner)
{
    const QList<QByteArray> parts = owner.split('/');
    return parts.size() == 3 && !parts[2].isEmpty() && beginningOf(parts[1]) == parts[2];
}

} // namespace

// Grows with the time since the connection came up, and never beyond what its full length carries.
class SimulatedSource::Counter : public recorder::CounterReader
{
public:
    explicit Counter(int seconds) : m_lengthMs(qint64(seconds) * 1000) { m_since.start(); }

    std::optional<recorder::Counters> read() override
    {
        const qint64 elapsedMs = std::min(m_since.elapsed(), m_lengthMs);
        return recorder::Counters{sentPerSecond * elapsedMs / 1000, receivedPerSecond * elapsedMs / 1000};
    }

private:
    QElapsedTimer m_since;
    const qint64 m_lengthMs;
};

SimulatedSource::SimulatedSource(QObject *parent) : ConnectionSource(parent) {}

SimulatedSource::~SimulatedSource() = default;

bool SimulatedSource::play(int seconds)
{
    if (seconds < 1 || seconds > longestSeconds) {
        qWarning("A simulated connection cannot last %d seconds; choose 1 to %d.", seconds, longestSeconds);
        return false;
    }
    if (!m_started) {
        qWarning("A connection can be simulated only while connections are being recorded.");
        return false;
    }
    recorder::ConnectionInfo info;
    info.id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    info.profile = QStringLiteral("simulation.example");
    info.profileName = QStringLiteral("Simulated connection");
    info.profileUuid = info.id;
    info.type = QStringLiteral("simulated");
    info.serviceOwner = ownerName();
    info.activePath = info.id;
    info.baseline = recorder::Counters{};

    Playing &playing = m_up[info.id];
    playing.counter = std::make_shared<Counter>(seconds);
    playing.end = new QTimer(this);
    playing.end->setSingleShot(true);
    playing.end->setTimerType(Qt::PreciseTimer);
    connect(playing.end, &QTimer::timeout, this, [this, id = info.id] { end(id); });
    playing.end->start(seconds * 1000);
    info.counters = playing.counter;
    emit connectionUp(info);
    return true;
}

void SimulatedSource::endAll()
{
    const QStringList ids = m_up.keys();
    for (const QString &id : ids)
        end(id);
}

void SimulatedSource::end(const QString &id)
{
    const Playing playing = m_up.take(id);
    playing.end->stop();
    playing.end->deleteLater();
    emit lastCounters(id, *playing.counter->read());
    emit connectionDown(id, zelk::EndReason::User);
}

void SimulatedSource::start()
{
    m_started = true;
    emit settled();
}

void SimulatedSource::stop()
{
    m_started = false;
    for (const Playing &playing : std::as_const(m_up))
        delete playing.end;
    m_up.clear();
}

// A connection that is played ends with the process that plays it, so nothing is ever resumed: what a dead process has
// left open is owned so that the recorder closes it. What another living one plays is none of our business.
bool SimulatedSource::owns(const zelk::OpenConnection &row) const
{
    const QByteArray owner = QByteArray::fromStdString(row.serviceOwner);
    if (!owner.startsWith(identity))
        return false;
    const bool sameBoot = row.bootId == recorder::bootId().toStdString();
    return !sameBoot || owner == ownerName().toLatin1() || !isAlive(owner);
}

recorder::Status SimulatedSource::status() const
{
    return {};
}
