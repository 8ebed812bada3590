// The quick conversions answer what the toolkit's and the C library's plain calls answer, over many values.
#include "Conversion.h"

#include "ProductFixture.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

const char s_format[] = "yyyyMMddhhmmss";

const char *const s_zones[] = {"UTC",
                               "Europe/Berlin",
                               "America/New_York",
                               "Asia/Kathmandu",
                               "Asia/Shanghai",
                               "Australia/Sydney",
                               "Australia/Lord_Howe",
                               "Pacific/Apia",
                               "Africa/Freetown",
                               "Asia/Gaza",
                               "America/Noronha",
                               "Africa/Casablanca"};

QString plainTwoDecimals(double value)
{
    char buffer[400];
    std::snprintf(buffer, sizeof(buffer), "%.2f", value);
    return QString::fromLatin1(buffer);
}

quint64 bitsOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

QString plainStamp(int seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QLatin1String(s_format));
}

/// Seconds around every change of the clocks of the present zone between 1901 and 2038, and a spread of others.
QVector<int> interestingSeconds()
{
    QVector<int> seconds = {0, 1, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    const qint64 hour = 3600;
    int offset = QDateTime::fromSecsSinceEpoch(-2147480000).offsetFromUtc();
    for (qint64 at = -2147480000; at < 2147480000; at += 12 * hour) {
        const int next = QDateTime::fromSecsSinceEpoch(at).offsetFromUtc();
        if (next != offset) {
            for (qint64 near = at - 15 * hour; near <= at + 3 * hour; near += 600)
                seconds.append(static_cast<int>(near));
        }
        offset = next;
    }
    std::mt19937 random(1);
    std::uniform_int_distribution<int> any(std::numeric_limits<int>::min());
    for (int i = 0; i < 20000; ++i)
        seconds.append(any(random));
    return seconds;
}

bool isSameValue(const QDateTime &a, const QDateTime &b)
{
    return a.isValid() == b.isValid() && a.isNull() == b.isNull() && a == b && a.date() == b.date() &&
           a.time() == b.time() && a.timeSpec() == b.timeSpec() && a.offsetFromUtc() == b.offsetFromUtc() &&
           a.toString(Qt::ISODateWithMs) == b.toString(Qt::ISODateWithMs);
}

} // namespace

class TestConversion : public QObject
{
    Q_OBJECT

private slots:
    void zonesAreInstalled() // without their data every zone would quietly be UTC
    {
        const ZoneSwitch zoneSwitch("Asia/Kathmandu");
        QCOMPARE(conversion::LocalClock().stampText(1704110400), QStringLiteral("20240101174500"));
    }

    void stampTextIsThePlainFormat_data() { zones(); }
    void stampTextIsThePlainFormat()
    {
        QFETCH(QByteArray, zone);
        const ZoneSwitch zoneSwitch(zone.constData());
        QVector<int> seconds = interestingSeconds();
        conversion::LocalClock clock;
        for (int second : std::as_const(seconds))
            QCOMPARE(clock.stampText(second), plainStamp(second));
        std::sort(seconds.begin(), seconds.end());
        conversion::LocalClock ascending;
        for (int second : std::as_const(seconds))
            QCOMPARE(ascending.stampText(second), plainStamp(second));
        conversion::LocalClock descending;
        for (auto second = seconds.crbegin(); second != seconds.crend(); ++second)
            QCOMPARE(descending.stampText(*second), plainStamp(*second));
    }

    void stampValueIsThePlainParse_data() { zones(); }
    void stampValueIsThePlainParse()
    {
        QFETCH(QByteArray, zone);
        const ZoneSwitch zoneSwitch(zone.constData());
        const QVector<int> seconds = interestingSeconds();
        for (int i = 0; i < seconds.size(); i += 4) {
            const QString stamp = conversion::LocalClock().stampText(seconds.at(i));
            const QDateTime plain = QDateTime::fromString(stamp, QLatin1String(s_format));
            QVERIFY2(isSameValue(conversion::stampValue(stamp), plain), qPrintable(stamp));
        }
    }

    void stampValueAroundSkippedAndRepeatedHours_data() { zones(); }
    void stampValueAroundSkippedAndRepeatedHours()
    {
        QFETCH(QByteArray, zone);
        const ZoneSwitch zoneSwitch(zone.constData());
        // Wall-clock times that no second of the clock may have shown, or that two have.
        for (const char *day : {"20240310", "20240331", "20241027", "20241103", "20241006", "20240407", "19400401",
                                "19160430", "19490501", "20111230", "19860101", "19000101", "20380119", "21000228"}) {
            for (int minute = 0; minute < 24 * 60; minute += 10) {
                const QString stamp = QLatin1String(day) + QStringLiteral("%1%2%3")
                                                               .arg(minute / 60, 2, 10, QLatin1Char('0'))
                                                               .arg(minute % 60, 2, 10, QLatin1Char('0'))
                                                               .arg(minute % 60, 2, 10, QLatin1Char('0'));
                const QDateTime plain = QDateTime::fromString(stamp, QLatin1String(s_format));
                QVERIFY2(isSameValue(conversion::stampValue(stamp), plain), qPrintable(stamp));
            }
        }
    }

