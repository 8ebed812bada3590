// Runs the real client, which records and speaks on the bus, over a source that does as it is told.
#include "RecorderElsewhere.h"

#include "host/recorder/RecorderClient.h"

namespace {

class FixedCounters : public recorder::CounterReader
{
public:
    std::optional<recorder::Counters> read() override { return recorder::Counters{1000, 2000}; }
};

const char connectionName[] = "recorder elsewhere";

} // namespace

class ScriptedSource : public recorder::ConnectionSource
{
public:
    void start() override { emit settled(); }
    void stop() override {}
    bool owns(const zelk::OpenConnection &row) const override { return row.serviceOwner == "scripted"; }
    recorder::Status status() const override { return {}; }

    void up(const QString &profile)
    {
        recorder::ConnectionInfo info;
        info.id = "1";
        info.profile = profile;
        info.serviceOwner = "scripted";
        info.baseline = recorder::Counters{};
        info.counters = std::make_shared<FixedCounters>();
        emit connectionUp(info);
    }
    void down() { emit connectionDown("1", zelk::EndReason::Network); }
};

RecorderElsewhere::RecorderElsewhere(const QString &historyPath)
{
    m_context.moveToThread(&m_thread);
    m_thread.start();
    there([this, historyPath] {
        recorder::ClientOptions options;
        options.recorder.historyPath = historyPath;
        options.sessionBus =
            QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), connectionName);
        options.makeSource = [this] { return m_source = new ScriptedSource; };
        m_client = std::make_unique<recorder::RecorderClient>(options);
        m_client->start();
        if (!m_client->recordsHere())
            qFatal("Somebody else records already.");
    });
}

RecorderElsewhere::~RecorderElsewhere()
{
    there([this] {
        m_client.reset();
        QDBusConnection::disconnectFromBus(connectionName);
    });
    m_thread.quit();
    m_thread.wait();
}

void RecorderElsewhere::connectionUp(const QString &profile)
{
    there([this, profile] { m_source->up(profile); });
}

void RecorderElsewhere::connectionDown()
{
    there([this] { m_source->down(); });
}

void RecorderElsewhere::there(const std::function<void()> &work)
{
    QMetaObject::invokeMethod(&m_context, work, Qt::BlockingQueuedConnection);
}
