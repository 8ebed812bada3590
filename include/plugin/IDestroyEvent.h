// The host's announcement that a plug-in is about to be unloaded.
#ifndef NETINFO_PLUGIN_IDESTROYEVENT_H
#define NETINFO_PLUGIN_IDESTROYEVENT_H

/// Reached through IBasePlugin only; it has no interface ID of its own.
class IDestroyEvent
{
public:
    virtual ~IDestroyEvent() {}

    /// Called once before unloading. Only destruction of the plug-in object may follow.
    virtual void OnDestroy() = 0;
};

#endif
