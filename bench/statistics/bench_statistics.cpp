// What the statistics library costs beside bare SQLite on a copy of the same file, in the same process. Prints each
// ratio beside its bound and ends with status 1 when one is exceeded.
#include "Bounds.h"
#include "host/statistics/ConnectionHistory.h"
#include "statistics/ZelkStatistics.h"

#include <sqlite3.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int recordCount = 100000;
constexpr int removalCount = 10000;
constexpr std::int64_t firstStart = 1700000000;

/// A folder of this run's own, gone with it.
class Folder
{
public:
    Folder()
    {
        std::string name = (fs::temp_directory_path() / "bench-statistics-XXXXXX").string();
        if (!::mkdtemp(name.data()))
            throw std::runtime_error("no folder for the history files could be made");
        m_path = name;
    }
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    std::string file(const std::string &name) const { return (m_path / name).string(); }

private:
    fs::path m_path;
};

std::string s_original; ///< The history of recordCount records.
int s_copies = 0;

std::string freshCopy()
{
    const std::string path = s_original + std::to_string(++s_copies);
    fs::copy_file(s_original, path);
    return path;
}

void makeHistory(const std::string &path)
{
    std::vector<zelk::Record> records;
    for (int i = 0; i < recordCount; ++i) {
        zelk::Record record;
        record.profile = i % 3 == 0 ? "internet.provider.example" : "mobile";
        record.start = firstStart + i * std::int64_t{1800};
        record.end = record.start + 60 + i % 1500;
        record.connectedSeconds = 60 + i % 1500;
        record.bytesUploaded = 1000 + i * std::int64_t{37};
        record.bytesDownloaded = 5000000 + i * std::int64_t{1234};
        records.push_back(record);
    }
    zelk::ConnectionHistory(path).add(records);
}

sqlite3 *openBare(const std::string &path)
{
    sqlite3 *handle = nullptr;
    if (sqlite3_open(path.c_str(), &handle) != SQLITE_OK)
        throw std::runtime_error("the copy cannot be opened");
    sqlite3_exec(handle, "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA secure_delete = ON", nullptr,
                 nullptr, nullptr);
    return handle;
}

template <std::size_t Size> void writeNumber(char (&slot)[Size], std::int64_t number)
{
    *std::to_chars(slot, slot + Size - 1, number).ptr = '\0';
}

template <std::size_t Size> void writeText(char (&slot)[Size], std::string_view text)
{
    slot[text.copy(slot, Size - 1)] = '\0';
}

double secondsSince(std::chrono::steady_clock::time_point begin)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// Processor seconds of this thread: reading is all computing, so that a busy machine does not count.
double processorSeconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void libraryReadsAll(benchmark::State &state)
{
    ::setenv("NETINFO_HISTORY", s_original.c_str(), 1);
    for ([[maybe_unused]] const auto round : state) {
        const double begin = processorSeconds();
        _ZELK_ST_CONNRECORD *records = nullptr;
        int count = 0;
        if (ZELK_Statistics_GetAllConnRecord(&records, &count) != 0 || count != recordCount)
            state.SkipWithError("not all records were read");
        ZELK_Statistics_ReleaseConnRecord(records);
        state.SetIterationTime(processorSeconds() - begin);
    }
}

void bareReadsAll(benchmark::State &state)
{
    sqlite3 *const handle = openBare(s_original);
    sqlite3_stmt *rows = nullptr;
    sqlite3_prepare_v2(handle,
                       "SELECT profile, start_time, end_time, connected_seconds, bytes_uploaded, bytes_downloaded,"
                       " quality, end_reason FROM records ORDER BY key",
                       -1, &rows, nullptr);
    for ([[maybe_unused]] const auto round : state) {
        const double begin = processorSeconds();
        auto *const records = static_cast<_ZELK_ST_CONNRECORD *>(std::calloc(recordCount, sizeof(_ZELK_ST_CONNRECORD)));
        int count = 0;
        for (; count < recordCount && sqlite3_step(rows) == SQLITE_ROW; ++count) {
            _ZELK_ST_CONNRECORD &record = records[count];
            const void *const name = sqlite3_column_text16(rows, 0);
            std::memcpy(record.profile, name, static_cast<std::size_t>(sqlite3_column_bytes16(rows, 0)));
            writeNumber(record.startTime, sqlite3_column_int64(rows, 1));
            writeNumber(record.endTime, sqlite3_column_int64(rows, 2));
            writeNumber(record.connectedTime, sqlite3_column_int64(rows, 3));
            writeNumber(record.uploaded, sqlite3_column_int64(rows, 4));
            writeNumber(record.downloaded, sqlite3_column_int64(rows, 5));
            writeText(record.aux1, sqlite3_column_int(rows, 6) == 0 ? "exact" : "resumed");
            writeText(record.aux2, sqlite3_column_int(rows, 7) == 0 ? "unknown" : "user");
        }
        if (count != recordCount)
            state.SkipWithError("not all records were read");
        benchmark::DoNotOptimize(records);
        std::free(records);
        sqlite3_reset(rows);
        state.SetIterationTime(processorSeconds() - begin);
    }
    sqlite3_finalize(rows);
    sqlite3_close(handle);
}

