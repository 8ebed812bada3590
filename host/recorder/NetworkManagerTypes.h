// What the network service's numbers and words mean for the recorder: which connections are recorded, under which name,
// and why one ended. Pure.
#ifndef NETINFO_RECORDER_NETWORKMANAGERTYPES_H
#define NETINFO_RECORDER_NETWORKMANAGERTYPES_H

#include "host/statistics/ConnectionHistory.h"

#include <QMap>
#include <QStringList>
#include <QVariantMap>

namespace recorder {

/// Profile as GetSettings returns it, D-Bus a{sa{sv}}.
using ProfileSettings = QMap<QString, QVariantMap>;

/// States of an active connection, as its StateChanged signal carries them.
enum ActiveState : unsigned {
    ActiveActivating = 1,
    ActiveActivated = 2,
    ActiveDeactivating = 3,
    ActiveDeactivated = 4
};

enum DeviceState : unsigned { DeviceIpConfig = 70, DeviceActivated = 100 };

/// Everything that the recorder asks about an active connection.
struct ActiveFacts {
    QString id;
    QString uuid;
    QString type;
    QString devicePath;
    QString profilePath;
    unsigned state = 0;
    unsigned stateFlags = 0;
    bool vpn = false;
    QString interfaceName;
    unsigned metered = 0;
    ProfileSettings profile;
};

/// Which connections are recorded: the setting "Connections" of the group "Recorder".
enum class Wanted { All, Mobile, Metered };

/// Nothing for another word than "all", "mobile" and "metered".
std::optional<Wanted> wantedFromText(const QString &text);

/// Whether a connection is recorded: a real link of a wanted kind, not one whose bytes another record counts.
bool isRecorded(const ActiveFacts &facts, Wanted wanted);

/// The APN where the profile has one, else its name.
QString shownProfile(const ActiveFacts &facts);

/// Why a device left the state "activated", from the reason in its StateChanged signal. `linkGone`: the kernel took the
/// link away, which tells a pulled device from one that the service merely let go.
zelk::EndReason endReason(unsigned deviceReason, bool linkGone);

} // namespace recorder

Q_DECLARE_METATYPE(recorder::ProfileSettings)

#endif
