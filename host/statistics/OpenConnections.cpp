// The open connections of a recorder: rows that outlive a crash and become records when the connection ends.
#include "ConnectionHistory.h"

#include "HistoryInternal.h"
#include "RecordCheck.h"
#include "Schema.h"

#include <SQLiteCpp/Column.h>

namespace zelk {
namespace {

constexpr const char *insertOpen =
    "INSERT INTO open_connections (profile, profile_name, profile_uuid, type, interface_name, interface_index, boot_id,"
    " service_owner, active_path, start_wall_ms, start_boot_ms, seen_wall_ms, seen_boot_ms, last_tx, last_rx,"
    " bytes_uploaded, bytes_downloaded, quality) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";
constexpr const char *updateOpen =
    "UPDATE open_connections SET profile = ?, profile_name = ?, profile_uuid = ?, type = ?, interface_name = ?,"
    " interface_index = ?, boot_id = ?, service_owner = ?, active_path = ?, start_wall_ms = ?, start_boot_ms = ?,"
    " seen_wall_ms = ?, seen_boot_ms = ?, last_tx = ?, last_rx = ?, bytes_uploaded = ?, bytes_downloaded = ?,"
    " quality = ? WHERE key = ?";
constexpr const char *selectOpen =
    "SELECT key, profile, profile_name, profile_uuid, type, interface_name, interface_index, boot_id, service_owner,"
    " active_path, start_wall_ms, start_boot_ms, seen_wall_ms, seen_boot_ms, last_tx, last_rx, bytes_uploaded,"
    " bytes_downloaded, quality FROM open_connections ORDER BY key";
constexpr int keyParameter = 19;

void bindAll(SQLite::Statement &statement, const OpenConnection &connection)
{
    statement.bind(1, connection.profile);
    statement.bind(2, connection.profileName);
    statement.bind(3, connection.profileUuid);
    statement.bind(4, connection.type);
    statement.bind(5, connection.interfaceName);
    statement.bind(6, connection.interfaceIndex);
    statement.bind(7, connection.bootId);
    statement.bind(8, connection.serviceOwner);
    statement.bind(9, connection.activePath);
    statement.bind(10, connection.startWallMs);
    statement.bind(11, connection.startBootMs);
    statement.bind(12, connection.seenWallMs);
    statement.bind(13, connection.seenBootMs);
    statement.bind(14, connection.lastTx);
    statement.bind(15, connection.lastRx);
    statement.bind(16, connection.bytesUploaded);
    statement.bind(17, connection.bytesDownloaded);
    statement.bind(18, connection.quality);
}

OpenConnection readOpen(SQLite::Statement &row)
{
    OpenConnection connection;
    connection.key = row.getColumn(0).getInt64();
    connection.profile = row.getColumn(1).getString();
    connection.profileName = row.getColumn(2).getString();
    connection.profileUuid = row.getColumn(3).getString();
    connection.type = row.getColumn(4).getString();
    connection.interfaceName = row.getColumn(5).getString();
    connection.interfaceIndex = row.getColumn(6).getInt();
    connection.bootId = row.getColumn(7).getString();
    connection.serviceOwner = row.getColumn(8).getString();
    connection.activePath = row.getColumn(9).getString();
    connection.startWallMs = row.getColumn(10).getInt64();
    connection.startBootMs = row.getColumn(11).getInt64();
    connection.seenWallMs = row.getColumn(12).getInt64();
    connection.seenBootMs = row.getColumn(13).getInt64();
    connection.lastTx = row.getColumn(14).getInt64();
    connection.lastRx = row.getColumn(15).getInt64();
    connection.bytesUploaded = row.getColumn(16).getInt64();
    connection.bytesDownloaded = row.getColumn(17).getInt64();
    connection.quality = row.getColumn(18).getUInt();
    return connection;
}

} // namespace

std::int64_t ConnectionHistory::openConnection(const OpenConnection &connection)
{
    checkOpenConnection(connection);
    return d->file.run([&] {
        WriteTransaction transaction(d->file, Durability::ProcessDeath);
        StatementUse statement(d->file, insertOpen);
        bindAll(*statement, connection);
        statement->exec();
        const std::int64_t key = d->file.database().getLastInsertRowid();
        transaction.commit();
        return key;
    });
}

void ConnectionHistory::checkpoint(const OpenConnection &connection)
{
    checkOpenConnection(connection);
    d->file.run([&] {
        WriteTransaction transaction(d->file, Durability::ProcessDeath);
        StatementUse statement(d->file, updateOpen);
        bindAll(*statement, connection);
        statement->bind(keyParameter, connection.key);
        if (statement->exec() == 0)
            throw HistoryError(ResultCode::NoSuchRecord, "The open connection " + std::to_string(connection.key) +
                                                             " has been closed or was never opened.");
        transaction.commit();
    });
}

std::optional<std::int64_t> ConnectionHistory::closeConnection(std::int64_t key, const Record &record)
{
    return d->file.run([&]() -> std::optional<std::int64_t> {
        WriteTransaction transaction(d->file, Durability::PowerLoss);
        StatementUse statement(d->file, "DELETE FROM open_connections WHERE key = ?");
        statement->bind(1, key);
        if (statement->exec() == 0)
            return std::nullopt;
        const std::int64_t added = d->insert(record);
        transaction.commit();
        return added;
    });
}

std::vector<OpenConnection> ConnectionHistory::openConnections() const
{
    return d->file.run([&] {
        std::vector<OpenConnection> connections;
        if (d->file.version() < openConnectionsVersion)
            return connections;
        for (StatementUse query(d->file, selectOpen); query->executeStep();)
            connections.push_back(readOpen(*query));
        return connections;
    });
}

} // namespace zelk
