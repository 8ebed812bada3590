// The colours of the chart, chosen so that they stand out on a light ground as well as on a dark one.
#ifndef NETINFO_USAGE_USAGECOLOURS_H
#define NETINFO_USAGE_USAGECOLOURS_H

#include <QColor>

class QPalette;

struct UsageColours {
    explicit UsageColours(const QPalette &palette);

    QColor ground;
    QColor text;
    QColor faintText; ///< Axis labels.
    QColor grid;
    QColor weekend; ///< Behind Saturdays and Sundays.
    QColor selection;
    QColor downloaded;
    QColor uploaded;
};

/// Contrast of two opaque colours, 1 to 21, by relative luminance. Shapes need 3, text 4.5 to be told apart with ease.
double contrast(const QColor &a, const QColor &b);

#endif
