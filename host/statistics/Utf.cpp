// See Utf.h.
#include "Utf.h"

namespace zelk {
namespace {

constexpr char32_t invalid = 0xFFFFFFFF;
constexpr char32_t replacement = 0xFFFD;

struct CodePoint {
    char32_t value;
    std::size_t length;
};

std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    if (lead >= 0xF0 && lead < 0xF5)
        return 4;
    return 0;
}

bool isShortestForm(char32_t value, std::size_t length)
{
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    return value >= least[length] && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

CodePoint decode(std::string_view text, std::size_t at)
{
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = sequenceLength(lead);
    if (length == 0 || at + length > text.size())
        return {invalid, 1};
    if (length == 1)
        return {lead, 1};
    char32_t value = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0U) != 0x80U)
            return {invalid, 1};
        value = (value << 6U) | (next & 0x3FU);
    }
    return isShortestForm(value, length) ? CodePoint{value, length} : CodePoint{invalid, 1};
}

} // namespace

std::size_t firstInvalidUtf8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint point = decode(text, at);
        if (point.value == invalid)
            return at;
        at += point.length;
    }
    return text.size();
}

std::size_t utf8ToUtf16(std::string_view text, std::uint16_t *units, std::size_t capacity)
{
    std::size_t written = 0;
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint point = decode(text, at);
        const char32_t value = point.value == invalid ? replacement : point.value;
        const std::size_t needed = value > 0xFFFF ? 2 : 1;
        if (written + needed > capacity)
            break;
        if (needed == 2) {
            units[written++] = static_cast<std::uint16_t>(0xD7C0 + (value >> 10U));
            units[written++] = static_cast<std::uint16_t>(0xDC00 + (value & 0x3FFU));
        } else {
            units[written++] = static_cast<std::uint16_t>(value);
        }
        at += point.length;
    }
    return written;
}

} // namespace zelk
