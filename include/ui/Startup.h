// Access to what the host sets up at its start.
#ifndef NETINFO_UI_STARTUP_H
#define NETINFO_UI_STARTUP_H

#include <QtGlobal>

class IPluginContainer;

class Q_DECL_EXPORT Startup
{
public:
    /// The container of loaded plug-ins, or null while the host has none. Not owned by the caller.
    static IPluginContainer *GetPluginContainer();
};

#endif
