// Texts of times and amounts. The toolkit's general formatter and parser cost more than all the rest of a row, so the
// usual forms are handled here and everything unusual is left to the toolkit.
#include "Conversion.h"

#include "QtCompat.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace {

/// The value of up to nine decimal digits and nothing else; -1 for any other text.
int plainNumber(const char *text)
{
    int value = 0;
    int length = 0;
    for (; text[length] >= '0' && text[length] <= '9'; ++length) {
        if (length == 9)
            return -1;
        value = value * 10 + (text[length] - '0');
    }
    return length > 0 && text[length] == '\0' ? value : -1;
}

QChar *writeTwoDigits(QChar *out, int value)
{
    *out++ = QLatin1Char(static_cast<char>('0' + value / 10));
    *out++ = QLatin1Char(static_cast<char>('0' + value % 10));
    return out;
}

void writeTime(QChar *out, int secondOfDay)
{
    out = writeTwoDigits(out, secondOfDay / 3600);
    out = writeTwoDigits(out, secondOfDay / 60 % 60);
    writeTwoDigits(out, secondOfDay % 60);
}

/// The date in the Gregorian calendar some days after 1970-01-01, or before. Counts years from March, so that a leap
/// day is a year's last.
struct CivilDate {
    explicit CivilDate(int daysSince1970)
    {
        const int days = daysSince1970 + 719468; // since 0000-03-01
        const int era = days / 146097;           // of 400 years
        const int dayOfEra = days % 146097;
        const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
        const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
        const int monthFromMarch = (5 * dayOfYear + 2) / 153;
        day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
        month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
        year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    }

    int year;
    int month;
    int day;
};

/// Seconds by which local time is ahead of UTC, as the toolkit has it.
int systemOffset(int seconds)
{
    const QDateTime local = compat::localFromSeconds(seconds);
    const qint64 days = QDate(1970, 1, 1).daysTo(local.date());
    return static_cast<int>(days * 24 * 60 * 60 + QTime(0, 0).secsTo(local.time()) - seconds);
}

/// The decimal number of \a length ASCII digits from \a text, or -1 when there is anything else among them.
int digits(const QChar *text, int length)
{
    int value = 0;
    for (int i = 0; i < length; ++i) {
        const ushort unit = text[i].unicode();
        if (unit < '0' || unit > '9')
            return -1;
        value = value * 10 + (unit - '0');
    }
    return value;
}

/// \a value times 100, rounded half to even from its exact binary value as printf does. For 0 <= value < 2^53.
quint64 roundedHundredths(double value)
{
    int exponent = 0;
    const double fraction = std::frexp(value, &exponent);
    const quint64 scaled = static_cast<quint64>(std::ldexp(fraction, 53)) * 100; // below 2^60
    const int shift = 53 - exponent;                                             // 0 or more, value being below 2^53
    if (shift > 60)
        return 0;
    const quint64 whole = scaled >> shift;
    const quint64 rest = scaled - (whole << shift);
    const quint64 half = shift > 0 ? quint64(1) << (shift - 1) : 0;
    const bool isUp = rest > half || (rest == half && half > 0 && whole % 2 == 1);
    return isUp ? whole + 1 : whole;
}

/// The form of amounts of 2^53 and more, which have no fraction, and of what is no finite number.
QString wholeNumberText(double value)
{
    char buffer[400]; // the largest double has 309 digits
    std::snprintf(buffer, sizeof(buffer), "%.0f", value);
    const QString text = QLatin1String(buffer);
    return std::isfinite(value) ? text + QLatin1String(".00") : text;
}

} // namespace

namespace conversion {

int toInt(const char *text)
{
    const int plain = plainNumber(text);
    return plain >= 0 ? plain : QString::fromLatin1(text).toInt();
}

double toDouble(const char *text)
{
    const int plain = plainNumber(text);
    return plain >= 0 ? plain : QString::fromLatin1(text).toDouble();
}

LocalClock::LocalClock() : m_begin(0), m_end(-1), m_offset(0) {}

QString LocalClock::stampText(int seconds)
{
    const int day = 24 * 60 * 60;
    const qint64 local = static_cast<qint64>(seconds) + offsetAt(seconds);
    const int days = static_cast<int>(local >= 0 ? local / day : -((day - 1 - local) / day));
    const int rest = static_cast<int>(local - static_cast<qint64>(days) * day);
    const CivilDate date(days);
    QString text(14, QLatin1Char('0'));
    QChar *out = text.data();
    out = writeTwoDigits(out, date.year / 100); // 32 bits of seconds reach from 1901 to 2038: always four digits
    out = writeTwoDigits(out, date.year % 100);
    out = writeTwoDigits(out, date.month);
    out = writeTwoDigits(out, date.day);
    writeTime(out, rest);
    return text;
}

int LocalClock::offsetAt(int seconds)
{
    if (m_begin <= seconds && seconds <= m_end)
        return m_offset;
    const int step = 2 * 24 * 60 * 60;
    const qint64 steps = seconds >= 0 ? seconds / step : -((static_cast<qint64>(step) - 1 - seconds) / step);
    const qint64 begin = steps * step;
    const qint64 end = begin + step;
    if (begin < std::numeric_limits<int>::min() || end > std::numeric_limits<int>::max())
        return systemOffset(seconds);
    const int offsetAtBegin = m_end == begin && m_begin < m_end ? m_offset : systemOffset(static_cast<int>(begin));
    const int offsetAtEnd = systemOffset(static_cast<int>(end));
    if (offsetAtBegin != offsetAtEnd)
        return systemOffset(seconds);
    m_begin = begin;
    m_end = end;
    m_offset = offsetAtBegin;
    return m_offset;
}

QDateTime stampValue(const QString &stamp)
{
    if (stamp.size() == 14) {
        const QChar *const in = stamp.constData();
        const int year = digits(in, 4);
        const QDate date(year, digits(in + 4, 2), digits(in + 6, 2));
        const QTime time(digits(in + 8, 2), digits(in + 10, 2), digits(in + 12, 2));
        if (year >= 1900 && date.isValid() && time.isValid()) {
            const QDateTime value(date, time);
            // A time that the clocks skipped is the toolkit's to judge.
            if (value.isValid())
                return value;
        }
    }
    return QDateTime::fromString(stamp, QLatin1String("yyyyMMddhhmmss"));
}

QString durationText(int seconds)
{
    const int day = 24 * 60 * 60;
    const int rest = (seconds % day + day) % day;
    QString text(8, QLatin1Char(':'));
    QChar *const out = text.data();
    writeTwoDigits(out, rest / 3600);
    writeTwoDigits(out + 3, rest / 60 % 60);
    writeTwoDigits(out + 6, rest % 60);
    return text;
}

QString twoDecimals(double value)
{
    const double amount = std::fabs(value);
    if (!(amount < 9007199254740992.0)) // 2^53; false for what is no number, too
        return wholeNumberText(value);
    const quint64 hundredths = roundedHundredths(amount);
    QChar buffer[24];
    QChar *const end = buffer + 24;
    QChar *out = end - 2;
    writeTwoDigits(out, static_cast<int>(hundredths % 100));
    *--out = QLatin1Char('.');
    quint64 whole = hundredths / 100;
    do {
        *--out = QLatin1Char(static_cast<char>('0' + whole % 10));
        whole /= 10;
    } while (whole > 0);
    if (std::signbit(value))
        *--out = QLatin1Char('-');
    return QString(out, static_cast<int>(end - out));
}

} // namespace conversion
