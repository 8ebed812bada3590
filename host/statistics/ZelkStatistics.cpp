// The four C functions of the contract, over a history that is opened at the first call.
//
// Positions are remembered here: those of the array last handed out, less what was removed through here since. When
// nothing was handed out yet, they are those of the records as they are at the first removal.
#include <statistics/ZelkStatistics.h>

#include "HistoryInternal.h"
#include "Positions.h"
#include "RawRecord.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <mutex>
#include <string>

namespace zelk {
namespace {

class Service
{
public:
    _ZELK_ST_CONNRECORD *readAll(int &count);
    _ZELK_ST_CONNRECORD readLast();
    void remove(int position);

private:
    HistoryCore &historyToRead();
    HistoryCore &historyToWrite();
    HistoryCore &open(ConnectionHistory::Access access);
    void forgetOtherFile();
    void remember(const HistoryCore &history, std::vector<std::int64_t> keys);
    bool removeFromSameFile(HistoryCore &history, std::int64_t key);

    std::string m_path;
    std::unique_ptr<HistoryCore> m_history;
    std::optional<Positions> m_positions;
    std::uint32_t m_positionsOf = 0; ///< The opening of the file in which the positions were read.
    bool m_firstIsGone = false;      ///< The last call asked for position 0 and was told that the record is gone.
};

HistoryError noSuchRecord(const std::string &what)
{
    return {ResultCode::NoSuchRecord, what + " Read the history anew."};
}

_ZELK_ST_CONNRECORD *Service::readAll(int &count)
{
    HistoryCore &history = historyToRead();
    RawRecords records = readRawRecords(history);
    count = static_cast<int>(records.keys.size());
    remember(history, std::move(records.keys));
    history.scrubNowAndThen();
    return records.array.release();
}

_ZELK_ST_CONNRECORD Service::readLast()
{
    HistoryCore &history = historyToRead();
    const std::optional<Record> record = history.file.run([&history] { return history.last(); });
    if (!record)
        throw noSuchRecord("The history holds no connection.");
    return toRawRecord(*record);
}

/// A position whose record another process has removed keeps its place, so that no other position comes to mean its
/// neighbour. Only when position 0 is asked for again at once, as those do who remove everything from the front, is it
/// given up: otherwise they would never get past it.
void Service::remove(int position)
{
    HistoryCore &history = historyToWrite();
    if (!m_positions)
        remember(history, readRawRecords(history).keys);
    if (m_firstIsGone && position == 0)
        m_positions->erase(0);
    m_firstIsGone = false;
    const auto index = static_cast<std::size_t>(position);
    const std::optional<std::int64_t> key = position < 0 ? std::nullopt : m_positions->keyAt(index);
    if (!key)
        throw noSuchRecord("There is no record at position " + std::to_string(position) + ".");
    if (!removeFromSameFile(history, *key)) {
        m_firstIsGone = position == 0;
        throw noSuchRecord("The record at position " + std::to_string(position) + " was removed by another program.");
    }
    m_positions->erase(index);
    history.scrubNowAndThen();
}

/// Keys that were read from a file that has been replaced since would name any record of the new one.
bool Service::removeFromSameFile(HistoryCore &history, std::int64_t key)
{
    return history.file.run([&] { return history.file.generation() == m_positionsOf && history.remove(key); });
}

/// A history that may only be read is still shown.
HistoryCore &Service::historyToRead()
{
    forgetOtherFile();
    if (m_history)
        return *m_history;
    try {
        return open(ConnectionHistory::Access::ReadWrite);
    } catch (const HistoryError &error) {
        if (error.code() != ResultCode::ReadOnly)
            throw;
        return open(ConnectionHistory::Access::ReadOnly);
    }
}

HistoryCore &Service::historyToWrite()
{
    forgetOtherFile();
    if (m_history && m_history->file.isWritable())
        return *m_history;
    const bool wasRead = m_history && m_positionsOf == m_history->file.generation();
    HistoryCore &history = open(ConnectionHistory::Access::ReadWrite);
    if (wasRead)
        m_positionsOf = history.file.generation(); // The same file, which may be written by now.
    return history;
}

HistoryCore &Service::open(ConnectionHistory::Access access)
{
    m_history = std::make_unique<HistoryCore>(m_path, access);
    return *m_history;
}

/// The environment may name another file by now; positions of the old one mean nothing there.
void Service::forgetOtherFile()
{
    std::string path = ConnectionHistory::defaultPath();
    if (path == m_path)
        return;
    m_history.reset();
    m_positions.reset();
    m_firstIsGone = false;
    m_path = std::move(path);
}

void Service::remember(const HistoryCore &history, std::vector<std::int64_t> keys)
{
    m_positions.emplace(std::move(keys));
    m_positionsOf = history.file.generation();
    m_firstIsGone = false;
}

/// One line, whatever a file's name may hold.
void report(const char *message) noexcept
{
    char line[1024];
    std::snprintf(line, sizeof line, "netinfo: %s", message);
    for (char *c = line; *c != '\0'; ++c) {
        if (static_cast<unsigned char>(*c) < 0x20 || *c == 0x7F)
            *c = '?';
    }
    std::fprintf(stderr, "%s\n", line);
}

void requireArgument(bool present)
{
    if (!present)
        throw HistoryError(ResultCode::InvalidRecord, "The caller gave no place for the result. Correct the caller.");
}

/// One for all four functions.
Service &theService()
{
    static Service service;
    return service;
}

std::mutex &theMutex()
{
    static std::mutex mutex;
    return mutex;
}

/// Runs `work`; no exception leaves the C interface. A failure is one line on standard error and a code.
template <typename Work> long answer(Work &&work) noexcept
{
    ResultCode code = ResultCode::Failed;
    try {
        const std::lock_guard<std::mutex> lock(theMutex());
        work(theService());
        return static_cast<long>(ResultCode::Success);
    } catch (const HistoryError &error) {
        code = error.code();
        if (code != ResultCode::NoSuchRecord) // Nothing is wrong with the file then, and there is nothing to remedy.
            report(error.what());
    } catch (const std::exception &error) {
        report(error.what());
    } catch (...) {
        report("Something unexpected went wrong with the history.");
    }
    return static_cast<long>(code);
}

} // namespace
} // namespace zelk

long ZELK_Statistics_GetAllConnRecord(_ZELK_ST_CONNRECORD **records, int *count)
{
    return zelk::answer([=](zelk::Service &service) {
        zelk::requireArgument(records != nullptr && count != nullptr);
        int read = 0;
        *records = service.readAll(read);
        *count = read;
    });
}

long ZELK_Statistics_GetLastConnRecord(_ZELK_ST_CONNRECORD *record)
{
    return zelk::answer([=](zelk::Service &service) {
        zelk::requireArgument(record != nullptr);
        *record = service.readLast();
    });
}

long ZELK_Statistics_ConnRecord_RemoveRecord(int index)
{
    return zelk::answer([=](zelk::Service &service) { service.remove(index); });
}

void ZELK_Statistics_ReleaseConnRecord(_ZELK_ST_CONNRECORD *records)
{
    std::free(records);
}
