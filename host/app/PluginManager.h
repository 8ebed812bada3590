// All plug-ins of the program: finds, loads, starts, looks up and unloads them.
#ifndef NETINFO_APP_PLUGINMANAGER_H
#define NETINFO_APP_PLUGINMANAGER_H

#include "Plugin.h"

#include "plugin/IPluginContainer.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// The container that plug-ins look each other up in. Unloads everything when it goes; windows that hold pages of
/// plug-ins must outlive that moment, since a page belongs to its plug-in.
class PluginManager : public IPluginContainer
{
public:
    PluginManager() = default;
    ~PluginManager() override;
    PluginManager(const PluginManager &) = delete;
    PluginManager &operator=(const PluginManager &) = delete;

    /// $NETINFO_PLUGIN_DIR, else ../lib/netinfo/plugins beside the program, else the installed folder.
    static QString defaultFolder();

    /// Loads every *.so in `folder`, the history page first and the others by name. With `withServices` false, plug-ins
    /// without a window are left alone.
    void load(const QString &folder, bool withServices = true);
    /// Starts what load() has loaded. Whatever cannot be used is reported on standard error and left out.
    void start();
    /// OnDestroy() and unloading in the opposite order.
    void unloadAll();

    const std::vector<std::unique_ptr<Plugin>> &plugins() const { return m_plugins; }
    /// The running ones of one type, in their order.
    std::vector<Plugin *> running(PluginType type) const;
    const QString &folder() const { return m_folder; }
    /// One message for everything that is amiss, in the current language; empty when all is well.
    QStringList problems() const;

    QObject *GetPluginObject(const QString &clsid, unsigned int flags) override;

private:
    void findFiles(bool withServices);
    void report(const Plugin &plugin) const;

    QString m_folder;
    std::vector<std::unique_ptr<Plugin>> m_plugins;
};

#endif
