#include "CumulativeUIPlugin.h"

#include "MonthlyTotals.h"
#include "NetInfoRecordLogic.h"

#include "ui/Change.h"
#include "ui/CommonUtils.h"
#include "ui/ExtendDialog.h"

#include <QComboBox>
#include <QRect>

namespace {

constexpr int windowPluginType = 2;
constexpr unsigned int version = 0x101;

/// Throws zelk::HistoryError.
QVector<AccumulateDialogRecord> readTotals()
{
    const QDate today = QDate::currentDate();
    const zelk::ConnectionHistory history(zelk::ConnectionHistory::defaultPath(),
                                          zelk::ConnectionHistory::Access::ReadOnly);
    return MonthlyTotals::records(history.totals(MonthlyTotals::boundaries(today)), today);
}

/// Shows the totals of the given month and profile entry as if the user had chosen them.
void choose(AccumulateDlg &window, int month, int profile)
{
    window.m_pMonthSelectionComboBox->setCurrentIndex(month);
    window.onSelectComboItemOfTime(month);
    if (profile > 0 && profile < window.m_pProfileSelectionComboBox->count())
        window.onSelectComboItemOfProfile(profile);
}

} // namespace

CumulativeUIPlugin::CumulativeUIPlugin() = default;

CumulativeUIPlugin::~CumulativeUIPlugin()
{
    closeWindow();
}

void CumulativeUIPlugin::Release()
{
    closeWindow();
}

int CumulativeUIPlugin::GetLastError()
{
    return m_lastError;
}

bool CumulativeUIPlugin::Init()
{
    return true;
}

int CumulativeUIPlugin::GetPluginType()
{
    return windowPluginType;
}

QString CumulativeUIPlugin::GetCLSID()
{
    return QStringLiteral("8E0C4D1B-6B2F-4C57-9A43-51D27E90C3A6");
}

unsigned int CumulativeUIPlugin::GetVersion()
{
    return version;
}

QString CumulativeUIPlugin::GetPluginName()
{
    return QStringLiteral("CumulativeUIPlugin");
}

bool CumulativeUIPlugin::IsAllowRelease()
{
    return true;
}

int CumulativeUIPlugin::QueryInterface(int selector, QObject **object)
{
    Q_UNUSED(selector)
    Q_UNUSED(object)
    return 0;
}

bool CumulativeUIPlugin::ShowWindow(QWidget *parent, QRect &rect)
{
    Q_UNUSED(rect)
    if (isOpen()) {
        m_frame->raise();
        m_frame->activateWindow();
        return true;
    }
    closeWindow();
    try {
        open(parent, readTotals());
    } catch (const zelk::HistoryError &error) {
        m_lastError = static_cast<int>(error.code());
        complain(parent, QString::fromStdString(error.what()));
        return false;
    }
    m_lastError = 0;
    return true;
}

bool CumulativeUIPlugin::isOpen() const
{
    return m_frame && m_frame->isVisible();
}

void CumulativeUIPlugin::open(QWidget *parent, const QVector<AccumulateDialogRecord> &records)
{
    AccumulateDlg *window = AccumulateDlg::Instance();
    m_hasInstance = true;
    // The store is inside the product's library; the window has it once it is open.
    window->showWindow(parent);
    window->m_pRecordLogic->m_vecAccumulate = records;
    window->onSelectComboItemOfTime(0);
    m_frame = window->m_pDialog;
    // Later, for it is a slot of the instance itself that closes the frame. The parent's end takes the frame along.
    connect(m_frame, &QDialog::finished, this, &CumulativeUIPlugin::closeIfHidden, Qt::QueuedConnection);
    connect(m_frame, &QObject::destroyed, this, &CumulativeUIPlugin::forgetFrame);
}

void CumulativeUIPlugin::closeIfHidden()
{
    if (!isOpen())
        closeWindow();
}

void CumulativeUIPlugin::forgetFrame()
{
    m_frame.clear(); // On this signal the pointer may still be set.
    closeWindow();
}

void CumulativeUIPlugin::closeWindow()
{
    if (!m_hasInstance)
        return;
    m_hasInstance = false;
    if (m_frame)
        disconnect(m_frame, nullptr, this, nullptr);
    delete m_frame;
    AccumulateDlg::Destroy();
}

void CumulativeUIPlugin::complain(QWidget *parent, const QString &reason) const
{
    const QString title = Change::tr(QStringLiteral("IDS_TITLE_TOTAL"), QStringLiteral("NetInfoRecordUIPlugin"));
    const QString text = Change::tr(QStringLiteral("IDS_TOTALS_UNREADABLE"), QStringLiteral("Host"));
    CommonUtils::ShowMessage(QMessageBox::Warning, parent, title, text.arg(reason), QStringLiteral("IDS_BTN_OK"),
                             QString(), QString(), true, Qt::Dialog, nullptr, QString(), true);
}

int CumulativeUIPlugin::DoModal()
{
    QRect anywhere;
    ShowWindow(nullptr, anywhere);
    return 0;
}

void CumulativeUIPlugin::Hide()
{
    closeWindow();
}

void CumulativeUIPlugin::FitSize(QRect &rect)
{
    Q_UNUSED(rect)
}

bool CumulativeUIPlugin::IsReady()
{
    return true;
}

bool CumulativeUIPlugin::ChangeLang(const QString &lang)
{
    return !lang.isEmpty();
}

void CumulativeUIPlugin::OnDestroy()
{
    closeWindow();
}

int CumulativeUIPlugin::Notify(unsigned int code, unsigned int param, unsigned int extra)
{
    Q_UNUSED(extra)
    if (code == NOTIFY_LANGUAGE_CHANGED) {
        translateAgain();
    } else if (code == NOTIFY_CONNECTION_STATUS && param == 0) {
        // The product empties the store on the same notification, which may reach it after us.
        QMetaObject::invokeMethod(this, "fillAgain", Qt::QueuedConnection);
    }
    return 0;
}

void CumulativeUIPlugin::translateAgain()
{
    if (!isOpen())
        return;
    AccumulateDlg *window = AccumulateDlg::Instance();
    const int month = window->m_pMonthSelectionComboBox->currentIndex();
    const int profile = window->m_pProfileSelectionComboBox->currentIndex();
    window->uiSetText();
    choose(*window, month, profile);
}

void CumulativeUIPlugin::fillAgain()
{
    if (!isOpen())
        return;
    AccumulateDlg *window = AccumulateDlg::Instance();
    const QString profile = window->m_pProfileSelectionComboBox->currentText();
    const bool isOneProfile = window->m_pProfileSelectionComboBox->currentIndex() > 0;
    try {
        window->m_pRecordLogic->m_vecAccumulate = readTotals();
    } catch (const zelk::HistoryError &error) {
        m_lastError = static_cast<int>(error.code());
        return; // What is shown was right until now; the next opening says what is wrong.
    }
    // The entries' numbers shift when a profile comes along. The first entry is not a name.
    const int month = window->m_pMonthSelectionComboBox->currentIndex();
    choose(*window, month, 0);
    for (int i = 1; isOneProfile && i < window->m_pProfileSelectionComboBox->count(); ++i) {
        if (window->m_pProfileSelectionComboBox->itemText(i) == profile)
            choose(*window, month, i);
    }
}
