// A source that says what a test tells it to, with counters that the test sets.
#ifndef NETINFO_TESTS_RECORDER_FAKESOURCE_H
#define NETINFO_TESTS_RECORDER_FAKESOURCE_H

#include "host/recorder/ConnectionSource.h"

/// Counters of a link that the test moves; none while it is gone.
class FakeCounters : public recorder::CounterReader
{
public:
    std::optional<recorder::Counters> read() override { return now; }
    std::optional<recorder::Counters> now = recorder::Counters{1000, 2000};
};

class FakeSource : public recorder::ConnectionSource
{
public:
    void start() override
    {
        started = true;
        if (settlesAtOnce)
            emit settled();
    }
    void stop() override { stopped = true; }
    void refresh() override { ++refreshed; }
    bool owns(const zelk::OpenConnection &row) const override { return row.activePath.rfind("/fake/", 0) == 0; }
    std::shared_ptr<recorder::CounterReader> remainder(const zelk::OpenConnection & /*row*/) const override
    {
        return left;
    }
    recorder::Status status() const override { return trouble; }

    /// Says that a connection is up on link 7 and returns its counters.
    std::shared_ptr<FakeCounters> bringUp(const QString &id, const QString &uuid = QStringLiteral("uuid-1"),
                                          std::shared_ptr<FakeCounters> counters = std::make_shared<FakeCounters>())
    {
        recorder::ConnectionInfo info;
        info.id = id;
        info.profile = QStringLiteral("internet.example");
        info.profileName = QStringLiteral("Web Mobile");
        info.profileUuid = uuid;
        info.type = QStringLiteral("gsm");
        info.interfaceName = QStringLiteral("wwan0");
        info.interfaceIndex = interfaceIndex;
        info.serviceOwner = owner;
        info.activePath = QStringLiteral("/fake/") + id;
        info.baseline = baseline;
        info.counters = counters;
        emit connectionUp(info);
        return counters;
    }

    QString owner = QStringLiteral(":1.1");
    int interfaceIndex = 7;
    std::optional<recorder::Counters> baseline;
    std::shared_ptr<FakeCounters> left; // what remainder() returns
    recorder::Status trouble;
    bool settlesAtOnce = true;
    bool started = false;
    bool stopped = false;
    int refreshed = 0;
};

#endif
