#include "Broadcaster.h"

#include "HostUi.h"
#include "PluginManager.h"

Broadcaster::Broadcaster(const PluginManager &plugins) : m_plugins(plugins)
{
    connect(HostUi::instance(), &HostUi::messagesClosed, this, &Broadcaster::deliverWaiting);
}

void Broadcaster::connectAnnouncers()
{
    for (const auto &plugin : m_plugins.plugins()) {
        QObject *object = plugin->object();
        if (object != nullptr && object->metaObject()->indexOfSignal("announce(uint,uint,uint)") != -1)
            connect(object, SIGNAL(announce(uint, uint, uint)), this, SLOT(broadcast(uint, uint, uint)),
                    Qt::UniqueConnection);
    }
}

void Broadcaster::start()
{
    m_isStarted = true;
    deliverWaiting();
}

void Broadcaster::stop()
{
    m_isStarted = false;
    m_waiting.clear();
}

void Broadcaster::broadcast(unsigned int code, unsigned int param, unsigned int extra)
{
    m_waiting.push_back({code, param, extra});
    deliverWaiting();
}

void Broadcaster::deliverWaiting()
{
    // A plug-in that announces while it is being told waits for its turn, so that all hear everything in one order.
    if (m_isDelivering)
        return;
    m_isDelivering = true;
    while (m_isStarted && !m_waiting.empty() && !HostUi::instance()->isMessageOpen()) {
        const Announcement next = m_waiting.front();
        m_waiting.pop_front();
        deliver(next);
    }
    m_isDelivering = false;
}

void Broadcaster::deliver(const Announcement &announcement)
{
    for (const auto &plugin : m_plugins.plugins()) {
        if (plugin->isRunning() && plugin->notify() != nullptr)
            plugin->notify()->Notify(announcement.code, announcement.param, announcement.extra);
    }
    emit delivered(announcement.code, announcement.param, announcement.extra);
}
