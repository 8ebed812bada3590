// A service like the one through which connections come and go: it announces, has a status line and can play a
// connection.
#include "CallLog.h"

#include "plugin/IBasePlugin.h"
#include "plugin/IDialupUIService.h"
#include "plugin/INotify.h"

class ServicePlugin : public QObject, public IBasePlugin, public INotify, public IDialupUIService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin INotify IDialupUIService)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)

public:
    ~ServicePlugin() override { logCall(QStringLiteral("service: destroyed")); }

    void Release() override {}
    int GetLastError() override { return 0; }
    void OnDestroy() override { logCall(QStringLiteral("service: OnDestroy")); }
    bool Init() override
    {
        logCall(QStringLiteral("service: Init"));
        // A connection may be up already when the host starts.
        emit announce(NOTIFY_CONNECTION_STATUS, 1, 0);
        return true;
    }
    int GetPluginType() override { return 1; }
    QString GetCLSID() override { return QStringLiteral("service"); }
    unsigned int GetVersion() override { return 0x100; }
    QString GetPluginName() override { return QStringLiteral("service"); }
    bool IsAllowRelease() override { return true; }
    int QueryInterface(int, QObject **) override { return 0; }

    int Notify(unsigned int code, unsigned int param, unsigned int) override
    {
        logCall(QStringLiteral("service: Notify 0x%1 %2").arg(code, 0, 16).arg(param));
        return 0;
    }

    QString statusText() const { return m_status; }

public slots:
    void simulateConnection(int seconds)
    {
        logCall(QStringLiteral("service: simulate %1").arg(seconds));
        m_status = QStringLiteral("simulating for %1 s").arg(seconds);
        emit statusTextChanged();
        // Two at once: the second must not overtake the first at any listener.
        emit announce(NOTIFY_CONNECTION_STATUS, 1, 0);
        emit announce(NOTIFY_CONNECTION_STATUS, 0, 0);
    }

signals:
    void announce(unsigned int code, unsigned int param, unsigned int extra);
    void statusTextChanged();

private:
    QString m_status = QStringLiteral("recording");
};

#include "ServicePlugin.moc"