    void stampValueOfMalformedTexts_data()
    {
        QTest::addColumn<QString>("stamp");
        for (const char *stamp : {"",
                                  "2",
                                  "2024",
                                  "20240131",
                                  "2024013123595",
                                  "202401312359599",
                                  "20241331235959",
                                  "20240132235959",
                                  "20240230000000",
                                  "20230229000000",
                                  "20240229000000",
                                  "20240131245959",
                                  "20240131236059",
                                  "20240131235960",
                                  "20240100000000",
                                  "20240001000000",
                                  "00000101000000",
                                  "00010101000000",
                                  "00990101000000",
                                  "18990101000000",
                                  "99991231235959",
                                  "2024013123595a",
                                  "a0240131235959",
                                  " 0240131235959",
                                  "+0240131235959",
                                  "-0240131235959",
                                  "2024 131235959",
                                  "20240131235959 ",
                                  "2024-1-31 23:59",
                                  "abcdefghijklmn",
                                  "              "})
            QTest::newRow(stamp) << QString::fromLatin1(stamp);
        QTest::newRow("null") << QString();
        QTest::newRow("Arabic digits") << QString(14, QChar(0x0661));
        QTest::newRow("full-width digits") << QString(14, QChar(0xFF11));
    }
    void stampValueOfMalformedTexts()
    {
        QFETCH(QString, stamp);
        const QDateTime plain = QDateTime::fromString(stamp, QLatin1String(s_format));
        QVERIFY(isSameValue(conversion::stampValue(stamp), plain));
    }

    void stampValueOfRandomDigits()
    {
        std::mt19937 random(2);
        for (int i = 0; i < 20000; ++i) {
            QString stamp;
            for (int j = 0; j < 14; ++j)
                stamp.append(QLatin1Char(static_cast<char>('0' + random() % (j % 2 == 0 && j > 3 ? 3 : 10))));
            const QDateTime plain = QDateTime::fromString(stamp, QLatin1String(s_format));
            QVERIFY2(isSameValue(conversion::stampValue(stamp), plain), qPrintable(stamp));
        }
    }

    void durationWrapsAsTheTimeOfDay()
    {
        for (int seconds = -200000; seconds <= 200000; ++seconds) {
            const QString plain = QTime(0, 0).addSecs(seconds).toString(QLatin1String("hh:mm:ss"));
            QCOMPARE(conversion::durationText(seconds), plain);
        }
        for (int seconds = -2147483; seconds <= 2147483; seconds += 977) {
            const QString plain = QTime(0, 0).addSecs(seconds).toString(QLatin1String("hh:mm:ss"));
            QCOMPARE(conversion::durationText(seconds), plain);
        }
    }

    void durationOfTheExtremes()
    {
        // The smallest int is 24855 days, 3 hours, 14 minutes and 8 seconds before midnight.
        QCOMPARE(conversion::durationText(std::numeric_limits<int>::min()), QStringLiteral("20:45:52"));
        QCOMPARE(conversion::durationText(std::numeric_limits<int>::max()), QStringLiteral("03:14:07"));
    }

