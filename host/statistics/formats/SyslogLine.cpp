// The two stamps that system loggers write, and the year that the classic one leaves out.
#include "SyslogLine.h"

#include <algorithm>
#include <array>

namespace zelk {
namespace {

constexpr std::int64_t secondsADay = 86400;
constexpr std::int64_t secondsAWeek = 7 * secondsADay; // Clocks that are set and lines out of order stay below it.
constexpr std::size_t classicLength = 15;              // "Nov 20 08:15:02"

std::optional<int> number(std::string_view text)
{
    int value = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i == 0 && text[i] == ' ' && text.size() > 1)
            continue; // "Nov  3"
        if (text[i] < '0' || text[i] > '9')
            return std::nullopt;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

std::optional<int> month(std::string_view text)
{
    constexpr std::array<std::string_view, 12> names = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto found = std::find(names.begin(), names.end(), text);
    if (found == names.end())
        return std::nullopt;
    return static_cast<int>(found - names.begin());
}

int daysIn(int monthOfYear)
{
    constexpr std::array<int, 12> days = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return days[static_cast<std::size_t>(monthOfYear)];
}

std::optional<std::tm> classicStamp(std::string_view text)
{
    if (text.size() < classicLength || text[3] != ' ' || text[6] != ' ' || text[9] != ':' || text[12] != ':')
        return std::nullopt;
    const auto mon = month(text.substr(0, 3));
    const auto day = number(text.substr(4, 2));
    const auto hour = number(text.substr(7, 2));
    const auto minute = number(text.substr(10, 2));
    const auto second = number(text.substr(13, 2));
    if (!mon || !day || !hour || !minute || !second)
        return std::nullopt;
    if (*day < 1 || *day > daysIn(*mon) || *hour > 23 || *minute > 59 || *second > 60)
        return std::nullopt;
    std::tm local = {};
    local.tm_mon = *mon;
    local.tm_mday = *day;
    local.tm_hour = *hour;
    local.tm_min = *minute;
    local.tm_sec = std::min(*second, 59);
    return local;
}

// Seconds from the beginning of a leap year, good for comparing stamps within one.
std::int64_t secondsIntoYear(const std::tm &local)
{
    std::int64_t days = local.tm_mday - 1;
    for (int i = 0; i < local.tm_mon; ++i)
        days += daysIn(i);
    return ((days * 24 + local.tm_hour) * 60 + local.tm_min) * 60 + local.tm_sec;
}

bool isLeap(int yearSince1900)
{
    const int year = yearSince1900 + 1900;
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

} // namespace

std::optional<LogStamp> takeStamp(std::string_view &line)
{
    LogStamp stamp;
    std::size_t length = classicLength;
    if (const auto local = classicStamp(line)) {
        stamp.local = *local;
    } else {
        length = line.find(' ');
        stamp.moment = parseRfc3339(line.substr(0, length));
        if (length == std::string_view::npos || !stamp.moment)
            return std::nullopt;
    }
    line.remove_prefix(length);
    return stamp;
}

std::optional<PppdMessage> takePppdMessage(std::string_view line)
{
    constexpr std::string_view tag = " pppd[";
    constexpr std::string_view close = "]: ";
    const auto begin = line.find(tag);
    // Host and tag come first; further on it would be another program that quotes pppd.
    if (begin == std::string_view::npos || line.find(": ") < begin)
        return std::nullopt;
    const auto end = line.find(close, begin);
    if (end == std::string_view::npos)
        return std::nullopt;
    PppdMessage message{std::string(line.substr(0, end)), line.substr(end + close.size())};
    while (!message.text.empty() && (message.text.back() == '\n' || message.text.back() == '\r'))
        message.text.remove_suffix(1);
    return message;
}

void LogYears::pass(LogStamp &stamp)
{
    if (stamp.moment)
        return;
    const std::int64_t now = secondsIntoYear(stamp.local);
    if (m_last >= 0 && now < m_last - secondsAWeek) {
        m_beforeTurn = m_last;
        ++m_turns;
    } else if (m_beforeTurn >= 0 && now > m_last + secondsAWeek && std::abs(now - m_beforeTurn) <= secondsADay) {
        // No year has passed: lines out of order at midnight, or a clock that began at 1 January and was then set.
        m_beforeTurn = -1;
        --m_turns;
    }
    m_last = now;
    m_lastLocal = stamp.local;
    stamp.turns = m_turns;
    if (stamp.local.tm_mon == 1 && stamp.local.tm_mday == 29)
        m_leapTurns.insert(m_turns);
}

void LogYears::settle(std::int64_t latest)
{
    constexpr int leapCycle = 8; // Two leap years are at most eight years apart.
    const std::time_t bound = latest + secondsADay;
    std::tm boundLocal = {};
    localtime_r(&bound, &boundLocal);
    m_firstYear = boundLocal.tm_year - m_turns;
    if (secondsIntoYear(m_lastLocal) > secondsIntoYear(boundLocal))
        --m_firstYear;
    const auto fits = [this](int first) {
        return std::all_of(m_leapTurns.begin(), m_leapTurns.end(), [first](int turn) { return isLeap(first + turn); });
    };
    for (int back = 0; back < leapCycle; ++back) {
        if (fits(m_firstYear - back)) {
            m_firstYear -= back;
            return;
        }
    }
}

std::vector<ZonedTime> LogYears::moments(const LogStamp &stamp) const
{
    if (stamp.moment)
        return {*stamp.moment};
    std::vector<ZonedTime> found;
    for (const int summerTime : {-1, 0, 1}) {
        std::tm local = stamp.local;
        local.tm_year = m_firstYear + stamp.turns;
        local.tm_isdst = summerTime;
        const std::time_t seconds = std::mktime(&local);
        const bool changed = local.tm_mday != stamp.local.tm_mday || local.tm_hour != stamp.local.tm_hour;
        // The hour that summer time leaves out exists in no zone; whatever the first attempt makes of it has to do.
        if (changed && (summerTime != -1 || local.tm_mday != stamp.local.tm_mday))
            continue;
        const auto same = [seconds](const ZonedTime &other) { return other.seconds == seconds; };
        if (std::none_of(found.begin(), found.end(), same))
            found.push_back({seconds, static_cast<std::int32_t>(local.tm_gmtoff)});
    }
    return found;
}

} // namespace zelk
