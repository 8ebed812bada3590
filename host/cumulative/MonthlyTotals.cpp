#include "MonthlyTotals.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <limits>
#include <map>

namespace {

/// Oldest month first.
constexpr std::size_t monthCount = 3;
using Months = std::array<zelk::PeriodTotal, monthCount>;

QDate firstOfMonth(const QDate &today, int monthsBack)
{
    return QDate(today.year(), today.month(), 1).addMonths(-monthsBack);
}

QString amountText(std::int64_t bytes)
{
    return QString::asprintf("%.2f", static_cast<double>(bytes) / 1048576.0);
}

/// The window reads a whole number of 32 bits and shows what is left of it after full days, so a larger total loses
/// full days here and shows the same.
QString secondsText(std::int64_t seconds)
{
    constexpr std::int64_t day = 86400;
    return QString::number(seconds > std::numeric_limits<int>::max() ? seconds % day : seconds);
}

QString stamp(const QDate &month)
{
    return month.toString(QStringLiteral("yyyyMM")) + QStringLiteral("01000000");
}

AccumulateDialogRecord recordOf(const QString &name, const Months &months, const QDate &stampedMonth)
{
    AccumulateDialogRecord record;
    record.strProfileName = name;
    record.strDownloadedThisMonth = amountText(months[2].bytesDownloaded);
    record.strDownloadedLastMonth = amountText(months[1].bytesDownloaded);
    record.strDownloadedBeforeLastMonth = amountText(months[0].bytesDownloaded);
    record.strUploadedThisMonth = amountText(months[2].bytesUploaded);
    record.strUploadedLastMonth = amountText(months[1].bytesUploaded);
    record.strUploadedBeforeLastMonth = amountText(months[0].bytesUploaded);
    record.strTimeThisMonth = secondsText(months[2].connectedSeconds);
    record.strTimeLastMonth = secondsText(months[1].connectedSeconds);
    record.strTimeBeforeLastMonth = secondsText(months[0].connectedSeconds);
    record.strDateStamp = stamp(stampedMonth);
    return record;
}

void add(zelk::PeriodTotal &sum, const zelk::PeriodTotal &total)
{
    sum.connections += total.connections;
    sum.connectedSeconds += total.connectedSeconds;
    sum.bytesUploaded += total.bytesUploaded;
    sum.bytesDownloaded += total.bytesDownloaded;
}

} // namespace

std::vector<std::int64_t> MonthlyTotals::boundaries(const QDate &today)
{
    std::vector<std::int64_t> starts;
    // The first moment of the day, which is not 00:00 where the clock is put forward at midnight.
    for (int monthsBack = 2; monthsBack >= -1; --monthsBack)
        starts.push_back(firstOfMonth(today, monthsBack).startOfDay().toSecsSinceEpoch());
    return starts;
}

QVector<AccumulateDialogRecord> MonthlyTotals::records(const std::vector<zelk::PeriodTotal> &totals, const QDate &today)
{
    const std::vector<std::int64_t> starts = boundaries(today);
    Months all;
    std::map<std::string, Months> byProfile;
    for (const zelk::PeriodTotal &total : totals) {
        const auto start = std::find(starts.begin(), starts.end() - 1, total.periodStart);
        if (start == starts.end() - 1)
            continue;
        const auto month = static_cast<std::size_t>(start - starts.begin());
        add(all[month], total);
        add(byProfile[total.profile][month], total);
    }

    QVector<AccumulateDialogRecord> result;
    result << recordOf(QStringLiteral("IDS_COMBO_ALLAPN"), all, firstOfMonth(today, 0));
    for (std::size_t month = 0; month < monthCount; ++month) {
        for (const auto &[profile, months] : byProfile) {
            if (months[month].connections > 0)
                result << recordOf(QString::fromStdString(profile), months,
                                   firstOfMonth(today, static_cast<int>(monthCount - 1 - month)));
        }
    }
    return result;
}
