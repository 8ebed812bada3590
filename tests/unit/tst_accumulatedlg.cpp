// The cumulative window: its widgets, texts, connections and the totals that it shows.
#include "AccumulateDlg.h"
#include "FakeClock.h"
#include "FakeHostUi.h"
#include "NetInfoRecordLogic.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

using FakeHostUi::state;

namespace {

QStringList s_trace;
QtMessageHandler s_previousHandler = nullptr;

void keepLine(QtMsgType, const QMessageLogContext &, const QString &line)
{
    s_trace << line;
}

/// Collects the trace lines while it lives.
class TraceKeeper
{
public:
    TraceKeeper()
    {
        s_trace.clear();
        s_previousHandler = qInstallMessageHandler(keepLine);
    }
    ~TraceKeeper() { qInstallMessageHandler(s_previousHandler); }
    QStringList lines(const char *pattern) const { return s_trace.filter(QRegularExpression(pattern)); }
};

AccumulateDialogRecord record(const QString &name, const QDate &month, const QString &tag)
{
    AccumulateDialogRecord result;
    result.strProfileName = name;
    result.strDownloadedThisMonth = tag + "d0";
    result.strDownloadedLastMonth = tag + "d1";
    result.strDownloadedBeforeLastMonth = tag + "d2";
    result.strUploadedThisMonth = tag + "u0";
    result.strUploadedLastMonth = tag + "u1";
    result.strUploadedBeforeLastMonth = tag + "u2";
    result.strTimeThisMonth = "60";
    result.strTimeLastMonth = "120";
    result.strTimeBeforeLastMonth = "180";
    result.strDateStamp = month.toString("yyyyMM") + "01000000";
    return result;
}

QDate thisMonth()
{
    const QDate today = QDate::currentDate();
    return QDate(today.year(), today.month(), 1);
}

} // namespace

class AccumulateDlgTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void metaObjectNamesItsSlots();
    void instanceIsOneUntilDestroyed();
    void destroyWithoutInstanceDoesNothing();
    void newInstanceHasWidgetsAndNoTexts();
    void layoutIsBuiltAsFixed();
    void openingMakesTheFrame();
    void widgetsAreNamed();
    void rectanglesAreSetOneByOne();
    void textsComeFromTheHost();
    void textsWaitForTheFrame();
    void monthsAreThreeAfterEveryTextChange();
    void secondOpeningConnectsAgain();
    void openingANewInstanceConnectsOnce();
    void onlyActivationIsListenedTo();
    void okButtonClosesAndKeeps();
    void closeButtonClosesAndKeeps();
    void emptyStoreShowsOneProfile();
    void monthPicksItsFields_data();
    void monthPicksItsFields();
    void unknownMonthShowsNothing();
    void unknownProfileShowsAnEmptyRecord();
    void timeWraps_data();
    void timeWraps();
    void monthChangeReturnsToTheFirstProfile();
    void filteredRecordsShiftTheOthers();
    void firstRecordIsTranslatedOthersAreNot();
    void rowsStayThree();
    void rowsKeepTheirPlaceWhenOneIsMissing();
    void leapYears_data();
    void leapYears();
    void dateRange_data();
    void dateRange();
    void missingWidgetsAreReported();
    void missingStoreIsReported();
    void tearDownDeletesEveryWidgetInOrder_data();
    void tearDownDeletesEveryWidgetInOrder();
    void frameMayGoWithItsParent();
    void destroyLeavesTheFrame();
    void traceLinesAreKept();

private:
    AccumulateDlg *dlg() { return AccumulateDlg::Instance(); }
    QString title() const { return state().dialogs.last().titles.last(); }
    void fill(const QVector<AccumulateDialogRecord> &records) { dlg()->m_pRecordLogic->m_vecAccumulate = records; }
    void activate(QComboBox *combo, int index);
    QStringList shown();
};

void AccumulateDlgTest::init()
{
    FakeClock::stopAt("2025-08-15 12:00:00");
    QVERIFY(!AccumulateDlg::m_pAccumulateDlgInst);
}

void AccumulateDlgTest::cleanup()
{
    if (AccumulateDlg::m_pAccumulateDlgInst) {
        delete AccumulateDlg::m_pAccumulateDlgInst->m_pDialog;
    }
    AccumulateDlg::Destroy();
    NetInfoRecordLogic::Destroy();
    FakeHostUi::reset();
}

/// As a user does: the current entry changes first, then the combo reports the activation.
void AccumulateDlgTest::activate(QComboBox *combo, int index)
{
    combo->setCurrentIndex(index);
    QVERIFY(QMetaObject::invokeMethod(combo, "activated", Q_ARG(int, index)));
}

