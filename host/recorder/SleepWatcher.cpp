#include "host/recorder/SleepWatcher.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace recorder {

namespace {

const QString service = QStringLiteral("org.freedesktop.login1");
const QString object = QStringLiteral("/org/freedesktop/login1");
const QString manager = QStringLiteral("org.freedesktop.login1.Manager");

constexpr int graceMs = 1000;

} // namespace

SleepWatcher::SleepWatcher(const QDBusConnection &systemBus, QObject *parent)
    : QObject(parent)
    , m_bus(systemBus)
    , m_watcher(new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForRegistration, this))
{
    m_bus.connect(service, object, manager, QStringLiteral("PrepareForSleep"), this, SLOT(prepareForSleep(bool)));
    connect(m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &SleepWatcher::hold);
    m_grace.setSingleShot(true);
    m_grace.setInterval(graceMs);
    connect(&m_grace, &QTimer::timeout, this, &SleepWatcher::letSleep);
    hold();
}

void SleepWatcher::hold()
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, object, manager, QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep") << QStringLiteral("netinfo-recorder")
         << QStringLiteral("Writing down the open connections") << QStringLiteral("delay");
    const auto watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
        m_inhibitor = reply.isValid() && !m_preparing ? reply.value() : QDBusUnixFileDescriptor();
        emit holdingChanged();
    });
}

void SleepWatcher::nothingLeft()
{
    if (m_preparing)
        letSleep();
}

void SleepWatcher::letSleep()
{
    m_grace.stop();
    m_inhibitor = QDBusUnixFileDescriptor(); // closing it is how one lets go
}

void SleepWatcher::prepareForSleep(bool before)
{
    m_preparing = before;
    if (before) {
        m_grace.start();
        emit aboutToSleep();
    } else {
        m_grace.stop();
        hold();
        emit awake();
    }
}

} // namespace recorder
