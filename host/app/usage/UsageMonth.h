// What was transferred in one calendar month of local time, day by day and profile by profile.
#ifndef NETINFO_USAGE_USAGEMONTH_H
#define NETINFO_USAGE_USAGEMONTH_H

#include <QDate>
#include <QMap>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace zelk {
class ConnectionHistory;
struct PeriodTotal;
} // namespace zelk

/// A sum over connections; amounts in bytes.
struct UsageSum {
    qint64 downloaded = 0;
    qint64 uploaded = 0;
    qint64 seconds = 0;
    qint64 connections = 0;

    UsageSum &operator+=(const UsageSum &other);
};

/// A connection counts in full on the day on which it started.
class UsageMonth
{
public:
    /// No usage in the month that `day` lies in.
    explicit UsageMonth(const QDate &day = QDate(1970, 1, 1));
    /// `totals` are those between boundaries(day).
    UsageMonth(const QDate &day, const std::vector<zelk::PeriodTotal> &totals);
    /// One query. Throws zelk::HistoryError.
    static UsageMonth read(const zelk::ConnectionHistory &history, const QDate &day);

    /// The starts of all days of the month and of the next month's first, as UTC seconds. A day that the local calendar
    /// leaves out begins and ends at the same moment.
    static std::vector<std::int64_t> boundaries(const QDate &day);

    const QDate &first() const { return m_first; }
    int dayCount() const { return m_first.daysInMonth(); }

    /// The profiles with a connection in this month, in the order of the language.
    QStringList profiles() const;
    /// One sum a day, of one profile or of all.
    std::vector<UsageSum> days(const std::optional<QString> &profile) const;
    UsageSum total(const std::optional<QString> &profile) const;

private:
    QDate m_first;
    QMap<QString, std::vector<UsageSum>> m_days;
};

#endif
