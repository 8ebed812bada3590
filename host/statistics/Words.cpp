// The words for quality, reason of the end and origin that the raw record, CSV and JSON carry.
#include "ConnectionHistory.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace zelk {
namespace {

struct QualityWord {
    unsigned flag;
    const char *word;
    const char *rawWord; ///< All four joined by '+' must fit the raw record's 31 characters.
};

constexpr std::array<QualityWord, 4> qualityWords = {{
    {QualityResumed, "resumed", "resumed"},
    {QualityRecovered, "recovered", "recovered"},
    {QualityCounterRestarted, "counter-restarted", "counter"},
    {QualityClockChanged, "clock-changed", "clock"},
}};
constexpr const char *exactWord = "exact";

constexpr std::array<const char *, 6> endReasonWords = {"unknown", "user", "network", "unplugged", "sleep", "carrier"};
constexpr std::array<const char *, 3> originWords = {"recorded", "imported", "added"};

std::string joinQuality(unsigned quality, const char *QualityWord::*form)
{
    std::string text;
    for (const QualityWord &entry : qualityWords) {
        if ((quality & entry.flag) != 0)
            text += (text.empty() ? "" : "+") + std::string(entry.*form);
    }
    return text.empty() ? exactWord : text;
}

std::optional<unsigned> qualityFlag(const std::string &word)
{
    for (const QualityWord &entry : qualityWords) {
        if (word == entry.word || word == entry.rawWord)
            return entry.flag;
    }
    return std::nullopt;
}

template <std::size_t N> std::string wordAt(const std::array<const char *, N> &words, std::size_t index)
{
    return index < N ? words[index] : words[0];
}

template <typename Value, std::size_t N>
std::optional<Value> valueOf(const std::array<const char *, N> &words, const std::string &text)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (text == words[i])
            return static_cast<Value>(i);
    }
    return std::nullopt;
}

} // namespace

std::string qualityToText(unsigned quality)
{
    return joinQuality(quality, &QualityWord::word);
}

std::string qualityToRawText(unsigned quality)
{
    return joinQuality(quality, &QualityWord::rawWord);
}

std::optional<unsigned> qualityFromText(const std::string &text)
{
    if (text == exactWord)
        return QualityExact;
    unsigned quality = QualityExact;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t to = std::min(text.find('+', from), text.size());
        const std::optional<unsigned> flag = qualityFlag(text.substr(from, to - from));
        if (!flag)
            return std::nullopt;
        quality |= *flag;
        from = to + 1;
    }
    return quality;
}

std::string endReasonToText(EndReason reason)
{
    return wordAt(endReasonWords, static_cast<std::size_t>(reason));
}

std::optional<EndReason> endReasonFromText(const std::string &text)
{
    return valueOf<EndReason>(endReasonWords, text);
}

std::string originToText(Origin origin)
{
    return wordAt(originWords, static_cast<std::size_t>(origin));
}

std::optional<Origin> originFromText(const std::string &text)
{
    return valueOf<Origin>(originWords, text);
}

} // namespace zelk
