// Connections from the system log of pppd 2.4.9. A connection is what one process writes between "Connect:" and its
// totals; several processes may write at once, and one process may make several connections in turn.
#include "LineReader.h"
#include "SyslogLine.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <map>
#include <utility>

namespace zelk {
namespace {

constexpr std::int64_t noFigure = -1;
// pppd rounds the connect time to a tenth of a minute, and two stamps to the second lie between.
constexpr std::int64_t tolerance = 6;

struct Session {
    std::uint64_t line = 0; ///< The first one that speaks of it.
    std::string interfaceName;
    std::optional<LogStamp> connected; ///< The link was there.
    std::optional<LogStamp> up;        ///< The network was there; from here pppd counts.
    std::optional<LogStamp> down;
    std::int64_t connectSeconds = noFigure;
    std::int64_t sent = 0;
    std::int64_t received = 0;
    EndReason reason = EndReason::Unknown;
};

// Whether there was more than an attempt to call.
bool isConnection(const Session &session)
{
    return session.up || session.connected || session.connectSeconds != noFigure;
}

bool startsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

// What pppd says before it gives the totals, and what that means for the end.
EndReason reasonOf(std::string_view text)
{
    constexpr std::array<std::pair<std::string_view, EndReason>, 7> sayings = {{
        {"Terminating on signal", EndReason::User},
        {"LCP terminated by peer", EndReason::Network},
        {"IPCP terminated by peer", EndReason::Network},
        {"Modem hangup", EndReason::Carrier},
        {"Hangup (SIGHUP)", EndReason::Carrier},
        {"No response to", EndReason::Carrier},
        {"Serial link appears to be disconnected", EndReason::Carrier},
    }};
    for (const auto &[beginning, reason] : sayings)
        if (startsWith(text, beginning))
            return reason;
    return EndReason::Unknown;
}

class PppdLog
{
public:
    PppdLog(std::istream &input, const ImportOptions &options) : m_lines(input, options), m_options(options) {}

    Source read()
    {
        while (m_lines.next())
            readLine(m_lines.text());
        if (!m_spoken)
            failAt(m_options, std::max<std::uint64_t>(m_lines.number(), 1),
                   "no line of the log comes from pppd; is this the system log?");
        for (const auto &[process, session] : m_open)
            if (isConnection(session))
                skip(session, "the log ends before it does");
        m_years.settle(m_options.logTime != 0 ? m_options.logTime : std::time(nullptr));
        for (const Session &session : m_finished)
            append(m_source, recordOf(session), session.line, m_options);
        return std::move(m_source);
    }

private:
    void readLine(std::string_view line)
    {
        auto stamp = takeStamp(line);
        if (stamp)
            m_years.pass(*stamp);
        const auto message = takePppdMessage(line);
        if (!message)
            return;
        if (!stamp)
            failAt(m_options, m_lines.number(),
                   "the line has no time stamp such as \"Nov 20 08:15:02\" or \"2026-11-20T08:15:02+01:00\"");
        m_spoken = true;
        follow(*message, *stamp);
    }

    void follow(const PppdMessage &message, const LogStamp &stamp)
    {
        constexpr std::string_view connect = "Connect: ";
        constexpr std::string_view interfaceUp = "Using interface ";
        const std::string_view text = message.text;
        if (startsWith(text, interfaceUp)) {
            begin(message.process).interfaceName = text.substr(interfaceUp.size());
        } else if (startsWith(text, connect)) {
            Session &session = linkOf(message.process);
            session.connected = stamp;
            session.interfaceName = text.substr(connect.size(), text.find(" <--> ") - connect.size());
        } else if (startsWith(text, "local  IP address ") || startsWith(text, "local  LL address ")) {
            Session &session = sessionOf(message.process);
            if (!session.up)
                session.up = stamp;
        } else if (startsWith(text, "Connect time ")) {
            takeConnectTime(text, stamp, sessionOf(message.process));
        } else if (startsWith(text, "Sent ")) {
            takeTotals(message, stamp);
        } else if (text == "Exit.") {
            abandon(message.process);
        } else if (const EndReason reason = reasonOf(text); reason != EndReason::Unknown) {
            Session &session = sessionOf(message.process);
            if (session.reason == EndReason::Unknown)
                session.reason = reason;
        }
    }

    // The process's session; one that this line begins where the log began in the middle of it.
    Session &sessionOf(const std::string &process)
    {
        Session &session = m_open[process];
        if (session.line == 0)
            session.line = m_lines.number();
        return session;
    }

    Session &begin(const std::string &process)
    {
        abandon(process);
        return sessionOf(process);
    }

    // Without an interface line before it, this is the next link of the process, to which nothing said so far belongs.
    Session &linkOf(const std::string &process)
    {
        Session &session = sessionOf(process);
        if (isConnection(session) || session.reason != EndReason::Unknown)
            return begin(process);
        return session;
    }

    void abandon(const std::string &process)
    {
        const auto open = m_open.find(process);
        if (open == m_open.end())
            return;
        const Session &session = open->second;
        if (isConnection(session))
            skip(session,
                 session.connected && !session.up ? "it never got an address" : "pppd stopped without writing them");
        m_open.erase(open);
    }