/// Uploaded, downloaded and time as the window shows them.
QStringList AccumulateDlgTest::shown()
{
    return QStringList() << dlg()->m_pUploadedValueLbl->text() << dlg()->m_pDownloadedValueLbl->text()
                         << dlg()->m_pTransferTimeValueLbl->text();
}

void AccumulateDlgTest::metaObjectNamesItsSlots()
{
    const QMetaObject &meta = AccumulateDlg::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("AccumulateDlg"));
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    }
    QCOMPARE(methods, QStringList() << "onOKBtbClicked()"
                                    << "onSelectComboItemOfTime(int)"
                                    << "onSelectComboItemOfProfile(int)");
    QCOMPARE(dlg()->qt_metacast("AccumulateDlg"), static_cast<void *>(dlg()));
    QVERIFY(!dlg()->isWidgetType());
    QVERIFY(!dlg()->parent());
}

void AccumulateDlgTest::instanceIsOneUntilDestroyed()
{
    const QPointer<AccumulateDlg> first = AccumulateDlg::Instance();
    QCOMPARE(AccumulateDlg::Instance(), first.data());
    const QPointer<QWidget> tree = first->m_pMainWidget;
    AccumulateDlg::Destroy();
    QVERIFY(!first);
    QVERIFY(!AccumulateDlg::m_pAccumulateDlgInst);
    QVERIFY(AccumulateDlg::Instance()->m_pMainWidget != tree.data());
    delete tree.data();
}

void AccumulateDlgTest::destroyWithoutInstanceDoesNothing()
{
    AccumulateDlg::Destroy();
    AccumulateDlg::Destroy();
    QVERIFY(!AccumulateDlg::m_pAccumulateDlgInst);
}

