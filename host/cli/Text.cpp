// Text for people, measured and made safe with the C library's knowledge of characters.
#include "Text.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <ctime>
#include <cwchar>
#include <ostream>
#include <string_view>
#include <utility>

namespace cli {
namespace {

// One character of a text: its bytes, its code, and whether the bytes are valid.
struct Character {
    std::string_view bytes;
    wchar_t code = 0;
    bool valid = false;
};

// Takes the next character off the front; an invalid byte comes alone.
Character takeCharacter(std::string_view &text)
{
    std::mbstate_t state = {};
    wchar_t code = 0;
    const std::size_t length = std::mbrtowc(&code, text.data(), text.size(), &state);
    const bool valid = length != static_cast<std::size_t>(-1) && length != static_cast<std::size_t>(-2);
    Character character{text.substr(0, valid ? std::max<std::size_t>(length, 1) : 1), code, valid};
    text.remove_prefix(character.bytes.size());
    return character;
}

// Line and paragraph separators, and what embeds, overrides or isolates a writing direction: a name could otherwise
// rearrange the rest of its line.
bool rearranges(wchar_t code)
{
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string escaped(const Character &character)
{
    std::string text;
    std::array<char, 24> part = {};
    if (character.valid && character.code >= 0x80) {
        std::snprintf(part.data(), part.size(), "\\u{%x}", static_cast<unsigned>(character.code));
        return part.data();
    }
    for (const char byte : character.bytes) {
        std::snprintf(part.data(), part.size(), "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(byte)));
        text += part.data();
    }
    return text;
}

std::string safe(std::string_view text, bool keepLineFeeds)
{
    std::string result;
    while (!text.empty()) {
        const Character character = takeCharacter(text);
        const bool shown =
            character.valid && wcwidth(character.code) >= 0 && character.code != 0 && !rearranges(character.code);
        if (shown || (keepLineFeeds && character.code == L'\n' && character.valid))
            result += character.bytes;
        else
            result += escaped(character);
    }
    return result;
}

std::string padding(std::size_t columns)
{
    return std::string(columns, ' ');
}

} // namespace

void useUtf8()
{
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr)
        std::setlocale(LC_CTYPE, "");
}

std::string printable(const std::string &text)
{
    return safe(text, true);
}

std::string printableLine(const std::string &text)
{
    return safe(text, false);
}

std::size_t columnsOf(const std::string &text)
{
    std::size_t columns = 0;
    std::string_view rest = text;
    while (!rest.empty())
        columns += static_cast<std::size_t>(std::max(wcwidth(takeCharacter(rest).code), 0));
    return columns;
}

std::string shortened(const std::string &text, std::size_t columns)
{
    if (columnsOf(text) <= columns)
        return text;
    std::string result;
    std::size_t used = 1; // the ellipsis
    std::string_view rest = text;
    while (!rest.empty()) {
        const Character character = takeCharacter(rest);
        used += static_cast<std::size_t>(std::max(wcwidth(character.code), 0));
        if (used > columns)
            break;
        result += character.bytes;
    }
    return result + "\u2026";
}

std::string amountText(std::int64_t bytes)
{
    constexpr double step = 1024;
    double amount = static_cast<double>(bytes) / step;
    const char *unit = "KB";
    if (amount >= step * step) {
        amount /= step * step;
        unit = "GB";
    } else if (amount >= step) {
        amount /= step;
        unit = "MB";
    }
    std::array<char, 48> text = {};
    std::snprintf(text.data(), text.size(), "%.2f %s", amount, unit);
    return text.data();
}

std::string durationText(std::int64_t seconds)
{
    std::array<char, 48> text = {};
    std::snprintf(text.data(), text.size(), "%lld:%02d:%02d", static_cast<long long>(seconds / 3600),
                  static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    return text.data();
}

std::string localTimeText(std::int64_t seconds)
{
    const std::time_t moment = seconds;
    std::tm parts = {};
    localtime_r(&moment, &parts);
    std::array<char, 64> text = {};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
    return text.data();
}

std::string qualityWords(unsigned quality)
{
    constexpr std::array<std::pair<unsigned, const char *>, 4> words = {{
        {zelk::QualityResumed, "resumed"},
        {zelk::QualityRecovered, "recovered"},
        {zelk::QualityCounterRestarted, "counter restarted"},
        {zelk::QualityClockChanged, "clock changed"},
    }};
    std::string text;
    for (const auto &[flag, word] : words)
        if ((quality & flag) != 0)
            text += (text.empty() ? "" : ", ") + std::string(word);
    return text.empty() ? "exact" : text;
}

std::string endReasonWords(zelk::EndReason reason)
{
    switch (reason) {
    case zelk::EndReason::User:
        return "by the user";
    case zelk::EndReason::Network:
        return "by the network";
    case zelk::EndReason::Unplugged:
        return "modem unplugged";
    case zelk::EndReason::Sleep:
        return "machine slept";
    case zelk::EndReason::Carrier:
        return "carrier lost";
    case zelk::EndReason::Unknown:
        break;
    }
    return "unknown";
}

std::string countOf(std::size_t number, const std::string &noun)
{
    return std::to_string(number) + ' ' + noun + (number == 1 ? "" : "s");
}

void Table::print(std::ostream &output) const
{
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        widths.push_back(columnsOf(m_columns[i].head));
        for (const auto &row : m_rows)
            widths[i] = std::max(widths[i], columnsOf(row[i]));
    }
    const auto printRow = [&](const auto &cellOf) {
        std::string line;
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const std::string &cell = cellOf(i);
            const std::string pad = padding(widths[i] - columnsOf(cell));
            line += (i == 0 ? "" : "  ") + (m_columns[i].align == Align::Right ? pad + cell : cell + pad);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        output << line << '\n';
    };
    printRow([this](std::size_t i) -> const std::string & { return m_columns[i].head; });
    for (const auto &row : m_rows)
        printRow([&row](std::size_t i) -> const std::string & { return row[i]; });
}

} // namespace cli
