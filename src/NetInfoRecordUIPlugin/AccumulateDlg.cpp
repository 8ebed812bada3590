// The cumulative statistics window: building, opening, and the totals of one profile in one of three months.
#include "AccumulateDlg.h"

#include "NetInfoRecordLogic.h"
#include "Trace.h"
#include "ui/Change.h"
#include "ui/CommonUtils.h"
#include "ui/ExtendDialog.h"

#include <QComboBox>
#include <QDateTime>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTime>
#include <QVBoxLayout>

static const trace::Unit s_traceUnit = {"../../src/NetInfoRecordUIPlugin/AccumulateDlg", "20:40:36"};

/// Reports a missing object and gives up the operation.
#define TRACE_RETURN_IF_NULL(object)                                                                                   \
    do {                                                                                                               \
        if (!(object)) {                                                                                               \
            TRACE(trace::ArgIsNull);                                                                                   \
            return;                                                                                                    \
        }                                                                                                              \
    } while (false)

#define TRACE_RETURN_FALSE_IF_NULL(object)                                                                             \
    do {                                                                                                               \
        if (!(object)) {                                                                                               \
            TRACE(trace::ArgIsNull);                                                                                   \
            return false;                                                                                              \
        }                                                                                                              \
    } while (false)

AccumulateDlg *AccumulateDlg::m_pAccumulateDlgInst = 0;

/// The frame dies with the window that it was opened for, and takes every widget along. As a child of the frame this
/// tells the instance, so that it does not reach for them afterwards.
class AccumulateFrameEnd : public QObject
{
public:
    AccumulateFrameEnd(QObject *frame, AccumulateDlg *owner) : QObject(frame), m_owner(owner) {}
    ~AccumulateFrameEnd()
    {
        if (m_owner && m_owner->m_pDialog == parent()) {
            m_owner->forgetWidgets();
        }
    }

private:
    QPointer<AccumulateDlg> m_owner;
};

namespace {

void setText(QLabel *label, const QString &text)
{
    if (label) {
        label->setText(text);
    }
}

template <typename T> void deleteAndForget(T *&object)
{
    delete object;
    object = 0;
}

void setName(QWidget *widget, const char *name)
{
    if (widget) {
        widget->setObjectName(QString::fromLatin1(name));
    }
}

void setRectangle(QWidget *widget, int x, int y, int width, int height)
{
    if (widget) {
        widget->setGeometry(x, y, width, height);
    }
}

QString yearOf(const QString &stamp)
{
    return stamp.mid(0, 4);
}
QString monthOf(const QString &stamp)
{
    return stamp.mid(4, 2);
}
QString yearBefore(const QString &year)
{
    return QString::number(year.toInt() - 1);
}

QString today()
{
    return QDateTime::currentDateTime().toString(QString::fromLatin1("yyyyMMddhhmmss"));
}

/// The last months of the previous year come as a single character of that code rather than as digits. This is
/// required of the filter: in January and February it matches no record of November and December.
QString characterMonth(int month)
{
    return QString(QChar(static_cast<ushort>(month)));
}

void shiftToMonth(int monthsBack, QString &year, QString &month)
{
    const int number = month.toInt();
    if (monthsBack != 1 && monthsBack != 2) {
        return;
    }
    if (number <= monthsBack) {
        year = yearBefore(year);
        month = characterMonth(number + 12 - monthsBack);
    } else {
        month = QString::number(number - monthsBack);
    }
}

/// Counts from midnight round the clock: a day and more wraps.
QString timeText(const QString &seconds)
{
    const int secondsOfDay = 24 * 60 * 60;
    return QTime(0, 0).addSecs(seconds.toInt() % secondsOfDay).toString(QString::fromLatin1("hh:mm:ss"));
}

/// Leaves the texts alone for anything but one of the three months.
void pickFields(const AccumulateDialogRecord &record, int monthsBack, QString &uploaded, QString &downloaded,
                QString &time)
{
    if (monthsBack == 0) {
        uploaded = record.strUploadedThisMonth;
        downloaded = record.strDownloadedThisMonth;
        time = timeText(record.strTimeThisMonth);
    } else if (monthsBack == 1) {
        uploaded = record.strUploadedLastMonth;
        downloaded = record.strDownloadedLastMonth;
        time = timeText(record.strTimeLastMonth);
    } else if (monthsBack == 2) {
        uploaded = record.strUploadedBeforeLastMonth;
        downloaded = record.strDownloadedBeforeLastMonth;
        time = timeText(record.strTimeBeforeLastMonth);
    }
}

} // namespace

