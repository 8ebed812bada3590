// The settings file: text values by group and key, shared with the recorder and readable by people.
#ifndef NETINFO_HOSTUI_SETTINGS_H
#define NETINFO_HOSTUI_SETTINGS_H

#include <QString>

namespace Settings {

/// $XDG_CONFIG_HOME/netinfo/netinfo.ini.
QString file();
bool contains(const QString &group, const QString &key);
/// The value as it stands in the file now; empty when there is none.
QString read(const QString &group, const QString &key);
/// False when the file could not be written.
bool write(const QString &group, const QString &key, const QString &value);

} // namespace Settings

#endif
