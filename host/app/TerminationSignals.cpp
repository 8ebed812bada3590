#include "TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array<int, 3> watched = {SIGTERM, SIGINT, SIGHUP};
std::array<int, 2> s_pipe = {-1, -1};

/// Writing a byte is all that a signal handler may do.
extern "C" void onSignal(int)
{
    const char byte = 0;
    // A full pipe already holds the message.
    if (write(s_pipe[1], &byte, 1) < 0)
        return;
}

void handleWith(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : watched)
        sigaction(number, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    if (pipe2(s_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *notifier = new QSocketNotifier(s_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    handleWith(onSignal);
}

TerminationSignals::~TerminationSignals()
{
    handleWith(SIG_DFL);
    for (int &end : s_pipe) {
        if (end != -1)
            close(end);
        end = -1;
    }
}
