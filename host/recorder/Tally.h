// The arithmetic of one connection: what counters and clocks say, turned into amounts, times and quality. Pure.
#ifndef NETINFO_RECORDER_TALLY_H
#define NETINFO_RECORDER_TALLY_H

#include "host/recorder/Clock.h"
#include "host/recorder/ConnectionSource.h"

namespace recorder {

/// Wall clock and boot clock may disagree by this much before the wall clock counts as set meanwhile.
constexpr qint64 clockToleranceMs = 2000;

/// Adds what the counters have grown by. A counter that fell is a new start from there: nothing is added for it and the
/// row is marked.
void count(zelk::OpenConnection &row, const Counters &now);

/// Adds the last word of a link that is going. A lower value says nothing: a link that is torn down may read as zero.
void countLast(zelk::OpenConnection &row, const Counters &last);

/// The record of a connection that ended at `end`, a moment of the same boot as the row's start.
/// The end is the wall clock's; connected time is the boot clock's difference. Where they disagree, the start is end
/// less connected time and the record is marked.
zelk::Record finish(const zelk::OpenConnection &row, const Moment &end, zelk::EndReason reason);

} // namespace recorder

#endif
