#include "UsageMonth.h"

#include "statistics/ConnectionHistory.h"

#include <QDateTime>

#include <algorithm>

namespace {

/// The first moment of the day; of a day that the calendar leaves out, the next day's.
std::int64_t startOfDay(const QDate &day)
{
    const QDateTime start = day.startOfDay();
    return start.isValid() && start.date() == day ? start.toSecsSinceEpoch() : startOfDay(day.addDays(1));
}

} // namespace

UsageSum &UsageSum::operator+=(const UsageSum &other)
{
    downloaded += other.downloaded;
    uploaded += other.uploaded;
    seconds += other.seconds;
    connections += other.connections;
    return *this;
}

UsageMonth::UsageMonth(const QDate &day) : m_first(day.year(), day.month(), 1) {}

UsageMonth::UsageMonth(const QDate &day, const std::vector<zelk::PeriodTotal> &totals) : UsageMonth(day)
{
    const std::vector<std::int64_t> starts = boundaries(day);
    for (const zelk::PeriodTotal &total : totals) {
        // The last of equal starts: the day that follows one that was left out.
        const auto after = std::upper_bound(starts.begin(), starts.end(), total.periodStart);
        const auto index = static_cast<std::size_t>(after - starts.begin()) - 1;
        if (after == starts.begin() || index >= static_cast<std::size_t>(dayCount()))
            continue;
        auto &days = m_days[QString::fromStdString(total.profile)];
        days.resize(static_cast<std::size_t>(dayCount()));
        days[index] += {total.bytesDownloaded, total.bytesUploaded, total.connectedSeconds, total.connections};
    }
}

UsageMonth UsageMonth::read(const zelk::ConnectionHistory &history, const QDate &day)
{
    return UsageMonth(day, history.totals(boundaries(day)));
}

std::vector<std::int64_t> UsageMonth::boundaries(const QDate &day)
{
    const QDate first(day.year(), day.month(), 1);
    std::vector<std::int64_t> starts;
    for (int i = 0; i <= first.daysInMonth(); ++i)
        starts.push_back(startOfDay(first.addDays(i)));
    return starts;
}

QStringList UsageMonth::profiles() const
{
    QStringList names = m_days.keys();
    std::sort(names.begin(), names.end(),
              [](const QString &a, const QString &b) { return QString::localeAwareCompare(a, b) < 0; });
    return names;
}

std::vector<UsageSum> UsageMonth::days(const std::optional<QString> &profile) const
{
    std::vector<UsageSum> sums(static_cast<std::size_t>(dayCount()));
    for (auto entry = m_days.begin(); entry != m_days.end(); ++entry) {
        if (profile && entry.key() != *profile)
            continue;
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] += entry.value()[i];
    }
    return sums;
}

UsageSum UsageMonth::total(const std::optional<QString> &profile) const
{
    UsageSum sum;
    for (const UsageSum &day : days(profile))
        sum += day;
    return sum;
}
