// For programs that want to hear of connections: listens to whoever records, and records itself while nobody does.
#ifndef NETINFO_RECORDER_RECORDERCLIENT_H
#define NETINFO_RECORDER_RECORDERCLIENT_H

#include "host/recorder/Recorder.h"

#include <QDBusConnection>

namespace recorder {

struct ClientOptions {
    ClientOptions(); // out of line: inlined, the compiler takes an empty std::function for an uninitialised one

    RecorderOptions recorder;
    /// Where recorders meet. Not connected: this process records if the history's lock is free.
    QDBusConnection sessionBus = QDBusConnection::sessionBus();
    /// Makes the source of real connections, once each time that this process begins to record.
    /// Empty: NetworkManagerSource on the system bus.
    std::function<ConnectionSource *()> makeSource;
};

/// Every connection is announced once as established (also when it was up before start()) and once as ended, whoever
/// recorded it and however often the recorder changed meanwhile.
///
/// Two rules keep two recorders apart: only the owner of the name org.netinfo.Recorder on the session bus follows the
/// network service, and only while it also holds the lock beside the history file. The program netinfo-recorder takes
/// the name from a client; a client takes over when the program ends.
class RecorderClient : public QObject
{
    Q_OBJECT
public:
    explicit RecorderClient(const ClientOptions &options = {}, QObject *parent = nullptr);
    ~RecorderClient() override;

    /// Begins to listen or to record. Announcements start from the event loop.
    void start();

    /// Adds a source of this process's own, such as a simulation. It is recorded here, whoever records the real ones,
    /// and announced by this client alone. Takes ownership. May be called before or after start().
    void addSource(ConnectionSource *source);

    /// Whether this process records the real connections.
    bool recordsHere() const;
    QVector<Announcement> activeConnections() const;
    Status status() const;

signals:
    void connectionEstablished(const recorder::Announcement &connection);
    /// Only after the record is closed and durable.
    void connectionEnded(const recorder::Announcement &connection);
    /// A record was added for a connection that this client never announced: it was over before this client came.
    void leftoverClosed(const recorder::Announcement &connection);
    /// status() or recordsHere() has changed.
    void statusChanged();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace recorder

#endif
