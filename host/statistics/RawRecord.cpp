// See RawRecord.h. Reading everything is what the history page waits for at every start, so rows go straight from
// SQLite's row into the array, without the detour over Record and SQLiteCpp's column objects.
#include "RawRecord.h"

#include "Utf.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>

namespace zelk {
namespace {

constexpr std::size_t textSlot = 32;
constexpr std::size_t nameUnits = 127;

struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using RowReader = std::unique_ptr<sqlite3_stmt, Finalize>;

/// Fills a zeroed record.
struct RawFields {
    std::string_view profile;
    std::int64_t start;
    std::int64_t end;
    std::int64_t connectedSeconds;
    std::int64_t uploaded;
    std::int64_t downloaded;
    unsigned quality;
    EndReason endReason;
};

void putNumber(char (&slot)[textSlot], std::int64_t number)
{
    std::to_chars(slot, slot + textSlot - 1, number);
}

void putText(char (&slot)[textSlot], std::string_view text)
{
    text.copy(slot, textSlot - 1);
}

void putName(std::uint16_t (&slot)[nameUnits + 1], std::string_view name)
{
    utf8ToUtf16(name, slot, nameUnits);
}

void fill(_ZELK_ST_CONNRECORD &raw, const RawFields &fields)
{
    putName(raw.profile, fields.profile);
    putNumber(raw.startTime, fields.start);
    putNumber(raw.endTime, fields.end);
    putNumber(raw.connectedTime, fields.connectedSeconds);
    putNumber(raw.uploaded, fields.uploaded);
    putNumber(raw.downloaded, fields.downloaded);
    putText(raw.aux1, qualityToRawText(fields.quality));
    putText(raw.aux2, endReasonToText(fields.endReason));
}

RawFields fieldsOf(sqlite3_stmt *row)
{
    const auto *name = reinterpret_cast<const char *>(sqlite3_column_text(row, 1));
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(row, 1));
    return {std::string_view(name == nullptr ? "" : name, name == nullptr ? 0 : length),
            sqlite3_column_int64(row, 2),
            sqlite3_column_int64(row, 3),
            sqlite3_column_int64(row, 4),
            sqlite3_column_int64(row, 5),
            sqlite3_column_int64(row, 6),
            static_cast<unsigned>(sqlite3_column_int(row, 7)),
            static_cast<EndReason>(sqlite3_column_int(row, 8))};
}

RowReader prepareRows(sqlite3 *handle)
{
    sqlite3_stmt *statement = nullptr;
    const int result =
        sqlite3_prepare_v2(handle,
                           "SELECT key, profile, start_time, end_time, connected_seconds, bytes_uploaded,"
                           " bytes_downloaded, quality, end_reason FROM records ORDER BY key",
                           -1, &statement, nullptr);
    if (result != SQLITE_OK)
        throw SQLite::Exception(handle, result);
    return RowReader(statement);
}

void allocate(RawRecords &records, std::size_t count)
{
    // At least one, so that the array of an empty history is freed like any other.
    void *memory = std::calloc(std::max<std::size_t>(count, 1), sizeof(_ZELK_ST_CONNRECORD));
    if (memory == nullptr)
        throw std::bad_alloc();
    records.array.reset(static_cast<_ZELK_ST_CONNRECORD *>(memory));
    records.keys.reserve(count);
}

void readRows(sqlite3 *handle, RawRecords &records, std::size_t count)
{
    const RowReader rows = prepareRows(handle);
    int result = SQLITE_ROW;
    while (records.keys.size() < count && (result = sqlite3_step(rows.get())) == SQLITE_ROW) {
        fill(records.array[records.keys.size()], fieldsOf(rows.get()));
        records.keys.push_back(sqlite3_column_int64(rows.get(), 0));
    }
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        throw SQLite::Exception(handle, result);
}

} // namespace

RawRecords readRawRecords(HistoryCore &history)
{
    return history.file.run([&history] {
        RawRecords records;
        if (history.file.version() == 0) {
            allocate(records, 0);
            return records;
        }
        SQLite::Database &database = history.file.database();
        SQLite::Transaction snapshot(database); // Counted and read as of one moment.
        const std::int64_t count = database.execAndGet("SELECT count(*) FROM records").getInt64();
        if (count > std::numeric_limits<int>::max())
            throw std::bad_alloc();
        allocate(records, static_cast<std::size_t>(count));
        readRows(database.getHandle(), records, static_cast<std::size_t>(count));
        return records;
    });
}

_ZELK_ST_CONNRECORD toRawRecord(const Record &record)
{
    _ZELK_ST_CONNRECORD raw{};
    fill(raw, {record.profile, record.start, record.end, record.connectedSeconds, record.bytesUploaded,
               record.bytesDownloaded, record.quality, record.endReason});
    return raw;
}

} // namespace zelk
