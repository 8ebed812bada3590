// The host's plug-in through which connections come and go: it has them recorded and announces them.
#ifndef NETINFO_DIALUP_DIALUPUIPLUGIN_H
#define NETINFO_DIALUP_DIALUPUIPLUGIN_H

#include "Announcer.h"

#include "plugin/IBasePlugin.h"
#include "plugin/IDialupUIService.h"
#include "plugin/INotify.h"

#include <memory>

namespace recorder {
class RecorderClient;
}
class SimulatedSource;

/// Other plug-ins react to connections only while this one is loaded. From Init() to OnDestroy() every connection that
/// is or comes up is announced, and its end once the record is in the history.
class DialupUIPlugin : public QObject, public IBasePlugin, public INotify, public IDialupUIService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin INotify IDialupUIService)
    /// One line for the host's status bar, in its language; empty when there is nothing to say.
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)

public:
    DialupUIPlugin();
    ~DialupUIPlugin() override;

    void Release() override;
    int GetLastError() override;
    void OnDestroy() override;
    bool Init() override;
    int GetPluginType() override;
    QString GetCLSID() override;
    unsigned int GetVersion() override;
    QString GetPluginName() override;
    bool IsAllowRelease() override;
    int QueryInterface(int selector, QObject **object) override;

    /// Keeps the status line in the host's language.
    int Notify(unsigned int code, unsigned int param, unsigned int extra) override;

    QString statusText() const { return m_statusText; }

    /// Plays a connection that ends after \a seconds and leaves a record like a real one. A length that is not allowed
    /// leaves a warning and nothing else. Ends early, with its record, when the host ends.
    Q_SLOT void simulateConnection(int seconds);

signals:
    /// For the host to broadcast: the arguments of INotify::Notify.
    void announce(unsigned int code, unsigned int param, unsigned int extra);
    void statusTextChanged();

private:
    void updateStatusText();

    Announcer m_announcer;
    std::unique_ptr<recorder::RecorderClient> m_client; ///< Null before Init() and after OnDestroy().
    SimulatedSource *m_simulation = nullptr;            ///< Owned by the client.
    QString m_statusText;
};

#endif
