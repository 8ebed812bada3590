#include "UsagePage.h"

#include "HostUi.h"
#include "UsageChart.h"
#include "UsageColours.h"
#include "UsageText.h"
#include "statistics/ConnectionHistory.h"

#include "ui/Change.h"
#include "ui/CommonUtils.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QSaveFile>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QToolButton>
#include <QToolTip>

#include <utility>

namespace {

constexpr int followEveryMs = 2000;

QString text(const char *key)
{
    return Change::tr(QLatin1String(key), QStringLiteral("Host"));
}

QString historyFile()
{
    return QString::fromStdString(zelk::ConnectionHistory::defaultPath());
}

/// Changes whenever the history does: new records go to the log beside the file first.
QStringList fileState()
{
    QStringList state;
    for (const char *suffix : {"", "-wal"}) {
        const QFileInfo info(historyFile() + QLatin1String(suffix));
        state << QString::number(info.size()) << QString::number(info.lastModified().toMSecsSinceEpoch());
    }
    return state;
}

template <typename Widget> Widget *named(const char *name)
{
    auto *widget = new Widget;
    widget->setObjectName(QLatin1String(name));
    return widget;
}

} // namespace

UsagePage::UsagePage(QWidget *parent, std::function<QDate()> today)
    : QWidget(parent)
    , m_today(std::move(today))
    , m_month(m_today())
    , m_previous(named<QToolButton>("UsagePreviousMonth"))
    , m_monthEdit(named<QDateEdit>("UsageMonth"))
    , m_next(named<QToolButton>("UsageNextMonth"))
    , m_thisMonth(named<QPushButton>("UsageThisMonth"))
    , m_profileLabel(new QLabel)
    , m_profiles(named<QComboBox>("UsageProfile"))
    , m_save(named<QPushButton>("UsageSave"))
    , m_stack(new QStackedWidget)
    , m_chart(new UsageChart)
    , m_problem(named<QLabel>("UsageProblem"))
    , m_day(named<QLabel>("UsageDay"))
{
    m_problem->setAlignment(Qt::AlignCenter);
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_day->setTextFormat(Qt::PlainText);
    m_day->setWordWrap(true);
    m_stack->addWidget(m_chart);
    m_stack->addWidget(m_problem);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addLayout(buildControls());
    layout->addWidget(buildTotals());
    layout->addWidget(m_stack, 1);
    layout->addWidget(m_day);
    connectControls();
    retranslate();
}

QHBoxLayout *UsagePage::buildControls()
{
    m_previous->setArrowType(Qt::LeftArrow);
    m_next->setArrowType(Qt::RightArrow);
    m_monthEdit->setButtonSymbols(QAbstractSpinBox::NoButtons);
    m_monthEdit->setAlignment(Qt::AlignCenter);
    m_monthEdit->setDisplayFormat(QStringLiteral("MMMM yyyy"));
    m_monthEdit->setMinimumDate(QDate(1970, 1, 1));
    m_monthEdit->setKeyboardTracking(false);
    m_profileLabel->setBuddy(m_profiles);
    m_profiles->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto *row = new QHBoxLayout;
    row->addWidget(m_previous);
    row->addWidget(m_monthEdit);
    row->addWidget(m_next);
    row->addWidget(m_thisMonth);
    row->addSpacing(16);
    row->addWidget(m_profileLabel);
    row->addWidget(m_profiles);
    row->addStretch(1);
    row->addWidget(m_save);
    return row;
}

