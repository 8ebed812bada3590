#include "host/recorder/NetworkManagerSource.h"

#include "host/recorder/ConnectionFilter.h"
#include "host/recorder/SleepWatcher.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <algorithm>

namespace recorder {

namespace {

const QString service = QStringLiteral("org.freedesktop.NetworkManager");
const QString managerPath = QStringLiteral("/org/freedesktop/NetworkManager");
const QString activeInterface = QStringLiteral("org.freedesktop.NetworkManager.Connection.Active");
const QString deviceInterface = QStringLiteral("org.freedesktop.NetworkManager.Device");
const QString profileInterface = QStringLiteral("org.freedesktop.NetworkManager.Settings.Connection");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

constexpr int busRetryMs = 5000;
constexpr int startupPatienceMs = 60000;

QStringList pathsOf(const QVariant &value)
{
    QStringList paths;
    for (const QDBusObjectPath &path : qdbus_cast<QList<QDBusObjectPath>>(value))
        paths.append(path.path());
    return paths;
}

void readActive(ActiveFacts &facts, const QVariantMap &properties)
{
    facts.id = properties.value(QStringLiteral("Id")).toString();
    facts.uuid = properties.value(QStringLiteral("Uuid")).toString();
    facts.type = properties.value(QStringLiteral("Type")).toString();
    facts.vpn = properties.value(QStringLiteral("Vpn")).toBool();
    facts.state = properties.value(QStringLiteral("State")).toUInt();
    facts.stateFlags = properties.value(QStringLiteral("StateFlags")).toUInt();
    facts.profilePath = qvariant_cast<QDBusObjectPath>(properties.value(QStringLiteral("Connection"))).path();
    const QStringList devices = pathsOf(properties.value(QStringLiteral("Devices")));
    if (!devices.isEmpty()) // the list is emptied when the connection ends; who it was is still wanted then
        facts.devicePath = devices.first();
}

void readDevice(ActiveFacts &facts, const QVariantMap &properties)
{
    const QString name = properties.value(QStringLiteral("IpInterface")).toString();
    if (!name.isEmpty()) // emptied at the end, too
        facts.interfaceName = name;
    facts.metered = properties.value(QStringLiteral("Metered")).toUInt();
}

} // namespace

NetworkManagerSource::NetworkManagerSource(const QString &settingsFile, QObject *parent)
    : ConnectionSource(parent), m_filter(std::make_unique<ConnectionFilter>(settingsFile)), m_bus(QString())
{
    qDBusRegisterMetaType<ProfileSettings>();
    connect(m_filter.get(), &ConnectionFilter::changed, this, &NetworkManagerSource::applyFilter);
    m_retry.setInterval(busRetryMs);
    connect(&m_retry, &QTimer::timeout, this, &NetworkManagerSource::connectToBus);
    m_patience.setSingleShot(true);
    m_patience.setInterval(startupPatienceMs);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        m_starting = false;
        settleWhenListed();
    });
}

NetworkManagerSource::~NetworkManagerSource()
{
    NetworkManagerSource::stop();
}

void NetworkManagerSource::start()
{
    m_links = std::make_unique<LinkWatcher>();
    connect(m_links.get(), &LinkWatcher::linkGone, this, &NetworkManagerSource::linkGone);
    connectToBus();
}

void NetworkManagerSource::stop()
{
    ++m_generation;
    m_retry.stop();
    m_patience.stop();
    m_sleep.reset();
    m_watcher.reset();
    m_links.reset();
    m_activations.clear();
    m_orphans.clear();
    m_listing.clear();
    m_owner.clear();
    m_settled = m_listed = false;
    if (m_busName.isEmpty())
        return;
    m_bus = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(m_busName);
    m_busName.clear();
}

