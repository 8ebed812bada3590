// A door into a running Qt program for the tests: it answers what is on the screen, and takes no orders. The toolkit
// itself loads it, when QT_QPA_GENERIC_PLUGINS names it together with the path of the socket on which it answers.
#include "WidgetTree.h"

#include <QGenericPlugin>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>

namespace {

class Probe : public QObject
{
    Q_OBJECT

public:
    explicit Probe(const QString &path)
    {
        connect(&m_server, &QLocalServer::newConnection, this, &Probe::answer);
        if (!m_server.listen(path))
            qFatal("The probe cannot listen on %s: %s", qPrintable(path), qPrintable(m_server.errorString()));
    }

private:
    // One connection is one question; the end of the answer is the end of the stream.
    void answer()
    {
        while (QLocalSocket *socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            socket->write(QJsonDocument(describeWindows()).toJson(QJsonDocument::Compact));
            socket->disconnectFromServer();
        }
    }

    QLocalServer m_server;
};

class ProbePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "probe.json")

public:
    QObject *create(const QString &, const QString &path) override { return new Probe(path); }
};

} // namespace

#include "ProbePlugin.moc"
