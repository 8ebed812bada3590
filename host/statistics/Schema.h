// The tables of the history file and the numbered steps that lead from one version of them to the next.
#ifndef NETINFO_STATISTICS_SCHEMA_H
#define NETINFO_STATISTICS_SCHEMA_H

#include <SQLiteCpp/Database.h>

#include <cstdint>

namespace zelk {

/// "ZKST" in the file's header: this file is a connection history.
constexpr std::uint32_t historyApplicationId = 0x5A4B5354;

constexpr int recordsVersion = 1;         ///< The first version: records.
constexpr int openConnectionsVersion = 2; ///< Adds the open connections of a recorder.
constexpr int newestVersion = openConnectionsVersion;

int schemaVersion(SQLite::Database &database);

/// Brings the tables to the newest version, one transaction a step with the step's number in it, so that a process
/// killed half-way leaves the version before or the version after. Several processes may do so at once.
void migrateSchema(SQLite::Database &database);

} // namespace zelk

#endif