void AccumulateDlgTest::newInstanceHasWidgetsAndNoTexts()
{
    AccumulateDlg *d = dlg();
    QVERIFY(!d->m_pDialog);
    QVERIFY(!d->m_pRecordLogic);
    QVERIFY(!NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
    QVERIFY(d->m_vecRecords.isEmpty());
    QVERIFY(!d->m_pMainWidget->parent());
    QCOMPARE(d->m_pProfileSelectionComboBox->parentWidget(), d->m_pMainWidget);
    QCOMPARE(d->m_pUploadedData->parentWidget(), static_cast<QWidget *>(d->m_pStatisticsGrp));
    QCOMPARE(d->m_pProfileSelectionComboBox->count(), 0);
    QCOMPARE(d->m_pMonthSelectionComboBox->count(), 0);
    QCOMPARE(d->m_pStatisticsLayout->rowCount(), 0);
    QVERIFY(state().trCalls.isEmpty());
    QVERIFY(state().dialogs.isEmpty());
}

void AccumulateDlgTest::layoutIsBuiltAsFixed()
{
    AccumulateDlg *d = dlg();
    QLayout *outer = d->m_pMainWidget->layout();
    QVERIFY(qobject_cast<QVBoxLayout *>(outer));
    QCOMPARE(outer->count(), 4);
    const QMargins margins(25, 0, 25, 0);
    QCOMPARE(outer->itemAt(0)->layout()->contentsMargins(), margins);
    QCOMPARE(outer->itemAt(0)->layout()->itemAt(0)->widget(), d->m_pSelectProfileLbl);
    QCOMPARE(outer->itemAt(0)->layout()->itemAt(1)->widget(), d->m_pProfileSelectionComboBox);
    QCOMPARE(outer->itemAt(1)->layout()->contentsMargins(), margins);
    QCOMPARE(outer->itemAt(1)->layout()->itemAt(0)->widget(), d->m_pSelectMonthLbl);
    QCOMPARE(outer->itemAt(1)->layout()->itemAt(1)->widget(), d->m_pMonthSelectionComboBox);
    QCOMPARE(outer->itemAt(2)->widget(), d->m_pStatisticsGrp);
    QCOMPARE(outer->itemAt(3)->layout()->itemAt(0)->widget(), d->m_pPushButton);
    QCOMPARE(outer->itemAt(3)->layout()->itemAt(0)->alignment(), Qt::AlignCenter);

    QCOMPARE(d->m_pProfileSelectionComboBox->minimumWidth(), 185);
    QCOMPARE(d->m_pProfileSelectionComboBox->maximumWidth(), 185);
    QCOMPARE(d->m_pMonthSelectionComboBox->maximumWidth(), QWIDGETSIZE_MAX);
    QCOMPARE(d->m_pStatisticsGrp->minimumSize(), QSize(354, 122));
    QCOMPARE(d->m_pStatisticsGrp->maximumSize(), QSize(354, 122));
    QCOMPARE(d->m_pStatisticsGrp->layout(), d->m_pStatisticsLayout);
}

void AccumulateDlgTest::openingMakesTheFrame()
{
    QWidget parent;
    dlg()->showWindow(&parent);

    QCOMPARE(state().dialogs.size(), 1);
    const FakeHostUi::DialogCall &call = state().dialogs.first();
    QCOMPARE(call.parent, &parent);
    QCOMPARE(static_cast<unsigned int>(call.flags), 0x08000003U);
    QCOMPARE(static_cast<int>(call.type), 1);
    QCOMPARE(call.isResizable, false);
    QCOMPARE(call.mainWidgets, QList<QWidget *>() << dlg()->m_pMainWidget);
    QCOMPARE(dlg()->m_pDialog, call.dialog.data());
    QCOMPARE(dlg()->m_pDialog->minimumSize(), QSize(380, 320));
    QCOMPARE(dlg()->m_pDialog->maximumSize(), QSize(380, 320));
    QVERIFY(dlg()->m_pDialog->isModal());
    QVERIFY(dlg()->m_pDialog->isVisible());
    QCOMPARE(state().centred, QList<QDialog *>() << dlg()->m_pDialog);
    QCOMPARE(dlg()->m_pRecordLogic, NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
    QCOMPARE(dlg()->m_pMonthSelectionComboBox->currentIndex(), 0);
}

void AccumulateDlgTest::widgetsAreNamed()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    QCOMPARE(d->m_pSelectProfileLbl->objectName(), QString("m_pSelectProfileLbl"));
    QCOMPARE(d->m_pSelectMonthLbl->objectName(), QString("m_pSelectMonthLbl"));
    QCOMPARE(d->m_pUploadedData->objectName(), QString("m_pUploadedData"));
    QCOMPARE(d->m_pDownloadedData->objectName(), QString("m_pDownloadedData"));
    QCOMPARE(d->m_pTransferTime->objectName(), QString("m_pTransferTime"));
    QCOMPARE(d->m_pProfileSelectionComboBox->objectName(), QString("m_pProfileSelectionComboBox"));
    QCOMPARE(d->m_pMonthSelectionComboBox->objectName(), QString("m_pMonthSelectionComboBox"));
    QCOMPARE(d->m_pStatisticsGrp->objectName(), QString("m_pStatisticsGrp"));
    QCOMPARE(d->m_pPushButton->objectName(), QString("m_pPushButton"));
    const QList<QObject *> unnamed = {d->m_pUploadedValueLbl, d->m_pDownloadedValueLbl, d->m_pTransferTimeValueLbl,
                                      d->m_pStatisticsLayout, d->m_pMainWidget,         d->m_pDialog};
    for (const QObject *object : unnamed) {
        QCOMPARE(object->objectName(), QString());
    }
}

void AccumulateDlgTest::rectanglesAreSetOneByOne()
{
    AccumulateDlg *d = dlg();
    d->uiSetGeometry();
    QCOMPARE(d->m_pSelectProfileLbl->geometry(), QRect(QPoint(30, 25), QPoint(129, 44)));
    QCOMPARE(d->m_pSelectMonthLbl->geometry(), QRect(30, 50, 100, 20));
    QCOMPARE(d->m_pUploadedData->geometry(), QRect(20, 20, 100, 20));
    QCOMPARE(d->m_pDownloadedData->geometry(), QRect(20, 50, 100, 20));
    QCOMPARE(d->m_pTransferTime->geometry(), QRect(20, 80, 100, 20));
    // The two fixed sizes hold against the rectangles.
    QCOMPARE(d->m_pProfileSelectionComboBox->geometry(), QRect(155, 20, 185, 20));
    QCOMPARE(d->m_pMonthSelectionComboBox->geometry(), QRect(155, 50, 180, 20));
    QCOMPARE(d->m_pStatisticsGrp->geometry(), QRect(10, 110, 354, 122));
    QCOMPARE(d->m_pPushButton->geometry(), QRect(155, 255, 100, 20));
}

void AccumulateDlgTest::textsComeFromTheHost()
{
    const QStringList keys = {"IDS_TITLE_TOTAL",
                              "IDS_STC_APN",
                              "IDS_STC_MONTH",
                              "IDS_TREE_UPLOADED_DATA",
                              "IDS_TREE_DOWNLOADED_DATA",
                              "IDS_TREE_TIME_TRANSFER",
                              "IDS_COMBO_THISMONTH",
                              "IDS_COMBO_LASTMONTH",
                              "IDS_COMBO_BEFORELASTMONTH",
                              "IDS_GROUP_STATISTIC",
                              "IDS_BTN_OK"};
    state().language = "xx";
    for (const QString &key : keys) {
        state().texts["xx"][key] = "text of " + key;
    }
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);

    QCOMPARE(state().dialogs.first().titles.first(), QString("text of IDS_TITLE_TOTAL"));
    QCOMPARE(d->m_pSelectProfileLbl->text(), QString("text of IDS_STC_APN"));
    QCOMPARE(d->m_pSelectMonthLbl->text(), QString("text of IDS_STC_MONTH"));
    QCOMPARE(d->m_pUploadedData->text(), QString("text of IDS_TREE_UPLOADED_DATA"));
    QCOMPARE(d->m_pDownloadedData->text(), QString("text of IDS_TREE_DOWNLOADED_DATA"));
    QCOMPARE(d->m_pTransferTime->text(), QString("text of IDS_TREE_TIME_TRANSFER"));
    QCOMPARE(d->m_pStatisticsGrp->title(), QString("text of IDS_GROUP_STATISTIC"));
    QCOMPARE(d->m_pPushButton->text(), QString("text of IDS_BTN_OK"));
    QStringList asked;
    for (const auto &call : qAsConst(state().trCalls)) {
        QCOMPARE(call.second, QString("NetInfoRecordUIPlugin"));
        asked << call.first;
    }
    QCOMPARE(asked.mid(0, keys.size()), keys);
}