void NetworkManagerSource::connectToBus()
{
    static int count = 0;
    const QString name = QStringLiteral("netinfo-recorder-%1").arg(++count);
    // A connection of our own: the shared one remembers for ever that there was no bus.
    m_bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
    if (!m_bus.isConnected()) {
        const QString why = m_bus.lastError().message();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(name);
        m_retry.start();
        setStatus({Status::NoSystemBus, why});
        return;
    }
    m_busName = name;
    m_retry.stop();
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this, SLOT(busLost()));
    m_bus.connect(service, QString(), activeInterface, QStringLiteral("StateChanged"), this,
                  SLOT(activeStateChanged(uint, uint, QDBusMessage)));
    m_bus.connect(service, QString(), deviceInterface, QStringLiteral("StateChanged"), this,
                  SLOT(deviceStateChanged(uint, uint, uint, QDBusMessage)));
    m_bus.connect(service, managerPath, propertiesInterface, QStringLiteral("PropertiesChanged"), {service}, QString(),
                  this, SLOT(managerChanged(QString, QVariantMap, QStringList)));
    m_watcher = std::make_unique<QDBusServiceWatcher>(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { ownerChanged(owner); });
    m_sleep = std::make_unique<SleepWatcher>(m_bus);
    connect(m_sleep.get(), &SleepWatcher::aboutToSleep, this, &NetworkManagerSource::aboutToSleep);
    connect(m_sleep.get(), &SleepWatcher::awake, this, &NetworkManagerSource::refresh);

    QDBusMessage question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
    question << service;
    const auto answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), m_watcher.get());
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QString> reply = *answer;
        if (m_owner.isEmpty())
            ownerChanged(reply.isValid() ? reply.value() : QString());
    });
}

void NetworkManagerSource::busLost()
{
    serviceVanished();
    m_sleep.reset();
    m_watcher.release()->deleteLater();
    QDBusConnection::disconnectFromBus(m_busName);
    m_busName.clear();
    setStatus({Status::NoSystemBus, {}});
    m_retry.start();
}

void NetworkManagerSource::ownerChanged(const QString &owner)
{
    if (owner == m_owner && !owner.isEmpty())
        return;
    serviceVanished();
    if (owner.isEmpty())
        setStatus({Status::NoNetworkManager, {}});
    else
        serviceAppeared(owner);
}

void NetworkManagerSource::serviceAppeared(const QString &owner)
{
    m_owner = owner;
    m_starting = true;
    m_settled = false;
    m_patience.start();
    setStatus({});
    list();
}

void NetworkManagerSource::serviceVanished()
{
    ++m_generation;
    m_patience.stop();
    m_listing.clear();
    m_listed = false;
    if (m_owner.isEmpty())
        return;
    m_owner.clear();
    for (const QString &path : m_activations.keys()) {
        const Activation activation = m_activations.value(path);
        if (activation.state > ActiveActivated || activation.reason != 0)
            ended(path); // it was on its way down already; a service that ends does not always finish the sentence
        else if (!activation.id.isEmpty())
            m_orphans.insert(activation.id, activation.linkIndex);
    }
    m_activations.clear();
    m_settled = false;
    emit interrupted();
}

// The answer reaches `done` as a map only if the service is still the one that was asked.
template <typename Function>
void NetworkManagerSource::call(const QString &path, const QString &interfaceName, const QString &method,
                                const QVariantList &arguments, Function done)
{
    QDBusMessage question = QDBusMessage::createMethodCall(m_owner, path, interfaceName, method);
    question.setArguments(arguments);
    const auto watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    const int generation = m_generation;
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, generation, done] {
        watcher->deleteLater();
        if (generation == m_generation)
            done(watcher->reply());
    });
}

template <typename Function>
void NetworkManagerSource::properties(const QString &path, const QString &interfaceName, Function done)
{
    call(path, propertiesInterface, QStringLiteral("GetAll"), {interfaceName}, [this, done](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ErrorMessage)
            refused(reply);
        done(reply.type() == QDBusMessage::ReplyMessage ? qdbus_cast<QVariantMap>(reply.arguments().value(0))
                                                        : QVariantMap());
    });
}

void NetworkManagerSource::refused(const QDBusMessage &error)
{
    if (error.errorName() == QLatin1String("org.freedesktop.DBus.Error.AccessDenied"))
        setStatus({Status::NoPermission, error.errorMessage()});
}

void NetworkManagerSource::list()
{
    properties(managerPath, service, [this](const QVariantMap &manager) { listed(manager); });
}

void NetworkManagerSource::listed(const QVariantMap &manager)
{
    if (manager.isEmpty())
        return;
    m_starting = m_starting && manager.value(QStringLiteral("Startup")).toBool();
    const QStringList paths = pathsOf(manager.value(QStringLiteral("ActiveConnections")));
    for (const QString &path : m_activations.keys()) {
        if (!paths.contains(path) && !m_activations[path].id.isEmpty())
            ended(path); // its end was missed
    }
    m_listed = true;
    for (const QString &path : paths) {
        m_listing.insert(path);
        fetch(path);
    }
    settleWhenListed();
}

void NetworkManagerSource::settleWhenListed()
{
    if (!m_listed || !m_listing.isEmpty() || m_starting || m_settled)
        return;
    m_patience.stop();
    m_settled = true;
    m_orphans.clear();
    emit settled();
}

