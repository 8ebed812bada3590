// Connections that are only played: for trying out what happens when one ends, without a network.
#ifndef NETINFO_DIALUP_SIMULATEDSOURCE_H
#define NETINFO_DIALUP_SIMULATEDSOURCE_H

#include "host/recorder/ConnectionSource.h"

#include <QMap>

class QTimer;

/// Plays any number of connections at a time. What it plays is recorded like any other connection.
class SimulatedSource : public recorder::ConnectionSource
{
    Q_OBJECT
public:
    static constexpr int longestSeconds = 24 * 60 * 60;
    /// Amounts grow evenly by so many bytes a second.
    static constexpr qint64 sentPerSecond = 65536;
    static constexpr qint64 receivedPerSecond = 1048576;

    explicit SimulatedSource(QObject *parent = nullptr);
    ~SimulatedSource() override;

    /// Lets a connection come up now and end after \a seconds, 1 to longestSeconds. False, and a warning, for any other
    /// length, and while the source is not started.
    bool play(int seconds);
    /// Ends at once whatever is up, as if the user had disconnected.
    void endAll();

    void start() override;
    void stop() override;
    bool owns(const zelk::OpenConnection &row) const override;
    recorder::Status status() const override;

private:
    class Counter;
    struct Playing {
        QTimer *end = nullptr;
        std::shared_ptr<Counter> counter;
    };

    void end(const QString &id);

    bool m_started = false;
    QMap<QString, Playing> m_up; ///< By the connections' ids.
};

#endif