void libraryRemovesFirst(benchmark::State &state)
{
    for ([[maybe_unused]] const auto round : state) {
        const std::string path = freshCopy();
        ::setenv("NETINFO_HISTORY", path.c_str(), 1);
        _ZELK_ST_CONNRECORD *records = nullptr;
        int count = 0;
        ZELK_Statistics_GetAllConnRecord(&records, &count);
        ZELK_Statistics_ReleaseConnRecord(records);
        long failures = 0;
        const auto begin = std::chrono::steady_clock::now();
        for (int i = 0; i < removalCount; ++i)
            failures += ZELK_Statistics_ConnRecord_RemoveRecord(0);
        state.SetIterationTime(secondsSince(begin));
        if (failures != 0 || zelk::ConnectionHistory(path).count() != recordCount - removalCount)
            state.SkipWithError("not all records were removed");
    }
}

void bareRemovesByKey(benchmark::State &state)
{
    for ([[maybe_unused]] const auto round : state) {
        sqlite3 *const handle = openBare(freshCopy());
        sqlite3_stmt *removal = nullptr;
        sqlite3_prepare_v2(handle, "DELETE FROM records WHERE key = ?", -1, &removal, nullptr);
        int removed = 0;
        const auto begin = std::chrono::steady_clock::now();
        for (int key = 1; key <= removalCount; ++key) {
            sqlite3_bind_int64(removal, 1, key);
            if (sqlite3_step(removal) == SQLITE_DONE)
                removed += sqlite3_changes(handle);
            sqlite3_reset(removal);
        }
        state.SetIterationTime(secondsSince(begin));
        sqlite3_finalize(removal);
        sqlite3_close(handle);
        if (removed != removalCount)
            state.SkipWithError("not all records were removed");
    }
}

/// A month of 31 days, day by day, as a page of bars asks for it.
void libraryTotals(benchmark::State &state)
{
    const zelk::ConnectionHistory history(s_original, zelk::ConnectionHistory::Access::ReadOnly);
    std::vector<std::int64_t> days;
    for (int day = 0; day <= 31; ++day)
        days.push_back(firstStart + (1000 + day) * std::int64_t{86400});
    for ([[maybe_unused]] const auto round : state) {
        if (history.totals(days).empty())
            state.SkipWithError("there are no totals");
    }
}

bool report(const ShortestTimes &times)
{
    bool isGood = !times.failed();
    std::printf("\n");
    isGood &= isWithin("read 100,000 records / bare SQLite loop", times.of("readAll/") / times.of("bareReadAll/"), 1.5);
    isGood &= isWithin("remove position 0 ten thousand times / deletions by key",
                       times.of("removeFirst/") / times.of("bareRemove/"), 3);
    isGood &= isWithin("daily totals of a month among 100,000 records, ms", times.of("totals/"), 10);
    return isGood;
}

benchmark::internal::Benchmark *addBenchmark(const char *name, void (*function)(benchmark::State &))
{
    return benchmark::RegisterBenchmark(name, function)->Iterations(1)->Repetitions(5)->Unit(benchmark::kMillisecond);
}

bool measure(int argc, char **argv)
{
    const Folder folder;
    s_original = folder.file("history.sqlite");
    makeHistory(s_original);

    std::vector<char *> arguments(argv, argv + argc);
    char interleave[] = "--benchmark_enable_random_interleaving=true"; // floor and library under the same disturbances
    arguments.push_back(interleave);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    addBenchmark("readAll", libraryReadsAll)->UseManualTime();
    addBenchmark("bareReadAll", bareReadsAll)->UseManualTime();
    addBenchmark("removeFirst", libraryRemovesFirst)->UseManualTime();
    addBenchmark("bareRemove", bareRemovesByKey)->UseManualTime();
    addBenchmark("totals", libraryTotals)->UseRealTime();

    ShortestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    return report(times);
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return measure(argc, argv) ? 0 : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "bench_statistics: %s\n", error.what());
        return 2;
    }
}
