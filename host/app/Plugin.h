// One plug-in file: from the file on disk to the running object and back.
#ifndef NETINFO_APP_PLUGIN_H
#define NETINFO_APP_PLUGIN_H

#include "plugin/IUIPlugin.h"

#include <QPluginLoader>
#include <QPointer>
#include <QString>

class INotify;

/// What IBasePlugin::GetPluginType() answers.
enum class PluginType {
    Page = 0,    ///< A page in the main window (IUIPlugin).
    Service = 1, ///< Works without a window.
    Window = 2 ///< A window of its own, opened from the menu (IUIPlugin). The object's property "menuTextId" holds the
               ///< string ID of the menu text.
};

/// A copy that shares nothing with the library of the plug-in that `text` came from: a literal lies in the library's
/// own memory, which goes when it is unloaded. To be taken of every text that outlives the plug-in.
QString ownCopy(const QString &text);

/// A plug-in moves forward through load(), start() and unload(), or stops at the state that says why it could not.
class Plugin
{
public:
    enum class State {
        Found,       ///< Known as a file only.
        NotAPlugin,  ///< Not a library, or one without plug-in metadata.
        WrongId,     ///< A plug-in, but not of this program.
        NotLoaded,   ///< The library could not be loaded, for instance because one that it needs is missing.
        NoInterface, ///< Loaded, and does not answer the interface that its metadata promises.
        Duplicate,   ///< Its class ID is taken.
        Loaded,      ///< Answers; not started yet.
        InitRefused, ///< Init() returned false.
        Failed,      ///< Threw while it was asked or started.
        Running,
        Unloaded
    };

    explicit Plugin(const QString &path);
    ~Plugin();
    Plugin(const Plugin &) = delete;
    Plugin &operator=(const Plugin &) = delete;

    /// Loads the library and asks the object for its identity. True when the state is then Loaded.
    bool load();
    /// Calls Init(). True when the state is then Running.
    bool start();
    /// Leaves out a loaded plug-in whose class ID is taken.
    void refuseAsDuplicate();
    /// OnDestroy(), destruction of the object, unloading of the library. Does nothing when there is no object.
    void unload();

    State state() const { return m_state; }
    bool isRunning() const { return m_state == State::Running; }
    bool hasFailed() const;
    /// For people, in the current language: what is wrong, naming the file; for a running one its version.
    QString message() const;

    QString fileName() const;
    /// The class name in the metadata; empty when there is none. Does not load the library.
    QString className() const;
    /// The interface ID in the metadata.
    QString interfaceId() const;

    const QString &clsid() const { return m_clsid; }
    const QString &name() const { return m_name; }
    unsigned int version() const { return m_version; }
    PluginType type() const { return m_type; }

    QObject *object() const { return m_object; }
    IBasePlugin *base() const { return m_base; }
    /// Null for a service.
    IUIPlugin *ui() const { return m_ui; }
    /// Null when it takes no notifications.
    INotify *notify() const { return m_notify; }

private:
    bool fail(State state, const QString &detail = QString());
    bool checkMetadata();
    bool findInterfaces();
    void askIdentity();
    void dropObject();

    QPluginLoader m_loader;
    State m_state = State::Found;
    QString m_detail;
    QString m_clsid;
    QString m_name;
    unsigned int m_version = 0;
    PluginType m_type = PluginType::Service;
    QPointer<QObject> m_object;
    IBasePlugin *m_base = nullptr;
    IUIPlugin *m_ui = nullptr;
    INotify *m_notify = nullptr;
};

#endif
