#include "host/recorder/Tally.h"

#include <algorithm>
#include <cstdlib>

namespace recorder {

namespace {

// Returns whether the counter fell.
bool countOne(std::int64_t &total, std::int64_t &last, qint64 now)
{
    const bool fell = now < last;
    if (!fell)
        total += now - last;
    last = now;
    return fell;
}

} // namespace

void count(zelk::OpenConnection &row, const Counters &now)
{
    const bool sentFell = countOne(row.bytesUploaded, row.lastTx, now.sent);
    const bool receivedFell = countOne(row.bytesDownloaded, row.lastRx, now.received);
    if (sentFell || receivedFell)
        row.quality |= zelk::QualityCounterRestarted;
}

void countLast(zelk::OpenConnection &row, const Counters &last)
{
    count(row, {std::max<qint64>(row.lastTx, last.sent), std::max<qint64>(row.lastRx, last.received)});
}

zelk::Record finish(const zelk::OpenConnection &row, const Moment &end, zelk::EndReason reason)
{
    const std::int64_t durationMs = std::max<std::int64_t>(0, end.boot - row.startBootMs);
    const std::int64_t wallMs = end.wall - row.startWallMs;
    zelk::Record record;
    record.profile = row.profile;
    record.profileName = row.profileName == row.profile ? std::string() : row.profileName;
    record.quality = row.quality;
    record.start = row.startWallMs / 1000;
    record.end = end.wall / 1000;
    record.connectedSeconds = (durationMs + 500) / 1000;
    if (wallMs < 0 || std::abs(wallMs - durationMs) > clockToleranceMs) {
        record.start = std::max<std::int64_t>(0, record.end - record.connectedSeconds);
        record.quality |= zelk::QualityClockChanged;
    }
    // Whole seconds of wall time may be one fewer than the rounded duration.
    record.connectedSeconds = std::min(record.connectedSeconds, record.end - record.start);
    record.endZoneOffset = zoneOffset(end.wall);
    record.bytesUploaded = row.bytesUploaded;
    record.bytesDownloaded = row.bytesDownloaded;
    record.origin = zelk::Origin::Recorded;
    record.endReason = reason;
    return record;
}

} // namespace recorder
