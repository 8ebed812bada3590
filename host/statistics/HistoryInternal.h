// What the parts of the library share about a history: its file, and reading and writing records in it. Not installed;
// whoever implements a further member of ConnectionHistory, such as an import, begins here.
//
// Every public member wraps its work in `d->file.run([&] { ... })`, which turns SQLite's exceptions into HistoryErrors.
#ifndef NETINFO_STATISTICS_HISTORYINTERNAL_H
#define NETINFO_STATISTICS_HISTORYINTERNAL_H

#include "ConnectionHistory.h"
#include "HistoryFile.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace zelk {

/// The state of an open history. ConnectionHistory::Private is nothing but this under the name that its header knows.
class HistoryCore
{
public:
    HistoryCore(const std::string &path, ConnectionHistory::Access access);
    ~HistoryCore();
    HistoryCore(const HistoryCore &) = delete;
    HistoryCore &operator=(const HistoryCore &) = delete;

    HistoryFile file;

    /// Checks the record and adds it within the caller's transaction; returns its key.
    std::int64_t insert(const Record &record);
    /// Hands every record that the filter lets through to `visit`, in the order of adding, one at a time. What `visit`
    /// throws ends the reading and comes through.
    void forEach(const Filter &filter, const std::function<void(const Record &)> &visit);

    std::optional<Record> last();
    bool remove(std::int64_t key);
    /// Removes what deleted records left behind in the file and its log, unless that was done a moment ago: it costs a
    /// pass over the file. To be called outside transactions, at the end of an operation.
    void scrubNowAndThen() noexcept;

private:
    using Clock = std::chrono::steady_clock;

    bool isEmpty();
    bool hasTraces();
    void scrub() noexcept;
    bool overwriteTraces();

    bool m_scrubIsDue = false;
    Clock::time_point m_scrubbedAt{};
    Clock::duration m_scrubCost{};
};

struct ConnectionHistory::Private : HistoryCore {
    using HistoryCore::HistoryCore;
};

/// All of an import: either commit() is reached or nothing of it stays. Throws SQLite's exceptions as well as
/// HistoryErrors, so it belongs into HistoryFile::run().
class ImportTransaction
{
public:
    explicit ImportTransaction(HistoryCore &history);

    /// Adds the record unless the history held an equal one (everything but the key) before this import began, and
    /// returns whether it added it. Two equal records in the input need two in the history to be left out both.
    bool addUnlessHeld(const Record &record);
    /// Durable when it returns.
    void commit() { m_transaction.commit(); }

private:
    std::int64_t countHeld(const Record &record);

    HistoryCore &m_history;
    WriteTransaction m_transaction;
    std::int64_t m_lastKeyBefore;
    std::map<std::string, std::int64_t> m_stillUnmatched; ///< Held records that no input record has met yet.
};

} // namespace zelk

#endif
