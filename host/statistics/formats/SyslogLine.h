// One line of a system log: its stamp, and what a pppd process says in it.
#ifndef NETINFO_STATISTICS_FORMATS_SYSLOGLINE_H
#define NETINFO_STATISTICS_FORMATS_SYSLOGLINE_H

#include "TimeText.h"

#include <cstdint>
#include <ctime>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zelk {

/// The stamp of a line: either a moment with its zone ("2026-11-20T08:15:02+01:00"), or local time without a year
/// ("Nov 20 08:15:02"), in which case the number of year changes seen so far in the log stands in for the year.
struct LogStamp {
    std::optional<ZonedTime> moment;
    std::tm local = {};
    int turns = 0;
};

/// Takes the stamp off the front of a line. Nothing when there is none; the line is then as it was.
std::optional<LogStamp> takeStamp(std::string_view &line);

/// What remains of a line behind its stamp when pppd wrote it.
struct PppdMessage {
    std::string process; ///< Host name, tag and process number: what tells interleaved connections apart.
    std::string_view text;
};
std::optional<PppdMessage> takePppdMessage(std::string_view line);

/// Finds the years of a log whose stamps have none: counts the turns of the year while the lines pass by, and places
/// the last one so that nothing lies in the future.
class LogYears
{
public:
    /// Takes note of the next line's stamp and sets its `turns`.
    void pass(LogStamp &stamp);
    /// To be called after the last line. `latest`: no line is later than this.
    void settle(std::int64_t latest);
    /// The moments that a stamp can mean, after settle(). There are two in the hour that the end of summer time
    /// repeats, and none for a date that its year does not have.
    std::vector<ZonedTime> moments(const LogStamp &stamp) const;

private:
    std::int64_t m_last = -1;       ///< Seconds from 1 January of the last stamp; -1: none yet.
    std::int64_t m_beforeTurn = -1; ///< Those of the last stamp before the last turn.
    int m_turns = 0;
    std::tm m_lastLocal = {};
    std::set<int> m_leapTurns; ///< Turns in which a 29 February was seen.
    int m_firstYear = 0;       ///< The year (since 1900) of turn 0.
};

} // namespace zelk

#endif
