#include "UsageChart.h"

#include "UsageColours.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <algorithm>

namespace {

constexpr int gap = 8;

/// Rounded at the top only; values that exist are never too small to be seen.
void drawBar(QPainter &painter, const QRectF &room, double share, const QColor &colour)
{
    if (share <= 0)
        return;
    const double height = std::max(2.0, room.height() * share);
    const QRectF bar(room.left(), room.bottom() - height, room.width(), height);
    const double radius = std::min({3.0, bar.width() / 2, bar.height() / 2});
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(bar, radius, radius);
    path.addRect(bar.adjusted(0, radius, 0, 0));
    painter.fillPath(path.simplified(), colour);
}

} // namespace

UsageChart::UsageChart(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("UsageChart"));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void UsageChart::setTexts(const Texts &texts)
{
    m_texts = texts;
    update();
}

void UsageChart::setUsage(const QDate &first, const QDate &today, const std::vector<UsageSum> &days)
{
    m_first = first;
    m_today = today;
    m_days = days;
    qint64 largest = 0;
    m_isEmpty = true;
    for (const UsageSum &day : days) {
        largest = std::max({largest, day.downloaded, day.uploaded});
        m_isEmpty = m_isEmpty && day.connections == 0;
    }
    m_scale = UsageScale(largest);
    m_selected = std::min(m_selected, static_cast<int>(days.size()));
    update();
}

void UsageChart::select(int day)
{
    if (m_days.empty())
        return;
    m_selected = std::clamp(day, 1, static_cast<int>(m_days.size()));
    update();
    emit daySelected(m_selected);
}

QSize UsageChart::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 18};
}

QSize UsageChart::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 45, fontMetrics().height() * 10};
}

int UsageChart::today() const
{
    return m_today.year() == m_first.year() && m_today.month() == m_first.month() ? m_today.day() : 0;
}

QRectF UsageChart::plotIn(const QRect &area) const
{
    int labels = 0;
    for (int i = 0; i <= m_scale.steps(); ++i)
        labels = std::max(labels, fontMetrics().horizontalAdvance(m_scale.label(i, locale())));
    const int line = fontMetrics().height();
    return QRectF(area).adjusted(labels + 2 * gap, line + 3 * gap, -gap, -2 * line - gap);
}

QRectF UsageChart::column(const QRectF &plot, int day) const
{
    const double width = plot.width() / static_cast<double>(m_days.size());
    return {plot.left() + (day - 1) * width, plot.top(), width, plot.height()};
}

int UsageChart::dayAt(const QPoint &position) const
{
    for (int day = 1; day <= static_cast<int>(m_days.size()); ++day) {
        const QRectF room = columnOf(day);
        if (position.x() >= room.left() && position.x() < room.right())
            return day;
    }
    return 0;
}

void UsageChart::draw(QPainter &painter, const QRect &area) const
{
    drawChart(painter, area, 0);
}

void UsageChart::drawChart(QPainter &painter, const QRect &area, int selected) const
{
    const UsageColours colours(palette());
    const QRectF plot = plotIn(area);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font());
    drawLegend(painter, area, colours);
    if (m_days.empty())
        return;
    drawWeekends(painter, plot, colours);
    if (selected > 0) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(colours.selection);
        painter.drawRoundedRect(column(plot, selected).adjusted(0, -4, 0, fontMetrics().height() + 6), 3, 3);
    }
    drawGrid(painter, plot, colours);
    drawBars(painter, plot, colours);
    drawDays(painter, plot, colours);
    if (m_isEmpty) {
        painter.setPen(colours.text);
        painter.drawText(plot, Qt::AlignCenter | Qt::TextWordWrap, m_texts.nothing);
    }
}

void UsageChart::drawLegend(QPainter &painter, const QRect &area, const UsageColours &colours) const
{
    const int line = fontMetrics().height();
    const double square = line * 0.7;
    double x = plotIn(area).left();
    for (const auto &[name, colour] :
         {std::pair(m_texts.downloaded, colours.downloaded), std::pair(m_texts.uploaded, colours.uploaded)}) {
        const QRectF mark(x, area.top() + gap + (line - square) / 2, square, square);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawRoundedRect(mark, 2, 2);
        painter.setPen(colours.text);
        const int width = fontMetrics().horizontalAdvance(name);
        painter.drawText(QRectF(mark.right() + 6, area.top() + gap, width + 1, line), Qt::AlignVCenter, name);
        x = mark.right() + 6 + width + 3 * gap;
    }
}

