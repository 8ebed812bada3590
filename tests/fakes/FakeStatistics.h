// The second face of the statistics service's stand-in: the records and result codes that a test scripts, and the log
// of the calls that it received.
#ifndef NETINFO_FAKESTATISTICS_H
#define NETINFO_FAKESTATISTICS_H

#include "statistics/ZelkStatistics.h"

#include <deque>
#include <set>
#include <string>
#include <vector>

namespace FakeStatistics {

enum class Function { GetAll, GetLast, Remove, Release };

struct Call {
    Function function;
    int index;           ///< Remove: the position.
    const void *records; ///< Release: the array. GetAll: what the caller's pointer held before the call.
    int count;           ///< GetAll: what the caller's count held before the call.
    bool isCleared;      ///< GetLast: whether all 544 bytes were zero before the call.
};

inline bool operator==(const Call &a, const Call &b)
{
    return a.function == b.function && a.index == b.index && a.records == b.records && a.count == b.count &&
           a.isCleared == b.isCleared;
}

struct State {
    std::vector<_ZELK_ST_CONNRECORD> records; ///< What GetAll hands out; Remove takes away from here.
    _ZELK_ST_CONNRECORD last = _ZELK_ST_CONNRECORD();
    long getAllCode = 0;          ///< Other than 0: the arguments stay untouched.
    long getLastCode = 0;         ///< Other than 0: the record stays untouched.
    std::deque<long> removeCodes; ///< Results of the next removals, first one first; then 0. Other than 0 keeps all.
    std::vector<Call> calls;
    std::set<const void *> handedOut; ///< Arrays that were handed out and not released yet.
    bool isLogging = true;            ///< False for measurements, which must not count the log.
};

ZELK_EXPORT State &state();

/// Back to an empty history without failures.
ZELK_EXPORT void reset();

/// The positions of all removals so far, in their order.
ZELK_EXPORT std::vector<int> removedPositions();

/// How often \a function was called so far.
ZELK_EXPORT int count(Function function);

/// A raw record; the name is cut at 127 units, numbers may be any text that fits their slots.
ZELK_EXPORT _ZELK_ST_CONNRECORD record(const std::u16string &profile, const std::string &start, const std::string &end,
                                       const std::string &connected, const std::string &uploaded,
                                       const std::string &downloaded, const std::string &aux1 = std::string(),
                                       const std::string &aux2 = std::string());

} // namespace FakeStatistics

#endif
