#include "UsageScale.h"

#include "UsageText.h"

#include <cmath>

namespace {

constexpr int mostSteps = 5;

} // namespace

UsageScale::UsageScale(qint64 maximum)
{
    const UsageText::Unit unit = UsageText::unitFor(maximum);
    m_unitSize = unit.size;
    m_unit = unit.name;
    const double value = maximum > 0 ? static_cast<double>(maximum) / m_unitSize : mostSteps;
    const double least = value / mostSteps;
    const int exponent = static_cast<int>(std::floor(std::log10(least)));
    m_step = std::pow(10.0, exponent + 1);
    m_decimals = std::max(0, -exponent - 1);
    for (const double factor : {5.0, 2.0, 1.0}) {
        // A hair's breadth of the step for what division leaves behind.
        if (const double step = factor * std::pow(10.0, exponent); step >= least * (1 - 1e-9)) {
            m_step = step;
            m_decimals = std::max(0, -exponent);
        }
    }
    m_steps = std::max(1, static_cast<int>(std::ceil(value / m_step - 1e-9)));
}

QString UsageScale::label(int index, const QLocale &locale) const
{
    if (index == 0)
        return locale.toString(0);
    return locale.toString(index * m_step, 'f', m_decimals) + QLatin1Char(' ') + m_unit;
}
