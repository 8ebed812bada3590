// What is not being recorded and why, as a code for programs (and their translations) and as a line for people.
#ifndef NETINFO_RECORDER_STATUS_H
#define NETINFO_RECORDER_STATUS_H

#include <QString>

namespace recorder {

struct Status {
    /// The numbers are stable: they travel over the bus. In ascending order of importance.
    enum Code : unsigned {
        Ok = 0,
        NoSleepNotice = 1, ///< The login service is missing: sleep is noticed only afterwards. Nothing is lost.
        NotAnnounced = 1,  ///< Another process records into this history, but there is no bus to hear it on.
        OtherRecorder = 2, ///< Another process records into this history and does not answer. detail: its process id.
        NoPermission = 3,  ///< The network service refuses to be read. detail: its words.
        NoNetworkManager = 4, ///< The network service does not run.
        NoSystemBus = 5,      ///< There is no system bus. detail: the bus library's words.
        NoHistory = 6         ///< The history cannot be written. detail: file, reason and remedy.
    };
    Code code = Ok;
    QString detail; ///< In English or the service's words; may be empty.

    bool operator==(const Status &other) const { return code == other.code && detail == other.detail; }
    bool operator!=(const Status &other) const { return !(*this == other); }
    /// One line of English for people; empty when all is well.
    QString text() const;
};

} // namespace recorder

#endif
