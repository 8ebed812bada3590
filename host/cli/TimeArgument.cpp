// Local times go through the C library, which knows the zone; what it had to correct did not exist.
#include "TimeArgument.h"

#include "ExitCode.h"

#include <cstdio>
#include <ctime>

namespace cli {
namespace {

[[noreturn]] void refuse(const std::string &option, const std::string &text, const std::string &remedy)
{
    throw Failure(ExitCode::Usage, option + ": \"" + text + "\" " + remedy);
}

// The moment of a local date and time; nothing when there is none, such as in the hour that summer time leaves out.
std::optional<std::int64_t> localMoment(const std::tm &asked)
{
    std::tm found = asked;
    found.tm_isdst = -1;
    const std::time_t seconds = std::mktime(&found);
    if (found.tm_year != asked.tm_year || found.tm_mon != asked.tm_mon || found.tm_mday != asked.tm_mday ||
        found.tm_hour != asked.tm_hour || found.tm_min != asked.tm_min || found.tm_sec != asked.tm_sec)
        return std::nullopt;
    return seconds;
}

// Whether a text has the shape of a pattern in which '9' stands for a digit.
bool hasShape(const std::string &text, const std::string &pattern)
{
    if (text.size() != pattern.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (pattern[i] == '9' ? !digit : text[i] != pattern[i])
            return false;
    }
    return true;
}

int part(const std::string &text, std::size_t from, std::size_t length)
{
    return text.size() < from + length ? 0 : std::stoi(text.substr(from, length));
}

std::optional<std::tm> localParts(std::string text)
{
    constexpr std::size_t between = 10;
    if (text.size() > between && text[between] == 'T')
        text[between] = ' ';
    if (!hasShape(text, "9999-99-99") && !hasShape(text, "9999-99-99 99:99") && !hasShape(text, "9999-99-99 99:99:99"))
        return std::nullopt;
    std::tm parts = {};
    parts.tm_year = part(text, 0, 4) - 1900;
    parts.tm_mon = part(text, 5, 2) - 1;
    parts.tm_mday = part(text, 8, 2);
    parts.tm_hour = part(text, 11, 2);
    parts.tm_min = part(text, 14, 2);
    parts.tm_sec = part(text, 17, 2);
    return parts;
}

bool isDate(const std::string &text)
{
    return hasShape(text, "9999-99-99");
}

// The beginning of a local day so many days after a date; midnight itself does not exist in every zone on every day.
std::int64_t dayBegin(const std::string &option, const std::string &date, int daysLater)
{
    std::tm parts = *localParts(date);
    std::tm noon = parts;
    noon.tm_hour = 12;
    if (!localMoment(noon))
        refuse(option, date, "is no date of the calendar");
    parts.tm_mday += daysLater;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

} // namespace

zelk::ZonedTime momentArgument(const std::string &option, const std::string &text)
{
    if (const auto zoned = zelk::parseRfc3339(text))
        return *zoned;
    const auto parts = isDate(text) ? std::nullopt : localParts(text);
    if (!parts)
        refuse(option, text, "is no time; write \"2026-08-03 07:12\" or 2026-08-03T07:12:09+02:00");
    const auto seconds = localMoment(*parts);
    if (!seconds)
        refuse(option, text, "does not exist in local time");
    return {*seconds, zelk::localOffset(*seconds)};
}

std::int64_t durationArgument(const std::string &option, const std::string &text)
{
    constexpr std::size_t longest = 12;
    std::int64_t total = 0;
    std::int64_t piece = 0;
    bool digitBefore = false;
    int colons = 0;
    for (const char letter : text) {
        const bool colon = letter == ':' && digitBefore && colons < 2;
        if (colon) {
            total = (total + piece) * 60;
            piece = 0;
            ++colons;
        } else if (letter < '0' || letter > '9' || text.size() > longest) {
            digitBefore = false;
            break;
        } else {
            piece = piece * 10 + (letter - '0');
        }
        digitBefore = !colon;
    }
    if (!digitBefore)
        refuse(option, text, "is no duration; write seconds, or h:mm:ss");
    return total + piece;
}

void FilterOptions::addTo(CLI::App &command)
{
    command.add_option("--profile", m_profile, "Only connections of this profile")->type_name("NAME");
    auto *month =
        command.add_option("--month", m_month, "Only those that began in this month, local time")->type_name("YYYY-MM");
    command.add_option("--from", m_from, "Only those that began at or after this time or date, local time")
        ->type_name("TIME")
        ->excludes(month);
    command.add_option("--to", m_to, "Only those that began before this time, or on this date or earlier, local time")
        ->type_name("TIME")
        ->excludes(month);
}

zelk::Filter FilterOptions::filter() const
{
    zelk::Filter filter;
    filter.profile = m_profile;
    if (!m_month.empty()) {
        const std::string first = m_month + "-01";
        if (!hasShape(m_month, "9999-99") || !localParts(first) || part(m_month, 5, 2) < 1 || part(m_month, 5, 2) > 12)
            refuse("--month", m_month, "is no month; write it as 2026-08");
        filter.startFrom = dayBegin("--month", first, 0);
        std::tm next = *localParts(first);
        ++next.tm_mon;
        next.tm_isdst = -1;
        filter.startBefore = std::mktime(&next);
    }
    if (!m_from.empty())
        filter.startFrom = isDate(m_from) ? dayBegin("--from", m_from, 0) : momentArgument("--from", m_from).seconds;
    if (!m_to.empty())
        filter.startBefore = isDate(m_to) ? dayBegin("--to", m_to, 1) : momentArgument("--to", m_to).seconds;
    return filter;
}

} // namespace cli
