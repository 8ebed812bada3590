// The page "Usage" of the host's window: one month day by day, of one profile or of all, with its totals in full.
#ifndef NETINFO_USAGE_USAGEPAGE_H
#define NETINFO_USAGE_USAGEPAGE_H

#include "UsageMonth.h"

#include <QDate>
#include <QDateTime>
#include <QImage>
#include <QTimer>
#include <QWidget>

#include <array>
#include <functional>
#include <optional>

class QComboBox;
class QDateEdit;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QStackedWidget;
class QToolButton;
class UsageChart;

/// Follows the history file and the language by itself while it is shown. Page Up and Page Down change the month.
class UsagePage : public QWidget
{
    Q_OBJECT

public:
    /// `today` is asked whenever the page needs the date.
    explicit UsagePage(QWidget *parent = nullptr, std::function<QDate()> today = &QDate::currentDate);

    /// Reads the month again.
    void refresh();
    /// Asks for all texts again.
    void retranslate();

    /// Shows the month that `day` lies in; the current one at the latest.
    void showMonth(const QDate &day);
    QDate month() const { return m_month.first(); }

    /// Month, profile, totals and chart as one picture in the page's colours, twice as fine as the screen.
    QImage picture() const;
    /// Writes the picture as PNG. Nothing when it was written, otherwise the reason.
    std::optional<QString> savePicture(const QString &file) const;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QHBoxLayout *buildControls();
    QWidget *buildTotals();
    void connectControls();
    void follow();
    void fillProfiles();
    void showUsage();
    void showDay(int day);
    QString dayText(int day) const;
    std::optional<QString> profile() const;
    QString monthText() const;
    void askWhereToSave();
    void drawTotals(QPainter &painter, const QRect &area) const;

    std::function<QDate()> m_today;
    UsageMonth m_month;
    QDate m_dayOfReading;
    QStringList m_fileState; ///< Of the history file when it was read.
    QTimer m_follow;

    QToolButton *m_previous;
    QDateEdit *m_monthEdit;
    QToolButton *m_next;
    QPushButton *m_thisMonth;
    QLabel *m_profileLabel;
    QComboBox *m_profiles;
    QPushButton *m_save;
    std::array<QLabel *, 4> m_captions{};
    std::array<QLabel *, 4> m_values{};
    QStackedWidget *m_stack;
    UsageChart *m_chart;
    QLabel *m_problem;
    QLabel *m_day;
};

#endif
