#include "MainWindow.h"

#include "DeveloperMenu.h"
#include "HostUi.h"
#include "NavigationIcons.h"
#include "NavigationList.h"
#include "NoticeBar.h"
#include "PageFrame.h"
#include "PluginManager.h"
#include "PluginPage.h"
#include "PluginsDialog.h"
#include "SettingsPage.h"
#include "StatusLine.h"
#ifdef NETINFO_WITH_USAGE_PAGE
#include "UsagePage.h"
#endif

#include "ui/CommonUtils.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QVariant>

#include <utility>

namespace {

const QString hostGroup = QStringLiteral("Host");
const QString geometryKey = QStringLiteral("Geometry");
const QString pageKey = QStringLiteral("Page");

QString text(const char *key)
{
    return HostUi::text(QLatin1String(key));
}

} // namespace

MainWindow::MainWindow(PluginManager &plugins, bool withDeveloperMenu)
    : m_plugins(plugins)
    , m_navigation(new NavigationList)
    , m_notices(new NoticeBar)
    , m_stack(new QStackedWidget)
    , m_status(new StatusLine)
{
    setObjectName(QStringLiteral("MainWindow"));
    buildFrame();
    buildMenus(withDeveloperMenu);
    buildPages();
    buildWindowActions();
    connect(HostUi::instance(), &HostUi::languageChanged, this, &MainWindow::retranslate);
    retranslate();
    m_notices->setNotices(m_plugins.problems());
    showRow(0);
    resize(firstSize.boundedTo(screen()->availableSize()));
}

void MainWindow::buildFrame()
{
    m_stack->setObjectName(QStringLiteral("Pages"));
    auto *right = new QVBoxLayout;
    right->setContentsMargins(0, 0, 0, 0);
    right->setSpacing(0);
    right->addWidget(m_notices);
    right->addWidget(m_stack, 1);
    auto *line = new QFrame;
    line->setFrameShape(QFrame::VLine);
    line->setFrameShadow(QFrame::Sunken);
    auto *centre = new QWidget;
    auto *layout = new QHBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_navigation);
    layout->addWidget(line);
    layout->addLayout(right, 1);
    setCentralWidget(centre);
    statusBar()->addWidget(m_status, 1);
    connect(m_navigation, &QListWidget::currentRowChanged, this, &MainWindow::showRow);
}

void MainWindow::buildMenus(bool withDeveloperMenu)
{
    m_fileMenu = menuBar()->addMenu(QString());
    m_quit = m_fileMenu->addAction(QString());
    m_quit->setObjectName(QStringLiteral("Quit"));
    m_quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    m_quit->setMenuRole(QAction::QuitRole);
    connect(m_quit, &QAction::triggered, this, &QWidget::close);

    m_viewMenu = menuBar()->addMenu(QString());
    m_pageActions = new QActionGroup(this);
    m_toolsMenu = menuBar()->addMenu(QString());
    m_toolsMenu->setObjectName(QStringLiteral("ToolsMenu"));
    if (withDeveloperMenu) {
        m_developerMenu = new DeveloperMenu(this);
        menuBar()->addMenu(m_developerMenu);
        connect(m_developerMenu, &DeveloperMenu::simulationWanted, this, &MainWindow::simulationWanted);
        connect(m_developerMenu, &DeveloperMenu::suppressionWanted, this, &MainWindow::suppressionWanted);
    }
    m_helpMenu = menuBar()->addMenu(QString());
    m_pluginsAction = m_helpMenu->addAction(QString());
    m_pluginsAction->setObjectName(QStringLiteral("Plugins"));
    m_about = m_helpMenu->addAction(QString());
    m_about->setObjectName(QStringLiteral("About"));
    m_about->setMenuRole(QAction::AboutRole);
    connect(m_pluginsAction, &QAction::triggered, this, &MainWindow::showPlugins);
    connect(m_about, &QAction::triggered, this, &MainWindow::showAbout);
}

