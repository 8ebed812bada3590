#include "host/recorder/RecorderService.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMetaType>
#include <QVariantMap>

namespace recorder {

const char serviceName[] = "org.netinfo.Recorder";
const char objectPath[] = "/org/netinfo/Recorder";
const char interfaceName[] = "org.netinfo.Recorder1";

namespace {

// What the bus sees of a recorder.
class Adaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.netinfo.Recorder1")
    Q_PROPERTY(QList<QVariantMap> ActiveConnections READ activeConnections)
    Q_PROPERTY(bool Settled READ isSettled)
    Q_PROPERTY(uint StatusCode READ statusCode)
    Q_PROPERTY(QString StatusDetail READ statusDetail)
    Q_PROPERTY(QString Status READ statusText)
    Q_PROPERTY(QString HistoryPath READ historyPath)
public:
    Adaptor(const Recorder &recorder, const RealRecording &recording, QObject *parent)
        : QDBusAbstractAdaptor(parent), m_recorder(recorder), m_recording(recording)
    {
        connect(&recorder, &Recorder::connectionEstablished, this, [this](const Announcement &connection) {
            emit ConnectionEstablished(connection.profile, connection.connection, toVariantMap(connection));
        });
        connect(&recorder, &Recorder::connectionEnded, this, [this](const Announcement &connection) {
            emit ConnectionEnded(connection.record, connection.connection, toVariantMap(connection));
        });
        connect(&recorder, &Recorder::settled, this, [this] {
            if (isSettled())
                emit Settled();
        });
        connect(&recorder, &Recorder::statusChanged, this,
                [this] { emit StatusChanged(m_recorder.status().code, m_recorder.status().detail); });
    }

    QList<QVariantMap> activeConnections() const
    {
        QList<QVariantMap> maps;
        for (const Announcement &connection : m_recorder.activeConnections())
            maps.append(toVariantMap(connection));
        return maps;
    }
    bool isSettled() const { return m_recording.isRecording() && m_recorder.isSettled(); }
    uint statusCode() const { return m_recorder.status().code; }
    QString statusDetail() const { return m_recorder.status().detail; }
    QString statusText() const { return m_recorder.status().text(); }
    QString historyPath() const { return m_recorder.historyPath(); }

signals:
    void ConnectionEstablished(const QString &profile, qlonglong connection, const QVariantMap &details);
    void ConnectionEnded(qlonglong record, qlonglong connection, const QVariantMap &details);
    void Settled();
    void StatusChanged(uint code, const QString &detail);

private:
    const Recorder &m_recorder;
    const RealRecording &m_recording;
};

} // namespace

QVariantMap toVariantMap(const Announcement &announcement)
{
    return {{QStringLiteral("connection"), announcement.connection},
            {QStringLiteral("record"), announcement.record},
            {QStringLiteral("confirmed"), announcement.confirmed},
            {QStringLiteral("profile"), announcement.profile},
            {QStringLiteral("profileName"), announcement.profileName},
            {QStringLiteral("type"), announcement.type},
            {QStringLiteral("interface"), announcement.interfaceName},
            {QStringLiteral("startMs"), announcement.startMs},
            {QStringLiteral("connectedSeconds"), announcement.connectedSeconds},
            {QStringLiteral("bytesUploaded"), announcement.bytesUploaded},
            {QStringLiteral("bytesDownloaded"), announcement.bytesDownloaded},
            {QStringLiteral("quality"), QString::fromStdString(zelk::qualityToText(announcement.quality))},
            {QStringLiteral("endReason"), QString::fromStdString(zelk::endReasonToText(announcement.endReason))}};
}

Announcement announcementFromVariantMap(const QVariantMap &map)
{
    const auto text = [&map](const char *key) { return map.value(QLatin1String(key)).toString(); };
    const auto number = [&map](const char *key) { return map.value(QLatin1String(key)).toLongLong(); };
    Announcement a;
    a.connection = number("connection");
    a.record = number("record");
    a.confirmed = map.value(QStringLiteral("confirmed"), true).toBool();
    a.profile = text("profile");
    a.profileName = text("profileName");
    a.type = text("type");
    a.interfaceName = text("interface");
    a.startMs = number("startMs");
    a.connectedSeconds = number("connectedSeconds");
    a.bytesUploaded = number("bytesUploaded");
    a.bytesDownloaded = number("bytesDownloaded");
    a.quality = zelk::qualityFromText(text("quality").toStdString()).value_or(zelk::QualityExact);
    a.endReason = zelk::endReasonFromText(text("endReason").toStdString()).value_or(zelk::EndReason::Unknown);
    return a;
}

RecorderService::RecorderService(const Recorder &recorder, const RealRecording &recording, const QDBusConnection &bus,
                                 QObject *parent)
    : QObject(parent), m_bus(bus)
{
    qDBusRegisterMetaType<QList<QVariantMap>>();
    new Adaptor(recorder, recording, this);
    m_exported = m_bus.registerObject(QLatin1String(objectPath), this, QDBusConnection::ExportAdaptors);
}

RecorderService::~RecorderService()
{
    if (m_exported)
        m_bus.unregisterObject(QLatin1String(objectPath));
}

} // namespace recorder

#include "RecorderService.moc"
