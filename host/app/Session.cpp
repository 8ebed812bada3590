#include "Session.h"

#include "HostUi.h"
#include "MainWindow.h"
#include "Options.h"
#include "SettingsPage.h"

#include "plugin/IDialupUIService.h"

#include <QApplication>
#include <QPixmap>

#include <cstdio>

namespace {

void complain(const QString &message)
{
    std::fprintf(stderr, "netinfo-host: %s\n", qUtf8Printable(message));
}

} // namespace

Session::Session(const Options &options) : m_broadcaster(m_plugins)
{
    HostUi *ui = HostUi::instance();
    SettingsPage::storeDefaults();
    ui->setPluginContainer(&m_plugins);
    // A picture is drawn without services: nothing is to be recorded for it.
    m_plugins.load(PluginManager::defaultFolder(), options.screenshot.isEmpty());
    m_broadcaster.connectAnnouncers();
    m_plugins.start();
    if (m_plugins.plugins().empty())
        complain(m_plugins.problems().constFirst());
    connect(ui, &HostUi::languageChanged, this, [this] { m_broadcaster.broadcast(NOTIFY_LANGUAGE_CHANGED, 0, 0); });

    m_window = std::make_unique<MainWindow>(m_plugins, options.developer);
    ui->setMainWindow(m_window.get());
    if (options.screenshot.isEmpty())
        m_window->followStatus(dialup());
    connect(m_window.get(), &MainWindow::simulationWanted, this, &Session::simulateConnection);
    connect(m_window.get(), &MainWindow::suppressionWanted, this,
            [this] { m_broadcaster.broadcast(NOTIFY_SUPPRESS_SUMMARY, 0, 0); });
}

Session::~Session()
{
    if (m_storesState)
        m_window->storeState();
    m_broadcaster.stop();
    m_window->detachPlugins();
    // Pages and boxes of plug-ins are children of the window, so it must still be there when their owners go.
    m_plugins.unloadAll();
    HostUi::instance()->setPluginContainer(nullptr);
    m_window.reset();
}

void Session::show()
{
    m_storesState = true;
    m_window->restoreState();
    m_window->show();
    m_broadcaster.start();
}

bool Session::drawInto(const QString &file)
{
    m_window->resize(MainWindow::firstSize);
    m_window->show();
    m_broadcaster.start();
    QCoreApplication::processEvents();
    return m_window->grab().save(file, "PNG");
}

QObject *Session::dialup() const
{
    for (const auto &plugin : m_plugins.plugins()) {
        if (plugin->isRunning() && qobject_cast<IDialupUIService *>(plugin->object()) != nullptr)
            return plugin->object();
    }
    return nullptr;
}

void Session::simulateConnection(int seconds)
{
    QObject *object = dialup();
    if (object != nullptr && QMetaObject::invokeMethod(object, "simulateConnection", Q_ARG(int, seconds)))
        return;
    const QString message = HostUi::text(QStringLiteral("IDS_HOST_NO_DIALUP"));
    complain(message);
    m_window->addNotice(message);
}