void AccumulateDlgTest::textsWaitForTheFrame()
{
    AccumulateDlg *d = dlg();
    {
        const TraceKeeper trace;
        d->uiSetText();
        QCOMPARE(
            trace
                .lines("^AccumulateDlg is not yet initialized: "
                       "\\.\\./\\.\\./src/NetInfoRecordUIPlugin/AccumulateDlg uiSetText: \\d+: \\d\\d:\\d\\d:\\d\\d:$")
                .size(),
            1);
    }
    QVERIFY(state().trCalls.isEmpty());
    QCOMPARE(d->m_pMonthSelectionComboBox->count(), 0);
}

void AccumulateDlgTest::monthsAreThreeAfterEveryTextChange()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    for (int i = 0; i < 3; ++i) {
        d->uiSetText();
        QCOMPARE(d->m_pMonthSelectionComboBox->count(), 3);
        QCOMPARE(d->m_pMonthSelectionComboBox->itemText(0), QString("IDS_COMBO_THISMONTH"));
        QCOMPARE(d->m_pMonthSelectionComboBox->itemText(1), QString("IDS_COMBO_LASTMONTH"));
        QCOMPARE(d->m_pMonthSelectionComboBox->itemText(2), QString("IDS_COMBO_BEFORELASTMONTH"));
        QCOMPARE(d->m_pProfileSelectionComboBox->count(), 0);
    }
}

void AccumulateDlgTest::secondOpeningConnectsAgain()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    d->showWindow(nullptr);
    QCOMPARE(state().dialogs.size(), 1);
    QCOMPARE(state().dialogs.first().mainWidgets.size(), 2);

    for (QComboBox *combo : {d->m_pMonthSelectionComboBox, d->m_pProfileSelectionComboBox}) {
        const TraceKeeper trace;
        activate(combo, 0);
        QCOMPARE(trace.lines("^Enter: .* onSelectComboItemOf(Time|Profile):").size(), 2);
    }
    const TraceKeeper trace;
    QTest::mouseClick(d->m_pPushButton, Qt::LeftButton);
    QCOMPARE(trace.lines("^Enter: .* onOKBtbClicked:").size(), 2);
}

void AccumulateDlgTest::openingANewInstanceConnectsOnce()
{
    dlg()->showWindow(nullptr);
    delete dlg()->m_pDialog;
    AccumulateDlg::Destroy();
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    const TraceKeeper trace;
    activate(d->m_pMonthSelectionComboBox, 1);
    QCOMPARE(trace.lines("^Enter: .* onSelectComboItemOfTime:").size(), 1);
}

void AccumulateDlgTest::onlyActivationIsListenedTo()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    fill({record("IDS_COMBO_ALLAPN", thisMonth(), "all-")});
    d->onSelectComboItemOfTime(0);
    d->m_pMonthSelectionComboBox->setCurrentIndex(2);
    QCOMPARE(d->m_pUploadedValueLbl->text(), QString("all-u0 IDS_STC_SINGLEPACKET_UNIT"));
}

