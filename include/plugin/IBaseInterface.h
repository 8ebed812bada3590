// The root of every plug-in interface: release and the last error.
#ifndef NETINFO_PLUGIN_IBASEINTERFACE_H
#define NETINFO_PLUGIN_IBASEINTERFACE_H

/// Root of the plug-in interfaces. Slot order is binary contract: hosts call through the virtual table.
class IBaseInterface
{
public:
    virtual ~IBaseInterface() {}

    /// Asks the plug-in to give up resources. Never deletes the object.
    virtual void Release() = 0;

    /// Code of the last error; 0 means none.
    virtual int GetLastError() = 0;
};

#endif
