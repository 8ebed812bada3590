// The reckoning behind the cumulative window: where months begin, and the form in which totals are handed over.
#include "cumulative/MonthlyTotals.h"

#include <QDateTime>
#include <QtTest>

#include <ctime>

namespace {

zelk::PeriodTotal total(const char *profile, std::int64_t start, std::int64_t seconds, std::int64_t up,
                        std::int64_t down)
{
    zelk::PeriodTotal result;
    result.profile = profile;
    result.periodStart = start;
    result.connections = 1;
    result.connectedSeconds = seconds;
    result.bytesUploaded = up;
    result.bytesDownloaded = down;
    return result;
}

QStringList amounts(const AccumulateDialogRecord &record)
{
    return {record.strUploadedBeforeLastMonth,   record.strUploadedLastMonth,   record.strUploadedThisMonth,
            record.strDownloadedBeforeLastMonth, record.strDownloadedLastMonth, record.strDownloadedThisMonth};
}

QStringList times(const AccumulateDialogRecord &record)
{
    return {record.strTimeBeforeLastMonth, record.strTimeLastMonth, record.strTimeThisMonth};
}

void useZone(const QByteArray &zone)
{
    qputenv("TZ", zone);
    tzset();
}

} // namespace

class MonthlyTotalsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { useZone("UTC"); }
    void boundariesAreLocalMonths_data();
    void boundariesAreLocalMonths();
    void emptyHistoryHasAllProfilesAlone();
    void allProfilesComeFirstThenMonthsAscending();
    void everyRecordHoldsAllThreeMonths();
    void monthWithoutConnectionHasNoRecord();
    void connectionWithoutBytesIsListed();
    void sumsAreMadeBeforeRounding();
    void amountsHaveTwoDecimals_data();
    void amountsHaveTwoDecimals();
    void secondsFitTheWindow_data();
    void secondsFitTheWindow();
    void namesKeepTheirCharacters();
};

void MonthlyTotalsTest::boundariesAreLocalMonths_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDate>("today");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("universal time") << QByteArray("UTC") << QDate(2025, 8, 31)
                                    << QStringList{"2025-06-01T00:00:00Z", "2025-07-01T00:00:00Z",
                                                   "2025-08-01T00:00:00Z", "2025-09-01T00:00:00Z"};
    QTest::newRow("change of year") << QByteArray("Europe/Berlin") << QDate(2025, 1, 1)
                                    << QStringList{"2024-11-01T00:00:00+01:00", "2024-12-01T00:00:00+01:00",
                                                   "2025-01-01T00:00:00+01:00", "2025-02-01T00:00:00+01:00"};
    QTest::newRow("into summer time") << QByteArray("Europe/Berlin") << QDate(2025, 3, 30)
                                      << QStringList{"2025-01-01T00:00:00+01:00", "2025-02-01T00:00:00+01:00",
                                                     "2025-03-01T00:00:00+01:00", "2025-04-01T00:00:00+02:00"};
    QTest::newRow("out of summer time") << QByteArray("Europe/Berlin") << QDate(2025, 12, 31)
                                        << QStringList{"2025-10-01T00:00:00+02:00", "2025-11-01T00:00:00+01:00",
                                                       "2025-12-01T00:00:00+01:00", "2026-01-01T00:00:00+01:00"};
    QTest::newRow("leap day") << QByteArray("UTC") << QDate(2024, 2, 29)
                              << QStringList{"2023-12-01T00:00:00Z", "2024-01-01T00:00:00Z", "2024-02-01T00:00:00Z",
                                             "2024-03-01T00:00:00Z"};
    QTest::newRow("a month without a midnight")
        << QByteArray("America/Asuncion") << QDate(2023, 10, 15)
        << QStringList{"2023-08-01T00:00:00-04:00", "2023-09-01T00:00:00-04:00", "2023-10-01T01:00:00-03:00",
                       "2023-11-01T00:00:00-03:00"};
    QTest::newRow("a month with two midnights")
        << QByteArray("America/Havana") << QDate(2015, 11, 15)
        << QStringList{"2015-09-01T00:00:00-04:00", "2015-10-01T00:00:00-04:00", "2015-11-01T00:00:00-04:00",
                       "2015-12-01T00:00:00-05:00"};
}

void MonthlyTotalsTest::boundariesAreLocalMonths()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDate, today);
    QFETCH(QStringList, expected);
    useZone(zone);
    const std::vector<std::int64_t> boundaries = MonthlyTotals::boundaries(today);
    QCOMPARE(boundaries.size(), std::size_t(4));
    for (std::size_t i = 0; i < boundaries.size(); ++i) {
        QCOMPARE(boundaries[i],
                 QDateTime::fromString(expected.at(static_cast<int>(i)), Qt::ISODate).toSecsSinceEpoch());
    }
}

void MonthlyTotalsTest::emptyHistoryHasAllProfilesAlone()
{
    const auto records = MonthlyTotals::records({}, QDate(2025, 8, 15));
    QCOMPARE(records.size(), 1);
    QCOMPARE(records[0].strProfileName, QString("IDS_COMBO_ALLAPN"));
    QCOMPARE(records[0].strDateStamp, QString("20250801000000"));
    QCOMPARE(amounts(records[0]), QStringList({"0.00", "0.00", "0.00", "0.00", "0.00", "0.00"}));
    QCOMPARE(times(records[0]), QStringList({"0", "0", "0"}));
}

