#include "PluginManager.h"

#include "HostUi.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <cstdio>

namespace {

const QString historyClass = QStringLiteral("NetInfoRecordUIPlugin");

bool comesBefore(const std::unique_ptr<Plugin> &left, const std::unique_ptr<Plugin> &right)
{
    const bool leftIsHistory = left->className() == historyClass;
    const bool rightIsHistory = right->className() == historyClass;
    return leftIsHistory != rightIsHistory ? leftIsHistory : left->fileName() < right->fileName();
}

} // namespace

PluginManager::~PluginManager()
{
    unloadAll();
}

QString PluginManager::defaultFolder()
{
    const QString named = qEnvironmentVariable("NETINFO_PLUGIN_DIR");
    if (!named.isEmpty())
        return named;
    const QString beside =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/netinfo/plugins"));
    const QString installed = QStringLiteral(NETINFO_INSTALLED_PLUGIN_DIR);
    return QDir(beside).exists() || !QDir(installed).exists() ? beside : installed;
}

void PluginManager::load(const QString &folder, bool withServices)
{
    m_folder = folder;
    findFiles(withServices);
    for (const auto &plugin : m_plugins) {
        if (plugin->load() && GetPluginObject(plugin->clsid(), 0) != plugin->object())
            plugin->refuseAsDuplicate();
    }
}

void PluginManager::start()
{
    for (const auto &plugin : m_plugins) {
        if (plugin->state() == Plugin::State::Loaded)
            plugin->start();
        report(*plugin);
    }
}

void PluginManager::findFiles(bool withServices)
{
    const QDir dir(m_folder);
    for (const QString &name : dir.entryList({QStringLiteral("*.so")}, QDir::Files, QDir::Name)) {
        auto plugin = std::make_unique<Plugin>(dir.absoluteFilePath(name));
        if (withServices || plugin->interfaceId() != QLatin1String(IBasePlugin_iid))
            m_plugins.push_back(std::move(plugin));
    }
    std::stable_sort(m_plugins.begin(), m_plugins.end(), comesBefore);
}

void PluginManager::report(const Plugin &plugin) const
{
    if (plugin.hasFailed())
        std::fprintf(stderr, "netinfo-host: %s\n", qUtf8Printable(plugin.message()));
}

void PluginManager::unloadAll()
{
    for (auto plugin = m_plugins.rbegin(); plugin != m_plugins.rend(); ++plugin)
        (*plugin)->unload();
    m_plugins.clear();
}

std::vector<Plugin *> PluginManager::running(PluginType type) const
{
    std::vector<Plugin *> found;
    for (const auto &plugin : m_plugins) {
        if (plugin->isRunning() && plugin->type() == type)
            found.push_back(plugin.get());
    }
    return found;
}

QStringList PluginManager::problems() const
{
    QStringList found;
    if (!QDir(m_folder).exists())
        return {HostUi::text(QStringLiteral("IDS_HOST_NO_PLUGIN_FOLDER")).arg(m_folder)};
    if (m_plugins.empty())
        return {HostUi::text(QStringLiteral("IDS_HOST_NO_PLUGINS")).arg(m_folder)};
    for (const auto &plugin : m_plugins) {
        if (plugin->hasFailed())
            found << plugin->message();
    }
    return found;
}

QObject *PluginManager::GetPluginObject(const QString &clsid, unsigned int flags)
{
    Q_UNUSED(flags)
    for (const auto &plugin : m_plugins) {
        if (plugin->object() != nullptr && plugin->clsid() == clsid)
            return plugin->object();
    }
    return nullptr;
}
