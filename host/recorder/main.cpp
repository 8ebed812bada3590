// netinfo-recorder: records every real connection of this computer into the history, and announces them on the session
// bus. One of it at a time for a history.
#include "Background.h"
#include "host/recorder/NetworkManagerSource.h"
#include "host/recorder/RealRecording.h"
#include "host/recorder/RecorderService.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>

#include <malloc.h>
#include <sys/signalfd.h>

using namespace recorder;

namespace {

enum ExitCode { ExitOk = 0, ExitUsage = 1, ExitOtherRecorder = 2 };

constexpr int patienceMs = 5000; // for a recorder that is about to go

struct Arguments {
    bool foreground = false;
    QString historyPath;
};

Arguments parse(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Records every connection of this computer into the connection history.\n"
                       "It sleeps until NetworkManager brings a connection up; SIGTERM ends it, and the next one goes "
                       "on from there.\n\n"
                       "Exit codes: 0 ended by a signal; 1 wrong arguments; 2 another recorder is at work."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption foreground(QStringLiteral("foreground"),
                                        QStringLiteral("Stay in the foreground and write messages to standard error. "
                                                       "Otherwise the program leaves the terminal once it is ready, "
                                                       "and writes to the system log."));
    const QCommandLineOption history(QStringLiteral("history"),
                                     QStringLiteral("Record into this file instead of $NETINFO_HISTORY or "
                                                    "netinfo/history.sqlite in the user's data folder."),
                                     QStringLiteral("file"));
    parser.addOptions({foreground, history});
    parser.process(application);
    if (!parser.positionalArguments().isEmpty()) {
        fprintf(stderr, "netinfo-recorder: unexpected argument \"%s\"; --help lists the options\n",
                qPrintable(parser.positionalArguments().first()));
        exit(ExitUsage);
    }
    return {parser.isSet(foreground), parser.value(history)};
}

// Signals end the event loop, so that the last checkpoint is written by ordinary code. Blocked before any thread
// exists.
void endOnSignals(QCoreApplication &application)
{
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&ending, signal);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    const int descriptor = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
    const auto notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
}

// Empty when the name is ours; else who has it.
QString claimName(const QDBusConnection &bus)
{
    const QString name = QLatin1String(serviceName);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = bus.interface()->registerService(
        name, QDBusConnectionInterface::ReplaceExistingService, QDBusConnectionInterface::DontAllowReplacement);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return {};
    const QDBusReply<uint> pid = bus.interface()->servicePid(name);
    return pid.isValid() ? QStringLiteral("process %1").arg(pid.value()) : reply.error().message();
}

[[noreturn]] void refuse(const QString &who, const QString &historyPath)
{
    qCritical("another recorder is at work already (%s), on this session's bus or with the history %s; end it first",
              qPrintable(who), qPrintable(historyPath));
    exit(ExitOtherRecorder);
}

// The log says what is recorded and, when it changes, what is not and why.
void logTo(const Recorder &recorder, QObject *context)
{
    QObject::connect(&recorder, &Recorder::statusChanged, context, [&recorder] {
        const QString text = recorder.status().text();
        if (!text.isEmpty())
            qWarning("%s", qPrintable(text));
    });
    QObject::connect(&recorder, &Recorder::settled, context, [&recorder] {
        qInfo("recording; connections that are up: %d", static_cast<int>(recorder.activeConnections().size()));
    });
}

int run(QCoreApplication &application, const Arguments &arguments)
{
    RecorderOptions options;
    options.historyPath = arguments.historyPath;
    Recorder recorder(options);
    RealRecording recording(recorder, [] { return new NetworkManagerSource; });
    const QDBusConnection bus = QDBusConnection::sessionBus();
    std::unique_ptr<RecorderService> service;
    if (bus.isConnected()) {
        service =
            std::make_unique<RecorderService>(recorder, recording, bus); // before the name: who sees the name may ask
        const QString other = claimName(bus);
        if (!other.isEmpty())
            refuse(other, recorder.historyPath());
    } else {
        qWarning("no session bus (%s): connections are recorded, but not announced",
                 qPrintable(bus.lastError().message()));
    }

    qInfo("history: %s", qPrintable(recorder.historyPath()));
    QTimer patience;
    patience.setSingleShot(true);
    QObject::connect(&patience, &QTimer::timeout, &application,
                     [&] { refuse(recording.status().detail, recorder.historyPath()); });
    logTo(recorder, &application);
    QObject::connect(&recording, &RealRecording::changed, &application, [&] {
        if (recording.status().code == Status::OtherRecorder)
            return patience.start(patienceMs);
        patience.stop();
        if (!recording.isRecording()) // goes on trying
            qWarning("%s", qPrintable(recording.status().text()));
        reportReady();
    });
    recording.begin();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    // This process waits for weeks: one heap instead of one a thread, and no main loop of another toolkit.
    mallopt(M_ARENA_MAX, 1);
    qputenv("QT_NO_GLIB", "1");
    qSetMessagePattern(QStringLiteral("netinfo-recorder: %{message}"));
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("netinfo-recorder"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NETINFO_VERSION));
    const Arguments arguments = parse(application);
    if (!arguments.foreground)
        detach();
    endOnSignals(application);
    return run(application, arguments);
}
