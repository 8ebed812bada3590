#include "host/recorder/RecorderClient.h"

#include "host/recorder/NetworkManagerSource.h"
#include "host/recorder/RealRecording.h"
#include "host/recorder/RecorderService.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QMap>
#include <QSet>

namespace recorder {

// The bus's signals need slots with an object of its own.
class RecorderListener : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

public slots:
    void onEstablished(const QString & /*profile*/, qlonglong /*connection*/, const QVariantMap &details)
    {
        emit established(announcementFromVariantMap(details));
    }
    void onEnded(qlonglong /*record*/, qlonglong /*connection*/, const QVariantMap &details)
    {
        emit ended(announcementFromVariantMap(details));
    }
    void onSettled() { emit settled(); }
    void onStatus(uint code, const QString &detail) { emit status({static_cast<Status::Code>(code), detail}); }

signals:
    void established(const recorder::Announcement &connection);
    void ended(const recorder::Announcement &connection);
    void settled();
    void status(const recorder::Status &status);
};

struct RecorderClient::Private {
    Private(RecorderClient *client, const ClientOptions &clientOptions);

    void start();
    void startWithoutBus();
    void claim();
    void beginRecording();
    void endRecording();
    void ownerChanged(const QString &owner);
    void askRecorder();
    void recorderAnswered(const QVariantMap &properties);
    void established(const Announcement &connection);
    void ended(const Announcement &connection);
    bool isOurs() const;

    RecorderClient *q;
    ClientOptions options;
    Recorder recorder; // opens the history only once it has a source
    RealRecording recording;
    RecorderListener listener;
    std::unique_ptr<RecorderService> service;
    std::unique_ptr<QDBusServiceWatcher> watcher;
    QString owner; // of the recorder's name
    Status remoteStatus;
    QMap<qint64, Announcement> announced; // by key of the open row: established, and not ended yet
};

RecorderClient::Private::Private(RecorderClient *client, const ClientOptions &clientOptions)
    : q(client), options(clientOptions), recorder(options.recorder), recording(recorder, options.makeSource)
{
    // Queued: whoever hears of it may do what he likes, a nested event loop included.
    QObject::connect(
        &recorder, &Recorder::connectionEstablished, q,
        [this](const Announcement &connection) { established(connection); }, Qt::QueuedConnection);
    QObject::connect(
        &recorder, &Recorder::connectionEnded, q, [this](const Announcement &connection) { ended(connection); },
        Qt::QueuedConnection);
    QObject::connect(&recorder, &Recorder::statusChanged, q, &RecorderClient::statusChanged, Qt::QueuedConnection);
    QObject::connect(&recording, &RealRecording::changed, q, &RecorderClient::statusChanged, Qt::QueuedConnection);
    // What this process says on the bus comes back to it. It knows that already, and a second end would be taken for
    // that of a connection nobody had announced.
    QObject::connect(&listener, &RecorderListener::established, q, [this](const Announcement &connection) {
        if (!isOurs())
            established(connection);
    });
    QObject::connect(&listener, &RecorderListener::ended, q, [this](const Announcement &connection) {
        if (!isOurs())
            ended(connection);
    });
    QObject::connect(&listener, &RecorderListener::settled, q, [this] { askRecorder(); });
    QObject::connect(&listener, &RecorderListener::status, q, [this](const Status &status) {
        remoteStatus = status;
        emit q->statusChanged();
    });
}

bool RecorderClient::Private::isOurs() const
{
    return owner == options.sessionBus.baseService();
}

void RecorderClient::Private::start()
{
    if (!options.sessionBus.isConnected()) {
        beginRecording(); // the lock alone keeps recorders apart
        return;
    }
    QDBusConnection &bus = options.sessionBus;
    const QString name = QLatin1String(serviceName);
    const QString path = QLatin1String(objectPath);
    const QString interface = QLatin1String(interfaceName);
    bus.connect(name, path, interface, QStringLiteral("ConnectionEstablished"), &listener,
                SLOT(onEstablished(QString, qlonglong, QVariantMap)));
    bus.connect(name, path, interface, QStringLiteral("ConnectionEnded"), &listener,
                SLOT(onEnded(qlonglong, qlonglong, QVariantMap)));
    bus.connect(name, path, interface, QStringLiteral("StatusChanged"), &listener, SLOT(onStatus(uint, QString)));
    bus.connect(name, path, interface, QStringLiteral("Settled"), &listener, SLOT(onSettled()));
    watcher = std::make_unique<QDBusServiceWatcher>(name, bus, QDBusServiceWatcher::WatchForOwnerChange);
    QObject::connect(watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, q,
                     [this](const QString &, const QString &, const QString &now) { ownerChanged(now); });
    claim();
}

