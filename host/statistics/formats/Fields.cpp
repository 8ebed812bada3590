// One table of names, and what each field's text means.
#include "Fields.h"
#include "TimeText.h"

#include <algorithm>
#include <charconv>

namespace zelk {
namespace {

constexpr std::array<Field, 5> requiredFields = {Field::Profile, Field::Start, Field::End, Field::BytesUploaded,
                                                 Field::BytesDownloaded};

template <class Value>
std::optional<std::string> setWord(Value &target, const std::optional<Value> &value, const std::string &text,
                                   const std::string &words)
{
    if (!value)
        return "is \"" + text + "\"; it must be " + words;
    target = *value;
    return std::nullopt;
}

std::optional<std::string> setTime(Record &record, Field field, const std::string &text)
{
    const auto time = parseRfc3339(text);
    if (!time)
        return "is \"" + text + "\"; write a time as 2026-08-03T07:12:09+02:00";
    (field == Field::Start ? record.start : record.end) = time->seconds;
    if (field == Field::End)
        record.endZoneOffset = time->offset;
    return std::nullopt;
}

std::optional<std::string> setDecimal(Record &record, Field field, const std::string &text)
{
    std::int64_t value = 0;
    const char *end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value);
    if (error == std::errc::result_out_of_range)
        return "is " + text + ", which is beyond any amount";
    if (error != std::errc() || stopped != end)
        return "is \"" + text + "\"; it must be a whole number without separators";
    setNumber(record, field, value);
    return std::nullopt;
}

// The writers' side of setTime: both times in the zone of the end, so that a reader sees the hours of the place.
std::string timeText(const Record &record, Field field)
{
    const std::int64_t seconds = field == Field::Start ? record.start : record.end;
    if (const auto text = formatRfc3339({seconds, record.endZoneOffset}))
        return *text;
    throw HistoryError(ResultCode::InvalidRecord,
                       "The " + nameOf(field) + " of record " + std::to_string(record.key) +
                           " cannot be written as a date; remove that record and export again.");
}

} // namespace

const std::array<std::string, fieldCount> &fieldNames()
{
    static const std::array<std::string, fieldCount> names = {
        "profile",          "profile_name", "start",         "end",     "connected_seconds", "bytes_uploaded",
        "bytes_downloaded", "origin",       "origin_detail", "quality", "end_reason"};
    return names;
}

std::optional<Field> fieldNamed(std::string_view name)
{
    const auto &names = fieldNames();
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end())
        return std::nullopt;
    return static_cast<Field>(found - names.begin());
}

bool isText(Field field)
{
    return field == Field::Profile || field == Field::ProfileName || field == Field::OriginDetail;
}

bool isNumber(Field field)
{
    return field == Field::ConnectedSeconds || field == Field::BytesUploaded || field == Field::BytesDownloaded;
}

std::string textOf(const Record &record, Field field)
{
    switch (field) {
    case Field::Profile:
        return record.profile;
    case Field::ProfileName:
        return record.profileName;
    case Field::OriginDetail:
        return record.originDetail;
    case Field::Origin:
        return originToText(record.origin);
    case Field::Quality:
        return qualityToText(record.quality);
    case Field::EndReason:
        return endReasonToText(record.endReason);
    case Field::Start:
    case Field::End:
        return timeText(record, field);
    default:
        return std::to_string(numberOf(record, field));
    }
}

std::int64_t numberOf(const Record &record, Field field)
{
    switch (field) {
    case Field::BytesUploaded:
        return record.bytesUploaded;
    case Field::BytesDownloaded:
        return record.bytesDownloaded;
    default:
        return record.connectedSeconds;
    }
}

std::optional<std::string> setText(Record &record, Field field, const std::string &value)
{
    switch (field) {
    case Field::Profile:
        record.profile = value;
        return std::nullopt;
    case Field::ProfileName:
        record.profileName = value;
        return std::nullopt;
    case Field::OriginDetail:
        record.originDetail = value;
        return std::nullopt;
    case Field::Origin:
        return setWord(record.origin, originFromText(value), value, "recorded, imported or added");
    case Field::Quality:
        return setWord(record.quality, qualityFromText(value), value,
                       "exact, or some of resumed, recovered, counter-restarted and clock-changed, joined by +");
    case Field::EndReason:
        return setWord(record.endReason, endReasonFromText(value), value,
                       "unknown, user, network, unplugged, sleep or carrier");
    case Field::Start:
    case Field::End:
        return setTime(record, field, value);
    default:
        return setDecimal(record, field, value);
    }
}

void setNumber(Record &record, Field field, std::int64_t value)
{
    switch (field) {
    case Field::BytesUploaded:
        record.bytesUploaded = value;
        break;
    case Field::BytesDownloaded:
        record.bytesDownloaded = value;
        break;
    default:
        record.connectedSeconds = value;
    }
}

std::string missingNames(const FieldSet &present)
{
    std::string names;
    for (const Field field : requiredFields)
        if (!present[indexOf(field)])
            names += (names.empty() ? "" : ", ") + nameOf(field);
    return names;
}

void completeRecord(Record &record, const FieldSet &present, const std::string &formatName)
{
    if (!present[indexOf(Field::ConnectedSeconds)])
        record.connectedSeconds = record.end - record.start;
    if (!present[indexOf(Field::Origin)])
        record.origin = Origin::Imported;
    if (!present[indexOf(Field::OriginDetail)] && record.origin == Origin::Imported)
        record.originDetail = formatName;
}

} // namespace zelk