    void numbersAreThePlainNumbers_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const char *text : {"",
                                 "0",
                                 "-0",
                                 "+0",
                                 "7",
                                 "+7",
                                 "-7",
                                 "007",
                                 "123456789",
                                 "999999999",
                                 "1000000000",
                                 "2147483647",
                                 "2147483648",
                                 "-2147483648",
                                 "-2147483649",
                                 "99999999999999999999",
                                 " 5",
                                 "5 ",
                                 " 5 ",
                                 "\t5\n",
                                 "5 5",
                                 "5x",
                                 "x5",
                                 "0x10",
                                 "0b1",
                                 "010",
                                 "1e3",
                                 "1E3",
                                 "1e400",
                                 "-1e400",
                                 "1e-400",
                                 "123.5",
                                 ".5",
                                 "5.",
                                 ".",
                                 "-",
                                 "+",
                                 "1,5",
                                 "1,000",
                                 "nan",
                                 "inf",
                                 "-inf",
                                 "infinity",
                                 "NaN",
                                 "1.7976931348623157e308",
                                 "--1",
                                 "0.1",
                                 "1048575.9999999999",
                                 "123456789012345678",
                                 "\xe9",
                                 "\x80",
                                 "5\xa0",
                                 "4.9e-324"})
            QTest::newRow(text) << QByteArray(text);
    }
    void numbersAreThePlainNumbers()
    {
        QFETCH(QByteArray, text);
        const QString plain = QString::fromLatin1(text);
        QCOMPARE(conversion::toInt(text.constData()), plain.toInt());
        const double expected = plain.toDouble();
        const double actual = conversion::toDouble(text.constData());
        QVERIFY(bitsOf(actual) == bitsOf(expected) || (std::isnan(actual) && std::isnan(expected)));
    }

    void twoDecimalsOfKnownValues_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        // Exact ties go to the even neighbour, as printf has it.
        QTest::newRow("tie down") << 0.125 << QStringLiteral("0.12");
        QTest::newRow("tie up") << 0.375 << QStringLiteral("0.38");
        QTest::newRow("tie down at 0.625") << 0.625 << QStringLiteral("0.62");
        QTest::newRow("tie of a negative") << -0.125 << QStringLiteral("-0.12");
        QTest::newRow("no tie in binary") << 1.005 << QStringLiteral("1.00");
        QTest::newRow("no tie in binary, above") << 2.675 << QStringLiteral("2.67");
        QTest::newRow("carries over") << 0.999 << QStringLiteral("1.00");
        QTest::newRow("carries over everything") << 1023.999 << QStringLiteral("1024.00");
        QTest::newRow("negative zero") << -0.0 << QStringLiteral("-0.00");
        QTest::newRow("vanishing negative") << -0.001 << QStringLiteral("-0.00");
        QTest::newRow("largest without a fraction below")
            << 9007199254740991.0 << QStringLiteral("9007199254740991.00");
        QTest::newRow("first of the whole numbers") << 9007199254740992.0 << QStringLiteral("9007199254740992.00");
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << QStringLiteral("inf");
        QTest::newRow("negative infinite") << -std::numeric_limits<double>::infinity() << QStringLiteral("-inf");
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << QStringLiteral("nan");
    }
    void twoDecimalsOfKnownValues()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(conversion::twoDecimals(value), text);
        QCOMPARE(text, plainTwoDecimals(value)); // the expectation itself is printf's
    }

    void twoDecimalsIsPrintfs()
    {
        const QByteArray before = std::setlocale(LC_NUMERIC, nullptr);
        std::setlocale(LC_NUMERIC, "C");
        for (int eighths = -80000; eighths <= 80000; ++eighths) // every tie within ten thousand
            QCOMPARE(conversion::twoDecimals(eighths / 8.0), plainTwoDecimals(eighths / 8.0));
        for (int bytes = 0; bytes < 200000; ++bytes)
            QCOMPARE(conversion::twoDecimals(bytes / 1024.0), plainTwoDecimals(bytes / 1024.0));
        std::mt19937_64 random(3);
        for (int i = 0; i < 400000; ++i) {
            const quint64 bits = random();
            double anything = 0;
            std::memcpy(&anything, &bits, sizeof(anything));
            QCOMPARE(conversion::twoDecimals(anything), plainTwoDecimals(anything));
            const double usual = std::ldexp(static_cast<double>(bits >> 11), -static_cast<int>(random() % 64));
            QCOMPARE(conversion::twoDecimals(usual), plainTwoDecimals(usual));
            const double around = std::nextafter(std::floor(usual) + 0.125, i % 2 == 0 ? 0.0 : 1e300);
            QCOMPARE(conversion::twoDecimals(around), plainTwoDecimals(around));
        }
        std::setlocale(LC_NUMERIC, before.constData());
    }

    void twoDecimalsKeepsThePointInACommaLocale()
    {
        const QByteArray before = std::setlocale(LC_NUMERIC, nullptr);
        bool isComma = false;
        for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"})
            isComma = isComma || (std::setlocale(LC_NUMERIC, name) && plainTwoDecimals(0.5) == QLatin1String("0,50"));
        const QString small = conversion::twoDecimals(1234.5);
        const QString huge = conversion::twoDecimals(1e20);
        const double parsed = conversion::toDouble("123.5");
        std::setlocale(LC_NUMERIC, before.constData());
        if (!isComma)
            QSKIP("no locale with a decimal comma is installed (locale-gen de_DE.UTF-8)");
        QCOMPARE(small, QStringLiteral("1234.50"));
        QCOMPARE(huge, QStringLiteral("100000000000000000000.00"));
        QCOMPARE(parsed, 123.5);
    }

private:
    static void zones()
    {
        QTest::addColumn<QByteArray>("zone");
        for (const char *zone : s_zones)
            QTest::newRow(zone) << QByteArray(zone);
    }
};

QTEST_GUILESS_MAIN(TestConversion)
#include "tst_conversion.moc"
