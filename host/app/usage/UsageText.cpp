#include "UsageText.h"

UsageText::Unit UsageText::unitFor(qint64 bytes)
{
    Unit unit{1024.0, QStringLiteral("KB")};
    for (const char *larger : {"MB", "GB", "TB"}) {
        if (static_cast<double>(bytes) < unit.size * 1024)
            break;
        unit = {unit.size * 1024, QLatin1String(larger)};
    }
    return unit;
}

QString UsageText::amount(qint64 bytes, const QLocale &locale)
{
    const Unit unit = unitFor(bytes);
    return locale.toString(static_cast<double>(bytes) / unit.size, 'f', 2) + QLatin1Char(' ') + unit.name;
}

QString UsageText::duration(qint64 seconds)
{
    const QLatin1Char zero('0');
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600)
        .arg(seconds / 60 % 60, 2, 10, zero)
        .arg(seconds % 60, 2, 10, zero);
}
