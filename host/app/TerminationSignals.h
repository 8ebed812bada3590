// Ends the event loop properly when the process is told to end by SIGTERM, SIGINT or SIGHUP.
#ifndef NETINFO_APP_TERMINATIONSIGNALS_H
#define NETINFO_APP_TERMINATIONSIGNALS_H

#include <QObject>

/// At most one at a time. Quits the application while it lives.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    TerminationSignals();
    ~TerminationSignals() override;
};

#endif
