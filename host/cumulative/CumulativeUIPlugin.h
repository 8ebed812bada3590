// The host's plug-in "Monthly totals": fills the product's cumulative window from the history and opens it.
#ifndef NETINFO_CUMULATIVE_CUMULATIVEUIPLUGIN_H
#define NETINFO_CUMULATIVE_CUMULATIVEUIPLUGIN_H

#include "plugin/INotify.h"
#include "plugin/IUIPlugin.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

class QDialog;
struct AccumulateDialogRecord;

/// A window that the host opens from its menu. One at a time; whatever closes it, the instance behind it goes too, so
/// that the next opening starts afresh.
class CumulativeUIPlugin : public QObject, public IUIPlugin, public INotify
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.zantrix.quillnet.plugin.IUIPlugin")
    Q_INTERFACES(IBasePlugin IUIPlugin INotify)
    /// The string ID of the menu text, in the host's translation context.
    Q_PROPERTY(QString menuTextId READ menuTextId CONSTANT)

public:
    CumulativeUIPlugin();
    ~CumulativeUIPlugin() override;

    QString menuTextId() const { return QStringLiteral("IDS_MENU_MONTHLYTOTALS"); }

    /// Closes the window.
    void Release() override;
    /// A zelk::ResultCode: why the last opening failed.
    int GetLastError() override;

    bool Init() override;
    int GetPluginType() override;
    QString GetCLSID() override;
    unsigned int GetVersion() override;
    QString GetPluginName() override;
    bool IsAllowRelease() override;
    int QueryInterface(int selector, QObject **object) override;

    /// Opens the window over `parent`; where it is open already, brings it to the front. The window has a fixed size,
    /// so `rect` is of no importance. False, after a message to the user, when the history cannot be read.
    bool ShowWindow(QWidget *parent, QRect &rect) override;
    int DoModal() override;
    void Hide() override;
    void FitSize(QRect &rect) override;
    bool IsReady() override;
    bool ChangeLang(const QString &lang) override;

    void OnDestroy() override;

    /// A change of language reaches an open window at once, and so does the end of a connection.
    int Notify(unsigned int code, unsigned int param, unsigned int extra) override;

private slots:
    void closeWindow();
    void closeIfHidden();
    void forgetFrame();
    void fillAgain();

private:
    bool isOpen() const;
    void open(QWidget *parent, const QVector<AccumulateDialogRecord> &records);
    void complain(QWidget *parent, const QString &reason) const;
    void translateAgain();

    bool m_hasInstance = false; ///< Whether the window's instance is ours to destroy.
    QPointer<QDialog> m_frame;  ///< The window's, as long as it lives.
    int m_lastError = 0;
};

#endif
