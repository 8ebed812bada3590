// Turns the wall clock of the test's own process from outside, without a door in the code under test. Deadlines and
// timers keep to the real clock.
#ifndef NETINFO_FAKECLOCK_H
#define NETINFO_FAKECLOCK_H

#include <QByteArray>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace FakeClock {

/// Starts the program anew with the clock's library loaded before all others, unless it is. Call it first in main().
inline void takeOver(char **argv)
{
    if (qgetenv("LD_PRELOAD").contains("libfaketime")) {
        return;
    }
    qputenv("LD_PRELOAD", NETINFO_FAKETIME_LIBRARY);
    // A sanitizer's library is then not the first one any more, which is fine.
    qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":verify_asan_link_order=0");
    qputenv("FAKETIME_NO_CACHE", "1");
    qputenv("FAKETIME_DONT_FAKE_MONOTONIC", "1");
    execv("/proc/self/exe", argv);
    std::perror("FakeClock: cannot start the test anew");
    std::exit(EXIT_FAILURE);
}

/// Stops the clock at \a localTime, "yyyy-MM-dd hh:mm:ss" in the process's time zone.
inline void stopAt(const QByteArray &localTime)
{
    qputenv("FAKETIME", localTime);
}

/// Back to the real time.
inline void release()
{
    qunsetenv("FAKETIME");
}

} // namespace FakeClock

#endif
