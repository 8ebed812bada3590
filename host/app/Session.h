// One run of the program: brings plug-ins, broadcaster and main window up in the right order, and down again.
#ifndef NETINFO_APP_SESSION_H
#define NETINFO_APP_SESSION_H

#include "Broadcaster.h"
#include "PluginManager.h"

#include <QObject>

#include <memory>

class MainWindow;
struct Options;

/// Needs the application object from construction to destruction.
class Session : public QObject
{
    Q_OBJECT

public:
    explicit Session(const Options &options);
    ~Session() override;

    MainWindow &window() { return *m_window; }
    PluginManager &plugins() { return m_plugins; }
    Broadcaster &broadcaster() { return m_broadcaster; }

    /// Shows the window as the user left it and delivers what the plug-ins have announced so far.
    void show();
    /// Shows the window at its first size and draws it into a PNG file. False when the file could not be written.
    bool drawInto(const QString &file);

public slots:
    /// Has the dial-up plug-in play a connection; a notice says so when there is none.
    void simulateConnection(int seconds);

private:
    QObject *dialup() const;

    PluginManager m_plugins;
    Broadcaster m_broadcaster;
    std::unique_ptr<MainWindow> m_window;
    bool m_storesState = false;
};

#endif
