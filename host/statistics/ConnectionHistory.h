// The history of connections, for the rooms of the host that write it or need more than the four C calls give: adding,
// listing, totals, import and export, and the open connections of a recorder.
//
// Text is UTF-8. Times are seconds since 1970-01-01 00:00 UTC unless a name says otherwise. Amounts are bytes.
// Every operation that fails throws HistoryError and leaves the file as it was.
#ifndef NETINFO_STATISTICS_CONNECTIONHISTORY_H
#define NETINFO_STATISTICS_CONNECTIONHISTORY_H

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#if defined(__GNUC__)
#define ZELK_CXX_EXPORT __attribute__((visibility("default")))
#else
#define ZELK_CXX_EXPORT
#endif

namespace zelk {

/// Result codes of the C functions, and the kind of a HistoryError. The numbers are stable.
enum class ResultCode : long {
    Success = 0,
    NoSuchRecord = 1,  ///< The position or key names no record (any more).
    InvalidRecord = 2, ///< A value is out of range or not valid UTF-8.
    Damaged = 3,       ///< The file is not a history or is corrupt.
    Busy = 4,          ///< Another process held the file for more than five seconds.
    ReadOnly = 5,      ///< The file or its folder cannot be written.
    MissingFolder = 6, ///< The file's parent folder does not exist and could not be made.
    DiskFull = 7,      ///< No space left on the device.
    NewerFile = 8,     ///< A newer version of the program wrote the file.
    ImportFailed = 9,  ///< An import's input is wrong; the message names file and line.
    Failed = 10        ///< Anything else; the message says what.
};

/// What went wrong, with a message for people that names the file or value and the remedy.
class ZELK_CXX_EXPORT HistoryError : public std::runtime_error
{
public:
    HistoryError(ResultCode code, const std::string &message) : std::runtime_error(message), m_code(code) {}
    ~HistoryError() override;
    ResultCode code() const { return m_code; }

private:
    ResultCode m_code;
};

/// Where a record came from.
enum class Origin { Recorded = 0, Imported = 1, Added = 2 };

/// How far a record's figures can be trusted; bits that may be combined. None set: exact.
enum QualityFlag : unsigned {
    QualityExact = 0,
    QualityResumed = 1,          ///< Recording was interrupted and went on; the bytes are exact.
    QualityRecovered = 2,        ///< Closed after a crash; exact up to the last checkpoint.
    QualityCounterRestarted = 4, ///< The kernel's counter fell while the connection was up.
    QualityClockChanged = 8      ///< The wall clock was set meanwhile; the start is end less duration.
};

/// Why a connection ended.
enum class EndReason { Unknown = 0, User = 1, Network = 2, Unplugged = 3, Sleep = 4, Carrier = 5 };

/// Words for quality and reason as CSV and JSON carry them, and the raw record for the reason: "exact", "resumed",
/// "recovered", "counter-restarted", "clock-changed" (several joined by '+'); "unknown", "user", "network",
/// "unplugged", "sleep", "carrier". The readers return nothing for other words.
ZELK_CXX_EXPORT std::string qualityToText(unsigned quality);
/// The same for the raw record's 31 characters, in which every combination must fit: "counter" and "clock" stand for
/// the last two there. qualityFromText() reads both forms.
ZELK_CXX_EXPORT std::string qualityToRawText(unsigned quality);
ZELK_CXX_EXPORT std::optional<unsigned> qualityFromText(const std::string &text);
ZELK_CXX_EXPORT std::string endReasonToText(EndReason reason);
ZELK_CXX_EXPORT std::optional<EndReason> endReasonFromText(const std::string &text);
ZELK_CXX_EXPORT std::string originToText(Origin origin);
ZELK_CXX_EXPORT std::optional<Origin> originFromText(const std::string &text);

/// One past connection.
struct Record {
    std::int64_t key = 0;              ///< Stable key in the file, ascending in the order of adding; 0: not stored.
    std::string profile;               ///< What the history shows: the APN, or the profile's name where there is none.
    std::string profileName;           ///< The profile's own name; empty: the same as `profile`.
    std::int64_t start = 0;            ///< Start, UTC seconds.
    std::int64_t end = 0;              ///< End, UTC seconds; never before the start.
    std::int32_t endZoneOffset = 0;    ///< Offset of local time from UTC at the end, seconds east.
    std::int64_t connectedSeconds = 0; ///< Connected time; may be less than end - start.
    std::int64_t bytesUploaded = 0;
    std::int64_t bytesDownloaded = 0;
    Origin origin = Origin::Added;
    std::string originDetail;        ///< For imports: what was read, such as "csv" or "pppd".
    unsigned quality = QualityExact; ///< Combination of QualityFlag.
    EndReason endReason = EndReason::Unknown;
};

/// A connection that is still up, as a recorder keeps it across crashes.
struct OpenConnection {
    std::int64_t key = 0;    ///< Set by openConnection().
    std::string profile;     ///< As in Record.
    std::string profileName; ///< As in Record.
    std::string profileUuid;
    std::string type;          ///< The network service's word for the kind of link, such as "gsm".
    std::string interfaceName; ///< Kernel interface, such as "wwan0".
    std::int32_t interfaceIndex = 0;
    std::string bootId;           ///< Identity of the boot in which the boot-time clock values below count.
    std::string serviceOwner;     ///< Unique bus name of the network service that announced the connection.
    std::string activePath;       ///< Its object path there; an identity only together with serviceOwner.
    std::int64_t startWallMs = 0; ///< Milliseconds since 1970 UTC.
    std::int64_t startBootMs = 0; ///< Milliseconds of CLOCK_BOOTTIME.
    std::int64_t seenWallMs = 0;  ///< The same two clocks at the last checkpoint.
    std::int64_t seenBootMs = 0;
    std::int64_t lastTx = 0; ///< Kernel counters at the last checkpoint.
    std::int64_t lastRx = 0;
    std::int64_t bytesUploaded = 0; ///< Accumulated since the start.
    std::int64_t bytesDownloaded = 0;
    unsigned quality = QualityExact;
};

/// Which records list() returns; an unset field does not restrict.
struct Filter {
    std::optional<std::string> profile;
    std::optional<std::int64_t> startFrom;   ///< Start at or after.
    std::optional<std::int64_t> startBefore; ///< Start before.
};

/// Sum over the records of one profile that started in one period.
struct PeriodTotal {
    std::string profile;
    std::int64_t periodStart = 0; ///< The start of the period, as handed in.
    std::int64_t connections = 0;
    std::int64_t connectedSeconds = 0;
    std::int64_t bytesUploaded = 0;
    std::int64_t bytesDownloaded = 0;
};

enum class FileFormat { Csv, Json, Pppd };

struct ImportOptions {
    FileFormat format = FileFormat::Csv;
    std::string sourceName;   ///< File name for messages.
    std::string profile;      ///< For pppd logs: the profile of every record.
    std::int64_t logTime = 0; ///< For pppd logs whose stamps carry no year: no line is later than this. 0: now.
    std::int64_t shiftTo = 0; ///< Unless 0, all times move by the same whole number of days, so that the latest
                              ///< connection ended on the local day before this moment.
    std::function<void(std::uint64_t done, std::uint64_t total)> progress; ///< Counts records; may be empty.
};

struct ImportResult {
    std::size_t added = 0;
    std::size_t alreadyThere = 0;     ///< Records equal to one in the history, which were left out.
    std::vector<std::string> skipped; ///< One message a connection of a log that has no totals, with file and line.
};

/// One history file. Not for use by several threads at once; any number of processes may have the file open.
class ZELK_CXX_EXPORT ConnectionHistory
{
public:
    enum class Access {
        ReadWrite, ///< Creates file and folder where missing.
        ReadOnly   ///< A missing file reads as an empty history.
    };