AccumulateDlg *AccumulateDlg::Instance()
{
    TRACE(trace::TimedStart);
    if (!m_pAccumulateDlgInst) {
        m_pAccumulateDlgInst = new AccumulateDlg;
    }
    TRACE(trace::TimedEnd);
    return m_pAccumulateDlgInst;
}

void AccumulateDlg::Destroy()
{
    TRACE(trace::TimedStart);
    deleteAndForget(m_pAccumulateDlgInst);
    TRACE(trace::TimedEnd);
}

AccumulateDlg::AccumulateDlg() : QObject(0)
{
    TRACE(trace::StartFile);
    forgetWidgets();
    m_pRecordLogic = 0;
    init();
    TRACE(trace::EndFile);
}

// The widgets stay: once the window was opened they belong to the frame, and the frame to the window behind it.
AccumulateDlg::~AccumulateDlg()
{
    TRACE(trace::StartFile);
    TRACE(trace::EndFile);
}

void AccumulateDlg::forgetWidgets()
{
    m_pDialog = 0;
    m_pMainWidget = 0;
    m_pSelectProfileLbl = 0;
    m_pSelectMonthLbl = 0;
    m_pStatisticsGrp = 0;
    m_pUploadedData = 0;
    m_pDownloadedData = 0;
    m_pTransferTime = 0;
    m_pProfileSelectionComboBox = 0;
    m_pMonthSelectionComboBox = 0;
    m_pPushButton = 0;
    m_pStatisticsLayout = 0;
    m_pDownloadedValueLbl = 0;
    m_pUploadedValueLbl = 0;
    m_pTransferTimeValueLbl = 0;
}

void AccumulateDlg::init()
{
    TRACE(trace::StartFile);
    m_pMainWidget = new QWidget(m_pDialog, Qt::WindowFlags());
    TRACE_RETURN_IF_NULL(m_pMainWidget);
    if (!createSelectors()) {
        return;
    }
    QVBoxLayout *outer = new QVBoxLayout;
    TRACE_RETURN_IF_NULL(outer);
    if (!layOutSelectors(outer) || !createStatistics(outer) || !createButton(outer) || !createValues()) {
        return;
    }
    m_pMainWidget->setLayout(outer);
    TRACE(trace::EndFile);
}

bool AccumulateDlg::createSelectors()
{
    m_pSelectProfileLbl = new QLabel;
    TRACE_RETURN_FALSE_IF_NULL(m_pSelectProfileLbl);
    m_pSelectMonthLbl = new QLabel;
    TRACE_RETURN_FALSE_IF_NULL(m_pSelectMonthLbl);
    m_pProfileSelectionComboBox = new QComboBox(m_pMainWidget);
    TRACE_RETURN_FALSE_IF_NULL(m_pProfileSelectionComboBox);
    m_pMonthSelectionComboBox = new QComboBox(m_pMainWidget);
    TRACE_RETURN_FALSE_IF_NULL(m_pMonthSelectionComboBox);
    return true;
}

