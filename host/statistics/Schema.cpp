// See Schema.h. A step that has been released is never edited; a change of the tables is a further step.
#include "Schema.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Transaction.h>

#include <array>
#include <string>

namespace zelk {
namespace {

// Keys are never used again (AUTOINCREMENT), or a key remembered by another process could come to mean another record.
// `upkeep` counts removals and those among them whose traces are known to be gone from the file.
constexpr const char *createRecords = R"sql(
    PRAGMA application_id = 0x5A4B5354;
    CREATE TABLE records (
        key INTEGER PRIMARY KEY AUTOINCREMENT,
        profile TEXT NOT NULL,
        profile_name TEXT NOT NULL,
        start_time INTEGER NOT NULL,
        end_time INTEGER NOT NULL,
        end_zone_offset INTEGER NOT NULL,
        connected_seconds INTEGER NOT NULL,
        bytes_uploaded INTEGER NOT NULL,
        bytes_downloaded INTEGER NOT NULL,
        origin INTEGER NOT NULL,
        origin_detail TEXT NOT NULL,
        quality INTEGER NOT NULL,
        end_reason INTEGER NOT NULL
    ) STRICT;
    CREATE INDEX records_by_start ON records (start_time);
    CREATE INDEX records_by_end ON records (end_time);
    CREATE INDEX records_by_profile ON records (profile, start_time);
    CREATE TABLE upkeep (removed INTEGER NOT NULL, scrubbed INTEGER NOT NULL) STRICT;
    INSERT INTO upkeep VALUES (0, 0);
)sql";

constexpr const char *createOpenConnections = R"sql(
    CREATE TABLE open_connections (
        key INTEGER PRIMARY KEY AUTOINCREMENT,
        profile TEXT NOT NULL,
        profile_name TEXT NOT NULL,
        profile_uuid TEXT NOT NULL,
        type TEXT NOT NULL,
        interface_name TEXT NOT NULL,
        interface_index INTEGER NOT NULL,
        boot_id TEXT NOT NULL,
        service_owner TEXT NOT NULL,
        active_path TEXT NOT NULL,
        start_wall_ms INTEGER NOT NULL,
        start_boot_ms INTEGER NOT NULL,
        seen_wall_ms INTEGER NOT NULL,
        seen_boot_ms INTEGER NOT NULL,
        last_tx INTEGER NOT NULL,
        last_rx INTEGER NOT NULL,
        bytes_uploaded INTEGER NOT NULL,
        bytes_downloaded INTEGER NOT NULL,
        quality INTEGER NOT NULL
    ) STRICT;
)sql";

constexpr std::array<const char *, newestVersion> steps = {createRecords, createOpenConnections};

} // namespace

int schemaVersion(SQLite::Database &database)
{
    return database.execAndGet("PRAGMA user_version").getInt();
}

void migrateSchema(SQLite::Database &database)
{
    while (schemaVersion(database) < newestVersion) {
        SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
        // Asked again under the lock: another process may have taken this step meanwhile.
        const int version = schemaVersion(database);
        if (version < newestVersion) {
            database.exec(steps.at(static_cast<std::size_t>(version)));
            database.exec("PRAGMA user_version = " + std::to_string(version + 1));
        }
        transaction.commit();
    }
}

} // namespace zelk
