// The mark of the plug-in through which connections come and go.
#ifndef NETINFO_PLUGIN_IDIALUPUISERVICE_H
#define NETINFO_PLUGIN_IDIALUPUISERVICE_H

#include <QObject>

/// Carries no operations: others only ask whether an object answers its ID.
class IDialupUIService
{
public:
    virtual ~IDialupUIService() {}
};

#define IDialupUIService_iid "com.zantrix.quillnet.plugin.IDialupUIService"
Q_DECLARE_INTERFACE(IDialupUIService, IDialupUIService_iid)

#endif
