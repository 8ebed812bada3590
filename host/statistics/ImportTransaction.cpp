// The transaction of an import; see HistoryInternal.h.
#include "HistoryInternal.h"

#include <SQLiteCpp/Column.h>

namespace zelk {
namespace {

/// All fields but the key, in a form that is equal for equal records alone.
std::string identity(const Record &record)
{
    std::string text;
    for (const std::string *part : {&record.profile, &record.profileName, &record.originDetail})
        text += std::to_string(part->size()) + ':' + *part;
    for (const std::int64_t number :
         {record.start, record.end, static_cast<std::int64_t>(record.endZoneOffset), record.connectedSeconds,
          record.bytesUploaded, record.bytesDownloaded, static_cast<std::int64_t>(record.origin),
          static_cast<std::int64_t>(record.quality), static_cast<std::int64_t>(record.endReason)})
        text += std::to_string(number) + ',';
    return text;
}

} // namespace

ImportTransaction::ImportTransaction(HistoryCore &history)
    : m_history(history)
    , m_transaction(history.file, Durability::PowerLoss)
    , m_lastKeyBefore(history.file.database().execAndGet("SELECT ifnull(max(key), 0) FROM records").getInt64())
{
}

bool ImportTransaction::addUnlessHeld(const Record &record)
{
    const std::int64_t held = countHeld(record);
    if (held > 0) {
        std::int64_t &unmatched = m_stillUnmatched.emplace(identity(record), held).first->second;
        if (unmatched > 0) {
            --unmatched;
            return false;
        }
    }
    m_history.insert(record);
    return true;
}

std::int64_t ImportTransaction::countHeld(const Record &record)
{
    StatementUse query(m_history.file,
                       "SELECT count(*) FROM records WHERE profile = ? AND start_time = ? AND end_time = ?"
                       " AND profile_name = ? AND end_zone_offset = ? AND connected_seconds = ?"
                       " AND bytes_uploaded = ? AND bytes_downloaded = ? AND origin = ? AND origin_detail = ?"
                       " AND quality = ? AND end_reason = ? AND key <= ?");
    query->bind(1, record.profile);
    query->bind(2, record.start);
    query->bind(3, record.end);
    query->bind(4, record.profileName);
    query->bind(5, record.endZoneOffset);
    query->bind(6, record.connectedSeconds);
    query->bind(7, record.bytesUploaded);
    query->bind(8, record.bytesDownloaded);
    query->bind(9, static_cast<int>(record.origin));
    query->bind(10, record.originDetail);
    query->bind(11, record.quality);
    query->bind(12, static_cast<int>(record.endReason));
    query->bind(13, m_lastKeyBefore);
    query->executeStep();
    return query->getColumn(0).getInt64();
}

} // namespace zelk
