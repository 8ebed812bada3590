// Strict UTF-8 decoding, for checking names on the way in and for the raw record's UTF-16 on the way out.
#ifndef NETINFO_STATISTICS_UTF_H
#define NETINFO_STATISTICS_UTF_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zelk {

/// Position of the first byte that is not part of valid UTF-8 (overlong forms, surrogates and code points beyond
/// U+10FFFF are not); the length of the text when all of it is valid.
std::size_t firstInvalidUtf8(std::string_view text);

/// Writes `text` as UTF-16 in machine byte order, at most `capacity` units, never half a surrogate pair, and returns
/// the number of units written. No terminator. Each invalid byte becomes U+FFFD.
std::size_t utf8ToUtf16(std::string_view text, std::uint16_t *units, std::size_t capacity);

} // namespace zelk

#endif
