#include "host/recorder/ConnectionFilter.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace recorder {

ConnectionFilter::ConnectionFilter(const QString &file, QObject *parent) : QObject(parent), m_file(file)
{
    if (m_file.isEmpty())
        m_file = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                 QStringLiteral("/netinfo/netinfo.ini");
    const QString folder = QFileInfo(m_file).path();
    if (QDir().mkpath(folder))
        m_watcher.addPath(folder); // settings are written by renaming a new file over the old one
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &ConnectionFilter::look);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &ConnectionFilter::look);
    look();
}

void ConnectionFilter::look()
{
    if (QFileInfo::exists(m_file) && !m_watcher.files().contains(m_file))
        m_watcher.addPath(m_file); // editors write in place
    const Wanted now = read();
    if (now == m_wanted)
        return;
    m_wanted = now;
    emit changed();
}

Wanted ConnectionFilter::read() const
{
    if (!QFileInfo::exists(m_file))
        return Wanted::All;
    const QSettings settings(m_file, QSettings::IniFormat);
    const QString text =
        settings.value(QStringLiteral("Recorder/Connections"), QStringLiteral("all")).toString().trimmed();
    const auto wanted = wantedFromText(text);
    if (!wanted)
        qWarning("%s: [Recorder] Connections=\"%s\" is none of all, mobile, metered; all are recorded",
                 qPrintable(m_file), qPrintable(text));
    return wanted.value_or(Wanted::All);
}

} // namespace recorder
