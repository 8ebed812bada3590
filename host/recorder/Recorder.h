// What records and announces: it follows its sources, keeps an open row with checkpoints in the history while a
// connection is up, and turns the row into a record when it ends.
#ifndef NETINFO_RECORDER_RECORDER_H
#define NETINFO_RECORDER_RECORDER_H

#include "host/recorder/Clock.h"
#include "host/recorder/ConnectionSource.h"

#include <QVector>

namespace recorder {

/// A connection in an announcement: of its beginning (record 0, amounts so far) or of its end.
struct Announcement {
    qint64 connection = 0; ///< Key of the open row; the same for whoever records, also after a change of recorder.
    qint64 record = 0;     ///< Key of the finished record; 0 while the connection is up.
    bool confirmed = true; ///< False for a row that was left behind, while it is unknown whether it is still up.
    QString profile;
    QString profileName;
    QString type;
    QString interfaceName;
    qint64 startMs = 0; ///< UTC milliseconds since 1970.
    qint64 connectedSeconds = 0;
    qint64 bytesUploaded = 0;
    qint64 bytesDownloaded = 0;
    unsigned quality = zelk::QualityExact; ///< Combination of zelk::QualityFlag.
    zelk::EndReason endReason = zelk::EndReason::Unknown;
};

struct RecorderOptions {
    QString historyPath; ///< Empty: zelk::ConnectionHistory::defaultPath().
    int sampleMs = 1000; ///< How often counters are read and checkpoints written while something is up.
    int retryMs = 5000;  ///< How soon a history that could not be written is tried again.
    Clock clock = systemClock;
};

/// Exactly one recorder may follow the same network service into the same history; see RecorderClient.
class Recorder : public QObject
{
    Q_OBJECT
public:
    explicit Recorder(const RecorderOptions &options = {}, QObject *parent = nullptr);
    /// Writes a last checkpoint. Rows stay open, to be resumed.
    ~Recorder() override;

    /// Takes ownership, and starts the source. Rows that the source owns and does not announce until it has settled are
    /// closed.
    void addSource(ConnectionSource *source);
    /// Stops and deletes it after a last checkpoint. Its rows stay open.
    void removeSource(ConnectionSource *source);

    /// Reads the counters and writes a checkpoint now.
    void checkpoint();

    QVector<Announcement> activeConnections() const;
    Status status() const;
    /// Whether every source has told what is up, so that activeConnections() is the truth.
    bool isSettled() const;
    QString historyPath() const;

signals:
    void connectionEstablished(const recorder::Announcement &connection);
    /// The record is closed and survives loss of power. Also for rows that an earlier recorder left behind and that
    /// were over when this one came, which were never announced as established here.
    void connectionEnded(const recorder::Announcement &connection);
    void statusChanged();
    /// A source has told everything that is up; what was left behind has been resumed or closed.
    void settled();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace recorder

Q_DECLARE_METATYPE(recorder::Announcement)

#endif
