// The command line of netinfo-host.
#ifndef NETINFO_APP_OPTIONS_H
#define NETINFO_APP_OPTIONS_H

#include <QString>
#include <QStringList>

struct Options {
    enum class Action {
        Run,
        ShowText, ///< Print `text` and end with success: help or version.
        Refuse    ///< Print `text` as an error and end with status 2.
    };

    Action action = Action::Run;
    QString text;
    bool trace = false;
    bool developer = false;
    int simulateSeconds = 0; ///< 0: not asked for.
    QString history;
    QString screenshot;
    QString page;
    QString language;

    /// Understands the arguments of main(), the program's name first. The toolkit's own options (-platform, -style and
    /// the like) are passed over. Needs no application object.
    static Options parse(const QStringList &arguments);
};

#endif
