// The recorder's face on the session bus: its well-known name, and the object that tells listeners what it tells.
//
//   name org.netinfo.Recorder, object /org/netinfo/Recorder, interface org.netinfo.Recorder1
//   signal   ConnectionEstablished(s profile, x connection, a{sv} details)
//   signal   ConnectionEnded(x record, x connection, a{sv} details)
//   signal   StatusChanged(u code, s detail)
//   signal   Settled()
//   property Settled            b        read, whether ActiveConnections is the whole truth
//   property ActiveConnections  aa{sv}   read
//   property StatusCode         u        read, see Status::Code
//   property StatusDetail       s        read
//   property Status             s        read, one line for people, empty when all is well
//   property HistoryPath        s        read
//
// details has the keys connection, record, confirmed, profile, profileName, type, interface, startMs, connectedSeconds,
// bytesUploaded, bytesDownloaded, quality, endReason (the last two in the history's words).
#ifndef NETINFO_RECORDER_RECORDERSERVICE_H
#define NETINFO_RECORDER_RECORDERSERVICE_H

#include "host/recorder/RealRecording.h"

#include <QDBusConnection>
#include <QVariantMap>

namespace recorder {

extern const char serviceName[];   ///< org.netinfo.Recorder
extern const char objectPath[];    ///< /org/netinfo/Recorder
extern const char interfaceName[]; ///< org.netinfo.Recorder1

QVariantMap toVariantMap(const Announcement &announcement);
/// Missing or wrong values read as the defaults.
Announcement announcementFromVariantMap(const QVariantMap &map);

/// Exports `recorder` at objectPath as long as it lives. Does not ask for the name.
class RecorderService : public QObject
{
    Q_OBJECT
public:
    RecorderService(const Recorder &recorder, const RealRecording &recording, const QDBusConnection &bus,
                    QObject *parent = nullptr);
    ~RecorderService() override;
    bool isExported() const { return m_exported; }

private:
    QDBusConnection m_bus;
    bool m_exported = false;
};

} // namespace recorder

#endif
