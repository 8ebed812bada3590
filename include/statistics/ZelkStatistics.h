/* The statistics service's binary interface: the raw record of one past connection and the four calls. Plain C, so
 * that any compiler can call it. */
#ifndef NETINFO_STATISTICS_ZELKSTATISTICS_H
#define NETINFO_STATISTICS_ZELKSTATISTICS_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define ZELK_EXPORT __attribute__((visibility("default")))
#else
#define ZELK_EXPORT
#endif

/** One past connection, 544 bytes without padding. Every text is terminated inside its slot. The numbers are ASCII
 * decimal. Times are seconds since 1970-01-01 00:00 UTC. */
struct _ZELK_ST_CONNRECORD {
    uint16_t profile[128];  /**< APN or profile name, UTF-16 in machine byte order, at most 127 units. */
    char startTime[32];     /**< Start of the connection. */
    char endTime[32];       /**< End of the connection. */
    char connectedTime[32]; /**< Connected duration in seconds. */
    char uploaded[32];      /**< Bytes uploaded; may carry a fraction. */
    char reserved1[32];     /**< The service's own. */
    char downloaded[32];    /**< Bytes downloaded; may carry a fraction. */
    char reserved2[32];     /**< The service's own. */
    char aux1[32];          /**< Carried along verbatim: the quality of the figures, in one word or several. */
    char aux2[32];          /**< Carried along verbatim: the reason of the end, in one word. */
};
typedef struct _ZELK_ST_CONNRECORD _ZELK_ST_CONNRECORD;

#ifdef __cplusplus
static_assert(sizeof(_ZELK_ST_CONNRECORD) == 0x220, "the raw record is 544 bytes");
static_assert(offsetof(_ZELK_ST_CONNRECORD, profile) == 0x000, "profile");
static_assert(offsetof(_ZELK_ST_CONNRECORD, startTime) == 0x100, "startTime");
static_assert(offsetof(_ZELK_ST_CONNRECORD, endTime) == 0x120, "endTime");
static_assert(offsetof(_ZELK_ST_CONNRECORD, connectedTime) == 0x140, "connectedTime");
static_assert(offsetof(_ZELK_ST_CONNRECORD, uploaded) == 0x160, "uploaded");
static_assert(offsetof(_ZELK_ST_CONNRECORD, reserved1) == 0x180, "reserved1");
static_assert(offsetof(_ZELK_ST_CONNRECORD, downloaded) == 0x1A0, "downloaded");
static_assert(offsetof(_ZELK_ST_CONNRECORD, reserved2) == 0x1C0, "reserved2");
static_assert(offsetof(_ZELK_ST_CONNRECORD, aux1) == 0x1E0, "aux1");
static_assert(offsetof(_ZELK_ST_CONNRECORD, aux2) == 0x200, "aux2");

extern "C" {
#endif

/** Hands out every stored record, in the order in which they were added. On success returns 0 and stores a
 * library-allocated array and its length, to be freed with ZELK_Statistics_ReleaseConnRecord; otherwise returns
 * another code and leaves both arguments untouched. Positions from now on are those of this array. */
ZELK_EXPORT long ZELK_Statistics_GetAllConnRecord(_ZELK_ST_CONNRECORD **records, int *count);

/** Fills the caller's record with the most recent connection (latest end; among equals the one added last) and
 * returns 0; otherwise returns another code and leaves the record untouched. */
ZELK_EXPORT long ZELK_Statistics_GetLastConnRecord(_ZELK_ST_CONNRECORD *record);

/** Removes the record at a 0-based position of the array last handed out, less what was removed through here since.
 * Later records move up by one. Returns 0 when removed. */
ZELK_EXPORT long ZELK_Statistics_ConnRecord_RemoveRecord(int index);

/** Frees an array handed out above. Null is allowed. */
ZELK_EXPORT void ZELK_Statistics_ReleaseConnRecord(_ZELK_ST_CONNRECORD *records);

#ifdef __cplusplus
}
#endif

#endif
