#include "UsageColours.h"

#include <QPalette>

#include <algorithm>
#include <cmath>

namespace {

QColor mixed(const QColor &a, const QColor &b, double share)
{
    const auto mix = [share](int from, int to) { return static_cast<int>(std::lround(from + (to - from) * share)); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

} // namespace

double contrast(const QColor &a, const QColor &b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

UsageColours::UsageColours(const QPalette &palette)
    : ground(palette.color(QPalette::Base))
    , text(palette.color(QPalette::Text))
    , faintText(mixed(text, ground, 0.3))
    , grid(mixed(ground, text, 0.15))
    , weekend(mixed(ground, text, 0.04))
    , selection(mixed(ground, palette.color(QPalette::Highlight), 0.25))
{
    const bool isDark = contrast(ground, Qt::white) > contrast(ground, Qt::black);
    downloaded = isDark ? QColor(0x5a, 0xad, 0xf5) : QColor(0x1c, 0x6d, 0xbf);
    uploaded = isDark ? QColor(0xf5, 0xa6, 0x42) : QColor(0xc4, 0x5a, 0x0a);
}
