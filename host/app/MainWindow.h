// The main window: a list of pages, the pages, the menus and the status bar.
#ifndef NETINFO_APP_MAINWINDOW_H
#define NETINFO_APP_MAINWINDOW_H

#include <QMainWindow>
#include <QSize>
#include <QVector>

class DeveloperMenu;
class NavigationList;
class NoticeBar;
class PageFrame;
class Plugin;
class PluginManager;
class QAction;
class QActionGroup;
class QMenu;
class QStackedWidget;
class StatusLine;

/// Made after the plug-ins were started; detachPlugins() is due before they go.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Wide enough for the six columns of the history, which are 710 pixels together.
    static constexpr QSize firstSize{980, 620};

    MainWindow(PluginManager &plugins, bool withDeveloperMenu);

    /// "history", "usage" or "settings"; names of pages that exist, in their order.
    QStringList pageNames() const;
    QString currentPage() const;
    /// False when there is no such page.
    bool showPage(const QString &name);

    /// Takes size, place and page from the settings, as far as they are there and fit the screen.
    void restoreState();
    void storeState() const;

    /// The object whose property "statusText" the status bar shows; null: nothing records.
    void followStatus(QObject *source);
    /// Shows a notice above the pages, in addition to what the plug-ins have.
    void addNotice(const QString &text);
    /// Ends all calls to plug-ins and gives their pages back.
    void detachPlugins();

signals:
    void simulationWanted(int seconds);
    void suppressionWanted();

protected:
    void closeEvent(QCloseEvent *event) override;

private slots:
    void retranslate();
    void showRow(int row);
    void showAbout();
    void showPlugins();

private:
    struct Page {
        QString name;
        QString textId;
        PageFrame *frame;
        QAction *action;
    };

    struct WindowAction {
        Plugin *plugin;
        QAction *action;
    };

    void buildFrame();
    void buildMenus(bool withDeveloperMenu);
    void buildPages();
    void buildWindowActions();
    void addPage(const QString &name, const QIcon &icon, QWidget *content);
    QWidget *historyPage();
    void retranslatePage(int row);
    void openWindow(Plugin *plugin);
    QString windowActionText(const Plugin &plugin) const;

    PluginManager &m_plugins;
    NavigationList *m_navigation;
    NoticeBar *m_notices;
    QStackedWidget *m_stack;
    StatusLine *m_status;
    QMenu *m_fileMenu;
    QMenu *m_viewMenu;
    QMenu *m_toolsMenu;
    QMenu *m_helpMenu;
    DeveloperMenu *m_developerMenu = nullptr;
    QAction *m_quit;
    QAction *m_pluginsAction;
    QAction *m_about;
    QActionGroup *m_pageActions;
    QVector<Page> m_pages;
    QVector<WindowAction> m_windowActions;
    QStringList m_ownNotices;
};

#endif