void AccumulateDlgTest::okButtonClosesAndKeeps()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    const QPointer<ExtendDialog> frame = d->m_pDialog;
    QTest::mouseClick(d->m_pPushButton, Qt::LeftButton);
    QVERIFY(frame);
    QVERIFY(!frame->isVisible());
    QCOMPARE(AccumulateDlg::m_pAccumulateDlgInst, d);
    QCOMPARE(d->m_pMonthSelectionComboBox->count(), 3);
}

void AccumulateDlgTest::closeButtonClosesAndKeeps()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    d->m_pDialog->close();
    QVERIFY(!d->m_pDialog->isVisible());
    QCOMPARE(AccumulateDlg::m_pAccumulateDlgInst, d);
}

void AccumulateDlgTest::emptyStoreShowsOneProfile()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    QCOMPARE(d->m_pProfileSelectionComboBox->count(), 1);
    QCOMPARE(d->m_pProfileSelectionComboBox->itemText(0), QString("IDS_COMBO_ALLAPN"));
    QVERIFY(d->m_vecRecords.isEmpty());
    QCOMPARE(shown(), QStringList() << " IDS_STC_SINGLEPACKET_UNIT"
                                    << " IDS_STC_SINGLEPACKET_UNIT"
                                    << "00:00:00");
}

void AccumulateDlgTest::monthPicksItsFields_data()
{
    QTest::addColumn<int>("month");
    QTest::addColumn<QStringList>("expected");
    const QString unit = " IDS_STC_SINGLEPACKET_UNIT";
    QTest::newRow("this month") << 0 << (QStringList() << "all-u0" + unit << "all-d0" + unit << "00:01:00");
    QTest::newRow("last month") << 1 << (QStringList() << "all-u1" + unit << "all-d1" + unit << "00:02:00");
    QTest::newRow("before last") << 2 << (QStringList() << "all-u2" + unit << "all-d2" + unit << "00:03:00");
}

void AccumulateDlgTest::monthPicksItsFields()
{
    QFETCH(int, month);
    QFETCH(QStringList, expected);
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    fill({record("IDS_COMBO_ALLAPN", thisMonth(), "all-")});

    activate(d->m_pMonthSelectionComboBox, month);
    QCOMPARE(shown(), expected);

    d->onSelectComboItemOfTime(month == 0 ? 1 : 0); // something else in between
    const QString titleBefore = title();
    activate(d->m_pProfileSelectionComboBox, 0);
    QCOMPARE(shown(), expected);
    QCOMPARE(title(), titleBefore);
}

void AccumulateDlgTest::unknownMonthShowsNothing()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    fill({record("IDS_COMBO_ALLAPN", thisMonth(), "all-")});
    const QStringList nothing = {" IDS_STC_SINGLEPACKET_UNIT", " IDS_STC_SINGLEPACKET_UNIT", ""};
    for (const int month : {3, -1}) {
        d->onSelectComboItemOfTime(0);
        const QStringList titles = state().dialogs.first().titles;
        d->onSelectComboItemOfTime(month);
        QCOMPARE(shown(), nothing);
        QCOMPARE(state().dialogs.first().titles, titles);
    }
    d->m_pMonthSelectionComboBox->setCurrentIndex(-1);
    d->onSelectComboItemOfProfile(0);
    QCOMPARE(shown(), nothing);
}

void AccumulateDlgTest::unknownProfileShowsAnEmptyRecord()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    fill({record("IDS_COMBO_ALLAPN", thisMonth(), "all-")});
    for (const int profile : {-1, 7}) {
        d->onSelectComboItemOfTime(0);
        d->onSelectComboItemOfProfile(profile);
        QCOMPARE(shown(), QStringList() << " IDS_STC_SINGLEPACKET_UNIT"
                                        << " IDS_STC_SINGLEPACKET_UNIT"
                                        << "00:00:00");
    }
}

void AccumulateDlgTest::timeWraps_data()
{
    QTest::addColumn<QString>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("hours, minutes, seconds") << "3725"
                                             << "01:02:05";
    QTest::newRow("last second of the day") << "86399"
                                            << "23:59:59";
    QTest::newRow("a day") << "86400"
                           << "00:00:00";
    QTest::newRow("a day and an hour") << "90000"
                                       << "01:00:00";
    QTest::newRow("the largest number") << "2147483647"
                                        << "03:14:07";
    QTest::newRow("too large") << "2147483648"
                               << "00:00:00";
    QTest::newRow("none") << ""
                          << "00:00:00";
    QTest::newRow("not a number") << "1h"
                                  << "00:00:00";
    QTest::newRow("negative") << "-1"
                              << "23:59:59";
}

