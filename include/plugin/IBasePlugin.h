// Identity and life cycle of a plug-in.
#ifndef NETINFO_PLUGIN_IBASEPLUGIN_H
#define NETINFO_PLUGIN_IBASEPLUGIN_H

#include "plugin/IBaseInterface.h"
#include "plugin/IDestroyEvent.h"

#include <QObject>
#include <QString>

/// What every plug-in answers. All calls come from the host's GUI thread.
class IBasePlugin : public IBaseInterface, public IDestroyEvent
{
public:
    virtual ~IBasePlugin() {}

    /// Prepares the plug-in for use. False: the host must not use it further.
    virtual bool Init() = 0;

    /// The kind of plug-in, in the host's own numbering.
    virtual int GetPluginType() = 0;

    /// The class ID under which the host's container registers the plug-in. Compared case-sensitively.
    virtual QString GetCLSID() = 0;

    /// Version word, 0x101 meaning 1.1.
    virtual unsigned int GetVersion() = 0;

    /// The plug-in's name; also its translation context.
    virtual QString GetPluginName() = 0;

    /// Whether the host may unload the plug-in before it ends.
    virtual bool IsAllowRelease() = 0;

    /// Extension point: stores an object for \a selector in \a object, or leaves it untouched and returns 0.
    virtual int QueryInterface(int selector, QObject **object) = 0;
};

#define IBasePlugin_iid "com.zantrix.quillnet.plugin.IBasePlugin"
Q_DECLARE_INTERFACE(IBasePlugin, IBasePlugin_iid)

#endif