void NetworkManagerSource::managerChanged(const QString & /*interfaceName*/, const QVariantMap &changed,
                                          const QStringList & /*invalidated*/)
{
    const QVariant startup = changed.value(QStringLiteral("Startup"));
    if (m_owner.isEmpty() || !m_starting || !startup.isValid() || startup.toBool())
        return;
    m_starting = false;
    list();
}

void NetworkManagerSource::refresh()
{
    if (!m_owner.isEmpty())
        list();
}

void NetworkManagerSource::activeStateChanged(uint state, uint /*reason*/, const QDBusMessage &message)
{
    if (m_owner.isEmpty() || message.service() != m_owner)
        return;
    const QString path = message.path();
    Activation &activation = m_activations[path];
    activation.state = state;
    m_links->poll();
    switch (state) {
    case ActiveActivating:
        activation.highestLinkBefore = m_links->highestIndex();
        fetch(path);
        break;
    case ActiveActivated:
        activation.wasUp = true;
        openCounters(activation);
        fetch(path);
        break;
    case ActiveDeactivating:
        readLast(activation);
        break;
    case ActiveDeactivated:
        readLast(activation);
        if (activation.questions == 0)
            ended(path);
        break;
    default:
        break;
    }
}

void NetworkManagerSource::deviceStateChanged(uint newState, uint oldState, uint reason, const QDBusMessage &message)
{
    if (m_owner.isEmpty() || message.service() != m_owner)
        return;
    for (auto it = m_activations.begin(); it != m_activations.end(); ++it) {
        if (it->facts.devicePath != message.path())
            continue;
        if (oldState == DeviceActivated && it->state >= ActiveActivated && it->reason == 0)
            it->reason = reason; // the first word on the way down; later ones only tell of the tidying up
        if (it->state == ActiveActivating && newState >= DeviceIpConfig && newState <= DeviceActivated)
            fetchDevice(it.key()); // a modem's data interface is known from here on
    }
}

void NetworkManagerSource::fetch(const QString &path)
{
    ++m_activations[path].questions;
    properties(path, activeInterface, [this, path](const QVariantMap &active) {
        if (!m_activations.contains(path))
            return;
        if (!active.isEmpty())
            readActive(m_activations[path].facts, active);
        fetchDevice(path);
        fetchProfile(path);
        answered(path);
    });
}

void NetworkManagerSource::fetchDevice(const QString &path)
{
    const QString device = m_activations[path].facts.devicePath;
    if (device.isEmpty())
        return;
    ++m_activations[path].questions;
    properties(device, deviceInterface, [this, path](const QVariantMap &properties) {
        if (!m_activations.contains(path))
            return;
        if (!properties.isEmpty())
            readDevice(m_activations[path].facts, properties);
        answered(path);
    });
}

void NetworkManagerSource::fetchProfile(const QString &path)
{
    const QString profile = m_activations[path].facts.profilePath;
    if (profile.size() < 2) // "/": none
        return;
    ++m_activations[path].questions;
    call(profile, profileInterface, QStringLiteral("GetSettings"), {}, [this, path](const QDBusMessage &reply) {
        if (!m_activations.contains(path))
            return;
        if (reply.type() == QDBusMessage::ReplyMessage) // else: of another user; its name is known without
            m_activations[path].facts.profile = qdbus_cast<ProfileSettings>(reply.arguments().value(0));
        answered(path);
    });
}

// All that was asked about a connection has been answered, or has no answer any more: now its state can be acted upon.
void NetworkManagerSource::answered(const QString &path)
{
    Activation &activation = m_activations[path];
    if (--activation.questions > 0)
        return;
    if (activation.state == 0) { // found by listing
        activation.state = activation.facts.state;
        activation.wasUp = activation.state == ActiveActivated;
    }
    if (activation.wasUp)
        announce(path);
    if (m_activations.value(path).state == ActiveDeactivated)
        ended(path);
    m_listing.remove(path);
    settleWhenListed();
}

// Where counting starts: taken as soon as the connection is up and its link is known.
void NetworkManagerSource::openCounters(Activation &activation)
{
    if (activation.counters || activation.facts.interfaceName.isEmpty())
        return;
    auto counters = std::make_shared<KernelCounters>(activation.facts.interfaceName);
    if (counters->index() == 0)
        return;
    activation.linkIndex = counters->index();
    const bool madeForIt = activation.highestLinkBefore != 0 && counters->index() > activation.highestLinkBefore;
    activation.baseline = madeForIt ? Counters{} : counters->read();
    activation.counters = std::move(counters);
}