bool AccumulateDlg::layOutSelectors(QVBoxLayout *outer)
{
    QHBoxLayout *profileRow = new QHBoxLayout;
    TRACE_RETURN_FALSE_IF_NULL(profileRow);
    QHBoxLayout *monthRow = new QHBoxLayout;
    TRACE_RETURN_FALSE_IF_NULL(monthRow);

    m_pProfileSelectionComboBox->setFixedWidth(185);
    profileRow->addWidget(m_pSelectProfileLbl);
    profileRow->addWidget(m_pProfileSelectionComboBox);
    profileRow->setContentsMargins(25, 0, 25, 0);
    monthRow->addWidget(m_pSelectMonthLbl);
    monthRow->addWidget(m_pMonthSelectionComboBox);
    monthRow->setContentsMargins(25, 0, 25, 0);
    outer->addLayout(profileRow);
    outer->addLayout(monthRow);
    return true;
}

bool AccumulateDlg::createStatistics(QVBoxLayout *outer)
{
    m_pStatisticsGrp = new QGroupBox;
    TRACE_RETURN_FALSE_IF_NULL(m_pStatisticsGrp);
    m_pUploadedData = new QLabel(m_pStatisticsGrp);
    TRACE_RETURN_FALSE_IF_NULL(m_pUploadedData);
    m_pDownloadedData = new QLabel;
    TRACE_RETURN_FALSE_IF_NULL(m_pDownloadedData);
    m_pTransferTime = new QLabel;
    TRACE_RETURN_FALSE_IF_NULL(m_pTransferTime);
    m_pStatisticsGrp->setFixedSize(354, 122);
    outer->addWidget(m_pStatisticsGrp);
    return true;
}

bool AccumulateDlg::createButton(QVBoxLayout *outer)
{
    m_pPushButton = new QPushButton;
    TRACE_RETURN_FALSE_IF_NULL(m_pPushButton);
    QHBoxLayout *buttonRow = new QHBoxLayout;
    TRACE_RETURN_FALSE_IF_NULL(buttonRow);
    buttonRow->addWidget(m_pPushButton, 0, Qt::AlignCenter);
    outer->addLayout(buttonRow);
    return true;
}

bool AccumulateDlg::createValues()
{
    m_pStatisticsLayout = new QFormLayout(m_pStatisticsGrp);
    TRACE_RETURN_FALSE_IF_NULL(m_pStatisticsLayout);
    m_pDownloadedValueLbl = new QLabel;
    TRACE_RETURN_FALSE_IF_NULL(m_pDownloadedValueLbl);
    m_pUploadedValueLbl = new QLabel;
    TRACE_RETURN_FALSE_IF_NULL(m_pUploadedValueLbl);
    m_pTransferTimeValueLbl = new QLabel;
    TRACE_RETURN_FALSE_IF_NULL(m_pTransferTimeValueLbl);
    return true;
}

void AccumulateDlg::destroy()
{
    TRACE(trace::StartFile);
    // Once shown, the value labels are the group box's children and would go with it before their own turn.
    QLabel *const values[] = {m_pDownloadedValueLbl, m_pUploadedValueLbl, m_pTransferTimeValueLbl};
    for (int i = 0; i < 3; ++i) {
        if (values[i]) {
            values[i]->setParent(0);
        }
    }
    deleteAndForget(m_pSelectProfileLbl);
    deleteAndForget(m_pSelectMonthLbl);
    deleteAndForget(m_pUploadedData);
    deleteAndForget(m_pDownloadedData);
    deleteAndForget(m_pTransferTime);
    deleteAndForget(m_pStatisticsGrp);
    deleteAndForget(m_pProfileSelectionComboBox);
    deleteAndForget(m_pMonthSelectionComboBox);
    deleteAndForget(m_pPushButton);
    deleteAndForget(m_pDownloadedValueLbl);
    deleteAndForget(m_pUploadedValueLbl);
    deleteAndForget(m_pTransferTimeValueLbl);
    deleteAndForget(m_pMainWidget);
    TRACE(trace::EndFile);
}

