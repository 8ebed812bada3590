// The fields of a record as the CSV columns and the JSON members name them, and the writing of their values.
#ifndef NETINFO_STATISTICS_FORMATS_FIELDS_H
#define NETINFO_STATISTICS_FORMATS_FIELDS_H

#include "Source.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelk {

/// In the order in which they are written.
enum class Field {
    Profile,
    ProfileName,
    Start,
    End,
    ConnectedSeconds,
    BytesUploaded,
    BytesDownloaded,
    Origin,
    OriginDetail,
    Quality,
    EndReason
};

constexpr std::size_t fieldCount = 11;
using FieldSet = std::bitset<fieldCount>;

/// "profile", "profile_name", "start" and so on; and the way back.
const std::array<std::string, fieldCount> &fieldNames();
std::optional<Field> fieldNamed(std::string_view name);

inline const std::string &nameOf(Field field)
{
    return fieldNames()[static_cast<std::size_t>(field)];
}
inline std::size_t indexOf(Field field)
{
    return static_cast<std::size_t>(field);
}

/// Whether the value of a field is free text, or a whole number.
bool isText(Field field);
bool isNumber(Field field);

/// The value of a field that is no number, as text; and that of a number.
std::string textOf(const Record &record, Field field);
std::int64_t numberOf(const Record &record, Field field);

/// Puts a value into the record. The text of a number is decimal. What is wrong with it otherwise, in words that follow
/// the field's name ("is not a whole number").
std::optional<std::string> setText(Record &record, Field field, const std::string &value);
void setNumber(Record &record, Field field, std::int64_t value);

/// The names, among those that no record can do without, that are not in a set; "" when none is missing.
std::string missingNames(const FieldSet &present);

/// Fills in what the input left out: the connected time is that between the times, the origin the import itself.
void completeRecord(Record &record, const FieldSet &present, const std::string &formatName);

} // namespace zelk

#endif
