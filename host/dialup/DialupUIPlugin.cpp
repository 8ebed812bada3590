// Wires the recorder's words to the announcer, and the status line to the host.
#include "DialupUIPlugin.h"

#include "SimulatedSource.h"
#include "StatusLine.h"

#include "host/recorder/RecorderClient.h"

using recorder::Announcement;
using recorder::RecorderClient;

DialupUIPlugin::DialupUIPlugin()
{
    connect(&m_announcer, &Announcer::announce, this, &DialupUIPlugin::announce);
}

DialupUIPlugin::~DialupUIPlugin() = default;

bool DialupUIPlugin::Init()
{
    if (m_client)
        return true;
    m_client = std::make_unique<RecorderClient>();
    connect(m_client.get(), &RecorderClient::connectionEstablished, this, [this](const Announcement &connection) {
        m_announcer.established(connection.connection);
        updateStatusText();
    });
    const auto ended = [this](const Announcement &connection) {
        m_announcer.ended(connection.connection);
        updateStatusText();
    };
    connect(m_client.get(), &RecorderClient::connectionEnded, this, ended);
    connect(m_client.get(), &RecorderClient::leftoverClosed, this, ended);
    connect(m_client.get(), &RecorderClient::statusChanged, this, &DialupUIPlugin::updateStatusText);
    m_simulation = new SimulatedSource;
    m_client->addSource(m_simulation);
    m_client->start();
    updateStatusText();
    return true;
}

void DialupUIPlugin::OnDestroy()
{
    if (!m_client)
        return;
    // Nobody listens any more; the records matter.
    m_client->disconnect(this);
    m_simulation->endAll();
    m_simulation = nullptr;
    m_client.reset();
}

void DialupUIPlugin::simulateConnection(int seconds)
{
    if (m_simulation)
        m_simulation->play(seconds);
    else
        qWarning("A connection can be simulated only while the dial-up plug-in runs.");
}

void DialupUIPlugin::updateStatusText()
{
    const QString text = m_client ? statusLine(m_client->status(), m_client->activeConnections()) : QString();
    if (text == m_statusText)
        return;
    m_statusText = text;
    emit statusTextChanged();
}

int DialupUIPlugin::Notify(unsigned int code, unsigned int, unsigned int)
{
    if (code == NOTIFY_LANGUAGE_CHANGED)
        updateStatusText();
    return 0;
}

void DialupUIPlugin::Release() {}

int DialupUIPlugin::GetLastError()
{
    return 0;
}

int DialupUIPlugin::GetPluginType()
{
    return 1; // A service without a window.
}

QString DialupUIPlugin::GetCLSID()
{
    return QStringLiteral("92804312-432E-401F-96BB-1C20D852815D");
}

unsigned int DialupUIPlugin::GetVersion()
{
    return 0x101;
}

QString DialupUIPlugin::GetPluginName()
{
    return QStringLiteral("DialupUIPlugin");
}

bool DialupUIPlugin::IsAllowRelease()
{
    return false;
}

int DialupUIPlugin::QueryInterface(int, QObject **)
{
    return 0;
}
