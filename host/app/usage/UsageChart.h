// The chart: two bars a day, downloaded and uploaded, with a day that can be selected by mouse and keyboard.
#ifndef NETINFO_USAGE_USAGECHART_H
#define NETINFO_USAGE_USAGECHART_H

#include "UsageMonth.h"
#include "UsageScale.h"

#include <QWidget>

#include <vector>

struct UsageColours;

/// Left and Right go from day to day, Home and End to the month's first and last.
class UsageChart : public QWidget
{
    Q_OBJECT

public:
    struct Texts {
        QString downloaded;
        QString uploaded;
        QString today;
        QString nothing; ///< Shown where the month has no connection.
    };

    explicit UsageChart(QWidget *parent = nullptr);

    void setTexts(const Texts &texts);
    /// `days` holds one sum for each day of the month of `first`. The selection stays where the month has that day.
    void setUsage(const QDate &first, const QDate &today, const std::vector<UsageSum> &days);

    /// The selected day of the month, 1 to 31; 0: none.
    int selectedDay() const { return m_selected; }
    void select(int day);
    const UsageSum &usageOf(int day) const { return m_days.at(static_cast<std::size_t>(day - 1)); }
    QDate dateOf(int day) const { return m_first.addDays(day - 1); }

    /// Draws the chart without the marks of selection and focus.
    void draw(QPainter &painter, const QRect &area) const;

    /// The day whose column `position` lies in; 0 beside the columns.
    int dayAt(const QPoint &position) const;
    /// The column of a day, in the widget's coordinates.
    QRectF columnOf(int day) const { return column(plotIn(rect()), day); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void daySelected(int day);
    /// A tool tip for a day is wanted at a global position.
    void tipWanted(int day, const QPoint &position);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    QRectF plotIn(const QRect &area) const;
    QRectF column(const QRectF &plot, int day) const;
    int today() const;
    void drawChart(QPainter &painter, const QRect &area, int selected) const;
    void drawLegend(QPainter &painter, const QRect &area, const UsageColours &colours) const;
    void drawGrid(QPainter &painter, const QRectF &plot, const UsageColours &colours) const;
    void drawWeekends(QPainter &painter, const QRectF &plot, const UsageColours &colours) const;
    void drawBars(QPainter &painter, const QRectF &plot, const UsageColours &colours) const;
    void drawDays(QPainter &painter, const QRectF &plot, const UsageColours &colours) const;

    QDate m_first;
    QDate m_today;
    std::vector<UsageSum> m_days;
    UsageScale m_scale;
    Texts m_texts;
    int m_selected = 0;
    bool m_isEmpty = true;
};

#endif
