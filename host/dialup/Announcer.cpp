// Keeps the set of announced connections, and repeats a beginning where an end would hide it.
#include "Announcer.h"

#include "plugin/INotify.h"

namespace {
const unsigned int statusEstablished = 1;
const unsigned int statusEnded = 0;
} // namespace

void Announcer::established(qint64 connection)
{
    if (m_up.contains(connection))
        return;
    m_up.insert(connection);
    announceStatus(statusEstablished);
}

void Announcer::ended(qint64 connection)
{
    // A connection that nobody saw up has left a record all the same, and only an end that follows a beginning makes
    // the listeners show it.
    if (!m_up.remove(connection))
        announceStatus(statusEstablished);
    announceStatus(statusEnded);
    if (!m_up.isEmpty())
        announceStatus(statusEstablished);
}

void Announcer::announceStatus(unsigned int status)
{
    emit announce(NOTIFY_CONNECTION_STATUS, status, 0);
}
