// The lock beside a history file that keeps two recorders apart, also those that no common bus could keep apart. The
// kernel gives it back when its holder dies.
#ifndef NETINFO_RECORDER_HISTORYLOCK_H
#define NETINFO_RECORDER_HISTORYLOCK_H

#include "host/recorder/KernelLink.h"
#include "host/recorder/Status.h"

namespace recorder {

class HistoryLock
{
public:
    explicit HistoryLock(const QString &historyPath);
    /// Ok, OtherRecorder (detail names the holder's process) or NoHistory (the lock file cannot be made). Makes the
    /// history's folder where it is missing. A second call while the lock is held is Ok.
    Status acquire();
    void release() { m_file.reset(); }
    bool isHeld() const { return m_file.isValid(); }

private:
    QString m_path;
    FileDescriptor m_file;
};

} // namespace recorder

#endif
