// The duty of following the real connections of this computer, which one process at a time has for a history.
#ifndef NETINFO_RECORDER_REALRECORDING_H
#define NETINFO_RECORDER_REALRECORDING_H

#include "host/recorder/HistoryLock.h"
#include "host/recorder/Recorder.h"

#include <QPointer>
#include <QTimer>

namespace recorder {

class RealRecording : public QObject
{
    Q_OBJECT
public:
    using MakeSource = std::function<ConnectionSource *()>;
    RealRecording(Recorder &recorder, MakeSource makeSource, QObject *parent = nullptr);
    ~RealRecording() override;

    /// Takes the history's lock and adds the source; goes on trying, with a status meanwhile, while another process
    /// holds the lock.
    void begin();
    /// Removes the source and gives the lock back. Open rows stay, to be resumed by whoever comes next.
    void end();
    bool isRecording() const { return !m_source.isNull(); }
    Status status() const { return m_lockStatus; }

signals:
    void changed();

private:
    void tryToBegin();

    Recorder &m_recorder;
    MakeSource m_makeSource;
    HistoryLock m_lock;
    Status m_lockStatus;
    QPointer<ConnectionSource> m_source;
    QTimer m_retry;
};

} // namespace recorder

#endif