void MainWindow::buildPages()
{
    addPage(QStringLiteral("history"), NavigationIcons::icon(NavigationIcons::Shape::History), historyPage());
#ifdef NETINFO_WITH_USAGE_PAGE
    addPage(QStringLiteral("usage"), NavigationIcons::icon(NavigationIcons::Shape::Usage), new UsagePage);
#endif
    auto *settings = new SettingsPage;
    connect(settings, &SettingsPage::failed, this, &MainWindow::addNotice);
    addPage(QStringLiteral("settings"), NavigationIcons::icon(NavigationIcons::Shape::Settings), settings);
    // Further pages of plug-ins, which the host knows by name only.
    const auto plugins = m_plugins.running(PluginType::Page);
    for (std::size_t i = 1; i < plugins.size(); ++i) {
        if (plugins[i]->ui() != nullptr)
            addPage(plugins[i]->name(), QIcon(), new PluginPage(*plugins[i]->ui()));
    }
}

QWidget *MainWindow::historyPage()
{
    const auto plugins = m_plugins.running(PluginType::Page);
    if (!plugins.empty() && plugins.front()->ui() != nullptr)
        return new PluginPage(*plugins.front()->ui());
    auto *missing = new QLabel;
    missing->setObjectName(QStringLiteral("NoHistoryPage"));
    missing->setAlignment(Qt::AlignCenter);
    missing->setWordWrap(true);
    return missing;
}

void MainWindow::addPage(const QString &name, const QIcon &icon, QWidget *content)
{
    const int row = static_cast<int>(m_pages.size());
    // Pages of plug-ins have the toolkit's margins of their own.
    const bool isPlugin = qobject_cast<PluginPage *>(content) != nullptr;
    auto *frame = new PageFrame(content, isPlugin ? style()->pixelMetric(QStyle::PM_LayoutLeftMargin) : 0);
    QAction *action = m_viewMenu->addAction(icon, QString());
    action->setObjectName(QStringLiteral("Page_") + name);
    action->setCheckable(true);
    if (row < 9)
        action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + row)));
    m_pageActions->addAction(action);
    connect(action, &QAction::triggered, this, [this, row] { showRow(row); });
    m_pages.append({name, QStringLiteral("IDS_HOST_PAGE_") + name.toUpper(), frame, action});
    m_stack->addWidget(frame);
    m_navigation->addPage(icon);
}

void MainWindow::buildWindowActions()
{
    for (Plugin *plugin : m_plugins.running(PluginType::Window)) {
        if (plugin->ui() == nullptr)
            continue;
        QAction *action = m_toolsMenu->addAction(QString());
        action->setObjectName(QStringLiteral("Window_") + plugin->name());
        connect(action, &QAction::triggered, this, [this, plugin] { openWindow(plugin); });
        m_windowActions.append({plugin, action});
    }
    m_toolsMenu->menuAction()->setVisible(!m_windowActions.isEmpty());
}

void MainWindow::openWindow(Plugin *plugin)
{
    if (!plugin->isRunning())
        return;
    QRect place = geometry();
    plugin->ui()->ShowWindow(this, place);
}

QString MainWindow::windowActionText(const Plugin &plugin) const
{
    const QString id = ownCopy(plugin.object()->property("menuTextId").toString());
    if (id.isEmpty())
        return plugin.name();
    const QString own = HostUi::text(id);
    return own == id ? HostUi::instance()->translation(id, plugin.name()) : own;
}

void MainWindow::retranslate()
{
    setWindowTitle(text("IDS_HOST_APP_NAME"));
    m_fileMenu->setTitle(text("IDS_HOST_MENU_FILE"));
    m_quit->setText(text("IDS_HOST_MENU_QUIT"));
    m_viewMenu->setTitle(text("IDS_HOST_MENU_VIEW"));
    m_toolsMenu->setTitle(text("IDS_HOST_MENU_TOOLS"));
    m_helpMenu->setTitle(text("IDS_HOST_MENU_HELP"));
    m_pluginsAction->setText(text("IDS_HOST_MENU_PLUGINS"));
    m_about->setText(text("IDS_HOST_MENU_ABOUT"));
    if (m_developerMenu != nullptr)
        m_developerMenu->retranslate();
    for (const WindowAction &window : std::as_const(m_windowActions))
        window.action->setText(windowActionText(*window.plugin));
    for (int row = 0; row < m_pages.size(); ++row)
        retranslatePage(row);
    m_notices->retranslate(m_plugins.problems() + m_ownNotices);
    m_status->refresh();
    setLocale(QLocale());
}

