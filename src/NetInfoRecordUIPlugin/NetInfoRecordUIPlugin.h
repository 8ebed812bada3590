// The plug-in object: the host's one way in, passed on to the history page and the record store.
#ifndef NETINFORECORD_NETINFORECORDUIPLUGIN_H
#define NETINFORECORD_NETINFORECORDUIPLUGIN_H

#include "QtCompat.h"
#include "plugin/INotify.h"
#include "plugin/IUIPlugin.h"

#include <QObject>
#include <QRect>
#include <QString>

class ConnectionHistoryDlg;
class NetInfoRecordLogic;

extern "C" {
/// Answered by GetVersion(). Hosts may write to it.
extern Q_DECL_EXPORT unsigned int NET_INFO_RECORD_VERSION;
}

class NetInfoRecordUIPlugin : public QObject, public IUIPlugin, public INotify
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.zantrix.quillnet.plugin.IUIPlugin")
    Q_INTERFACES(IBasePlugin IUIPlugin INotify)

public:
    /// Makes the record store, then the history page.
    NetInfoRecordUIPlugin();
    /// Leaves both alone: they go with OnDestroy().
    ~NetInfoRecordUIPlugin();

    void Release() override;
    int GetLastError() override;

    bool Init() override;
    int GetPluginType() override;
    QString GetCLSID() override;
    unsigned int GetVersion() override;
    QString GetPluginName() override;
    bool IsAllowRelease() override;
    int QueryInterface(int selector, QObject **object) override;

    bool ShowWindow(QWidget *parent, QRect &rect) override;
    int DoModal() override;
    void Hide() override;
    void FitSize(QRect &rect) override;
    bool IsReady() override;
    bool ChangeLang(const QString &lang) override;

    void OnDestroy() override;

    int Notify(unsigned int code, unsigned int param, unsigned int extra) override;

    /// \a status: 1 a connection is up, 0 it has ended; others are only logged.
    void onConnectionReceived(unsigned int status);

    ConnectionHistoryDlg *m_pConnectionHistoryDlg;
    bool m_bReady;
    QRect m_rect; ///< The last placement handed in.
    NetInfoRecordLogic *m_pNetInfoRecordLogic;
    bool m_bSpare;
    bool m_bShown;
    bool m_bSuppressSummary;

private:
    bool isDialupPresent();
    void handleConnectionEnd();
};

#endif
