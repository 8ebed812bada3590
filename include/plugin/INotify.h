// Notifications that the host broadcasts to its plug-ins, and their codes.
#ifndef NETINFO_PLUGIN_INOTIFY_H
#define NETINFO_PLUGIN_INOTIFY_H

#include <QObject>

/// First argument of INotify::Notify. Unknown codes are to be ignored.
enum NotifyCode {
    NOTIFY_LANGUAGE_CHANGED = 0x400,  ///< The language has changed; no parameters.
    NOTIFY_CONNECTION_STATUS = 0x600, ///< Second argument: 1 established, 0 ended.
    NOTIFY_SUPPRESS_SUMMARY = 0x950   ///< No summary for ended connections from now on; no parameters.
};

/// Receives the host's broadcasts, on the GUI thread.
class INotify
{
public:
    virtual ~INotify() {}

    /// \a code is a NotifyCode; the meaning of \a param and \a extra depends on it.
    virtual int Notify(unsigned int code, unsigned int param, unsigned int extra) = 0;
};

#define INotify_iid "com.zantrix.quillnet.plugin.INotify"
Q_DECLARE_INTERFACE(INotify, INotify_iid)

#endif
