// A plug-in that changes the host's language on request, at moments when the host's own window cannot be used: a box
// that is open keeps everybody from the settings page. Loaded by tests that ask for it, never installed.
#include "HostUi.h"

#include "plugin/IBasePlugin.h"

#include <QLocalServer>
#include <QLocalSocket>

namespace {

/// Whoever connects to the socket $NETINFO_TEST_LANGUAGE_SOCKET and sends a language code changes to that language.
class LanguageSwitch : public QObject, public IBasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin)

public:
    bool Init() override
    {
        connect(&m_server, &QLocalServer::newConnection, this, &LanguageSwitch::serve);
        return m_server.listen(qEnvironmentVariable("NETINFO_TEST_LANGUAGE_SOCKET"));
    }
    void OnDestroy() override { m_server.close(); }
    void Release() override {}
    int GetLastError() override { return 0; }
    int GetPluginType() override { return 1; }
    QString GetCLSID() override { return QStringLiteral("6B1D7C1E-0B7E-4E0B-9A53-5D8B5C0F7A11"); }
    unsigned int GetVersion() override { return 0x101; }
    QString GetPluginName() override { return QStringLiteral("LanguageSwitch"); }
    bool IsAllowRelease() override { return false; }
    int QueryInterface(int, QObject **) override { return 0; }

private:
    void serve()
    {
        QLocalSocket *socket = m_server.nextPendingConnection();
        connect(socket, &QLocalSocket::disconnected, socket, [socket] {
            HostUi::instance()->setLanguage(QString::fromUtf8(socket->readAll()));
            socket->deleteLater();
        });
    }

    QLocalServer m_server;
};

} // namespace

#include "LanguageSwitch.moc"