QWidget *UsagePage::buildTotals()
{
    auto *totals = new QWidget;
    auto *row = new QHBoxLayout(totals);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(32);
    const std::array<const char *, 4> names = {"UsageDownloaded", "UsageUploaded", "UsageTime", "UsageConnections"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        m_captions[i] = new QLabel;
        m_values[i] = named<QLabel>(names[i]);
        QFont large = m_values[i]->font();
        large.setPointSizeF(large.pointSizeF() * 1.35);
        large.setWeight(QFont::DemiBold);
        m_values[i]->setFont(large);
        m_values[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        auto *cell = new QVBoxLayout;
        cell->setSpacing(0);
        cell->addWidget(m_captions[i]);
        cell->addWidget(m_values[i]);
        row->addLayout(cell);
    }
    row->addStretch(1);
    return totals;
}

void UsagePage::connectControls()
{
    connect(m_previous, &QToolButton::clicked, this, [this] { showMonth(month().addMonths(-1)); });
    connect(m_next, &QToolButton::clicked, this, [this] { showMonth(month().addMonths(1)); });
    connect(m_thisMonth, &QPushButton::clicked, this, [this] { showMonth(m_today()); });
    connect(m_monthEdit, &QDateEdit::dateChanged, this, &UsagePage::showMonth);
    connect(m_profiles, QOverload<int>::of(&QComboBox::activated), this, &UsagePage::showUsage);
    connect(m_save, &QPushButton::clicked, this, &UsagePage::askWhereToSave);
    connect(m_chart, &UsageChart::daySelected, this, &UsagePage::showDay);
    connect(m_chart, &UsageChart::tipWanted, this, [this](int day, const QPoint &position) {
        QToolTip::showText(position, day > 0 ? dayText(day) : QString(), m_chart);
    });
    connect(&m_follow, &QTimer::timeout, this, &UsagePage::follow);
    connect(HostUi::instance(), &HostUi::languageChanged, this, &UsagePage::retranslate);
}

void UsagePage::retranslate()
{
    setLocale(QLocale());
    m_previous->setToolTip(text("IDS_USAGE_PREVIOUS"));
    m_previous->setAccessibleName(text("IDS_USAGE_PREVIOUS"));
    m_next->setToolTip(text("IDS_USAGE_NEXT"));
    m_next->setAccessibleName(text("IDS_USAGE_NEXT"));
    m_monthEdit->setAccessibleName(text("IDS_USAGE_MONTH"));
    m_thisMonth->setText(text("IDS_USAGE_THIS_MONTH"));
    m_profileLabel->setText(text("IDS_USAGE_PROFILE"));
    m_save->setText(text("IDS_USAGE_SAVE"));
    const std::array<const char *, 4> captions = {"IDS_USAGE_DOWNLOADED", "IDS_USAGE_UPLOADED", "IDS_USAGE_TIME",
                                                  "IDS_USAGE_CONNECTIONS"};
    for (std::size_t i = 0; i < captions.size(); ++i) {
        m_captions[i]->setText(text(captions[i]));
        m_values[i]->setAccessibleName(text(captions[i]));
    }
    m_chart->setTexts(
        {text("IDS_USAGE_DOWNLOADED"), text("IDS_USAGE_UPLOADED"), text("IDS_USAGE_TODAY"), text("IDS_USAGE_NOTHING")});
    refresh();
}

void UsagePage::showMonth(const QDate &day)
{
    const QDate today = m_today();
    m_month = UsageMonth(qBound(QDate(1970, 1, 1), day, QDate(today.year(), today.month(), today.daysInMonth())));
    refresh();
}

void UsagePage::refresh()
{
    m_dayOfReading = m_today();
    m_fileState = fileState();
    try {
        const zelk::ConnectionHistory history(zelk::ConnectionHistory::defaultPath(),
                                              zelk::ConnectionHistory::Access::ReadOnly);
        m_month = UsageMonth::read(history, month());
        m_stack->setCurrentWidget(m_chart);
    } catch (const zelk::HistoryError &error) {
        m_month = UsageMonth(month());
        m_problem->setText(text("IDS_TOTALS_UNREADABLE").arg(QString::fromStdString(error.what())));
        m_stack->setCurrentWidget(m_problem);
    }
    const QSignalBlocker blocker(m_monthEdit);
    const QDate today = m_dayOfReading;
    m_monthEdit->setMaximumDate(QDate(today.year(), today.month(), today.daysInMonth()));
    m_monthEdit->setDate(month());
    const bool isThisMonth = month() == QDate(today.year(), today.month(), 1);
    m_next->setEnabled(!isThisMonth);
    m_thisMonth->setEnabled(!isThisMonth);
    fillProfiles();
    showUsage();
}

void UsagePage::fillProfiles()
{
    const std::optional<QString> chosen = profile();
    QStringList names = m_month.profiles();
    // The choice outlasts months in which the profile was not used.
    if (chosen && !names.contains(*chosen))
        names.prepend(*chosen);
    m_profiles->clear();
    m_profiles->addItem(Change::tr(QStringLiteral("IDS_COMBO_ALLAPN"), QStringLiteral("NetInfoRecordUIPlugin")));
    m_profiles->addItems(names);
    m_profiles->setCurrentIndex(chosen ? static_cast<int>(names.indexOf(*chosen)) + 1 : 0);
}

std::optional<QString> UsagePage::profile() const
{
    return m_profiles->currentIndex() > 0 ? std::optional(m_profiles->currentText()) : std::nullopt;
}

QString UsagePage::monthText() const
{
    return locale().toString(month(), QStringLiteral("MMMM yyyy"));
}

void UsagePage::showUsage()
{
    const UsageSum total = m_month.total(profile());
    m_values[0]->setText(UsageText::amount(total.downloaded, locale()));
    m_values[1]->setText(UsageText::amount(total.uploaded, locale()));
    m_values[2]->setText(UsageText::duration(total.seconds));
    m_values[3]->setText(locale().toString(total.connections));
    m_chart->setUsage(month(), m_dayOfReading, m_month.days(profile()));
    m_chart->setAccessibleName(text("IDS_USAGE_CHART").arg(monthText(), m_profiles->currentText()));
    showDay(m_chart->selectedDay());
}

QString UsagePage::dayText(int day) const
{
    const UsageSum &usage = m_chart->usageOf(day);
    return text("IDS_USAGE_DAY")
        .arg(locale().toString(m_chart->dateOf(day), QLocale::LongFormat),
             UsageText::amount(usage.downloaded, locale()), UsageText::amount(usage.uploaded, locale()),
             UsageText::duration(usage.seconds), locale().toString(usage.connections));
}

void UsagePage::showDay(int day)
{
    m_day->setText(day > 0 ? dayText(day) : text("IDS_USAGE_HINT"));
    m_chart->setAccessibleDescription(m_day->text());
}

void UsagePage::follow()
{
    if (m_fileState != fileState() || m_dayOfReading != m_today())
        refresh();
}

void UsagePage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
    m_follow.start(followEveryMs);
}

