// The user's choice of connections, read from netinfo.ini and followed while the recorder runs.
#ifndef NETINFO_RECORDER_CONNECTIONFILTER_H
#define NETINFO_RECORDER_CONNECTIONFILTER_H

#include "host/recorder/NetworkManagerTypes.h"

#include <QFileSystemWatcher>

namespace recorder {

class ConnectionFilter : public QObject
{
    Q_OBJECT
public:
    /// `file`: empty for $XDG_CONFIG_HOME/netinfo/netinfo.ini. Its folder is made, so that it can be watched.
    explicit ConnectionFilter(const QString &file, QObject *parent = nullptr);
    /// All when the file or the key is missing, or its value is none of the words; that is warned about.
    Wanted wanted() const { return m_wanted; }

signals:
    void changed();

private:
    void look();
    Wanted read() const;

    QString m_file;
    QFileSystemWatcher m_watcher;
    Wanted m_wanted = Wanted::All;
};

} // namespace recorder

#endif
