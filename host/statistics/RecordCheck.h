// What a record must satisfy before it may enter the history.
#ifndef NETINFO_STATISTICS_RECORDCHECK_H
#define NETINFO_STATISTICS_RECORDCHECK_H

#include "ConnectionHistory.h"

#include <cstdint>

namespace zelk {

constexpr std::size_t maxNameBytes = 1024;                ///< Of any name, in UTF-8.
constexpr std::int64_t maxTime = 253402214399;            ///< 9999-12-30 23:59:59: RFC 3339 can write it in any zone.
constexpr std::int64_t maxAmount = std::int64_t(1) << 53; ///< Readers take amounts as double: exact up to here.
constexpr std::int64_t durationSlack = 60;                ///< Logs round durations; beyond a minute it is a mistake.
constexpr std::int32_t maxZoneOffset = 86340;             ///< Under a day and in whole minutes, as RFC 3339 writes it.

/// Throws HistoryError(InvalidRecord), which names the value and the limit, for the first value that is out of range.
void checkRecord(const Record &record);
void checkOpenConnection(const OpenConnection &connection);

} // namespace zelk

#endif
