// The months of the cumulative window on the days that matter: which month the title names and which records the
// profile list takes, with the process's clock turned to that day.
#include "AccumulateDlg.h"
#include "FakeClock.h"
#include "FakeHostUi.h"
#include "NetInfoRecordLogic.h"

#include <QApplication>
#include <QComboBox>
#include <QLoggingCategory>
#include <QtTest>

namespace {

AccumulateDialogRecord record(const QString &name, const QString &stamp)
{
    AccumulateDialogRecord result;
    result.strProfileName = name;
    result.strDateStamp = stamp;
    return result;
}

/// A record for every month of the four years around the test's days, named after its month.
QVector<AccumulateDialogRecord> everyMonth()
{
    QVector<AccumulateDialogRecord> records;
    records << record("IDS_COMBO_ALLAPN", "");
    for (int year = 2022; year <= 2026; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const QString yearMonth = QString("%1%2").arg(year).arg(month, 2, 10, QChar('0'));
            records << record(yearMonth, yearMonth + "01000000");
        }
    }
    return records;
}

} // namespace

class AccumulateDatesTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void month_data();
    void month();
    void filterLooksForAControlCharacter_data();
    void filterLooksForAControlCharacter();
    void todayIsTakenOnEveryActivation();
    void februaryOfALeapYear();

private:
    QString title() const { return FakeHostUi::state().dialogs.last().titles.last(); }
    QStringList profiles() const;
    AccumulateDlg *open();
    void choose(int month);
};

void AccumulateDatesTest::cleanup()
{
    FakeClock::release();
    if (AccumulateDlg::m_pAccumulateDlgInst) {
        delete AccumulateDlg::m_pAccumulateDlgInst->m_pDialog;
    }
    AccumulateDlg::Destroy();
    NetInfoRecordLogic::Destroy();
    FakeHostUi::reset();
}

AccumulateDlg *AccumulateDatesTest::open()
{
    NetInfoRecordLogic::Instance()->m_vecAccumulate = everyMonth();
    AccumulateDlg *dlg = AccumulateDlg::Instance();
    dlg->showWindow(nullptr);
    return dlg;
}

/// As a user does: the current entry changes first, then the combo reports the activation.
void AccumulateDatesTest::choose(int month)
{
    QComboBox *combo = AccumulateDlg::Instance()->m_pMonthSelectionComboBox;
    combo->setCurrentIndex(month);
    QVERIFY(QMetaObject::invokeMethod(combo, "activated", Q_ARG(int, month)));
}

QStringList AccumulateDatesTest::profiles() const
{
    QStringList result;
    const QComboBox *combo = AccumulateDlg::Instance()->m_pProfileSelectionComboBox;
    for (int i = 0; i < combo->count(); ++i) {
        result << combo->itemText(i);
    }
    return result;
}

void AccumulateDatesTest::month_data()
{
    QTest::addColumn<QByteArray>("now");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("range");
    QTest::addColumn<QString>("taken"); ///< The record's month beside the first record; empty: none.

    const struct {
        const char *now;
        const char *ranges[3];
        const char *taken[3];
    } days[] = {
        {"2025-01-15 12:00:00",
         {"01/01/2025 - 31/01/2025", "01/12/2024 -  31/12/2024", "01/11/2024 - 30/11/2024"},
         {"202501", "", ""}},
        {"2025-02-15 12:00:00",
         {"01/02/2025 - 28/02/2025", "01/01/2025 - 31/01/2025", "01/12/2024 -  31/12/2024"},
         {"202502", "202501", ""}},
        {"2025-03-15 12:00:00",
         {"01/03/2025 - 31/03/2025", "01/02/2025 - 28/02/2025", "01/01/2025 - 31/01/2025"},
         {"202503", "202502", "202501"}},
        {"2025-04-15 12:00:00",
         {"01/04/2025 - 30/04/2025", "01/03/2025 - 31/03/2025", "01/02/2025 - 28/02/2025"},
         {"202504", "202503", "202502"}},
        {"2025-05-15 12:00:00",
         {"01/05/2025 - 31/05/2025", "01/04/2025 - 30/04/2025", "01/03/2025 - 31/03/2025"},
         {"202505", "202504", "202503"}},
        {"2025-06-15 12:00:00",
         {"01/06/2025 - 30/06/2025", "01/05/2025 - 31/05/2025", "01/04/2025 - 30/04/2025"},
         {"202506", "202505", "202504"}},
        {"2025-07-15 12:00:00",
         {"01/07/2025 - 31/07/2025", "01/06/2025 - 30/06/2025", "01/05/2025 - 31/05/2025"},
         {"202507", "202506", "202505"}},
        {"2025-08-15 12:00:00",
         {"01/08/2025 - 31/08/2025", "01/07/2025 - 31/07/2025", "01/06/2025 - 30/06/2025"},
         {"202508", "202507", "202506"}},
        {"2025-09-15 12:00:00",
         {"01/09/2025 - 30/09/2025", "01/08/2025 - 31/08/2025", "01/07/2025 - 31/07/2025"},
         {"202509", "202508", "202507"}},
        {"2025-10-15 12:00:00",
         {"01/10/2025 - 31/10/2025", "01/09/2025 - 30/09/2025", "01/08/2025 - 31/08/2025"},
         {"202510", "202509", "202508"}},
        {"2025-11-15 12:00:00",
         {"01/11/2025 - 30/11/2025", "01/10/2025 - 31/10/2025", "01/09/2025 - 30/09/2025"},
         {"202511", "202510", "202509"}},
        {"2025-12-15 12:00:00",
         {"01/12/2025 -  31/12/2025", "01/11/2025 - 30/11/2025", "01/10/2025 - 31/10/2025"},
         {"202512", "202511", "202510"}},
        {"2025-01-01 00:00:00",
         {"01/01/2025 - 31/01/2025", "01/12/2024 -  31/12/2024", "01/11/2024 - 30/11/2024"},
         {"202501", "", ""}},
        {"2024-02-29 12:00:00",
         {"01/02/2024 - 29/02/2024", "01/01/2024 - 31/01/2024", "01/12/2023 -  31/12/2023"},
         {"202402", "202401", ""}},
        {"2024-02-29 23:59:59",
         {"01/02/2024 - 29/02/2024", "01/01/2024 - 31/01/2024", "01/12/2023 -  31/12/2023"},
         {"202402", "202401", ""}},
        {"2024-03-01 00:00:00",
         {"01/03/2024 - 31/03/2024", "01/02/2024 - 29/02/2024", "01/01/2024 - 31/01/2024"},
         {"202403", "202402", "202401"}},
        {"2024-12-31 23:59:59",
         {"01/12/2024 -  31/12/2024", "01/11/2024 - 30/11/2024", "01/10/2024 - 31/10/2024"},
         {"202412", "202411", "202410"}},
    };
    const char *const names[] = {"this month", "last month", "the month before last"};
    for (const auto &day : days) {
        for (int index = 0; index < 3; ++index) {
            QTest::addRow("%s on %s", names[index], day.now)
                << QByteArray(day.now) << index << QString(day.ranges[index]) << QString(day.taken[index]);
        }
    }
}