void AccumulateDlg::showWindow(QWidget *parent)
{
    TRACE(trace::StartFile);
    m_pRecordLogic = NetInfoRecordLogic::Instance();
    if (!m_pDialog) {
        createFrame(parent);
    }
    uiSetObjectName();
    uiSetGeometry();
    uiSetText();
    CommonUtils::MoveCentre(m_pDialog);
    // Plain connections, so a second opening of the same instance connects a second time: that is how the instance is
    // to behave, and why whoever opens the window destroys the instance in between.
    if (m_pPushButton) {
        connect(m_pPushButton, SIGNAL(clicked()), this, SLOT(onOKBtbClicked()));
    }
    addListener();
    onSelectComboItemOfTime(0);
    if (m_pDialog) {
        m_pDialog->setVisible(true);
    }
    TRACE(trace::EndFile);
}

void AccumulateDlg::createFrame(QWidget *parent)
{
    if (!m_pMainWidget) {
        init(); // The previous frame took the widgets along.
    }
    m_pDialog = new ExtendDialog(parent, Qt::Dialog | Qt::WindowCloseButtonHint, WIDGET_TYPE_DIALOG, false);
    if (!m_pDialog) {
        TRACE(trace::ArgIsNull);
        return;
    }
    new AccumulateFrameEnd(m_pDialog, this);
}

void AccumulateDlg::uiSetObjectName()
{
    TRACE(trace::StartFile);
    setName(m_pSelectProfileLbl, "m_pSelectProfileLbl");
    setName(m_pSelectMonthLbl, "m_pSelectMonthLbl");
    setName(m_pUploadedData, "m_pUploadedData");
    setName(m_pDownloadedData, "m_pDownloadedData");
    setName(m_pTransferTime, "m_pTransferTime");
    setName(m_pProfileSelectionComboBox, "m_pProfileSelectionComboBox");
    setName(m_pMonthSelectionComboBox, "m_pMonthSelectionComboBox");
    setName(m_pStatisticsGrp, "m_pStatisticsGrp");
    setName(m_pPushButton, "m_pPushButton");
    TRACE(trace::EndFile);
}

void AccumulateDlg::uiSetGeometry()
{
    TRACE(trace::StartFile);
    if (m_pMainWidget) {
        if (m_pDialog) {
            m_pDialog->AddMainWidget(m_pMainWidget);
            m_pDialog->setFixedSize(380, 320);
            m_pDialog->setModal(true);
        }
        setRectangle(m_pSelectProfileLbl, 30, 25, 100, 20);
        setRectangle(m_pSelectMonthLbl, 30, 50, 100, 20);
        setRectangle(m_pUploadedData, 20, 20, 100, 20);
        setRectangle(m_pDownloadedData, 20, 50, 100, 20);
        setRectangle(m_pTransferTime, 20, 80, 100, 20);
        setRectangle(m_pProfileSelectionComboBox, 155, 20, 180, 20);
        setRectangle(m_pMonthSelectionComboBox, 155, 50, 180, 20);
        setRectangle(m_pStatisticsGrp, 10, 110, 350, 120);
        setRectangle(m_pPushButton, 155, 255, 100, 20);
    }
    TRACE(trace::EndFile);
}

void AccumulateDlg::uiSetText()
{
    TRACE(trace::StartFile);
    if (!m_pDialog) {
        TRACE(trace::NotYetInitialized);
        return;
    }
    m_pDialog->setWindowTitle(tr("IDS_TITLE_TOTAL"));
    setText(m_pSelectProfileLbl, tr("IDS_STC_APN"));
    setText(m_pSelectMonthLbl, tr("IDS_STC_MONTH"));
    setText(m_pUploadedData, tr("IDS_TREE_UPLOADED_DATA"));
    setText(m_pDownloadedData, tr("IDS_TREE_DOWNLOADED_DATA"));
    setText(m_pTransferTime, tr("IDS_TREE_TIME_TRANSFER"));
    if (m_pProfileSelectionComboBox) {
        m_pProfileSelectionComboBox->clear();
    }
    if (m_pMonthSelectionComboBox) {
        m_pMonthSelectionComboBox->clear();
        m_pMonthSelectionComboBox->insertItems(0, QStringList()
                                                      << tr("IDS_COMBO_THISMONTH") << tr("IDS_COMBO_LASTMONTH")
                                                      << tr("IDS_COMBO_BEFORELASTMONTH"));
    }
    if (m_pStatisticsGrp) {
        m_pStatisticsGrp->setTitle(tr("IDS_GROUP_STATISTIC"));
    }
    if (m_pPushButton) {
        m_pPushButton->setText(tr("IDS_BTN_OK"));
    }
    TRACE(trace::EndFile);
}

