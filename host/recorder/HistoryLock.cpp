#include "host/recorder/HistoryLock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace recorder {

HistoryLock::HistoryLock(const QString &historyPath) : m_path(historyPath + QStringLiteral(".recorder")) {}

Status HistoryLock::acquire()
{
    if (isHeld())
        return {};
    QDir().mkpath(QFileInfo(m_path).path());
    m_file.reset(open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!isHeld())
        return {Status::NoHistory, QStringLiteral("%1: %2; allow this user to write there")
                                       .arg(m_path, QString::fromLocal8Bit(strerror(errno)))};
    if (flock(m_file.get(), LOCK_EX | LOCK_NB) != 0) {
        std::array<char, 32> holder{}; // stays terminated
        if (pread(m_file.get(), holder.data(), holder.size() - 1, 0) < 0)
            holder.fill('\0');
        m_file.reset();
        return {Status::OtherRecorder, QStringLiteral("process %1").arg(QString::fromLatin1(holder.data()).trimmed())};
    }
    const QByteArray own = QByteArray::number(static_cast<qint64>(getpid())) + '\n';
    if (ftruncate(m_file.get(), 0) != 0 ||
        pwrite(m_file.get(), own.constData(), static_cast<std::size_t>(own.size()), 0) < 0)
        qWarning("%s: the process id could not be noted: %s", qPrintable(m_path), strerror(errno));
    return {};
}

} // namespace recorder
