// Carries announcements from one plug-in to all.
#ifndef NETINFO_APP_BROADCASTER_H
#define NETINFO_APP_BROADCASTER_H

#include "plugin/INotify.h"

#include <QObject>

#include <deque>

class PluginManager;

/// Calls INotify::Notify on every running plug-in, in the order in which announcements were made. Announcements wait
/// until start() was called, and while a message box is open: its caller is in the middle of an operation on what the
/// announcement would change.
class Broadcaster : public QObject
{
    Q_OBJECT

public:
    explicit Broadcaster(const PluginManager &plugins);

    /// Connects the signal announce(uint,uint,uint) of every loaded plug-in object that has it. To be called before the
    /// plug-ins are started: one may announce in its Init().
    void connectAnnouncers();
    /// Delivers what has waited; from now on announcements go out at once.
    void start();
    /// Drops everything from now on: the plug-ins are about to go.
    void stop();

public slots:
    void broadcast(unsigned int code, unsigned int param, unsigned int extra);

signals:
    /// Every plug-in has been told.
    void delivered(unsigned int code, unsigned int param, unsigned int extra);

private:
    struct Announcement {
        unsigned int code;
        unsigned int param;
        unsigned int extra;
    };

    void deliverWaiting();
    void deliver(const Announcement &announcement);

    const PluginManager &m_plugins;
    std::deque<Announcement> m_waiting;
    bool m_isStarted = false;
    bool m_isDelivering = false;
};

#endif