void AccumulateDlg::addListener()
{
    TRACE(trace::Start);
    if (m_pMonthSelectionComboBox) {
        connect(m_pMonthSelectionComboBox, SIGNAL(activated(int)), this, SLOT(onSelectComboItemOfTime(int)));
    }
    if (m_pProfileSelectionComboBox) {
        connect(m_pProfileSelectionComboBox, SIGNAL(activated(int)), this, SLOT(onSelectComboItemOfProfile(int)));
    }
    TRACE(trace::End);
}

QString AccumulateDlg::tr(QString id)
{
    TRACE(trace::Start);
    QString text = Change::tr(id, "NetInfoRecordUIPlugin");
    TRACE(trace::End);
    return text;
}

void AccumulateDlg::onOKBtbClicked()
{
    TRACE(trace::Enter);
    if (m_pDialog) {
        m_pDialog->close();
    }
    TRACE(trace::Exit);
}

void AccumulateDlg::removeTimeComboElements()
{
    TRACE(trace::Enter);
    if (!m_pProfileSelectionComboBox) {
        TRACE(trace::ArgIsNull);
        return;
    }
    const int count = m_pProfileSelectionComboBox->count();
    for (int i = 0; i < count; ++i) {
        m_pProfileSelectionComboBox->removeItem(0);
    }
    TRACE(trace::Exit);
}

void AccumulateDlg::fillComboBoxItem()
{
    TRACE(trace::Enter);
    m_vecRecords.clear();
    TRACE_RETURN_IF_NULL(m_pRecordLogic);
    TRACE_RETURN_IF_NULL(m_pProfileSelectionComboBox);
    removeTimeComboElements();
    const int monthsBack = selectedMonth();
    const QVector<AccumulateDialogRecord> &records = m_pRecordLogic->m_vecAccumulate;
    if (records.isEmpty()) {
        m_pProfileSelectionComboBox->insertItem(0, tr("IDS_COMBO_ALLAPN"));
    }
    const QString now = today();
    QString year = yearOf(now);
    QString month = monthOf(now);
    shiftToMonth(monthsBack, year, month);
    if (month.length() == 1) {
        month.insert(0, QLatin1Char('0'));
    }
    for (int i = 0; i < records.size(); ++i) {
        const AccumulateDialogRecord record = records.value(i);
        if (i == 0) {
            m_pProfileSelectionComboBox->insertItem(0, tr(record.strProfileName));
        } else if (yearOf(record.strDateStamp) == year && monthOf(record.strDateStamp) == month) {
            m_pProfileSelectionComboBox->insertItem(i, record.strProfileName);
        } else {
            continue;
        }
        m_vecRecords.append(record);
    }
    TRACE(trace::Exit);
}

int AccumulateDlg::selectedMonth()
{
    if (!m_pMonthSelectionComboBox) {
        TRACE(trace::ArgIsNull);
        return -1;
    }
    return m_pMonthSelectionComboBox->currentIndex();
}

QString AccumulateDlg::checkLeapYear(int year)
{
    TRACE(trace::Enter);
    const bool isLeapYear = year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
    TRACE(trace::Exit);
    return QString::fromLatin1(isLeapYear ? "29" : "28");
}

