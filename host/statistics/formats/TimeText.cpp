// Times as text, on the C library's calendar.
#include "TimeText.h"

#include <array>
#include <cstdio>

namespace zelk {
namespace {

constexpr std::int64_t secondsADay = 86400;
constexpr std::int64_t firstYear = -62135596800; // 0001-01-01T00:00:00Z
constexpr std::int64_t lastYear = 253402300799;  // 9999-12-31T23:59:59Z

// Takes fixed-width pieces off the front of a text and remembers whether one was missing.
class Cutter
{
public:
    explicit Cutter(std::string_view text) : m_rest(text) {}

    int digits(std::size_t count)
    {
        int value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (m_rest.size() <= i || m_rest[i] < '0' || m_rest[i] > '9') {
                m_good = false;
                return 0;
            }
            value = value * 10 + (m_rest[i] - '0');
        }
        m_rest.remove_prefix(count);
        return value;
    }

    bool maybe(std::string_view anyOf)
    {
        if (m_rest.empty() || anyOf.find(m_rest.front()) == std::string_view::npos)
            return false;
        m_last = m_rest.front();
        m_rest.remove_prefix(1);
        return true;
    }

    void expect(std::string_view anyOf) { m_good = maybe(anyOf) && m_good; }
    char last() const { return m_last; }
    bool atEnd() const { return m_rest.empty(); }
    bool good() const { return m_good; }

private:
    std::string_view m_rest;
    char m_last = 0;
    bool m_good = true;
};

void cutFraction(Cutter &cutter)
{
    if (!cutter.maybe("."))
        return;
    cutter.expect("0123456789");
    while (cutter.maybe("0123456789"))
        ;
}

std::optional<std::int32_t> cutOffset(Cutter &cutter)
{
    if (cutter.maybe("Zz"))
        return 0;
    cutter.expect("+-");
    const int sign = cutter.last() == '-' ? -1 : 1;
    const int hours = cutter.digits(2);
    cutter.maybe(":");
    const int minutes = cutter.digits(2);
    if (hours > 23 || minutes > 59)
        return std::nullopt;
    return sign * (hours * 3600 + minutes * 60);
}

} // namespace

std::optional<std::int64_t> utcSeconds(std::tm time)
{
    const std::tm asked = time;
    const bool leapSecond = asked.tm_sec == 60;
    if (leapSecond)
        time.tm_sec = 59;
    const std::int64_t seconds = timegm(&time);
    // The calendar makes 2 March of 30 February; what it had to change did not exist.
    if (time.tm_year != asked.tm_year || time.tm_mon != asked.tm_mon || time.tm_mday != asked.tm_mday ||
        time.tm_hour != asked.tm_hour || time.tm_min != asked.tm_min || time.tm_sec != asked.tm_sec - leapSecond)
        return std::nullopt;
    return seconds + leapSecond;
}

std::optional<ZonedTime> parseRfc3339(std::string_view text)
{
    Cutter cutter(text);
    std::tm time = {};
    time.tm_year = cutter.digits(4) - 1900;
    cutter.expect("-");
    time.tm_mon = cutter.digits(2) - 1;
    cutter.expect("-");
    time.tm_mday = cutter.digits(2);
    cutter.expect("Tt ");
    time.tm_hour = cutter.digits(2);
    cutter.expect(":");
    time.tm_min = cutter.digits(2);
    cutter.expect(":");
    time.tm_sec = cutter.digits(2);
    cutFraction(cutter);
    const auto offset = cutOffset(cutter);
    if (!cutter.good() || !cutter.atEnd() || !offset)
        return std::nullopt;
    const auto local = utcSeconds(time);
    if (!local)
        return std::nullopt;
    return ZonedTime{*local - *offset, *offset};
}

std::optional<std::string> formatRfc3339(ZonedTime time)
{
    if (time.offset % 60 != 0 || time.offset <= -secondsADay || time.offset >= secondsADay)
        return std::nullopt;
    const bool inReach = time.seconds >= firstYear - secondsADay && time.seconds <= lastYear + secondsADay;
    const std::time_t shifted = inReach ? time.seconds + time.offset : lastYear + 1;
    if (shifted < firstYear || shifted > lastYear)
        return std::nullopt;
    std::tm parts = {};
    gmtime_r(&shifted, &parts);
    std::array<char, 64> text = {};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", parts.tm_year + 1900,
                                     parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
    std::string result(text.data(), static_cast<std::size_t>(length));
    if (time.offset == 0)
        return result + 'Z';
    const int minutes = (time.offset < 0 ? -time.offset : time.offset) / 60;
    const int zone =
        std::snprintf(text.data(), text.size(), "%c%02d:%02d", time.offset < 0 ? '-' : '+', minutes / 60, minutes % 60);
    return result.append(text.data(), static_cast<std::size_t>(zone));
}

std::int32_t localOffset(std::int64_t seconds)
{
    const std::time_t moment = seconds;
    std::tm parts = {};
    localtime_r(&moment, &parts);
    return static_cast<std::int32_t>(parts.tm_gmtoff);
}

std::int64_t localDay(std::int64_t seconds)
{
    const std::int64_t local = seconds + localOffset(seconds);
    return local >= 0 ? local / secondsADay : -((-local + secondsADay - 1) / secondsADay);
}

} // namespace zelk
