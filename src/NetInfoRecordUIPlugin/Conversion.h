// The texts of a record, quickly: each function answers exactly what the toolkit's plain call named beside it answers.
#ifndef NETINFORECORD_CONVERSION_H
#define NETINFORECORD_CONVERSION_H

#include <QDateTime>
#include <QString>

namespace conversion {

/// QString::toInt() of the ASCII \a text: 0 when it is no number or does not fit.
int toInt(const char *text);

/// QString::toDouble() of the ASCII \a text: 0 when it is no number.
double toDouble(const char *text);

/// Local times for one run over many records. It asks the system for the offset from UTC every two days of time instead
/// of for every record: no zone has ever gone back and forth within less. Not to be kept: the zone may be changed.
class LocalClock
{
public:
    LocalClock();

    /// QDateTime::toString("yyyyMMddhhmmss") of the local time \a seconds after 1970-01-01 00:00 UTC.
    QString stampText(int seconds);

private:
    int offsetAt(int seconds);

    qint64 m_begin; ///< From here on...
    qint64 m_end;   ///< ...to here, both included, the offset is known.
    int m_offset;   ///< Seconds east of UTC.
};

/// QDateTime::fromString(stamp, "yyyyMMddhhmmss"): local time, invalid when \a stamp is malformed.
QDateTime stampValue(const QString &stamp);

/// QTime(0, 0).addSecs(seconds).toString("hh:mm:ss"): wraps every 24 hours in both directions.
QString durationText(int seconds);

/// printf's "%.2f" in the C locale, whatever setlocale() said.
QString twoDecimals(double value);

} // namespace conversion

#endif
