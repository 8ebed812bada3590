// A session bus for one test program.
#ifndef NETINFO_TESTS_DIALUP_PRIVATEBUS_H
#define NETINFO_TESTS_DIALUP_PRIVATEBUS_H

#include <QProcess>

/// Runs as long as it lives. To be made before anything asks for the session bus.
class PrivateBus
{
public:
    PrivateBus()
    {
        m_daemon.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address"});
        m_daemon.waitForReadyRead(30000);
        m_address = m_daemon.readLine().trimmed();
        if (m_address.isEmpty())
            qFatal("dbus-daemon did not start: %s", qPrintable(m_daemon.errorString()));
    }
    ~PrivateBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    QString address() const { return QString::fromLocal8Bit(m_address); }

    /// Makes it this process's session bus. There is no system bus at all, lest the machine's own connections appear.
    void offerToThisProcess() const
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address);
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/system_bus_socket");
    }

private:
    QProcess m_daemon;
    QByteArray m_address;
};

#endif