    /// $NETINFO_HISTORY, else $XDG_DATA_HOME/netinfo/history.sqlite (~/.local/share without XDG_DATA_HOME).
    static std::string defaultPath();

    explicit ConnectionHistory(const std::string &path = defaultPath(), Access access = Access::ReadWrite);
    ~ConnectionHistory();
    ConnectionHistory(const ConnectionHistory &) = delete;
    ConnectionHistory &operator=(const ConnectionHistory &) = delete;

    const std::string &path() const;

    /// Adds a record and returns its key. Durable when the call returns: it survives loss of power.
    std::int64_t add(const Record &record);
    /// Adds all of them or, on an error, none.
    void add(const std::vector<Record> &records);

    /// Removes by key; false when there is no such record.
    bool remove(std::int64_t key);

    /// The records in the order in which they were added.
    std::vector<Record> list(const Filter &filter = {}) const;
    std::optional<Record> last() const;
    std::int64_t count() const;

    /// Totals a profile and period, for the periods between neighbouring `boundaries` (ascending UTC seconds; n
    /// boundaries make n - 1 half-open periods). Periods without a connection are left out. Ordered by period, profile.
    std::vector<PeriodTotal> totals(const std::vector<std::int64_t> &boundaries,
                                    const std::optional<std::string> &profile = std::nullopt) const;
    /// Names of all profiles, sorted by code point.
    std::vector<std::string> profiles() const;

    /// Reads records from `input` in one transaction. Records that the history already holds are counted, not added.
    ImportResult importRecords(std::istream &input, const ImportOptions &options);
    /// Writes all records in the order of adding. Csv or Json only.
    void exportRecords(std::ostream &output, FileFormat format, const Filter &filter = {}) const;

    /// The open connections of the recorder. A checkpoint survives the death of the process.
    std::int64_t openConnection(const OpenConnection &connection);
    void checkpoint(const OpenConnection &connection);
    /// Adds `record` and forgets the open connection `key` in one durable step. Returns the record's key; nothing when
    /// there is no such open connection any more (someone else closed it), in which case nothing is added.
    std::optional<std::int64_t> closeConnection(std::int64_t key, const Record &record);
    std::vector<OpenConnection> openConnections() const;

    /// A number that changes whenever another connection to the file has changed it.
    std::int64_t dataVersion() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace zelk

#endif