    void skip(const Session &session, const std::string &why)
    {
        const std::string over = session.interfaceName.empty() ? "" : " over " + session.interfaceName;
        m_source.skipped.push_back(place(m_options, session.line) + "the connection" + over +
                                   " has no totals and was skipped: " + why);
    }

    // "Connect time 0.2 minutes."
    void takeConnectTime(std::string_view text, const LogStamp &stamp, Session &session)
    {
        Figures figures(text);
        const auto minutes = figures.next("Connect time ");
        const auto tenths = figures.next(".");
        if (!minutes || !tenths || *tenths > 9 || *minutes > maximumMinutes)
            failAt(m_options, m_lines.number(), "the connect time cannot be read; the line must be as pppd writes it");
        session.connectSeconds = *minutes * 60 + *tenths * 6;
        session.down = stamp;
    }

    // "Sent 102838 bytes, received 4 bytes."
    void takeTotals(const PppdMessage &message, const LogStamp &stamp)
    {
        Figures figures(message.text);
        const auto sent = figures.next("Sent ");
        const auto received = figures.next(" bytes, received ");
        if (!sent || !received)
            failAt(m_options, m_lines.number(), "the amounts cannot be read; the line must be as pppd writes it");
        Session &session = sessionOf(message.process);
        session.sent = *sent;
        session.received = *received;
        if (!session.down)
            session.down = stamp;
        if (isConnection(session))
            m_finished.push_back(std::move(session));
        else
            skip(session, "nothing tells when it began");
        m_open.erase(message.process);
    }

    // Takes numbers out of a sentence in turn.
    class Figures
    {
    public:
        explicit Figures(std::string_view text) : m_rest(text) {}

        std::optional<std::int64_t> next(std::string_view behind)
        {
            if (!startsWith(m_rest, behind))
                return std::nullopt;
            m_rest.remove_prefix(behind.size());
            std::int64_t value = 0;
            const auto [stopped, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value);
            if (error != std::errc() || value < 0)
                return std::nullopt;
            m_rest.remove_prefix(static_cast<std::size_t>(stopped - m_rest.data()));
            return value;
        }

    private:
        std::string_view m_rest;
    };

    std::vector<ZonedTime> momentsOf(const LogStamp &stamp, std::uint64_t line) const
    {
        auto moments = m_years.moments(stamp);
        if (moments.empty())
            failAt(m_options, line, "a date of this connection does not exist in the year that the log seems to be of");
        return moments;
    }

    // Start and end so that their distance comes as near to pppd's own figure as the stamps allow: local time passes
    // twice through the hour in which summer time ends.
    std::pair<ZonedTime, ZonedTime> spanOf(const Session &session) const
    {
        const auto ends = momentsOf(*session.down, session.line);
        if (!session.up && !session.connected)
            return {{ends.front().seconds - session.connectSeconds, ends.front().offset}, ends.front()};
        const auto starts = momentsOf(session.up ? *session.up : *session.connected, session.line);
        std::pair<ZonedTime, ZonedTime> best{starts.front(), ends.front()};
        const auto distance = [&session](const ZonedTime &start, const ZonedTime &end) {
            const std::int64_t figure = session.connectSeconds == noFigure ? 0 : session.connectSeconds;
            return std::abs(end.seconds - start.seconds - figure);
        };
        for (const ZonedTime &start : starts)
            for (const ZonedTime &end : ends)
                if (distance(start, end) < distance(best.first, best.second))
                    best = {start, end};
        return best;
    }

    Record recordOf(const Session &session) const
    {
        const auto [start, end] = spanOf(session);
        Record record;
        record.profile = m_options.profile;
        record.start = start.seconds;
        record.end = end.seconds;
        record.endZoneOffset = end.offset;
        record.connectedSeconds = end.seconds - start.seconds;
        record.bytesUploaded = session.sent;
        record.bytesDownloaded = session.received;
        record.origin = Origin::Imported;
        record.originDetail = "pppd";
        record.endReason = session.reason;
        if (session.connectSeconds != noFigure)
            trustFigure(record, session.connectSeconds);
        return record;
    }

    // pppd measures by a clock that nobody sets. Where the stamps leave less room than it measured, the wall clock was
    // set back meanwhile; where they leave more, the machine slept, or the clock was set forward.
    static void trustFigure(Record &record, std::int64_t figure)
    {
        if (std::abs(record.connectedSeconds - figure) <= tolerance)
            return;
        if (record.connectedSeconds < figure) {
            record.start = record.end - figure;
            record.quality = QualityClockChanged;
        }
        record.connectedSeconds = figure;
    }

    static constexpr std::int64_t maximumMinutes = 100LL * 366 * 24 * 60;

    LineReader m_lines;
    const ImportOptions &m_options;
    LogYears m_years;
    std::map<std::string, Session> m_open;
    std::vector<Session> m_finished;
    Source m_source;
    bool m_spoken = false;
};

} // namespace

Source readPppd(std::istream &input, const ImportOptions &options)
{
    return PppdLog(input, options).read();
}

} // namespace zelk
