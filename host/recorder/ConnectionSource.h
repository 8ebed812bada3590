// What makes connections, as the recorder sees it: the network service, or somebody who pretends. A source says when a
// connection is up and when it is down, and hands out a reader for its counters; it writes nothing.
#ifndef NETINFO_RECORDER_CONNECTIONSOURCE_H
#define NETINFO_RECORDER_CONNECTIONSOURCE_H

#include "host/recorder/Status.h"
#include "host/statistics/ConnectionHistory.h"

#include <QMetaType>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace recorder {

/// Bytes that a link has carried since it exists, as its counters say.
struct Counters {
    qint64 sent = 0;
    qint64 received = 0;
};

/// Reads the counters of one link. Called about once a second while the connection is up.
class CounterReader
{
public:
    virtual ~CounterReader() = default;
    /// Nothing when the link is gone; also when another link has taken its name since.
    virtual std::optional<Counters> read() = 0;
};

/// A connection that is up.
struct ConnectionInfo {
    QString id;            ///< Names the connection in the source's later signals; chosen by the source, never reused.
    QString profile;       ///< What the history shows: the APN, or the profile's name where there is none.
    QString profileName;   ///< The profile's own name.
    QString profileUuid;   ///< Identity of the profile; with the link it tells whether an open record goes on.
    QString type;          ///< Kind of link in the network service's word, such as "gsm".
    QString interfaceName; ///< Kernel interface; empty where there is none.
    int interfaceIndex = 0;
    QString serviceOwner; ///< Unique bus name of the network service, or the source's own identity.
    QString activePath;   ///< Its object path there. The source recognises its open rows by it, see owns().
    /// Where counting starts: zero for a link that was made for this connection. Nothing: at the counters' present
    /// values.
    std::optional<Counters> baseline;
    std::shared_ptr<CounterReader> counters; ///< Never null.
};

/// The seam. After start() a source announces what is up already, then settled(); from then on it speaks when something
/// changes. All of it in the thread of the object.
class ConnectionSource : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    ~ConnectionSource() override;

    virtual void start() = 0;
    /// Falls silent. Connections that are up stay up; whoever records next resumes them. start() may follow.
    virtual void stop() = 0;
    /// Looks whether what was announced still holds: the machine slept, or something may have been missed.
    virtual void refresh() {}
    /// Whether an open row that was left behind by an earlier recorder is this source's to resume or to end.
    virtual bool owns(const zelk::OpenConnection &row) const = 0;
    /// For a row that is over: counters of the link that it was about, when that very link is still there and no other
    /// connection uses it. Else null.
    virtual std::shared_ptr<CounterReader> remainder(const zelk::OpenConnection &row) const;
    /// What this source does not see and why; Status::Ok while all is well.
    virtual Status status() const = 0;

signals:
    void connectionUp(const recorder::ConnectionInfo &info);
    /// The last figures of a link that is gone or going. They are used where they are higher than what was read before.
    void lastCounters(const QString &id, const recorder::Counters &counters);
    void connectionDown(const QString &id, zelk::EndReason reason);
    /// The service went away: its connections may be up or down. Each is announced again by connectionUp(), under a new
    /// id, before the next settled(), or is over.
    void interrupted();
    /// Every connection that is up has been announced.
    void settled();
    /// The machine is about to sleep as soon as every slot has returned.
    void aboutToSleep();
    void statusChanged();
};

} // namespace recorder

Q_DECLARE_METATYPE(recorder::Counters)
Q_DECLARE_METATYPE(recorder::ConnectionInfo)
Q_DECLARE_METATYPE(zelk::EndReason)

#endif
