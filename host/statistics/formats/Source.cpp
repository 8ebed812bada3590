// The steps that all import formats share: choosing the reader, messages with their place, moving times.
#include "Source.h"
#include "RecordCheck.h"
#include "TimeText.h"

#include <algorithm>
#include <istream>

namespace zelk {
namespace {

constexpr std::int64_t secondsADay = 86400;

// Whole days keep the time of day in UTC; where a change of summer time lies between, the local date can still miss by
// one, which one more day mends.
std::int64_t shiftFor(std::int64_t latestEnd, std::int64_t shiftTo)
{
    const std::int64_t yesterday = localDay(shiftTo) - 1;
    std::int64_t days = yesterday - localDay(latestEnd);
    days += yesterday - localDay(latestEnd + days * secondsADay);
    return days * secondsADay;
}

void shift(std::vector<SourceRecord> &records, std::int64_t shiftTo)
{
    const auto latest = std::max_element(records.begin(), records.end(), [](const auto &left, const auto &right) {
        return left.record.end < right.record.end;
    });
    if (latest == records.end())
        return;
    const std::int64_t seconds = shiftFor(latest->record.end, shiftTo);
    for (SourceRecord &source : records) {
        source.record.start += seconds;
        source.record.end += seconds;
    }
}

Source readFormat(std::istream &input, const ImportOptions &options)
{
    switch (options.format) {
    case FileFormat::Csv:
        return readCsv(input, options);
    case FileFormat::Json:
        return readJson(input, options);
    case FileFormat::Pppd:
        return readPppd(input, options);
    }
    throw HistoryError(ResultCode::Failed, "The import format is not known.");
}

} // namespace

Source readSource(std::istream &input, const ImportOptions &options)
{
    Source source = readFormat(input, options);
    if (input.bad())
        throw HistoryError(ResultCode::Failed, "Cannot read " + options.sourceName + "; is it a file?");
    if (options.shiftTo != 0)
        shift(source.records, options.shiftTo);
    return source;
}

void append(Source &source, Record record, std::uint64_t line, const ImportOptions &options)
{
    const auto start = formatRfc3339({record.start, record.endZoneOffset});
    const auto end = formatRfc3339({record.end, record.endZoneOffset});
    if (record.end < record.start && start && end)
        failAt(options, line, "the end, " + *end + ", is before the start, " + *start);
    try {
        checkRecord(record);
    } catch (const HistoryError &error) {
        failAt(options, line, error.what());
    }
    source.records.push_back({std::move(record), line});
}

std::string place(const ImportOptions &options, std::uint64_t line)
{
    return (options.sourceName.empty() ? "line " : options.sourceName + ":") + std::to_string(line) + ": ";
}

void failAt(const ImportOptions &options, std::uint64_t line, const std::string &message)
{
    throw HistoryError(ResultCode::ImportFailed, place(options, line) + message);
}

} // namespace zelk