void MainWindow::retranslatePage(int row)
{
    const Page &page = m_pages.at(row);
    const QString translated = HostUi::text(page.textId);
    const bool isOwn = translated != page.textId;
    const QString heading = isOwn ? translated : page.name;
    page.action->setText(heading);
    page.frame->setTexts(heading, isOwn ? HostUi::text(page.textId + QStringLiteral("_HINT")) : QString());
    m_navigation->setPageText(row, heading);
    if (page.frame->content()->objectName() == QLatin1String("NoHistoryPage"))
        qobject_cast<QLabel *>(page.frame->content())->setText(text("IDS_HOST_NO_HISTORY_PAGE"));
}

QStringList MainWindow::pageNames() const
{
    QStringList names;
    for (const Page &page : m_pages)
        names << page.name;
    return names;
}

QString MainWindow::currentPage() const
{
    return m_pages.at(m_stack->currentIndex()).name;
}

bool MainWindow::showPage(const QString &name)
{
    const int row = static_cast<int>(pageNames().indexOf(name));
    if (row == -1)
        return false;
    showRow(row);
    return true;
}

void MainWindow::showRow(int row)
{
    if (row < 0)
        return;
    m_stack->setCurrentIndex(row);
    m_navigation->setCurrentRow(row);
    m_pages.at(row).action->setChecked(true);
}

void MainWindow::restoreState()
{
    const QString stored = CommonUtils::GetSettings(hostGroup, geometryKey);
    restoreGeometry(QByteArray::fromBase64(stored.toLatin1()));
    showPage(CommonUtils::GetSettings(hostGroup, pageKey));
}

void MainWindow::storeState() const
{
    HostUi *ui = HostUi::instance();
    ui->writeSetting(hostGroup, geometryKey, QString::fromLatin1(saveGeometry().toBase64()));
    ui->writeSetting(hostGroup, pageKey, currentPage());
}

void MainWindow::followStatus(QObject *source)
{
    m_status->follow(source);
}

void MainWindow::addNotice(const QString &notice)
{
    if (!m_ownNotices.contains(notice))
        m_ownNotices << notice;
    m_notices->setNotices(m_plugins.problems() + m_ownNotices);
}

void MainWindow::detachPlugins()
{
    for (const Page &page : std::as_const(m_pages)) {
        if (auto *plugin = qobject_cast<PluginPage *>(page.frame->content()))
            plugin->detach();
    }
    for (const WindowAction &window : std::as_const(m_windowActions))
        delete window.action;
    m_windowActions.clear();
    disconnect(HostUi::instance(), nullptr, this, nullptr);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->accept();
    // Also when other windows of plug-ins are still open: they belong to this one.
    QCoreApplication::quit();
}

void MainWindow::showAbout()
{
    auto *box = new QMessageBox(QMessageBox::NoIcon, text("IDS_HOST_APP_NAME"), text("IDS_HOST_APP_NAME"),
                                QMessageBox::NoButton, this);
    box->setObjectName(QStringLiteral("AboutBox"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIconPixmap(windowIcon().pixmap(64, 64));
    box->setInformativeText(text("IDS_HOST_ABOUT_TEXT").arg(QStringLiteral(NETINFO_VERSION)));
    box->addButton(text("IDS_HOST_CLOSE"), QMessageBox::RejectRole);
    box->open();
}

void MainWindow::showPlugins()
{
    auto *dialog = new PluginsDialog(m_plugins, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
