// Amounts and times as the page shows them.
#ifndef NETINFO_USAGE_USAGETEXT_H
#define NETINFO_USAGE_USAGETEXT_H

#include <QLocale>
#include <QString>

namespace UsageText {

struct Unit {
    double size; ///< In bytes.
    QString name;
};

/// The largest of KB, MB, GB and TB (multiples of 1024) that `bytes` holds at least one of; KB for less.
Unit unitFor(qint64 bytes);

/// With two decimals in the habits of `locale`, such as "1,234.50 MB".
QString amount(qint64 bytes, const QLocale &locale);

/// Hours, minutes and seconds; the hours are counted on beyond a day: "123:04:05".
QString duration(qint64 seconds);

} // namespace UsageText

#endif
