// A recorder such as another program runs: it records into the same history and speaks on the session bus.
#ifndef NETINFO_TESTS_DIALUP_RECORDERELSEWHERE_H
#define NETINFO_TESTS_DIALUP_RECORDERELSEWHERE_H

#include <QThread>

#include <functional>
#include <memory>

namespace recorder {
class RecorderClient;
}
class ScriptedSource;

/// Lives in a thread of its own with a bus connection of its own, as it would in another process; the calls below
/// return once it has done what they say.
class RecorderElsewhere
{
public:
    explicit RecorderElsewhere(const QString &historyPath);
    ~RecorderElsewhere();

    void connectionUp(const QString &profile);
    void connectionDown();

private:
    void there(const std::function<void()> &work);

    QThread m_thread;
    QObject m_context; ///< Lives in the thread and carries work into it.
    std::unique_ptr<recorder::RecorderClient> m_client;
    ScriptedSource *m_source = nullptr;
};

#endif
