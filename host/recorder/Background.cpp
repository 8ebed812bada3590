#include "Background.h"

#include <QtGlobal>

#include <QString>

#include <cstdlib>

#include <fcntl.h>
#include <sys/wait.h>
#include <syslog.h>
#include <unistd.h>

namespace recorder {

namespace {

int readyPipe = -1;

[[noreturn]] void waitForChild(pid_t child, int pipe)
{
    char byte = 0;
    if (read(pipe, &byte, 1) == 1)
        _exit(EXIT_SUCCESS);
    int status = 0;
    waitpid(child, &status, 0);
    _exit(WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE);
}

void toSystemLog(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const int priority = type == QtWarningMsg                      ? LOG_WARNING
                         : type == QtInfoMsg || type == QtDebugMsg ? LOG_INFO
                                                                   : LOG_ERR;
    Q_UNUSED(context)
    syslog(priority, "%s", qUtf8Printable(message));
}

} // namespace

void detach()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        qFatal("No pipe for the background process");
    const pid_t child = fork();
    if (child < 0)
        qFatal("The background process cannot be started; use --foreground");
    if (child > 0) {
        close(ends[1]);
        waitForChild(child, ends[0]);
    }
    close(ends[0]);
    readyPipe = ends[1];
    setsid();
}

void reportReady()
{
    if (readyPipe < 0)
        return;
    openlog("netinfo-recorder", LOG_PID, LOG_DAEMON);
    qInstallMessageHandler(toSystemLog);
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, standard);
    close(nothing);
    if (write(readyPipe, "+", 1) != 1)
        qWarning("The starting process did not wait");
    close(std::exchange(readyPipe, -1));
}

} // namespace recorder
