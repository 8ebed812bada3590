// Connections of this computer as NetworkManager announces them on the system bus. The bus says what happens; bytes
// come from the kernel.
#ifndef NETINFO_RECORDER_NETWORKMANAGERSOURCE_H
#define NETINFO_RECORDER_NETWORKMANAGERSOURCE_H

#include "host/recorder/KernelLink.h"
#include "host/recorder/NetworkManagerTypes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QSet>
#include <QTimer>

class QDBusServiceWatcher;

namespace recorder {

class ConnectionFilter;
class SleepWatcher;

class NetworkManagerSource : public ConnectionSource
{
    Q_OBJECT
public:
    /// `settingsFile`: empty for the user's netinfo.ini.
    explicit NetworkManagerSource(const QString &settingsFile = {}, QObject *parent = nullptr);
    ~NetworkManagerSource() override;

    void start() override;
    void stop() override;
    void refresh() override;
    bool owns(const zelk::OpenConnection &row) const override;
    std::shared_ptr<CounterReader> remainder(const zelk::OpenConnection &row) const override;
    Status status() const override { return m_status; }

private slots:
    void activeStateChanged(uint state, uint reason, const QDBusMessage &message);
    void deviceStateChanged(uint newState, uint oldState, uint reason, const QDBusMessage &message);
    void managerChanged(const QString &interfaceName, const QVariantMap &changed, const QStringList &invalidated);
    void busLost();

private:
    // One active connection of the service, from the first word about it until its end.
    struct Activation {
        ActiveFacts facts;
        QString id;                // of the announced connection; empty: not announced
        unsigned state = 0;        // the latest that the service has signalled
        int highestLinkBefore = 0; // links with higher numbers were made for this connection; 0: unknown
        int linkIndex = 0;         // set with `counters`
        std::shared_ptr<KernelCounters> counters;
        std::optional<Counters> baseline; // read the moment the connection became active
        std::optional<Counters> lastWord; // of a connection that ended before it could be announced
        unsigned reason = 0;              // first reason for which its device left the state "activated"
        bool wasUp = false;               // an attempt that failed never was
        bool linkGone = false;
        int questions = 0; // that have not been answered yet
    };

    void connectToBus();
    void ownerChanged(const QString &owner);
    void serviceAppeared(const QString &owner);
    void serviceVanished();
    void list();
    void listed(const QVariantMap &manager);
    void settleWhenListed();
    void fetch(const QString &path);
    void fetchDevice(const QString &path);
    void fetchProfile(const QString &path);
    void answered(const QString &path);
    void announce(const QString &path);
    void endOthersOn(int linkIndex);
    void readLast(Activation &activation);
    void ended(const QString &path);
    void linkGone(int index, const Counters &last);
    void openCounters(Activation &activation);
    void applyFilter();
    void setStatus(const Status &status);
    void refused(const QDBusMessage &error);
    template <typename Function>
    void call(const QString &path, const QString &interfaceName, const QString &method, const QVariantList &arguments,
              Function done);
    template <typename Function> void properties(const QString &path, const QString &interfaceName, Function done);

    std::unique_ptr<ConnectionFilter> m_filter;
    std::unique_ptr<LinkWatcher> m_links;
    std::unique_ptr<SleepWatcher> m_sleep;
    QString m_busName; // of our own connection to the system bus; empty while there is none
    QDBusConnection m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    QString m_owner;                          // unique name of the service; empty while it does not run
    QHash<QString, Activation> m_activations; // by object path, of the present owner
    QHash<QString, int> m_orphans;            // id and link of connections announced by an owner that vanished
    QSet<QString> m_listing;                  // paths that must be looked at before it is known what is up
    bool m_listed = false;
    bool m_starting = false; // the service is still bringing up what it brings up by itself
    bool m_settled = false;
    Status m_status;
    QTimer m_retry;
    QTimer m_patience;
    int m_generation = 0; // replies to questions of an earlier start or owner are dropped
    int m_counter = 0;
};

} // namespace recorder

#endif
