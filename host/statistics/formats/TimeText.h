// Times as text: RFC 3339, the form in which files and programs exchange them.
#ifndef NETINFO_STATISTICS_FORMATS_TIMETEXT_H
#define NETINFO_STATISTICS_FORMATS_TIMETEXT_H

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace zelk {

/// A moment and the offset of local time from UTC, in seconds east, with which it was or shall be written.
struct ZonedTime {
    std::int64_t seconds = 0;
    std::int32_t offset = 0;
};

/// Reads "2026-08-03T07:12:09+02:00". Also taken: 'Z' for +00:00, a blank for the 'T', lower case, an offset without
/// its colon, and a fraction of a second, which is dropped. Nothing for any other text or a date that does not exist.
std::optional<ZonedTime> parseRfc3339(std::string_view text);

/// Writes such a text; an offset of 0 as 'Z'. Nothing for what the form cannot say: a year outside 0001 to 9999, an
/// offset that is not made of whole minutes or not below 24 hours.
std::optional<std::string> formatRfc3339(ZonedTime time);

/// The moment of a date and time in UTC; nothing where there is no such date.
std::optional<std::int64_t> utcSeconds(std::tm time);

/// The offset of the system's local time from UTC at a moment, in seconds east.
std::int32_t localOffset(std::int64_t seconds);

/// The days from 1970-01-01 to the local date of a moment.
std::int64_t localDay(std::int64_t seconds);

} // namespace zelk

#endif
