// The public operations on records. What they share is in HistoryInternal.h.
#include "ConnectionHistory.h"

#include "HistoryInternal.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Exception.h>

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <map>
#include <string_view>

namespace zelk {
namespace {

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

std::string homeFolder()
{
    const std::string home = environment("HOME");
    if (!home.empty())
        return home;
    const passwd *user = ::getpwuid(::getuid());
    return user == nullptr || user->pw_dir == nullptr ? "/" : user->pw_dir;
}

/// Sums stop at the largest number instead of wrapping round.
void addTo(std::int64_t &sum, std::int64_t value)
{
    if (value > std::numeric_limits<std::int64_t>::max() - sum)
        sum = std::numeric_limits<std::int64_t>::max();
    else
        sum += value;
}

using TotalsByProfile = std::map<std::string, PeriodTotal, std::less<>>;

PeriodTotal &totalOf(TotalsByProfile &totals, std::string_view profile, std::int64_t periodStart)
{
    const auto found = totals.find(profile);
    if (found != totals.end())
        return found->second;
    PeriodTotal total;
    total.profile = profile;
    total.periodStart = periodStart;
    return totals.emplace(total.profile, total).first->second;
}

/// Adds every record that starts within the boundaries to the totals of its period.
void addUp(HistoryFile &file, const std::vector<std::int64_t> &boundaries, const std::optional<std::string> &profile,
           std::vector<TotalsByProfile> &periods)
{
    if (file.version() == 0)
        return;
    const std::string condition = profile ? " AND profile = ?" : "";
    SQLite::Statement query(file.database(),
                            "SELECT profile, start_time, connected_seconds, bytes_uploaded, bytes_downloaded"
                            " FROM records WHERE start_time >= ? AND start_time < ?" +
                                condition);
    query.bind(1, boundaries.front());
    query.bind(2, boundaries.back());
    if (profile)
        query.bind(3, *profile);
    while (query.executeStep()) {
        const auto next = std::upper_bound(boundaries.begin(), boundaries.end(), query.getColumn(1).getInt64());
        const auto period = static_cast<std::size_t>(next - boundaries.begin()) - 1;
        PeriodTotal &total = totalOf(periods[period], query.getColumn(0).getText(), boundaries[period]);
        ++total.connections;
        addTo(total.connectedSeconds, query.getColumn(2).getInt64());
        addTo(total.bytesUploaded, query.getColumn(3).getInt64());
        addTo(total.bytesDownloaded, query.getColumn(4).getInt64());
    }
}

} // namespace

std::string ConnectionHistory::defaultPath()
{
    const std::string named = environment("NETINFO_HISTORY");
    if (!named.empty())
        return named;
    std::string folder = environment("XDG_DATA_HOME");
    if (folder.empty() || folder.front() != '/') // A relative one is to be ignored, says the base directory convention.
        folder = homeFolder() + "/.local/share";
    return folder + "/netinfo/history.sqlite";
}

ConnectionHistory::ConnectionHistory(const std::string &path, Access access)
    : d(std::make_unique<Private>(path, access))
{
}

ConnectionHistory::~ConnectionHistory() = default;

const std::string &ConnectionHistory::path() const
{
    return d->file.path();
}

std::int64_t ConnectionHistory::add(const Record &record)
{
    const std::int64_t key = d->file.run([&] {
        WriteTransaction transaction(d->file, Durability::PowerLoss);
        const std::int64_t added = d->insert(record);
        transaction.commit();
        return added;
    });
    d->scrubNowAndThen();
    return key;
}

void ConnectionHistory::add(const std::vector<Record> &records)
{
    d->file.run([&] {
        WriteTransaction transaction(d->file, Durability::PowerLoss);
        for (const Record &record : records)
            d->insert(record);
        transaction.commit();
    });
    d->scrubNowAndThen();
}

bool ConnectionHistory::remove(std::int64_t key)
{
    const bool removed = d->file.run([&] { return d->remove(key); });
    d->scrubNowAndThen();
    return removed;
}

std::vector<Record> ConnectionHistory::list(const Filter &filter) const
{
    std::vector<Record> records;
    d->file.run([&] { d->forEach(filter, [&records](const Record &record) { records.push_back(record); }); });
    d->scrubNowAndThen();
    return records;
}

std::optional<Record> ConnectionHistory::last() const
{
    return d->file.run([&] { return d->last(); });
}

std::int64_t ConnectionHistory::count() const
{
    return d->file.run([&]() -> std::int64_t {
        if (d->file.version() == 0)
            return 0;
        return d->file.database().execAndGet("SELECT count(*) FROM records").getInt64();
    });
}

std::vector<PeriodTotal> ConnectionHistory::totals(const std::vector<std::int64_t> &boundaries,
                                                   const std::optional<std::string> &profile) const
{
    if (boundaries.size() < 2)
        return {};
    if (!std::is_sorted(boundaries.begin(), boundaries.end()))
        throw HistoryError(ResultCode::InvalidRecord, "The boundaries of the periods are not in ascending order.");
    std::vector<TotalsByProfile> periods(boundaries.size() - 1);
    d->file.run([&] { addUp(d->file, boundaries, profile, periods); });
    std::vector<PeriodTotal> totals;
    for (const TotalsByProfile &period : periods) {
        for (const auto &entry : period)
            totals.push_back(entry.second);
    }
    return totals;
}

std::vector<std::string> ConnectionHistory::profiles() const
{
    // One step in the index a profile, however many records there are.
    constexpr const char *distinct =
        "WITH RECURSIVE names(name) AS (SELECT min(profile) FROM records UNION ALL"
        " SELECT (SELECT min(profile) FROM records WHERE profile > name) FROM names WHERE name IS NOT NULL)"
        " SELECT name FROM names WHERE name IS NOT NULL";
    return d->file.run([&] {
        std::vector<std::string> names;
        if (d->file.version() == 0)
            return names;
        for (StatementUse query(d->file, distinct); query->executeStep();)
            names.push_back(query->getColumn(0).getString());
        return names;
    });
}

std::int64_t ConnectionHistory::dataVersion() const
{
    return d->file.run([&] {
        const std::int64_t changes =
            d->file.version() == 0 ? 0 : d->file.database().execAndGet("PRAGMA data_version").getInt64();
        return (static_cast<std::int64_t>(d->file.generation()) << 32) + changes;
    });
}

} // namespace zelk