void UsageChart::drawWeekends(QPainter &painter, const QRectF &plot, const UsageColours &colours) const
{
    for (int day = 1; day <= static_cast<int>(m_days.size()); ++day) {
        if (dateOf(day).dayOfWeek() >= Qt::Saturday)
            painter.fillRect(column(plot, day), colours.weekend);
    }
}

void UsageChart::drawGrid(QPainter &painter, const QRectF &plot, const UsageColours &colours) const
{
    const int line = fontMetrics().height();
    for (int i = 0; i <= m_scale.steps(); ++i) {
        const double y = qRound(plot.bottom() - plot.height() * i / m_scale.steps()) + 0.5;
        painter.setPen(QPen(i == 0 ? colours.faintText : colours.grid, 1));
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter.setPen(colours.faintText);
        painter.drawText(QRectF(plot.left() - gap - 400, y - line, 400, 2 * line), Qt::AlignRight | Qt::AlignVCenter,
                         m_scale.label(i, locale()));
    }
}

void UsageChart::drawBars(QPainter &painter, const QRectF &plot, const UsageColours &colours) const
{
    const double top = m_scale.top();
    for (int day = 1; day <= static_cast<int>(m_days.size()); ++day) {
        const QRectF room = column(plot, day);
        const double width = room.width() * 0.36;
        const QRectF left(room.center().x() - width, room.top(), width, room.height());
        drawBar(painter, left.adjusted(0, 0, -0.5, 0), static_cast<double>(usageOf(day).downloaded) / top,
                colours.downloaded);
        drawBar(painter, left.translated(width, 0).adjusted(0.5, 0, 0, 0),
                static_cast<double>(usageOf(day).uploaded) / top, colours.uploaded);
    }
}

void UsageChart::drawDays(QPainter &painter, const QRectF &plot, const UsageColours &colours) const
{
    const int line = fontMetrics().height();
    const int widest = fontMetrics().horizontalAdvance(QStringLiteral("30")) + 4;
    const bool fits = column(plot, 1).width() >= widest;
    for (int day = 1; day <= static_cast<int>(m_days.size()); ++day) {
        const bool isToday = day == today();
        if (!fits && !isToday && day != 1 && day % 5 != 0)
            continue;
        const QRectF room = column(plot, day);
        const QRectF label(room.center().x() - widest, plot.bottom() + 4, 2 * widest, line);
        QFont own = font();
        own.setBold(isToday);
        painter.setFont(own);
        painter.setPen(isToday ? colours.text : colours.faintText);
        painter.drawText(label, Qt::AlignCenter, locale().toString(day));
        if (isToday) {
            const int width = painter.fontMetrics().horizontalAdvance(m_texts.today) + 2;
            const double x = std::clamp(room.center().x() - width / 2.0, plot.left(), plot.right() - width);
            painter.drawText(QRectF(x, label.bottom(), width, line), Qt::AlignCenter, m_texts.today);
        }
        painter.setFont(font());
    }
}

void UsageChart::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    const UsageColours colours(palette());
    painter.fillRect(rect(), colours.ground);
    drawChart(painter, rect(), m_selected);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect().adjusted(1, 1, -1, -1);
        option.backgroundColor = colours.ground;
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void UsageChart::keyPressEvent(QKeyEvent *event)
{
    const int last = static_cast<int>(m_days.size());
    switch (event->key()) {
    case Qt::Key_Left:
        select(m_selected == 0 ? last : m_selected - 1);
        break;
    case Qt::Key_Right:
        select(m_selected + 1);
        break;
    case Qt::Key_Home:
        select(1);
        break;
    case Qt::Key_End:
        select(last);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void UsageChart::mousePressEvent(QMouseEvent *event)
{
    if (const int day = dayAt(event->pos()); day > 0)
        select(day);
}

bool UsageChart::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        emit tipWanted(dayAt(help->pos()), help->globalPos());
        return true;
    }
    return QWidget::event(event);
}

void UsageChart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    update();
}

void UsageChart::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    if (m_selected == 0 && event->reason() != Qt::MouseFocusReason && !m_days.empty())
        select(today() > 0 ? today() : 1);
}
