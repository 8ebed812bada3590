// The one door through which time comes into the recorder, so that tests can set it.
#ifndef NETINFO_RECORDER_CLOCK_H
#define NETINFO_RECORDER_CLOCK_H

#include <QString>

#include <cstdint>
#include <functional>

namespace recorder {

/// One moment on three clocks, in milliseconds.
struct Moment {
    std::int64_t wall = 0;      ///< Since 1970-01-01 00:00 UTC. May be set by anybody at any time.
    std::int64_t boot = 0;      ///< Since boot, sleep included. Durations are differences of this one.
    std::int64_t monotonic = 0; ///< Since boot, sleep not included.
};

using Clock = std::function<Moment()>;

Moment systemClock();
/// Identity of the running boot, within which two values of Moment::boot may be compared.
QString bootId();
/// Seconds by which local time is ahead of UTC at the given wall time.
std::int32_t zoneOffset(std::int64_t wallMs);

} // namespace recorder

#endif
