#include "Options.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

namespace {

constexpr int longestSimulation = 24 * 60 * 60;

const char *const helpText =
    "Usage: netinfo-host [options]\n"
    "Shows when this computer was connected, for how long, and how much was transferred.\n"
    "\n"
    "Options:\n"
    "  --history FILE                 show and record another history than your own\n"
    "  --language CODE                use a language for this run, such as de\n"
    "  --page NAME                    open a page: history, usage or settings\n"
    "  --screenshot FILE              draw the window into a PNG file, without a display, and end\n"
    "  --trace                        write the plug-ins' trace to standard error\n"
    "  --developer                    show the developer menu\n"
    "  --simulate-connection SECONDS  play a connection after the start\n"
    "  -h, --help                     show this help and end\n"
    "  -v, --version                  show the version and end\n"
    "\n"
    "Environment:\n"
    "  NETINFO_HISTORY                the history file, as --history\n"
    "  NETINFO_PLUGIN_DIR             the folder with the plug-ins\n"
    "  NETINFO_LANGUAGE_DIR           the folder with the language files\n"
    "  QT_LOGGING_RULES               which messages are written, in place of --trace\n"
    "\n"
    "Exit status: 0 after a normal end, 1 when the program could not start or draw the picture, 2 for a wrong\n"
    "command line.\n";

/// Without the options that the toolkit takes out of the command line itself.
QStringList withoutToolkitOptions(const QStringList &arguments)
{
    static const QStringList withValue = {
        QStringLiteral("-platform"),   QStringLiteral("-style"),        QStringLiteral("-display"),
        QStringLiteral("-geometry"),   QStringLiteral("-stylesheet"),   QStringLiteral("-platformtheme"),
        QStringLiteral("-session"),    QStringLiteral("-qwindowtitle"), QStringLiteral("-plugin"),
        QStringLiteral("-fontengine"), QStringLiteral("-name"),         QStringLiteral("-title")};
    QStringList kept;
    for (int i = 0; i < arguments.size(); ++i) {
        if (withValue.contains(arguments.at(i)))
            ++i;
        else if (arguments.at(i) != QLatin1String("-reverse"))
            kept << arguments.at(i);
    }
    return kept;
}

Options refused(const QString &why)
{
    Options options;
    options.action = Options::Action::Refuse;
    options.text = why + QStringLiteral("\nTry netinfo-host --help.\n");
    return options;
}

Options shown(const QString &text)
{
    Options options;
    options.action = Options::Action::ShowText;
    options.text = text;
    return options;
}

struct Parser {
    QCommandLineOption history{QStringLiteral("history"), {}, QStringLiteral("file")};
    QCommandLineOption language{QStringLiteral("language"), {}, QStringLiteral("code")};
    QCommandLineOption page{QStringLiteral("page"), {}, QStringLiteral("name")};
    QCommandLineOption screenshot{QStringLiteral("screenshot"), {}, QStringLiteral("file")};
    QCommandLineOption trace{QStringLiteral("trace")};
    QCommandLineOption developer{QStringLiteral("developer")};
    QCommandLineOption simulate{QStringLiteral("simulate-connection"), {}, QStringLiteral("seconds")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")}};
    QCommandLineParser parser;

    Parser() { parser.addOptions({history, language, page, screenshot, trace, developer, simulate, help, version}); }

    QString firstEmptyValue() const
    {
        for (const QCommandLineOption &option : {history, language, page, screenshot}) {
            if (parser.isSet(option) && parser.value(option).isEmpty())
                return option.names().constFirst();
        }
        return {};
    }
};

Options read(const Parser &with)
{
    Options options;
    options.trace = with.parser.isSet(with.trace);
    options.developer = with.parser.isSet(with.developer);
    options.history = with.parser.value(with.history);
    options.screenshot = with.parser.value(with.screenshot);
    options.page = with.parser.value(with.page);
    options.language = with.parser.value(with.language);
    if (with.parser.isSet(with.simulate)) {
        bool isNumber = false;
        options.simulateSeconds = with.parser.value(with.simulate).toInt(&isNumber);
        if (!isNumber || options.simulateSeconds < 1 || options.simulateSeconds > longestSimulation)
            return refused(QStringLiteral("--simulate-connection needs a whole number of seconds from 1 to %1, not "
                                          "\"%2\".")
                               .arg(longestSimulation)
                               .arg(with.parser.value(with.simulate)));
    }
    return options;
}

} // namespace

Options Options::parse(const QStringList &arguments)
{
    Parser with;
    const bool isUnderstood = with.parser.parse(withoutToolkitOptions(arguments));
    if (with.parser.isSet(with.help))
        return shown(QLatin1String(helpText));
    if (with.parser.isSet(with.version))
        return shown(QStringLiteral("netinfo-host " NETINFO_VERSION "\n"));
    if (!isUnderstood)
        return refused(with.parser.errorText());
    if (!with.parser.positionalArguments().isEmpty())
        return refused(
            QStringLiteral("The argument \"%1\" is not known.").arg(with.parser.positionalArguments().at(0)));
    if (!with.firstEmptyValue().isEmpty())
        return refused(QStringLiteral("--%1 needs a value.").arg(with.firstEmptyValue()));
    return read(with);
}