void AccumulateDlgTest::timeWraps()
{
    QFETCH(QString, seconds);
    QFETCH(QString, expected);
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    AccumulateDialogRecord all = record("IDS_COMBO_ALLAPN", thisMonth(), "");
    all.strTimeThisMonth = seconds;
    fill({all});
    d->onSelectComboItemOfTime(0);
    QCOMPARE(d->m_pTransferTimeValueLbl->text(), expected);
}

void AccumulateDlgTest::monthChangeReturnsToTheFirstProfile()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    fill({record("IDS_COMBO_ALLAPN", thisMonth(), "all-"), record("web", thisMonth(), "web-")});
    d->onSelectComboItemOfTime(0);
    activate(d->m_pProfileSelectionComboBox, 1);
    QCOMPARE(d->m_pUploadedValueLbl->text(), QString("web-u0 IDS_STC_SINGLEPACKET_UNIT"));
    QCOMPARE(d->m_pProfileSelectionComboBox->currentIndex(), 1);

    activate(d->m_pMonthSelectionComboBox, 0);
    QCOMPARE(d->m_pUploadedValueLbl->text(), QString("all-u0 IDS_STC_SINGLEPACKET_UNIT"));
    QCOMPARE(d->m_pProfileSelectionComboBox->currentIndex(), 0);
}

void AccumulateDlgTest::filteredRecordsShiftTheOthers()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    fill({record("IDS_COMBO_ALLAPN", thisMonth(), "all-"), record("old", thisMonth().addYears(-1), "old-"),
          record("web", thisMonth(), "web-")});
    d->onSelectComboItemOfTime(0);
    QCOMPARE(d->m_pProfileSelectionComboBox->count(), 2);
    QCOMPARE(d->m_pProfileSelectionComboBox->itemText(1), QString("web"));
    QCOMPARE(d->m_vecRecords.size(), 2);
    activate(d->m_pProfileSelectionComboBox, 1);
    QCOMPARE(d->m_pDownloadedValueLbl->text(), QString("web-d0 IDS_STC_SINGLEPACKET_UNIT"));
}

void AccumulateDlgTest::firstRecordIsTranslatedOthersAreNot()
{
    state().texts[QString()]["first"] = "translated";
    state().texts[QString()]["second"] = "translated";
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    fill({record("first", thisMonth().addYears(-3), ""), record("second", thisMonth(), "")});
    d->onSelectComboItemOfTime(0);
    QCOMPARE(d->m_pProfileSelectionComboBox->itemText(0), QString("translated"));
    QCOMPARE(d->m_pProfileSelectionComboBox->itemText(1), QString("second"));
    QVERIFY(d->m_pProfileSelectionComboBox->itemData(0).isNull());
    QVERIFY(d->m_pProfileSelectionComboBox->itemIcon(0).isNull());
}

void AccumulateDlgTest::rowsStayThree()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    QRect places[6];
    for (int round = 0; round < 50; ++round) {
        activate(d->m_pMonthSelectionComboBox, round % 3);
        activate(d->m_pProfileSelectionComboBox, 0);

        const QFormLayout *layout = d->m_pStatisticsLayout;
        QCOMPARE(layout->rowCount(), 3);
        QCOMPARE(layout->count(), 6);
        QWidget *const expected[6] = {d->m_pUploadedData,       d->m_pUploadedValueLbl, d->m_pDownloadedData,
                                      d->m_pDownloadedValueLbl, d->m_pTransferTime,     d->m_pTransferTimeValueLbl};
        QCoreApplication::processEvents();
        for (int i = 0; i < 6; ++i) {
            const auto role = i % 2 == 0 ? QFormLayout::LabelRole : QFormLayout::FieldRole;
            QCOMPARE(layout->itemAt(i / 2, role)->widget(), expected[i]);
            QVERIFY(expected[i]->isVisible());
            places[i] = round == 0 ? expected[i]->geometry() : places[i];
            QCOMPARE(expected[i]->geometry(), places[i]);
        }
        QCOMPARE(layout->contentsMargins(), QMargins(10, 20, 10, 10));
        QCOMPARE(layout->spacing(), 10);
    }
}

