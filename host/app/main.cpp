// netinfo-host: shows the pages of its plug-ins in a window and offers them the host's services.
#include "HostUi.h"
#include "MainWindow.h"
#include "Options.h"
#include "Session.h"
#include "TerminationSignals.h"

#include <QApplication>
#include <QIcon>
#include <QLoggingCategory>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int couldNotStart = 1;
constexpr int wrongCommandLine = 2;

QStringList argumentsOf(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

bool hasDisplay(const QStringList &arguments)
{
    return arguments.contains(QLatin1String("-platform")) || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") ||
           !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

/// What has to be decided before the application object exists. False: a picture or a display is missing.
bool prepare(const Options &options, const QStringList &arguments)
{
    if (!options.history.isEmpty())
        qputenv("NETINFO_HISTORY", options.history.toLocal8Bit());
    if (!options.screenshot.isEmpty() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Trace lines are debug messages. Switched off by rule, they are not even put together.
    if (!options.trace && qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    return hasDisplay(arguments);
}

int draw(Session &session, const Options &options)
{
    if (session.drawInto(options.screenshot))
        return 0;
    std::fprintf(stderr,
                 "netinfo-host: The picture could not be written to %s. Check that the folder exists and may "
                 "be written to.\n",
                 qUtf8Printable(options.screenshot));
    return couldNotStart;
}

/// False, and a message, when a name on the command line means nothing to this session.
bool applyNames(Session &session, const Options &options)
{
    if (options.page.isEmpty() || session.window().showPage(options.page))
        return true;
    std::fprintf(stderr, "netinfo-host: There is no page \"%s\". The pages are: %s.\n", qUtf8Printable(options.page),
                 qUtf8Printable(session.window().pageNames().join(QStringLiteral(", "))));
    return false;
}

bool applyLanguage(const QString &code)
{
    if (code.isEmpty() || HostUi::instance()->overrideLanguage(code))
        return true;
    std::fprintf(stderr, "netinfo-host: There is no language \"%s\". The languages are: %s.\n", qUtf8Printable(code),
                 qUtf8Printable(HostUi::instance()->languages().join(QStringLiteral(", "))));
    return false;
}

int run(const Options &options)
{
    if (!applyLanguage(options.language))
        return wrongCommandLine;
    Session session(options);
    if (!options.screenshot.isEmpty())
        return applyNames(session, options) ? draw(session, options) : wrongCommandLine;
    session.show();
    if (!applyNames(session, options))
        return wrongCommandLine;
    if (options.simulateSeconds > 0)
        QTimer::singleShot(0, &session, [&session, &options] { session.simulateConnection(options.simulateSeconds); });
    const TerminationSignals ending;
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QStringList arguments = argumentsOf(argc, argv);
    const Options options = Options::parse(arguments);
    if (options.action != Options::Action::Run) {
        const bool isError = options.action == Options::Action::Refuse;
        std::fputs(qUtf8Printable(options.text), isError ? stderr : stdout);
        return isError ? wrongCommandLine : 0;
    }
    if (!prepare(options, arguments)) {
        std::fputs("netinfo-host: There is no display (neither DISPLAY nor WAYLAND_DISPLAY is set). Start it inside a "
                   "desktop session, or use --screenshot FILE.\n",
                   stderr);
        return couldNotStart;
    }
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("netinfo-host"));
    QApplication::setApplicationVersion(QStringLiteral(NETINFO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("netinfo-host"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/netinfo/netinfo.svg")));
    return run(options);
}