void NetworkManagerSource::announce(const QString &path)
{
    Activation &activation = m_activations[path];
    openCounters(activation);
    if (!activation.id.isEmpty() || !activation.counters || !isRecorded(activation.facts, m_filter->wanted()) ||
        isUpperHalf(activation.facts.interfaceName))
        return;
    endOthersOn(activation.linkIndex);
    const ActiveFacts &facts = activation.facts;
    activation.id = QStringLiteral("%1%2#%3").arg(m_owner, path).arg(++m_counter);
    ConnectionInfo info;
    info.id = activation.id;
    info.profile = shownProfile(facts);
    info.profileName = facts.id;
    info.profileUuid = facts.uuid;
    info.type = facts.type;
    info.interfaceName = facts.interfaceName;
    info.interfaceIndex = activation.linkIndex;
    info.serviceOwner = m_owner;
    info.activePath = path;
    info.baseline = activation.baseline;
    info.counters = activation.counters;
    const auto lastWord = activation.lastWord;
    emit connectionUp(info);
    if (lastWord)
        emit lastCounters(info.id, *lastWord);
}

// One link carries one connection: what is still said to be up there has been replaced.
void NetworkManagerSource::endOthersOn(int linkIndex)
{
    for (Activation &other : m_activations) {
        if (other.linkIndex == linkIndex && !other.id.isEmpty())
            emit connectionDown(std::exchange(other.id, {}), endReason(other.reason, other.linkGone));
    }
}

// The link may be gone in a moment, so this does not wait for anything.
void NetworkManagerSource::readLast(Activation &activation)
{
    const auto counters = activation.counters ? activation.counters->read() : std::nullopt;
    if (!counters)
        return;
    activation.lastWord = counters;
    if (!activation.id.isEmpty())
        emit lastCounters(activation.id, *counters);
}

void NetworkManagerSource::ended(const QString &path)
{
    const Activation activation = m_activations.take(path);
    if (activation.id.isEmpty())
        return;
    const bool linkGone = activation.linkGone || !activation.counters->read();
    emit connectionDown(activation.id, endReason(activation.reason, linkGone));
    const bool anyUp = std::any_of(m_activations.cbegin(), m_activations.cend(),
                                   [](const Activation &other) { return !other.id.isEmpty(); });
    if (!anyUp && m_sleep)
        m_sleep->nothingLeft();
}

void NetworkManagerSource::linkGone(int index, const Counters &last)
{
    for (Activation &activation : m_activations) {
        if (activation.linkIndex != index || !activation.counters)
            continue;
        activation.linkGone = true;
        activation.lastWord = last;
        if (!activation.id.isEmpty())
            emit lastCounters(activation.id, last);
    }
    // Nobody else will say that these are over.
    for (const QString &id : m_orphans.keys(index)) {
        m_orphans.remove(id);
        emit lastCounters(id, last);
        emit connectionDown(id, zelk::EndReason::Unplugged);
    }
}

bool NetworkManagerSource::owns(const zelk::OpenConnection &row) const
{
    return QString::fromStdString(row.activePath).startsWith(managerPath);
}

std::shared_ptr<CounterReader> NetworkManagerSource::remainder(const zelk::OpenConnection &row) const
{
    const bool busy = std::any_of(m_activations.cbegin(), m_activations.cend(), [&row](const Activation &activation) {
        return activation.linkIndex == row.interfaceIndex && !activation.id.isEmpty();
    });
    auto counters = std::make_shared<KernelCounters>(QString::fromStdString(row.interfaceName));
    return busy || counters->index() != row.interfaceIndex ? nullptr : counters;
}

// A connection that is not wanted any more ends with what it has; one that is wanted from now on counts from now.
void NetworkManagerSource::applyFilter()
{
    for (const QString &path : m_activations.keys()) {
        Activation &activation = m_activations[path];
        const bool wanted = isRecorded(activation.facts, m_filter->wanted());
        if (!wanted && !activation.id.isEmpty()) {
            emit connectionDown(std::exchange(activation.id, {}), zelk::EndReason::Unknown);
        } else if (wanted && activation.id.isEmpty() && activation.state == ActiveActivated &&
                   activation.questions == 0) {
            activation.counters.reset();
            activation.highestLinkBefore = 0;
            announce(path);
        }
    }
}

void NetworkManagerSource::setStatus(const Status &status)
{
    if (m_status == status)
        return;
    m_status = status;
    emit statusChanged();
}

} // namespace recorder
