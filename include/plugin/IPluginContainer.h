// Look-up of the host's loaded plug-ins by class ID.
#ifndef NETINFO_PLUGIN_IPLUGINCONTAINER_H
#define NETINFO_PLUGIN_IPLUGINCONTAINER_H

#include <QObject>
#include <QString>

/// Owned by the host; reached through Startup::GetPluginContainer().
class IPluginContainer
{
public:
    virtual ~IPluginContainer() {}

    /// The plug-in object registered under \a clsid (exact match), or null. Not owned by the caller.
    virtual QObject *GetPluginObject(const QString &clsid, unsigned int flags) = 0;
};

#endif
