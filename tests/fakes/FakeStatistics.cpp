// A statistics service in memory. Arrays that it hands out are overwritten before they are freed, so that whoever still
// reads them notices.
#include "FakeStatistics.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace FakeStatistics {

State &state()
{
    static State instance;
    return instance;
}

void reset()
{
    state() = State();
}

std::vector<int> removedPositions()
{
    std::vector<int> positions;
    for (const Call &call : state().calls) {
        if (call.function == Function::Remove)
            positions.push_back(call.index);
    }
    return positions;
}

int count(Function function)
{
    return static_cast<int>(std::count_if(state().calls.begin(), state().calls.end(),
                                          [function](const Call &call) { return call.function == function; }));
}

namespace {

void log(const Call &call)
{
    if (state().isLogging)
        state().calls.push_back(call);
}

template <std::size_t Size> void copy(char (&slot)[Size], const std::string &text)
{
    std::memcpy(slot, text.data(), std::min(text.size(), Size - 1));
}

} // namespace

_ZELK_ST_CONNRECORD record(const std::u16string &profile, const std::string &start, const std::string &end,
                           const std::string &connected, const std::string &uploaded, const std::string &downloaded,
                           const std::string &aux1, const std::string &aux2)
{
    _ZELK_ST_CONNRECORD raw = _ZELK_ST_CONNRECORD();
    std::copy_n(profile.begin(), std::min<std::size_t>(profile.size(), 127), raw.profile);
    copy(raw.startTime, start);
    copy(raw.endTime, end);
    copy(raw.connectedTime, connected);
    copy(raw.uploaded, uploaded);
    copy(raw.downloaded, downloaded);
    copy(raw.aux1, aux1);
    copy(raw.aux2, aux2);
    return raw;
}

} // namespace FakeStatistics

using FakeStatistics::Function;
using FakeStatistics::state;

long ZELK_Statistics_GetAllConnRecord(_ZELK_ST_CONNRECORD **records, int *count)
{
    FakeStatistics::log({Function::GetAll, 0, *records, *count, false});
    if (state().getAllCode != 0)
        return state().getAllCode;
    const std::size_t bytes = state().records.size() * sizeof(_ZELK_ST_CONNRECORD);
    *records = static_cast<_ZELK_ST_CONNRECORD *>(std::malloc(bytes + sizeof(_ZELK_ST_CONNRECORD)));
    *count = static_cast<int>(state().records.size());
    if (bytes > 0)
        std::memcpy(*records, state().records.data(), bytes);
    state().handedOut.insert(*records);
    return 0;
}

long ZELK_Statistics_GetLastConnRecord(_ZELK_ST_CONNRECORD *record)
{
    const char *const bytes = reinterpret_cast<const char *>(record);
    const bool isCleared = std::all_of(bytes, bytes + sizeof(*record), [](char byte) { return byte == 0; });
    FakeStatistics::log({Function::GetLast, 0, nullptr, 0, isCleared});
    if (state().getLastCode == 0)
        *record = state().last;
    return state().getLastCode;
}

long ZELK_Statistics_ConnRecord_RemoveRecord(int index)
{
    FakeStatistics::log({Function::Remove, index, nullptr, 0, false});
    if (!state().removeCodes.empty()) {
        const long code = state().removeCodes.front();
        state().removeCodes.pop_front();
        if (code != 0)
            return code;
    }
    if (index < 0 || static_cast<std::size_t>(index) >= state().records.size())
        return 1;
    state().records.erase(state().records.begin() + index);
    return 0;
}

void ZELK_Statistics_ReleaseConnRecord(_ZELK_ST_CONNRECORD *records)
{
    FakeStatistics::log({Function::Release, 0, records, 0, false});
    if (state().handedOut.erase(records) == 0)
        return;
    std::memset(records, 0x5A, sizeof(*records));
    std::free(records);
}
