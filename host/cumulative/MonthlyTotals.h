// What the cumulative window is filled with: three calendar months of local time, added up a profile.
#ifndef NETINFO_CUMULATIVE_MONTHLYTOTALS_H
#define NETINFO_CUMULATIVE_MONTHLYTOTALS_H

#include "AccumulateDlg.h"
#include "statistics/ConnectionHistory.h"

#include <QDate>
#include <QVector>

#include <cstdint>
#include <vector>

namespace MonthlyTotals {

/// The starts of the month before last, of the last, of this and of the next month in local time, as UTC seconds.
std::vector<std::int64_t> boundaries(const QDate &today);

/// The window's records from the totals between those boundaries: first all profiles together, under the string ID
/// "IDS_COMBO_ALLAPN", then one record a profile and month in which the profile had a connection, months ascending,
/// stamped with the month. Amounts are in MB (1,048,576 bytes) with two decimals and a point.
QVector<AccumulateDialogRecord> records(const std::vector<zelk::PeriodTotal> &totals, const QDate &today);

} // namespace MonthlyTotals

#endif
