// The vertical axis of the chart: from nothing to a little above the largest value, in steps of round numbers.
#ifndef NETINFO_USAGE_USAGESCALE_H
#define NETINFO_USAGE_USAGESCALE_H

#include <QLocale>
#include <QString>

/// Steps are 1, 2 or 5 times a power of ten in the unit (KB to TB, multiples of 1024) that suits the largest value.
class UsageScale
{
public:
    /// For values up to `maximum` bytes; at most five steps.
    explicit UsageScale(qint64 maximum = 0);

    int steps() const { return m_steps; }
    /// The value at the end of the axis, never less than the maximum, in bytes.
    double top() const { return m_step * m_steps * m_unitSize; }
    /// The text beside line `index`, 0 to steps().
    QString label(int index, const QLocale &locale) const;

private:
    double m_unitSize;
    QString m_unit;
    double m_step;
    int m_decimals;
    int m_steps;
};

#endif
