// The plug-in object and what the library exports for the host.
#include "NetInfoRecordUIPlugin.h"

#include "ConnectionHistoryDlg.h"
#include "NetInfoRecordLogic.h"
#include "Trace.h"
#include "plugin/IDialupUIService.h"
#include "plugin/IPluginContainer.h"
#include "ui/CommonUtils.h"
#include "ui/Startup.h"

static const trace::Unit s_traceUnit = {"../../src/NetInfoRecordUIPlugin/NetInfoRecordUIPlugin", "20:40:33"};

static const QString s_clsid(QLatin1String("27A315A2-D587-498a-9FC5-7CF2738679DF"));
static const QString s_pluginName(QLatin1String("NetInfoRecordUIPlugin"));
static const char s_dialupClsid[] = "92804312-432E-401F-96BB-1C20D852815D";
static const unsigned int s_dialupFlags = 0x4011;

enum ConnectionStatus { CONNECTION_ENDED = 0, CONNECTION_ESTABLISHED = 1 };

// Belongs to the library, not to an object: a connection that one object saw come up ends for the next one, too.
static bool s_bConnectedSeen = false;

unsigned int NET_INFO_RECORD_VERSION = 0x101;

NetInfoRecordUIPlugin::NetInfoRecordUIPlugin()
    : m_pConnectionHistoryDlg(nullptr)
    , m_bReady(false)
    , m_pNetInfoRecordLogic(nullptr)
    , m_bSpare(false)
    , m_bShown(false)
    , m_bSuppressSummary(false)
{
    TRACE(trace::StartFile);
    m_pNetInfoRecordLogic = NetInfoRecordLogic::Instance();
    m_pConnectionHistoryDlg = ConnectionHistoryDlg::Instance();
    TRACE(trace::EndFile);
}

NetInfoRecordUIPlugin::~NetInfoRecordUIPlugin() {}

// Hosts call it while they still use the object, so nothing may be given up here.
void NetInfoRecordUIPlugin::Release() {}

int NetInfoRecordUIPlugin::GetLastError()
{
    return 0;
}

bool NetInfoRecordUIPlugin::Init()
{
    TRACE(trace::StartOf);
    if (m_pConnectionHistoryDlg)
        m_pConnectionHistoryDlg->Init();
    TRACE(trace::EndOf);
    return true;
}

int NetInfoRecordUIPlugin::GetPluginType()
{
    return 0;
}

QString NetInfoRecordUIPlugin::GetCLSID()
{
    return s_clsid;
}

unsigned int NetInfoRecordUIPlugin::GetVersion()
{
    return NET_INFO_RECORD_VERSION;
}

QString NetInfoRecordUIPlugin::GetPluginName()
{
    return s_pluginName;
}

bool NetInfoRecordUIPlugin::IsAllowRelease()
{
    return false;
}

int NetInfoRecordUIPlugin::QueryInterface(int, QObject **)
{
    return 0;
}

bool NetInfoRecordUIPlugin::ShowWindow(QWidget *parent, QRect &rect)
{
    TRACE(trace::StartFileColon);
    if (m_pConnectionHistoryDlg) {
        m_rect = rect;
        m_pConnectionHistoryDlg->ShowWindow(parent, m_rect);
    }
    m_bShown = true;
    TRACE(trace::EndFile);
    return true;
}

int NetInfoRecordUIPlugin::DoModal()
{
    TRACE(trace::StartOf);
    ShowWindow(nullptr, m_rect);
    TRACE(trace::EndOf);
    return 0;
}

void NetInfoRecordUIPlugin::Hide()
{
    TRACE(trace::StartOf);
    if (m_pConnectionHistoryDlg)
        m_pConnectionHistoryDlg->Hide();
    TRACE(trace::EndOf);
}

void NetInfoRecordUIPlugin::FitSize(QRect &rect)
{
    TRACE(trace::StartOf);
    if (m_pConnectionHistoryDlg) {
        m_rect = rect;
        m_pConnectionHistoryDlg->FitSize(rect);
    }
    TRACE(trace::EndOf);
}

bool NetInfoRecordUIPlugin::IsReady()
{
    return m_bReady;
}

bool NetInfoRecordUIPlugin::ChangeLang(const QString &lang)
{
    TRACE(trace::StartOf);
    if (lang.isEmpty()) {
        TRACE(trace::EmptyString);
        return false;
    }
    // The exit line repeats the entry's text; log readers count on the pair.
    TRACE(trace::StartOf);
    return true;
}