void AccumulateDlgTest::rowsKeepTheirPlaceWhenOneIsMissing()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    delete d->m_pUploadedValueLbl;
    d->m_pUploadedValueLbl = nullptr;
    const TraceKeeper trace;
    d->onSelectComboItemOfTime(0);
    d->onSelectComboItemOfTime(0);
    QVERIFY(!trace.lines("^Arg is NULL: ").isEmpty());
    QVERIFY(d->m_pStatisticsLayout->rowCount() <= 3);
    QCOMPARE(d->m_pTransferTimeValueLbl->text(), QString("00:00:00"));
}

void AccumulateDlgTest::leapYears_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<QString>("lastDay");
    const QList<QPair<int, QString>> years = {{1900, "28"}, {2000, "29"}, {2004, "29"}, {2011, "28"},
                                              {2012, "29"}, {2100, "28"}, {0, "29"}};
    for (const auto &year : years) {
        QTest::addRow("%d", year.first) << year.first << year.second;
    }
}

void AccumulateDlgTest::leapYears()
{
    QFETCH(int, year);
    QFETCH(QString, lastDay);
    QCOMPARE(dlg()->checkLeapYear(year), lastDay);
}

void AccumulateDlgTest::dateRange_data()
{
    QTest::addColumn<QString>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<QString>("range");
    const QStringList lastDays = {"31", "28", "31", "30", "31", "30", "31", "31", "30", "31", "30"};
    for (int month = 1; month <= 11; ++month) {
        const QString monthText = QString("%1").arg(month, 2, 10, QChar('0'));
        QTest::addRow("month %d", month) << "2011" << month
                                         << QString("01/%1/2011 - %2/%1/2011").arg(monthText, lastDays.at(month - 1));
    }
    QTest::newRow("December") << "2011" << 12 << "01/12/2011 -  31/12/2011";
    QTest::newRow("February 2010") << "2010" << 2 << "01/02/2010 - 28/02/2010";
    QTest::newRow("leap year") << "2012" << 2 << "01/02/2012 - 29/02/2012";
    QTest::newRow("year is no number") << "year" << 2 << "01/02/year - 29/02/year";
    QTest::newRow("month 0") << "2011" << 0 << "";
    QTest::newRow("month 13") << "2011" << 13 << "";
    QTest::newRow("negative month") << "2011" << -1 << "";
}

void AccumulateDlgTest::dateRange()
{
    QFETCH(QString, year);
    QFETCH(int, month);
    QFETCH(QString, range);
    dlg()->showWindow(nullptr);
    dlg()->setDateRange(year, month);
    QCOMPARE(title(), "IDS_TITLE_TOTAL ( " + range + " ) ");
}

void AccumulateDlgTest::missingWidgetsAreReported()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    d->destroy();
    const TraceKeeper trace;
    d->uiSetObjectName();
    d->uiSetGeometry();
    d->uiSetText();
    d->addListener();
    QVERIFY(trace.lines("^Arg is NULL: ").isEmpty());
    d->removeTimeComboElements();
    QCOMPARE(
        trace.lines("^Arg is NULL: \\d\\d:\\d\\d:\\d\\d:\\d{3}: .*AccumulateDlg: removeTimeComboElements \\d+$").size(),
        1);
    d->onSelectComboItemOfTime(1);
    d->onSelectComboItemOfProfile(0);
    QCOMPARE(trace.lines("^Arg is NULL: .*: fillComboBoxItem \\d+$").size(), 2);
    d->onOKBtbClicked();
    QVERIFY(!d->m_pDialog->isVisible());
}

void AccumulateDlgTest::missingStoreIsReported()
{
    AccumulateDlg *d = dlg();
    d->showWindow(nullptr);
    fill({record("IDS_COMBO_ALLAPN", thisMonth(), "all-")});
    d->onSelectComboItemOfTime(0);
    d->m_pRecordLogic = nullptr;
    const TraceKeeper trace;
    d->fillComboBoxItem();
    QCOMPARE(trace.lines("^Arg is NULL: .*: fillComboBoxItem \\d+$").size(), 1);
    QVERIFY(d->m_vecRecords.isEmpty());
}

void AccumulateDlgTest::tearDownDeletesEveryWidgetInOrder_data()
{
    QTest::addColumn<bool>("isShown");
    QTest::newRow("never shown") << false;
    QTest::newRow("shown") << true;
}

