// The thinking behind the page "Usage": days of a month, the axis, texts and colours.
#include "UsageColours.h"
#include "UsageMonth.h"
#include "UsageScale.h"
#include "UsageText.h"
#include "statistics/ConnectionHistory.h"

#include <QDateTime>
#include <QPalette>
#include <QtTest>

#include <ctime>

namespace {

void useZone(const QByteArray &zone)
{
    qputenv("TZ", zone);
    tzset();
}

zelk::PeriodTotal total(const char *profile, std::int64_t start, std::int64_t up, std::int64_t down,
                        std::int64_t seconds = 1)
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

std::int64_t seconds(const char *isoTime)
{
    return QDateTime::fromString(isoTime, Qt::ISODate).toSecsSinceEpoch();
}

constexpr qint64 kb = 1024;
constexpr qint64 mb = 1024 * kb;
constexpr qint64 gb = 1024 * mb;
constexpr qint64 tb = 1024 * gb;

} // namespace

class UsageMonthTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { useZone("UTC"); }
    void daysOfTheMonth_data();
    void daysOfTheMonth();
    void dayThatTheCalendarLeavesOut();
    void dayWithTwoMidnights();
    void sumsByDayAndProfile();
    void unknownProfileHasNothing();
    void scale_data();
    void scale();
    void scaleHoldsEveryValue();
    void amounts_data();
    void amounts();
    void durations_data();
    void durations();
    void coloursStandOut_data();
    void coloursStandOut();
};

void UsageMonthTest::daysOfTheMonth_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QList<qint64>>("lengths"); ///< Days that are not 24 hours long: day of the month, hours.
    QTest::addColumn<int>("count");
    QTest::newRow("thirty-one days") << QByteArray("UTC") << QDate(2026, 1, 31) << QList<qint64>() << 31;
    QTest::newRow("leap year") << QByteArray("UTC") << QDate(2024, 2, 1) << QList<qint64>() << 29;
    QTest::newRow("into summer time") << QByteArray("Europe/Berlin") << QDate(2026, 3, 5) << QList<qint64>{29, 23}
                                      << 31;
    QTest::newRow("out of summer time") << QByteArray("Europe/Berlin") << QDate(2026, 10, 5) << QList<qint64>{25, 25}
                                        << 31;
}

void UsageMonthTest::daysOfTheMonth()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDate, day);
    QFETCH(QList<qint64>, lengths);
    QFETCH(int, count);
    useZone(zone);
    const auto starts = UsageMonth::boundaries(day);
    QCOMPARE(static_cast<int>(starts.size()), count + 1);
    for (int i = 0; i < count; ++i) {
        const qint64 expected = !lengths.isEmpty() && lengths[0] == i + 1 ? lengths[1] : 24;
        QCOMPARE(starts[static_cast<std::size_t>(i) + 1] - starts[static_cast<std::size_t>(i)], expected * 3600);
    }
}

void UsageMonthTest::dayThatTheCalendarLeavesOut()
{
    useZone("Pacific/Apia"); // went from the 29th to the 31st of December 2011
    const auto starts = UsageMonth::boundaries(QDate(2011, 12, 1));
    QCOMPARE(starts[29], starts[30]);
    const UsageMonth month(QDate(2011, 12, 1), {total("web", starts[30], 0, 7)});
    QCOMPARE(month.days(std::nullopt)[29].downloaded, qint64(0));
    QCOMPARE(month.days(std::nullopt)[30].downloaded, qint64(7));
}

void UsageMonthTest::dayWithTwoMidnights()
{
    useZone("America/Havana");
    QCOMPARE(UsageMonth::boundaries(QDate(2015, 11, 20))[0], seconds("2015-11-01T00:00:00-04:00"));
}

void UsageMonthTest::sumsByDayAndProfile()
{
    const QDate day(2026, 8, 20);
    const auto starts = UsageMonth::boundaries(day);
    const UsageMonth month(day, {total("web", starts[0], 1, 10, 60), total("mail", starts[0], 2, 20),
                                 total("web", starts[30], 4, 40), total("web", starts[31], 8, 80)});
    QCOMPARE(month.first(), QDate(2026, 8, 1));
    QCOMPARE(month.profiles(), QStringList({"mail", "web"}));
    QCOMPARE(month.days(std::nullopt)[0].downloaded, qint64(30));
    QCOMPARE(month.days(QString("web"))[0].uploaded, qint64(1));
    QCOMPARE(month.days(QString("web"))[30].downloaded, qint64(40));
    QCOMPARE(month.total(std::nullopt).downloaded, qint64(70)); // the next month's first is left out
    QCOMPARE(month.total(QString("web")).connections, qint64(2));
    QCOMPARE(month.total(QString("web")).seconds, qint64(61));
}

