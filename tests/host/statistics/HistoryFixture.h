// A history file of a test's own, and records to put into it.
#ifndef NETINFO_TESTS_HISTORYFIXTURE_H
#define NETINFO_TESTS_HISTORYFIXTURE_H

#include <statistics/ConnectionHistory.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <optional>
#include <string>

class HistoryFixture
{
public:
    /// Makes the file's name the default of this process, for the C functions.
    HistoryFixture() { qputenv("NETINFO_HISTORY", file().toLocal8Bit()); }
    ~HistoryFixture() { qunsetenv("NETINFO_HISTORY"); }
    HistoryFixture(const HistoryFixture &) = delete;
    HistoryFixture &operator=(const HistoryFixture &) = delete;

    QString file(const QString &name = QStringLiteral("history.sqlite")) const { return m_folder.filePath(name); }
    std::string path() const { return file().toStdString(); }

    static QByteArray contents(const QString &name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static bool write(const QString &name, const QByteArray &bytes)
    {
        QFile file(name);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

private:
    QTemporaryDir m_folder;
};

/// A valid record that differs from those of other numbers in every field that can tell records apart.
inline zelk::Record sampleRecord(int number)
{
    zelk::Record record;
    record.profile = "profile" + std::to_string(number % 3);
    record.profileName = "Profile's own name " + std::to_string(number);
    record.start = 1700000000 + number * 1000;
    record.connectedSeconds = 500 + number % 100;
    record.end = record.start + record.connectedSeconds + 7;
    record.endZoneOffset = 3600;
    record.bytesUploaded = 1000000 + number;
    record.bytesDownloaded = 9000000000LL + number;
    record.origin = zelk::Origin::Recorded;
    record.quality = zelk::QualityResumed;
    record.endReason = zelk::EndReason::Network;
    return record;
}

inline bool sameButKey(const zelk::Record &a, const zelk::Record &b)
{
    return a.profile == b.profile && a.profileName == b.profileName && a.start == b.start && a.end == b.end &&
           a.endZoneOffset == b.endZoneOffset && a.connectedSeconds == b.connectedSeconds &&
           a.bytesUploaded == b.bytesUploaded && a.bytesDownloaded == b.bytesDownloaded && a.origin == b.origin &&
           a.originDetail == b.originDetail && a.quality == b.quality && a.endReason == b.endReason;
}

/// The error that `work` ends in; nothing when it succeeds.
inline std::optional<zelk::HistoryError> errorOf(const std::function<void()> &work)
{
    try {
        work();
    } catch (const zelk::HistoryError &error) {
        return error;
    }
    return std::nullopt;
}

#endif
