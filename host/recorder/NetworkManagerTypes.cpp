#include "host/recorder/NetworkManagerTypes.h"

#include <array>

namespace recorder {

namespace {

constexpr unsigned externalFlag = 0x80; // not brought up by the service: containers, other programs

QString setting(const ActiveFacts &facts, const char *group, const char *key)
{
    return facts.profile.value(QLatin1String(group)).value(QLatin1String(key)).toString();
}

// Bluetooth either dials through a telephone (dun), joins a telephone's network (panu) or serves one (nap).
bool isMobile(const ActiveFacts &facts)
{
    return facts.type == QLatin1String("gsm") || facts.type == QLatin1String("cdma") ||
           (facts.type == QLatin1String("bluetooth") && setting(facts, "bluetooth", "type") == QLatin1String("dun"));
}

// Yes, or the service's guess that it is.
bool isMetered(const ActiveFacts &facts)
{
    return facts.metered == 1 || facts.metered == 3;
}

// A link that others use to get out through this computer: its bytes are counted where they leave.
bool servesOthers(const ActiveFacts &facts)
{
    return setting(facts, "ipv4", "method") == QLatin1String("shared") ||
           setting(facts, "802-11-wireless", "mode") == QLatin1String("ap") ||
           setting(facts, "bluetooth", "type") == QLatin1String("nap");
}

} // namespace

std::optional<Wanted> wantedFromText(const QString &text)
{
    if (text == QLatin1String("all"))
        return Wanted::All;
    if (text == QLatin1String("mobile"))
        return Wanted::Mobile;
    if (text == QLatin1String("metered"))
        return Wanted::Metered;
    return std::nullopt;
}

bool isRecorded(const ActiveFacts &facts, Wanted wanted)
{
    // The kinds that end at a real link. Bridges, bonds, VLANs and tunnels ride on one of these.
    static const std::array<const char *, 8> kinds = {"gsm",   "cdma", "bluetooth",      "802-11-wireless",
                                                      "pppoe", "adsl", "802-3-ethernet", "infiniband"};
    bool known = false;
    for (const char *kind : kinds)
        known = known || facts.type == QLatin1String(kind);
    if (!known || facts.vpn || (facts.stateFlags & externalFlag) != 0 || servesOthers(facts))
        return false;
    switch (wanted) {
    case Wanted::Mobile:
        return isMobile(facts);
    case Wanted::Metered:
        return isMetered(facts);
    case Wanted::All:
        break;
    }
    return true;
}

QString shownProfile(const ActiveFacts &facts)
{
    const QString apn = setting(facts, "gsm", "apn");
    return apn.isEmpty() ? facts.id : apn;
}

zelk::EndReason endReason(unsigned deviceReason, bool linkGone)
{
    switch (deviceReason) {
    case 3: // unmanaged: the link went, or the service is shutting down
        return linkGone ? zelk::EndReason::Unplugged : zelk::EndReason::Unknown;
    case 36: // removed
        return zelk::EndReason::Unplugged;
    case 37:
        return zelk::EndReason::Sleep;
    case 38: // profile deleted
    case 39: // asked for
    case 60: // another connection asked for
        return zelk::EndReason::User;
    case 40:
        return zelk::EndReason::Carrier;
    default:
        break;
    }
    // 5 to 17: addresses, Wi-Fi authentication, PPP and DHCP; 20 to 34: the same for link-local addresses, and the
    // modem's calls and registrations; 44, 53, 57: Bluetooth, access point or modem lost.
    const bool network = (deviceReason >= 5 && deviceReason <= 17 && deviceReason != 7) ||
                         (deviceReason >= 20 && deviceReason <= 34) || deviceReason == 44 || deviceReason == 53 ||
                         deviceReason == 57;
    return network ? zelk::EndReason::Network : zelk::EndReason::Unknown;
}

} // namespace recorder
