#include "Settings.h"

#include <QSettings>
#include <QStandardPaths>
#include <QStringList>
#include <QVariant>

namespace Settings {

namespace {

/// A fresh look at the file each time: other processes write to it as well.
class OpenFile
{
public:
    OpenFile(const QString &group) : settings(file(), QSettings::IniFormat)
    {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        settings.setIniCodec("UTF-8");
#endif
        settings.beginGroup(group);
    }
    QSettings settings;
};

} // namespace

QString file()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/netinfo/netinfo.ini");
}

bool contains(const QString &group, const QString &key)
{
    return OpenFile(group).settings.contains(key);
}

QString read(const QString &group, const QString &key)
{
    // A value with a comma that someone wrote by hand without quotes comes back as a list.
    return OpenFile(group).settings.value(key).toStringList().join(QStringLiteral(", "));
}

bool write(const QString &group, const QString &key, const QString &value)
{
    OpenFile open(group);
    open.settings.setValue(key, value);
    open.settings.sync();
    return open.settings.status() == QSettings::NoError;
}

} // namespace Settings