// Asks for the name as one who gives it up to the program netinfo-recorder. Who has it in the end is told by
// ownerChanged(), or here if it has not changed.
void RecorderClient::Private::claim()
{
    QDBusConnectionInterface *bus = options.sessionBus.interface();
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus->registerService(QLatin1String(serviceName), QDBusConnectionInterface::DontQueueService,
                             QDBusConnectionInterface::AllowReplacement);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return ownerChanged(options.sessionBus.baseService());
    ownerChanged(bus->serviceOwner(QLatin1String(serviceName)).value());
}

void RecorderClient::Private::ownerChanged(const QString &now)
{
    if (now == owner && !now.isEmpty())
        return;
    const bool wasOurs = isOurs();
    owner = now;
    remoteStatus = {};
    if (wasOurs && !isOurs())
        endRecording();
    if (owner.isEmpty())
        claim();
    else if (isOurs())
        beginRecording();
    else
        askRecorder();
}

void RecorderClient::Private::beginRecording()
{
    if (options.sessionBus.isConnected())
        service = std::make_unique<RecorderService>(recorder, recording, options.sessionBus);
    recording.begin();
    emit q->statusChanged();
}

void RecorderClient::Private::endRecording()
{
    recording.end();
    service.reset();
    emit q->statusChanged();
}

void RecorderClient::Private::askRecorder()
{
    if (owner.isEmpty() || isOurs())
        return;
    QDBusMessage question = QDBusMessage::createMethodCall(
        owner, QLatin1String(objectPath), QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
    question << QLatin1String(interfaceName);
    const auto answer = new QDBusPendingCallWatcher(options.sessionBus.asyncCall(question), q);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, q, [this, answer, asked = owner] {
        answer->deleteLater();
        const QDBusMessage reply = answer->reply();
        if (asked == owner && reply.type() == QDBusMessage::ReplyMessage)
            recorderAnswered(qdbus_cast<QVariantMap>(reply.arguments().value(0)));
    });
}

void RecorderClient::Private::recorderAnswered(const QVariantMap &properties)
{
    remoteStatus = {static_cast<Status::Code>(properties.value(QStringLiteral("StatusCode")).toUInt()),
                    properties.value(QStringLiteral("StatusDetail")).toString()};
    emit q->statusChanged();
    const auto active = qdbus_cast<QList<QVariantMap>>(properties.value(QStringLiteral("ActiveConnections")));
    QSet<qint64> open;
    for (const Announcement &connection : recorder.activeConnections())
        open.insert(connection.connection);
    for (const QVariantMap &details : active) {
        const Announcement connection = announcementFromVariantMap(details);
        open.insert(connection.connection);
        if (connection.confirmed)
            established(connection);
    }
    if (!properties.value(QStringLiteral("Settled")).toBool())
        return; // asked again when it is
    // The rest ended while one recorder was gone and the next not there yet.
    for (const Announcement &connection : QMap<qint64, Announcement>(announced)) {
        if (!open.contains(connection.connection))
            ended(connection);
    }
}

void RecorderClient::Private::established(const Announcement &connection)
{
    const bool isNew = !announced.contains(connection.connection);
    announced.insert(connection.connection, connection);
    if (isNew)
        emit q->connectionEstablished(connection);
}

void RecorderClient::Private::ended(const Announcement &connection)
{
    if (announced.remove(connection.connection) > 0)
        emit q->connectionEnded(connection);
    else
        emit q->leftoverClosed(connection);
}

ClientOptions::ClientOptions() = default;

RecorderClient::RecorderClient(const ClientOptions &options, QObject *parent) : QObject(parent)
{
    ClientOptions complete = options;
    if (!complete.makeSource)
        complete.makeSource = [] { return new NetworkManagerSource; };
    d = std::make_unique<Private>(this, complete);
}

RecorderClient::~RecorderClient()
{
    blockSignals(true);
    if (d->isOurs() && d->options.sessionBus.isConnected()) {
        d->watcher.reset();
        d->endRecording();
        d->options.sessionBus.interface()->unregisterService(QLatin1String(serviceName));
    }
}

void RecorderClient::start()
{
    d->start();
}

void RecorderClient::addSource(ConnectionSource *source)
{
    d->recorder.addSource(source);
}

bool RecorderClient::recordsHere() const
{
    return d->recording.isRecording();
}

QVector<Announcement> RecorderClient::activeConnections() const
{
    return d->announced.values().toVector();
}

Status RecorderClient::status() const
{
    Status worst = d->recording.status();
    for (const Status &status : {d->recorder.status(), d->remoteStatus}) {
        if (status.code > worst.code)
            worst = status;
    }
    if (worst.code == Status::OtherRecorder && !d->options.sessionBus.isConnected())
        worst.code = Status::NotAnnounced;
    return worst;
}

} // namespace recorder

#include "RecorderClient.moc"