void MonthlyTotalsTest::allProfilesComeFirstThenMonthsAscending()
{
    const QDate today(2025, 8, 15);
    const auto starts = MonthlyTotals::boundaries(today);
    const auto records = MonthlyTotals::records({total("web", starts[2], 1, 1, 1), total("mail", starts[2], 1, 1, 1),
                                                 total("web", starts[0], 1, 1, 1), total("web", starts[1], 1, 1, 1)},
                                                today);
    QStringList names;
    for (const AccumulateDialogRecord &record : records)
        names << record.strProfileName + "@" + record.strDateStamp;
    QCOMPARE(names, QStringList({"IDS_COMBO_ALLAPN@20250801000000", "web@20250601000000", "web@20250701000000",
                                 "mail@20250801000000", "web@20250801000000"}));
}

void MonthlyTotalsTest::everyRecordHoldsAllThreeMonths()
{
    const QDate today(2025, 8, 15);
    const auto starts = MonthlyTotals::boundaries(today);
    constexpr std::int64_t mb = 1048576;
    const auto records = MonthlyTotals::records(
        {total("web", starts[0], 10, 1 * mb, 4 * mb), total("web", starts[1], 20, 2 * mb, 5 * mb),
         total("web", starts[2], 30, 3 * mb, 6 * mb), total("mail", starts[2], 5, mb, mb)},
        today);
    QCOMPARE(amounts(records[0]), QStringList({"1.00", "2.00", "4.00", "4.00", "5.00", "7.00"}));
    QCOMPARE(times(records[0]), QStringList({"10", "20", "35"}));
    for (const AccumulateDialogRecord &record : records) {
        if (record.strProfileName == QString("web")) {
            QCOMPARE(amounts(record), QStringList({"1.00", "2.00", "3.00", "4.00", "5.00", "6.00"}));
            QCOMPARE(times(record), QStringList({"10", "20", "30"}));
        }
    }
}

void MonthlyTotalsTest::monthWithoutConnectionHasNoRecord()
{
    const QDate today(2025, 8, 15);
    const auto starts = MonthlyTotals::boundaries(today);
    const auto records =
        MonthlyTotals::records({total("web", starts[1], 1, 1, 1), total("web", starts[3], 7, 7, 7)}, today);
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[1].strDateStamp, QString("20250701000000"));
    QCOMPARE(times(records[0]), QStringList({"0", "1", "0"})); // next month's is not counted
}

void MonthlyTotalsTest::connectionWithoutBytesIsListed()
{
    const QDate today(2025, 8, 15);
    const auto records =
        MonthlyTotals::records({total("idle", MonthlyTotals::boundaries(today)[2], 3600, 0, 0)}, today);
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[1].strTimeThisMonth, QString("3600"));
}

void MonthlyTotalsTest::sumsAreMadeBeforeRounding()
{
    const QDate today(2025, 8, 15);
    const auto start = MonthlyTotals::boundaries(today)[2];
    // Each rounds to 0.00, the sum does not.
    const auto records = MonthlyTotals::records({total("a", start, 0, 5000, 0), total("b", start, 0, 5000, 0)}, today);
    QCOMPARE(records[0].strUploadedThisMonth, QString("0.01"));
    QCOMPARE(records[1].strUploadedThisMonth, QString("0.00"));
}

void MonthlyTotalsTest::amountsHaveTwoDecimals_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << qint64(0) << "0.00";
    QTest::newRow("one MB") << qint64(1048576) << "1.00";
    QTest::newRow("a half") << qint64(524288) << "0.50";
    QTest::newRow("a byte short of one") << qint64(1048575) << "1.00";
    QTest::newRow("a terabyte") << qint64(1099511627776) << "1048576.00";
}

void MonthlyTotalsTest::amountsHaveTwoDecimals()
{
    QFETCH(qint64, bytes);
    QFETCH(QString, expected);
    const QDate today(2025, 8, 15);
    const auto records = MonthlyTotals::records({total("a", MonthlyTotals::boundaries(today)[2], 0, bytes, 0)}, today);
    QCOMPARE(records[0].strUploadedThisMonth, expected);
}

void MonthlyTotalsTest::secondsFitTheWindow_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a day and more stays") << qint64(90000) << "90000";
    QTest::newRow("largest that the window reads") << qint64(2147483647) << "2147483647";
    QTest::newRow("larger loses full days") << qint64(2147483648) << "11648";
}

void MonthlyTotalsTest::secondsFitTheWindow()
{
    QFETCH(qint64, seconds);
    QFETCH(QString, expected);
    const QDate today(2025, 8, 15);
    const auto records =
        MonthlyTotals::records({total("a", MonthlyTotals::boundaries(today)[2], seconds, 0, 0)}, today);
    QCOMPARE(records[0].strTimeThisMonth, expected);
    QCOMPARE(expected.toInt() % 86400, static_cast<int>(seconds % 86400));
}

void MonthlyTotalsTest::namesKeepTheirCharacters()
{
    const QDate today(2025, 8, 15);
    const auto records = MonthlyTotals::records(
        {total("\xc3\x9c\x62\x65r \xf0\x9f\x93\xb6", MonthlyTotals::boundaries(today)[2], 1, 1, 1)}, today);
    QCOMPARE(records[1].strProfileName, QString::fromUtf8("\xc3\x9c\x62\x65r \xf0\x9f\x93\xb6"));
}

QTEST_GUILESS_MAIN(MonthlyTotalsTest)

#include "test_monthlytotals.moc"