void UsageMonthTest::unknownProfileHasNothing()
{
    const QDate day(2026, 8, 20);
    const UsageMonth month(day, {total("web", UsageMonth::boundaries(day)[0], 1, 10)});
    QCOMPARE(month.total(QString("old")).connections, qint64(0));
    QCOMPARE(month.days(QString("old")).size(), std::size_t(31));
}

void UsageMonthTest::scale_data()
{
    QTest::addColumn<qint64>("maximum");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("nothing") << qint64(0) << QStringList{"0", "1 KB", "2 KB", "3 KB", "4 KB", "5 KB"};
    QTest::newRow("one byte") << qint64(1)
                              << QStringList{"0", "0.0002 KB", "0.0004 KB", "0.0006 KB", "0.0008 KB", "0.0010 KB"};
    QTest::newRow("exactly five steps") << 5 * mb << QStringList{"0", "1 MB", "2 MB", "3 MB", "4 MB", "5 MB"};
    QTest::newRow("a little more") << 5 * mb + 1 << QStringList{"0", "2 MB", "4 MB", "6 MB"};
    QTest::newRow("hundreds") << 730 * mb << QStringList{"0", "200 MB", "400 MB", "600 MB", "800 MB"};
    QTest::newRow("just below a GB") << 1023 * mb << QStringList{"0", "500 MB", "1,000 MB", "1,500 MB"};
    QTest::newRow("parts of a GB") << 13 * gb / 10 << QStringList{"0", "0.5 GB", "1.0 GB", "1.5 GB"};
    QTest::newRow("beyond a TB") << 3 * tb << QStringList{"0", "1 TB", "2 TB", "3 TB"};
}

void UsageMonthTest::scale()
{
    QFETCH(qint64, maximum);
    QFETCH(QStringList, labels);
    const UsageScale scale(maximum);
    QStringList found;
    for (int i = 0; i <= scale.steps(); ++i)
        found << scale.label(i, QLocale(QLocale::English));
    QCOMPARE(found, labels);
}

void UsageMonthTest::scaleHoldsEveryValue()
{
    for (qint64 value = 1; value < 1000000000000000; value += value / 16 + 1) {
        const UsageScale scale(value);
        const auto exact = static_cast<double>(value);
        QVERIFY(scale.top() >= exact * (1 - 1e-9));
        QVERIFY(scale.steps() >= 1 && scale.steps() <= 5);
        QVERIFY(scale.top() <= exact * 2.5);
    }
}

void UsageMonthTest::amounts_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("expected");
    const QLocale english(QLocale::English);
    QTest::newRow("nothing") << qint64(0) << english << "0.00 KB";
    QTest::newRow("bytes") << qint64(512) << english << "0.50 KB";
    QTest::newRow("just below a MB") << mb - 1 << english << "1,024.00 KB";
    QTest::newRow("one MB") << mb << english << "1.00 MB";
    QTest::newRow("German comma") << 3 * gb / 2 << QLocale(QLocale::German) << "1,50 GB";
    QTest::newRow("many TB") << 5000 * tb << english << "5,000.00 TB";
}

void UsageMonthTest::amounts()
{
    QFETCH(qint64, bytes);
    QFETCH(QLocale, locale);
    QFETCH(QString, expected);
    QCOMPARE(UsageText::amount(bytes, locale), expected);
}

void UsageMonthTest::durations_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << qint64(0) << "0:00:00";
    QTest::newRow("an hour and more") << qint64(3725) << "1:02:05";
    QTest::newRow("a day does not wrap") << qint64(90000) << "25:00:00";
    QTest::newRow("a month of several at once") << qint64(4500305) << "1250:05:05";
}

void UsageMonthTest::durations()
{
    QFETCH(qint64, seconds);
    QFETCH(QString, expected);
    QCOMPARE(UsageText::duration(seconds), expected);
}

void UsageMonthTest::coloursStandOut_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("light grey") << QColor(0xef, 0xf0, 0xf1) << QColor(0x23, 0x26, 0x29);
    QTest::newRow("dark") << QColor(0x1b, 0x1e, 0x20) << QColor(0xfc, 0xfc, 0xfc);
    QTest::newRow("black") << QColor(Qt::black) << QColor(Qt::white);
}

void UsageMonthTest::coloursStandOut()
{
    QFETCH(QColor, ground);
    QFETCH(QColor, text);
    QPalette palette;
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, text);
    const UsageColours colours(palette);
    QVERIFY(contrast(colours.downloaded, colours.ground) >= 3.0);
    QVERIFY(contrast(colours.uploaded, colours.ground) >= 3.0);
    QVERIFY(contrast(colours.text, colours.ground) >= 4.5);
    QVERIFY(contrast(colours.faintText, colours.ground) >= 4.5);
    QVERIFY(contrast(colours.faintText, colours.weekend) >= 4.5);
}

QTEST_GUILESS_MAIN(UsageMonthTest)

#include "test_usagemonth.moc"
