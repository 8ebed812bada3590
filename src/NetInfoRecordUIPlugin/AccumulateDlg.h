// The cumulative statistics window and the record of monthly totals that it shows.
#ifndef NETINFORECORD_ACCUMULATEDLG_H
#define NETINFORECORD_ACCUMULATEDLG_H

#include "QtCompat.h"

#include <QObject>
#include <QString>
#include <QVector>

class ExtendDialog;
class NetInfoRecordLogic;
class QComboBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QPushButton;
class QVBoxLayout;
class QWidget;

/// Totals of one profile: amounts as display numbers without a unit, times as whole seconds in decimal.
struct AccumulateDialogRecord {
    QString strProfileName; ///< For the first record of a list a string ID, otherwise a name.
    QString strDownloadedThisMonth;
    QString strDownloadedLastMonth;
    QString strDownloadedBeforeLastMonth;
    QString strUploadedThisMonth;
    QString strUploadedLastMonth;
    QString strUploadedBeforeLastMonth;
    QString strTimeThisMonth;
    QString strTimeLastMonth;
    QString strTimeBeforeLastMonth;
    QString strDateStamp; ///< "yyyyMMddhhmmss"; year and month decide in which month's list the record stands.
};

/// The window. Exported: whoever opens it calls Instance(), showWindow() and, once it is closed, Destroy().
class Q_DECL_EXPORT AccumulateDlg : public QObject
{
    Q_OBJECT

public:
    static AccumulateDlg *Instance();
    static void Destroy();

    AccumulateDlg();
    ~AccumulateDlg();

    void init();
    void destroy();
    void showWindow(QWidget *parent);
    void uiSetObjectName();
    void uiSetGeometry();
    void uiSetText();
    void addListener();
    QString tr(QString id);

    void fillComboBoxItem();
    void removeTimeComboElements();
    QString checkLeapYear(int year);
    void setDateRange(QString year, int month);

public slots:
    void onOKBtbClicked();
    void onSelectComboItemOfTime(int index);
    void onSelectComboItemOfProfile(int index);

public:
    static AccumulateDlg *m_pAccumulateDlgInst;

    ExtendDialog *m_pDialog;
    QWidget *m_pMainWidget;
    QLabel *m_pSelectProfileLbl;
    QLabel *m_pSelectMonthLbl;
    QGroupBox *m_pStatisticsGrp;
    QLabel *m_pUploadedData;
    QLabel *m_pDownloadedData;
    QLabel *m_pTransferTime;
    QComboBox *m_pProfileSelectionComboBox;
    QComboBox *m_pMonthSelectionComboBox;
    QPushButton *m_pPushButton;
    QFormLayout *m_pStatisticsLayout;
    QLabel *m_pDownloadedValueLbl;
    QLabel *m_pUploadedValueLbl;
    QLabel *m_pTransferTimeValueLbl;
    NetInfoRecordLogic *m_pRecordLogic;
    QVector<AccumulateDialogRecord> m_vecRecords;

private:
    friend class AccumulateFrameEnd;

    bool createSelectors();
    bool layOutSelectors(QVBoxLayout *outer);
    bool createStatistics(QVBoxLayout *outer);
    bool createButton(QVBoxLayout *outer);
    bool createValues();
    void createFrame(QWidget *parent);
    void forgetWidgets();
    int selectedMonth();
    void showTotals(int monthsBack);
    void setValue(QLabel *label, const QString &text);
    void layOutRows();
};

#endif
