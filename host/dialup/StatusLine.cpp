// Finds the display text of each status. Without a translation the recorder's own English has to do.
#include "StatusLine.h"

#include "ui/Change.h"

#include <QStringList>

using recorder::Status;

namespace {

QString translated(const QString &key)
{
    return Change::tr(key, QStringLiteral("Host"));
}

QString keyOf(Status::Code code)
{
    switch (code) {
    case Status::NotAnnounced:
        return QStringLiteral("IDS_HOST_STATUS_NOT_ANNOUNCED");
    case Status::OtherRecorder:
        return QStringLiteral("IDS_HOST_STATUS_OTHER_RECORDER");
    case Status::NoPermission:
        return QStringLiteral("IDS_HOST_STATUS_NO_PERMISSION");
    case Status::NoNetworkManager:
        return QStringLiteral("IDS_HOST_STATUS_NO_NETWORK_MANAGER");
    case Status::NoSystemBus:
        return QStringLiteral("IDS_HOST_STATUS_NO_SYSTEM_BUS");
    case Status::NoHistory:
        return QStringLiteral("IDS_HOST_STATUS_NO_HISTORY");
    default:
        return QString(); // Nothing goes unrecorded.
    }
}

QString problem(const Status &status)
{
    const QString key = keyOf(status.code);
    if (key.isEmpty())
        return QString();
    const QString text = translated(key);
    return text == key ? status.text() : QString(text).replace(QLatin1String("%1"), status.detail);
}

} // namespace

QString statusLine(const Status &status, const QVector<recorder::Announcement> &active)
{
    QString line = problem(status);
    if (!line.isEmpty() || active.isEmpty())
        return line;
    QStringList names;
    for (const recorder::Announcement &connection : active)
        names << connection.profile;
    return translated(QStringLiteral("IDS_HOST_STATUS_RECORDING"))
        .replace(QLatin1String("%1"), names.join(QStringLiteral(", ")));
}