void AccumulateDlgTest::tearDownDeletesEveryWidgetInOrder()
{
    QFETCH(bool, isShown);
    AccumulateDlg *d = dlg();
    if (isShown) {
        d->showWindow(nullptr);
    }
    const QList<QObject *> widgets = {d->m_pSelectProfileLbl,
                                      d->m_pSelectMonthLbl,
                                      d->m_pUploadedData,
                                      d->m_pDownloadedData,
                                      d->m_pTransferTime,
                                      d->m_pStatisticsGrp,
                                      d->m_pProfileSelectionComboBox,
                                      d->m_pMonthSelectionComboBox,
                                      d->m_pPushButton,
                                      d->m_pDownloadedValueLbl,
                                      d->m_pUploadedValueLbl,
                                      d->m_pTransferTimeValueLbl,
                                      d->m_pMainWidget};
    QList<int> order;
    QList<int> expected;
    for (int i = 0; i < widgets.size(); ++i) {
        connect(widgets.at(i), &QObject::destroyed, this, [&order, i] { order << i; });
        expected << i;
    }
    d->destroy();
    QCOMPARE(order, expected);
    QVERIFY(!d->m_pMainWidget && !d->m_pStatisticsGrp && !d->m_pTransferTimeValueLbl && !d->m_pPushButton);
    d->destroy();
    QCOMPARE(order, expected);
}

void AccumulateDlgTest::frameMayGoWithItsParent()
{
    AccumulateDlg *d = dlg();
    QWidget *parent = new QWidget;
    d->showWindow(parent);
    delete parent;
    QVERIFY(!d->m_pDialog);
    QVERIFY(!d->m_pMainWidget);
    d->onOKBtbClicked();
    d->onSelectComboItemOfTime(0);

    d->showWindow(nullptr);
    QVERIFY(d->m_pDialog->isVisible());
    QCOMPARE(d->m_pMonthSelectionComboBox->count(), 3);
    const TraceKeeper trace;
    activate(d->m_pMonthSelectionComboBox, 1);
    QCOMPARE(trace.lines("^Enter: .* onSelectComboItemOfTime:").size(), 1);
}

void AccumulateDlgTest::destroyLeavesTheFrame()
{
    QWidget parent;
    dlg()->showWindow(&parent);
    const QPointer<ExtendDialog> frame = dlg()->m_pDialog;
    AccumulateDlg::Destroy();
    QVERIFY(frame);
    delete frame.data();
    QVERIFY(!AccumulateDlg::m_pAccumulateDlgInst);
}

void AccumulateDlgTest::traceLinesAreKept()
{
    const TraceKeeper trace;
    dlg()->showWindow(nullptr);
    activate(dlg()->m_pProfileSelectionComboBox, 0);
    dlg()->onOKBtbClicked();
    dlg()->checkLeapYear(2000);
    const QString unit = "../../src/NetInfoRecordUIPlugin/AccumulateDlg";
    const QList<QByteArray> functions = {"AccumulateDlg",   "init",          "showWindow",
                                         "uiSetObjectName", "uiSetGeometry", "uiSetText"};
    for (const QByteArray &function : functions) {
        QVERIFY2(!trace.lines("^Start File: .*AccumulateDlg " + function + ": \\d+: 20:40:36:$").isEmpty(), function);
        QVERIFY2(!trace.lines("^End File: .*AccumulateDlg: " + function + ": \\d+: 20:40:36:$").isEmpty(), function);
    }
    const QByteArray time = "\\d\\d:\\d\\d:\\d\\d:\\d{3}";
    for (const QByteArray &function :
         {QByteArray("onSelectComboItemOfTime"), QByteArray("onSelectComboItemOfProfile"),
          QByteArray("fillComboBoxItem"), QByteArray("removeTimeComboElements"), QByteArray("setDateRange"),
          QByteArray("checkLeapYear"), QByteArray("onOKBtbClicked")}) {
        QVERIFY2(!trace.lines("^Enter: .*AccumulateDlg: " + function + ": \\d+: " + time + ":$").isEmpty(), function);
        QVERIFY2(!trace.lines("^Exit: .*AccumulateDlg: " + function + ": \\d+: " + time + ":$").isEmpty(), function);
    }
    QVERIFY(!trace.lines("^Start: " + time + ": .*AccumulateDlg: Instance \\d+$").isEmpty());
    QVERIFY(!trace.lines("^Start: .*AccumulateDlg tr: \\d+: " + time + ":$").isEmpty());
    for (const QString &line : qAsConst(s_trace)) {
        QVERIFY2(line.contains(unit) || line.contains("NetInfoRecordLogic"), qPrintable(line));
    }
}

int main(int argc, char **argv)
{
    FakeClock::takeOver(argv);
    QApplication app(argc, argv);
    AccumulateDlgTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_accumulatedlg.moc"