void NetInfoRecordUIPlugin::OnDestroy()
{
    TRACE(trace::Start);
    ConnectionHistoryDlg::Destroy();
    NetInfoRecordLogic::Destroy();
    TRACE(trace::End);
}

int NetInfoRecordUIPlugin::Notify(unsigned int code, unsigned int param, unsigned int)
{
    TRACE(trace::StartOf);
    if (!m_pConnectionHistoryDlg)
        return 0;
    switch (code) {
    case NOTIFY_LANGUAGE_CHANGED:
        m_pConnectionHistoryDlg->uiSetText();
        break;
    case NOTIFY_CONNECTION_STATUS:
        onConnectionReceived(param);
        break;
    case NOTIFY_SUPPRESS_SUMMARY:
        m_bSuppressSummary = true;
        break;
    default:
        break;
    }
    // The exit line repeats the entry's text here, too.
    TRACE(trace::StartOf);
    return 0;
}

void NetInfoRecordUIPlugin::onConnectionReceived(unsigned int status)
{
    if (!m_pNetInfoRecordLogic || !m_pConnectionHistoryDlg || !isDialupPresent()) {
        TRACE(trace::ArgIsNull);
        return;
    }
    if (status == CONNECTION_ESTABLISHED)
        s_bConnectedSeen = true;
    TRACE_NUMBER(trace::StatusAfterConnection, static_cast<long>(status));
    if (s_bConnectedSeen && status == CONNECTION_ENDED && !m_bSuppressSummary)
        handleConnectionEnd();
}

/// Connections count only while the plug-in that makes them is there; it is not used in any other way.
bool NetInfoRecordUIPlugin::isDialupPresent()
{
    IPluginContainer *const container = Startup::GetPluginContainer();
    QObject *const object =
        container ? container->GetPluginObject(QLatin1String(s_dialupClsid), s_dialupFlags) : nullptr;
    return qobject_cast<IDialupUIService *>(object) != nullptr;
}

void NetInfoRecordUIPlugin::handleConnectionEnd()
{
    s_bConnectedSeen = false;
    const QString isSummaryWanted = CommonUtils::GetSettings(s_pluginName, QLatin1String("WhetherShowNotesbox"));
    if (isSummaryWanted.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        m_pConnectionHistoryDlg->ShowDialogOfLastConnectedRecord(CommonUtils::GetMainWindow());

    m_pConnectionHistoryDlg->ReleaseTable();
    m_pNetInfoRecordLogic->m_hash = QHash<int, ConnectionRecord *>();
    m_pNetInfoRecordLogic->m_vecAccumulate = QVector<AccumulateDialogRecord>();
    m_pNetInfoRecordLogic->GetAllConnectedRecords();
    m_pConnectionHistoryDlg->populateTable();
}

#if QT_VERSION >= 0x050000

// Qt 4's loader, and programs that still look at libraries as it did, read this text from the library. The toolkit's
// own export made it until Qt 4; since then it is made here, for the toolkit that the library is compiled with.
#define NETINFO_STRING_OF(x) #x
#define NETINFO_STRING(x) NETINFO_STRING_OF(x)
#if defined(QT_NO_DEBUG)
#define NETINFO_DEBUG_TEXT "false"
#else
#define NETINFO_DEBUG_TEXT "true"
#endif
#if defined(Q_PROCESSOR_X86_64)
#define NETINFO_PROCESSOR_TEXT "x86_64"
#elif defined(Q_PROCESSOR_X86_32)
#define NETINFO_PROCESSOR_TEXT "i386"
#elif defined(Q_PROCESSOR_ARM_64)
#define NETINFO_PROCESSOR_TEXT "arm64"
#elif defined(Q_PROCESSOR_ARM)
#define NETINFO_PROCESSOR_TEXT "arm"
#else
#define NETINFO_PROCESSOR_TEXT "unknown"
#endif
#if defined(__clang__)
#define NETINFO_COMPILER_TEXT "clang++-" NETINFO_STRING(__clang_major__)
#else
#define NETINFO_COMPILER_TEXT "g++-" NETINFO_STRING(__GNUC__)
#endif

extern "C" Q_DECL_EXPORT const char *qt_plugin_query_verification_data()
{
    static const char text[] = "pattern=QT_PLUGIN_VERIFICATION_DATA\n"
                               "version=" QT_VERSION_STR "\n"
                               "debug=" NETINFO_DEBUG_TEXT "\n"
                               "buildkey=" NETINFO_PROCESSOR_TEXT " linux " NETINFO_COMPILER_TEXT " full-config";
    return text;
}

#endif

NETINFO_EXPORT_PLUGIN(NetInfoRecordUIPlugin, NetInfoRecordUIPlugin)
