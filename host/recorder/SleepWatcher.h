// Asks the login service for a moment before the machine sleeps, so that everything is written before it does.
#ifndef NETINFO_RECORDER_SLEEPWATCHER_H
#define NETINFO_RECORDER_SLEEPWATCHER_H

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QTimer>

class QDBusServiceWatcher;

namespace recorder {

class SleepWatcher : public QObject
{
    Q_OBJECT
public:
    explicit SleepWatcher(const QDBusConnection &systemBus, QObject *parent = nullptr);
    /// Whether sleep will wait for us.
    bool isHolding() const { return m_inhibitor.isValid(); }
    /// No connection is up any more: sleep need not wait for an end.
    void nothingLeft();

signals:
    /// Sleep waits for nothingLeft(), or for a second: what the network service ends because of it is to be recorded.
    void aboutToSleep();
    void awake();
    void holdingChanged();

private slots:
    void prepareForSleep(bool before);

private:
    void hold();
    void letSleep();

    QDBusConnection m_bus;
    QDBusServiceWatcher *m_watcher;
    QDBusUnixFileDescriptor m_inhibitor;
    QTimer m_grace;
    bool m_preparing = false;
};

} // namespace recorder

#endif