void AccumulateDatesTest::month()
{
    QFETCH(QByteArray, now);
    QFETCH(int, index);
    QFETCH(QString, range);
    QFETCH(QString, taken);
    FakeClock::stopAt(now);

    open();
    if (index != 0) {
        choose(index);
    }

    QCOMPARE(title(), QString("IDS_TITLE_TOTAL ( %1 ) ").arg(range));
    const QStringList expected = QStringList() << "IDS_COMBO_ALLAPN" << taken;
    QCOMPARE(profiles(), expected.filter(QRegularExpression(".")));
    QCOMPARE(AccumulateDlg::Instance()->m_vecRecords.size(), profiles().size());
}

void AccumulateDatesTest::filterLooksForAControlCharacter_data()
{
    QTest::addColumn<QByteArray>("now");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("character");

    QTest::newRow("January, last month") << QByteArray("2025-01-31 08:00:00") << 1 << 12;
    QTest::newRow("January, the month before last") << QByteArray("2025-01-31 08:00:00") << 2 << 11;
    QTest::newRow("February, the month before last") << QByteArray("2025-02-01 08:00:00") << 2 << 12;
}

void AccumulateDatesTest::filterLooksForAControlCharacter()
{
    QFETCH(QByteArray, now);
    QFETCH(int, index);
    QFETCH(int, character);
    FakeClock::stopAt(now);

    open();
    QVector<AccumulateDialogRecord> records = everyMonth();
    records << record("odd", QString("20240") + QChar(static_cast<ushort>(character)) + "01000000");
    NetInfoRecordLogic::Instance()->m_vecAccumulate = records;
    choose(index);

    QCOMPARE(profiles(), QStringList() << "IDS_COMBO_ALLAPN"
                                       << "odd");
}

void AccumulateDatesTest::todayIsTakenOnEveryActivation()
{
    FakeClock::stopAt("2024-12-31 23:59:59");
    open();
    QCOMPARE(title(), QString("IDS_TITLE_TOTAL ( 01/12/2024 -  31/12/2024 ) "));
    QCOMPARE(profiles().last(), QString("202412"));

    FakeClock::stopAt("2025-01-01 00:00:00");
    choose(0);
    QCOMPARE(title(), QString("IDS_TITLE_TOTAL ( 01/01/2025 - 31/01/2025 ) "));
    QCOMPARE(profiles().last(), QString("202501"));
}

void AccumulateDatesTest::februaryOfALeapYear()
{
    FakeClock::stopAt("2024-04-30 23:59:59");
    open();
    choose(2);
    QCOMPARE(title(), QString("IDS_TITLE_TOTAL ( 01/02/2024 - 29/02/2024 ) "));
    QCOMPARE(profiles().last(), QString("202402"));
}

int main(int argc, char **argv)
{
    FakeClock::takeOver(argv);
    QLoggingCategory::setFilterRules("default.debug=false");
    QApplication app(argc, argv);
    AccumulateDatesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_accumulatedates.moc"
