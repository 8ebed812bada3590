#include "NavigationIcons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QtMath>

namespace {

/// Draws on a field of 16 by 16 units.
void drawHistory(QPainter &painter)
{
    painter.drawEllipse(QRectF(2, 2, 12, 12));
    painter.drawPolyline(QPolygonF({{8, 4.5}, {8, 8}, {10.5, 9.8}}));
}

void drawUsage(QPainter &painter)
{
    painter.drawLine(QPointF(2, 14), QPointF(14, 14));
    const QBrush fill(painter.pen().color());
    painter.fillRect(QRectF(3, 8, 2.4, 4.6), fill);
    painter.fillRect(QRectF(6.8, 3, 2.4, 9.6), fill);
    painter.fillRect(QRectF(10.6, 6, 2.4, 6.6), fill);
}

void drawSettings(QPainter &painter)
{
    const QColor colour = painter.pen().color();
    const qreal knobs[3] = {10.5, 5, 9};
    for (int i = 0; i < 3; ++i) {
        const qreal y = 3.5 + 4.5 * i;
        painter.drawLine(QPointF(2, y), QPointF(14, y));
        painter.setBrush(colour);
        painter.drawEllipse(QPointF(knobs[i], y), 1.6, 1.6);
        painter.setBrush(Qt::NoBrush);
    }
}

class Engine : public QIconEngine
{
public:
    explicit Engine(NavigationIcons::Shape shape) : m_shape(shape) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        Q_UNUSED(state)
        const QPalette palette = QApplication::palette();
        const QColor colour = mode == QIcon::Selected   ? palette.color(QPalette::HighlightedText)
                              : mode == QIcon::Disabled ? palette.color(QPalette::Disabled, QPalette::WindowText)
                                                        : palette.color(QPalette::WindowText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 16.0, rect.height() / 16.0);
        painter->setPen(QPen(colour, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        switch (m_shape) {
        case NavigationIcons::Shape::History:
            drawHistory(*painter);
            break;
        case NavigationIcons::Shape::Usage:
            drawUsage(*painter);
            break;
        case NavigationIcons::Shape::Settings:
            drawSettings(*painter);
            break;
        }
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new Engine(m_shape); }

private:
    NavigationIcons::Shape m_shape;
};

} // namespace

QIcon NavigationIcons::icon(Shape shape)
{
    return QIcon(new Engine(shape));
}
