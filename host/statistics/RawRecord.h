// The contract's raw records, made from the history's.
#ifndef NETINFO_STATISTICS_RAWRECORD_H
#define NETINFO_STATISTICS_RAWRECORD_H

#include "HistoryInternal.h"

#include <statistics/ZelkStatistics.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace zelk {

struct FreeMemory {
    void operator()(void *memory) const { std::free(memory); }
};

/// All records as one array of the C allocator, with their keys in the same order.
struct RawRecords {
    std::unique_ptr<_ZELK_ST_CONNRECORD[], FreeMemory> array; ///< Null when there are none.
    std::vector<std::int64_t> keys;
};

/// Reads all of the history, in the order of adding. Throws HistoryError and std::bad_alloc.
RawRecords readRawRecords(HistoryCore &history);

_ZELK_ST_CONNRECORD toRawRecord(const Record &record);

} // namespace zelk

#endif
