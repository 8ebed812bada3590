// See RecordCheck.h.
#include "RecordCheck.h"

#include "Utf.h"

namespace zelk {
namespace {

constexpr unsigned allQualities = QualityResumed | QualityRecovered | QualityCounterRestarted | QualityClockChanged;

[[noreturn]] void refuse(const std::string &message)
{
    throw HistoryError(ResultCode::InvalidRecord, message);
}

void checkText(const char *what, const std::string &text)
{
    if (text.size() > maxNameBytes)
        refuse(std::string("The ") + what + " is " + std::to_string(text.size()) + " bytes long; at most " +
               std::to_string(maxNameBytes) + " are possible. Shorten it.");
    const std::size_t at = firstInvalidUtf8(text);
    if (at != text.size())
        refuse(std::string("The ") + what + " is not valid UTF-8 at byte " + std::to_string(at + 1) +
               ". Convert it to UTF-8.");
    if (text.find('\0') != std::string::npos)
        refuse(std::string("The ") + what + " holds a zero character. Remove it.");
}

void checkRange(const char *what, std::int64_t value, std::int64_t least, std::int64_t most)
{
    if (value < least || value > most)
        refuse(std::string("The ") + what + " is " + std::to_string(value) + "; possible are " + std::to_string(least) +
               " to " + std::to_string(most) + ". Correct it.");
}

void checkQuality(unsigned quality)
{
    if ((quality & ~allQualities) != 0)
        refuse("The quality is " + std::to_string(quality) + ", which holds unknown bits. Correct it.");
}

void checkDuration(const Record &record)
{
    if (record.end < record.start)
        refuse("The end (" + std::to_string(record.end) + ") is before the start (" + std::to_string(record.start) +
               "). Correct one of them.");
    checkRange("connected time in seconds", record.connectedSeconds, 0, record.end - record.start + durationSlack);
}

} // namespace

void checkRecord(const Record &record)
{
    checkText("profile", record.profile);
    checkText("profile's own name", record.profileName);
    checkText("origin's detail", record.originDetail);
    checkRange("start", record.start, 0, maxTime);
    checkRange("end", record.end, 0, maxTime);
    checkDuration(record);
    checkRange("zone offset in seconds", record.endZoneOffset, -maxZoneOffset, maxZoneOffset);
    if (record.endZoneOffset % 60 != 0)
        refuse("The zone offset of " + std::to_string(record.endZoneOffset) +
               " seconds is not made of whole minutes. Round it.");
    checkRange("uploaded amount in bytes", record.bytesUploaded, 0, maxAmount);
    checkRange("downloaded amount in bytes", record.bytesDownloaded, 0, maxAmount);
    checkRange("origin", static_cast<std::int64_t>(record.origin), 0, static_cast<std::int64_t>(Origin::Added));
    checkRange("reason of the end", static_cast<std::int64_t>(record.endReason), 0,
               static_cast<std::int64_t>(EndReason::Carrier));
    checkQuality(record.quality);
}

void checkOpenConnection(const OpenConnection &connection)
{
    checkText("profile", connection.profile);
    checkText("profile's own name", connection.profileName);
    checkText("profile's UUID", connection.profileUuid);
    checkText("kind of link", connection.type);
    checkText("interface's name", connection.interfaceName);
    checkText("boot's identity", connection.bootId);
    checkText("network service's bus name", connection.serviceOwner);
    checkText("object path", connection.activePath);
    checkRange("start in milliseconds", connection.startWallMs, 0, maxTime * 1000);
    checkRange("last checkpoint in milliseconds", connection.seenWallMs, 0, maxTime * 1000);
    checkRange("uploaded amount in bytes", connection.bytesUploaded, 0, maxAmount);
    checkRange("downloaded amount in bytes", connection.bytesDownloaded, 0, maxAmount);
    checkQuality(connection.quality);
}

} // namespace zelk
