// Turns connections that come and go into the notifications that the host broadcasts.
#ifndef NETINFO_DIALUP_ANNOUNCER_H
#define NETINFO_DIALUP_ANNOUNCER_H

#include <QObject>
#include <QSet>

/// The listeners remember one thing only: whether a connection was announced since they last heard of an end. So an end
/// must always follow a beginning, and the beginning is said again while other connections are still up; otherwise the
/// next end would go unheard.
class Announcer : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// A connection is up. \a connection is its key; hearing of the same one again changes nothing.
    void established(qint64 connection);
    /// Its record is in the history. Also for a connection that was over before anybody saw it up.
    void ended(qint64 connection);

signals:
    /// Code, status and 0, as INotify::Notify takes them.
    void announce(unsigned int code, unsigned int param, unsigned int extra);

private:
    void announceStatus(unsigned int status);

    QSet<qint64> m_up;
};

#endif