void AccumulateDlg::setDateRange(QString year, int month)
{
    TRACE(trace::Enter);
    static const char *const lastDays[] = {"31", "", "31", "30", "31", "30", "31", "31", "30", "31", "30", "31"};
    QString range;
    if (month >= 1 && month <= 12) {
        const QString monthAndYear = QString::fromLatin1("/%1/").arg(month, 2, 10, QLatin1Char('0')) + year;
        const QString lastDay = month == 2 ? checkLeapYear(year.toInt()) : QString::fromLatin1(lastDays[month - 1]);
        // December's second blank is required.
        const QString separator = QString::fromLatin1(month == 12 ? " -  " : " - ");
        range = QString::fromLatin1("01") + monthAndYear + separator + lastDay + monthAndYear;
    }
    TRACE_RETURN_IF_NULL(m_pDialog);
    m_pDialog->setWindowTitle(tr("IDS_TITLE_TOTAL") + QString::fromLatin1(" ( ") + range + QString::fromLatin1(" ) "));
    TRACE(trace::Exit);
}

void AccumulateDlg::onSelectComboItemOfProfile(int index)
{
    TRACE(trace::Enter);
    fillComboBoxItem();
    if (m_pProfileSelectionComboBox) {
        m_pProfileSelectionComboBox->setCurrentIndex(index);
    }
    showTotals(selectedMonth());
    TRACE(trace::Exit);
}

void AccumulateDlg::onSelectComboItemOfTime(int index)
{
    TRACE(trace::Enter);
    fillComboBoxItem();
    const QString now = today();
    showTotals(index);
    if (index >= 0 && index <= 2) {
        const int month = monthOf(now).toInt() - index;
        if (month < 1) {
            setDateRange(yearBefore(yearOf(now)), month + 12);
        } else {
            setDateRange(yearOf(now), month);
        }
    }
    TRACE(trace::Exit);
}

void AccumulateDlg::showTotals(int monthsBack)
{
    AccumulateDialogRecord record;
    if (m_pProfileSelectionComboBox) {
        record = m_vecRecords.value(m_pProfileSelectionComboBox->currentIndex());
    } else {
        TRACE(trace::ArgIsNull);
    }
    QString uploaded;
    QString downloaded;
    QString time;
    pickFields(record, monthsBack, uploaded, downloaded, time);
    const QString unit = QLatin1Char(' ') + tr("IDS_STC_SINGLEPACKET_UNIT");
    setValue(m_pUploadedValueLbl, uploaded + unit);
    setValue(m_pDownloadedValueLbl, downloaded + unit);
    setValue(m_pTransferTimeValueLbl, time);
    layOutRows();
}

void AccumulateDlg::setValue(QLabel *label, const QString &text)
{
    TRACE_RETURN_IF_NULL(label);
    label->setText(text);
}

void AccumulateDlg::layOutRows()
{
    // The layout belongs to the group box and is gone with it.
    TRACE_RETURN_IF_NULL(m_pStatisticsGrp);
    TRACE_RETURN_IF_NULL(m_pStatisticsLayout);
    m_pStatisticsLayout->setContentsMargins(10, 20, 10, 10);
    m_pStatisticsLayout->setSpacing(10);
    // A row added for widgets that the layout already holds would leave an empty one behind, so each goes back into the
    // cell that it has just left.
    QLabel *const rows[][2] = {{m_pUploadedData, m_pUploadedValueLbl},
                               {m_pDownloadedData, m_pDownloadedValueLbl},
                               {m_pTransferTime, m_pTransferTimeValueLbl}};
    int row = 0;
    for (int i = 0; i < 3; ++i) {
        QLabel *const caption = rows[i][0];
        QLabel *const value = rows[i][1];
        if (!caption || !value) {
            TRACE(trace::ArgIsNull);
            continue;
        }
        m_pStatisticsLayout->removeWidget(caption);
        m_pStatisticsLayout->removeWidget(value);
        m_pStatisticsLayout->setWidget(row, QFormLayout::LabelRole, caption);
        m_pStatisticsLayout->setWidget(row, QFormLayout::FieldRole, value);
        ++row;
    }
}
