#include "Plugin.h"

#include "HostUi.h"

#include "plugin/INotify.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <QJsonObject>

#include <exception>

namespace {

QString versionText(unsigned int version)
{
    return QStringLiteral("%1.%2").arg(version >> 8U).arg(version & 0xFFU);
}

} // namespace

QString ownCopy(const QString &text)
{
    return QString(text.constData(), text.size());
}

Plugin::Plugin(const QString &path) : m_loader(path)
{
    // All of the library's symbols are resolved now, so that a missing one is an error here and not a crash later.
    m_loader.setLoadHints(QLibrary::ResolveAllSymbolsHint);
}

Plugin::~Plugin()
{
    unload();
}

bool Plugin::fail(State state, const QString &detail)
{
    m_state = state;
    m_detail = detail;
    return false;
}

bool Plugin::load()
{
    if (!checkMetadata())
        return false;
    if (!m_loader.load())
        return fail(State::NotLoaded, m_loader.errorString());
    try {
        m_object = m_loader.instance();
        if (!findInterfaces()) {
            dropObject();
            return fail(State::NoInterface, interfaceId());
        }
        askIdentity();
    } catch (const std::exception &error) {
        dropObject();
        return fail(State::Failed, QString::fromLocal8Bit(error.what()));
    }
    m_state = State::Loaded;
    return true;
}

bool Plugin::checkMetadata()
{
    const QString id = interfaceId();
    if (m_loader.metaData().isEmpty())
        return fail(State::NotAPlugin, m_loader.errorString());
    if (id != QLatin1String(IUIPlugin_iid) && id != QLatin1String(IBasePlugin_iid))
        return fail(State::WrongId, id);
    return true;
}

bool Plugin::findInterfaces()
{
    m_base = qobject_cast<IBasePlugin *>(m_object);
    m_ui = qobject_cast<IUIPlugin *>(m_object);
    m_notify = qobject_cast<INotify *>(m_object);
    return m_base != nullptr && (m_ui != nullptr || interfaceId() == QLatin1String(IBasePlugin_iid));
}

void Plugin::askIdentity()
{
    m_clsid = ownCopy(m_base->GetCLSID());
    m_name = ownCopy(m_base->GetPluginName());
    m_version = m_base->GetVersion();
    m_type = static_cast<PluginType>(m_base->GetPluginType());
}

bool Plugin::start()
{
    try {
        if (m_base->Init()) {
            m_state = State::Running;
            return true;
        }
        fail(State::InitRefused, QString::number(m_base->GetLastError()));
    } catch (const std::exception &error) {
        fail(State::Failed, QString::fromLocal8Bit(error.what()));
    }
    const State state = m_state;
    unload();
    m_state = state;
    return false;
}

void Plugin::refuseAsDuplicate()
{
    unload();
    fail(State::Duplicate, m_clsid);
}

void Plugin::unload()
{
    if (m_object.isNull())
        return;
    if (m_base != nullptr)
        m_base->OnDestroy();
    dropObject();
    m_state = State::Unloaded;
}

void Plugin::dropObject()
{
    delete m_object.data();
    m_base = nullptr;
    m_ui = nullptr;
    m_notify = nullptr;
    // Objects that the plug-in left for later deletion need its code to die.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_loader.unload();
}

bool Plugin::hasFailed() const
{
    return m_state != State::Found && m_state != State::Loaded && m_state != State::Running &&
           m_state != State::Unloaded;
}

QString Plugin::message() const
{
    const auto text = [](const char *key) { return HostUi::text(QLatin1String(key)); };
    switch (m_state) {
    case State::NotAPlugin:
        return text("IDS_HOST_PLUGIN_NOT_A_PLUGIN").arg(fileName(), m_detail);
    case State::WrongId:
        return text("IDS_HOST_PLUGIN_WRONG_ID").arg(fileName(), m_detail);
    case State::NotLoaded:
        return text("IDS_HOST_PLUGIN_NOT_LOADED").arg(fileName(), m_detail);
    case State::NoInterface:
        return text("IDS_HOST_PLUGIN_NO_INTERFACE").arg(fileName(), m_detail);
    case State::InitRefused:
        return text("IDS_HOST_PLUGIN_INIT_REFUSED").arg(fileName(), m_detail);
    case State::Duplicate:
        return text("IDS_HOST_PLUGIN_DUPLICATE").arg(fileName(), m_detail);
    case State::Failed:
        return text("IDS_HOST_PLUGIN_FAILED").arg(fileName(), m_detail);
    case State::Found:
    case State::Loaded:
    case State::Running:
    case State::Unloaded:
        break;
    }
    return text("IDS_HOST_PLUGIN_OK").arg(versionText(m_version));
}

QString Plugin::fileName() const
{
    return QFileInfo(m_loader.fileName()).fileName();
}

QString Plugin::className() const
{
    return m_loader.metaData().value(QLatin1String("className")).toString();
}

QString Plugin::interfaceId() const
{
    return m_loader.metaData().value(QLatin1String("IID")).toString();
}
