// A history file of a test's own, and records to put into it.
#ifndef NETINFO_TESTS_HISTORYFIXTURE_H
#define NETINFO_TESTS_HISTORYFIXTURE_H

#include <statistics/ConnectionHistory.h>

#include <sqlite3.h>

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

    QString file(const QString &name = QStringLiteral("history.sqlite")) const
    {
        return m_folder.path() + QLatin1Char('/') + name;
    }
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

/// Runs SQL in a file past the library, as a foreign program would.
inline bool runSql(const std::string &path, const char *sql)
{
    sqlite3 *handle = nullptr;
    const bool done = sqlite3_open(path.c_str(), &handle) == SQLITE_OK &&
                      sqlite3_busy_timeout(handle, 5000) == SQLITE_OK &&
                      sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(handle);
    return done;
}

/// The first column of the first row that a query yields; null when it fails or yields none.
inline QByteArray querySql(const std::string &path, const char *sql)
{
    QByteArray answer;
    const auto take = [](void *target, int, char **values, char **) {
        *static_cast<QByteArray *>(target) = values[0];
        return 1;
    };
    sqlite3 *handle = nullptr;
    if (sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK)
        sqlite3_exec(handle, sql, take, &answer, nullptr);
    sqlite3_close(handle);
    return answer;
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