void UsagePage::hideEvent(QHideEvent *event)
{
    m_follow.stop();
    QWidget::hideEvent(event);
}

void UsagePage::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_PageUp)
        showMonth(month().addMonths(-1));
    else if (event->key() == Qt::Key_PageDown)
        showMonth(month().addMonths(1));
    else
        QWidget::keyPressEvent(event);
}

void UsagePage::drawTotals(QPainter &painter, const QRect &area) const
{
    const UsageColours colours(palette());
    const int width = area.width() / 4;
    for (std::size_t i = 0; i < m_values.size(); ++i) {
        const QRect cell(area.left() + static_cast<int>(i) * width, area.top(), width, area.height());
        painter.setFont(font());
        painter.setPen(colours.faintText);
        painter.drawText(cell, Qt::AlignLeft | Qt::AlignTop, m_captions[i]->text());
        painter.setFont(m_values[i]->font());
        painter.setPen(colours.text);
        painter.drawText(cell, Qt::AlignLeft | Qt::AlignBottom, m_values[i]->text());
    }
}

QImage UsagePage::picture() const
{
    constexpr int width = 960;
    constexpr int height = 560;
    constexpr int margin = 24;
    constexpr double fineness = 2.0;
    QImage image(QSize(width, height) * fineness, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(fineness);
    const UsageColours colours(palette());
    image.fill(colours.ground);
    QPainter painter(&image);
    QFont heading = m_values[0]->font();
    painter.setFont(heading);
    painter.setPen(colours.text);
    painter.drawText(QRect(margin, margin, width - 2 * margin, 30), Qt::AlignLeft | Qt::AlignVCenter,
                     monthText() + QStringLiteral(" \u2013 ") + m_profiles->currentText());
    drawTotals(painter, QRect(margin, margin + 44, width - 2 * margin, 48));
    m_chart->draw(painter, QRect(margin / 2, margin + 104, width - margin, height - margin - 112));
    return image;
}

std::optional<QString> UsagePage::savePicture(const QString &name) const
{
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || !picture().save(&file, "PNG") || !file.commit())
        return file.errorString();
    return std::nullopt;
}

void UsagePage::askWhereToSave()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QString suggestion =
        folder + QLatin1Char('/') + month().toString(QStringLiteral("'usage-'yyyy-MM")) + QStringLiteral(".png");
    QString name =
        QFileDialog::getSaveFileName(this, text("IDS_USAGE_SAVE_TITLE"), suggestion, QStringLiteral("PNG (*.png)"));
    if (name.isEmpty())
        return;
    if (QFileInfo(name).suffix().isEmpty())
        name += QStringLiteral(".png");
    const std::optional<QString> reason = savePicture(name);
    if (reason)
        CommonUtils::ShowMessage(QMessageBox::Warning, this, text("IDS_USAGE_SAVE_TITLE"),
                                 text("IDS_USAGE_NOT_SAVED").arg(name, *reason), QStringLiteral("IDS_HOST_OK"),
                                 QString(), QString(), true, Qt::Dialog, nullptr, QString(), true);
}
