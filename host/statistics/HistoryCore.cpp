// Reading, adding and removing records, and leaving no trace of removed ones.
#include "HistoryInternal.h"

#include "RecordCheck.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Exception.h>

namespace zelk {
namespace {

constexpr const char *insertRecord =
    "INSERT INTO records (profile, profile_name, start_time, end_time, end_zone_offset, connected_seconds,"
    " bytes_uploaded, bytes_downloaded, origin, origin_detail, quality, end_reason)"
    " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";
constexpr const char *selectRecords =
    "SELECT key, profile, profile_name, start_time, end_time, end_zone_offset, connected_seconds,"
    " bytes_uploaded, bytes_downloaded, origin, origin_detail, quality, end_reason FROM records";

/// Scrubbing may take this share of the time at most, or removing many records one by one would take for ever.
constexpr int scrubShare = 20;

Record readRecord(SQLite::Statement &row)
{
    Record record;
    record.key = row.getColumn(0).getInt64();
    record.profile = row.getColumn(1).getString();
    record.profileName = row.getColumn(2).getString();
    record.start = row.getColumn(3).getInt64();
    record.end = row.getColumn(4).getInt64();
    record.endZoneOffset = row.getColumn(5).getInt();
    record.connectedSeconds = row.getColumn(6).getInt64();
    record.bytesUploaded = row.getColumn(7).getInt64();
    record.bytesDownloaded = row.getColumn(8).getInt64();
    record.origin = static_cast<Origin>(row.getColumn(9).getInt());
    record.originDetail = row.getColumn(10).getString();
    record.quality = row.getColumn(11).getUInt();
    record.endReason = static_cast<EndReason>(row.getColumn(12).getInt());
    return record;
}

std::string conditions(const Filter &filter)
{
    std::string text;
    const auto add = [&text](const char *condition) {
        text += (text.empty() ? " WHERE " : " AND ") + std::string(condition);
    };
    if (filter.profile)
        add("profile = :profile");
    if (filter.startFrom)
        add("start_time >= :from");
    if (filter.startBefore)
        add("start_time < :before");
    return text;
}

void bindFilter(SQLite::Statement &query, const Filter &filter)
{
    if (filter.profile)
        query.bind(":profile", *filter.profile);
    if (filter.startFrom)
        query.bind(":from", *filter.startFrom);
    if (filter.startBefore)
        query.bind(":before", *filter.startBefore);
}

} // namespace

HistoryCore::HistoryCore(const std::string &path, ConnectionHistory::Access access) : file(path, access)
{
    m_scrubIsDue = file.run([this] { return hasTraces(); });
}

HistoryCore::~HistoryCore()
{
    scrub();
}

std::int64_t HistoryCore::insert(const Record &record)
{
    checkRecord(record);
    StatementUse statement(file, insertRecord);
    statement->bind(1, record.profile);
    statement->bind(2, record.profileName);
    statement->bind(3, record.start);
    statement->bind(4, record.end);
    statement->bind(5, record.endZoneOffset);
    statement->bind(6, record.connectedSeconds);
    statement->bind(7, record.bytesUploaded);
    statement->bind(8, record.bytesDownloaded);
    statement->bind(9, static_cast<int>(record.origin));
    statement->bind(10, record.originDetail);
    statement->bind(11, record.quality);
    statement->bind(12, static_cast<int>(record.endReason));
    statement->exec();
    return file.database().getLastInsertRowid();
}

void HistoryCore::forEach(const Filter &filter, const std::function<void(const Record &)> &visit)
{
    if (file.version() == 0)
        return;
    SQLite::Statement query(file.database(), selectRecords + conditions(filter) + " ORDER BY key");
    bindFilter(query, filter);
    while (query.executeStep())
        visit(readRecord(query));
}

std::optional<Record> HistoryCore::last()
{
    if (file.version() == 0)
        return std::nullopt;
    SQLite::Statement query(file.database(), std::string(selectRecords) + " ORDER BY end_time DESC, key DESC LIMIT 1");
    if (!query.executeStep())
        return std::nullopt;
    return readRecord(query);
}

bool HistoryCore::remove(std::int64_t key)
{
    WriteTransaction transaction(file, Durability::ProcessDeath);
    StatementUse removal(file, "DELETE FROM records WHERE key = ?");
    removal->bind(1, key);
    if (removal->exec() == 0)
        return false;
    StatementUse(file, "UPDATE upkeep SET removed = removed + 1")->exec();
    transaction.commit();
    m_scrubIsDue = true;
    if (isEmpty())
        m_scrubCost = {}; // All are gone, which costs nothing to scrub: now, whenever the last time was.
    return true;
}

bool HistoryCore::isEmpty()
{
    StatementUse query(file, "SELECT 1 FROM records LIMIT 1");
    return !query->executeStep();
}

bool HistoryCore::hasTraces()
{
    if (!file.isWritable())
        return false;
    StatementUse query(file, "SELECT removed <> scrubbed FROM upkeep");
    return query->executeStep() && query->getColumn(0).getInt() != 0;
}

void HistoryCore::scrubNowAndThen() noexcept
{
    if (m_scrubIsDue && Clock::now() - m_scrubbedAt >= m_scrubCost * scrubShare)
        scrub();
}

void HistoryCore::scrub() noexcept
{
    if (!m_scrubIsDue)
        return;
    const Clock::time_point begun = Clock::now();
    try {
        m_scrubIsDue = !file.run([this] { return overwriteTraces(); });
    } catch (const std::exception &) { // NOLINT(bugprone-empty-catch): the records are gone; the rest can wait.
    }
    m_scrubbedAt = Clock::now();
    m_scrubCost = m_scrubbedAt - begun;
}

/// SQLite overwrites deleted records with zeros where they lay, but neither the copies that it left in the gaps of
/// pages when it moved records about nor those in the log. So the file is written anew and the log cut.
bool HistoryCore::overwriteTraces()
{
    SQLite::Database &database = file.database();
    const std::int64_t removed = database.execAndGet("SELECT removed FROM upkeep").getInt64();
    database.exec("VACUUM");
    const bool logIsInUse = database.execAndGet("PRAGMA wal_checkpoint(TRUNCATE)").getInt() != 0;
    if (logIsInUse)
        return false;
    SQLite::Statement done(database, "UPDATE upkeep SET scrubbed = ?");
    done.bind(1, removed);
    done.exec();
    return true;
}

} // namespace zelk
