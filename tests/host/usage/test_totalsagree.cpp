// The cumulative window's figures and the page "Usage" agree with the sum over what netinfo-records lists, on a large
// history across a change of year and both changes of summer time.
#include "UsageMonth.h"
#include "cumulative/MonthlyTotals.h"
#include "statistics/ConnectionHistory.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <ctime>
#include <random>

namespace {

using Sums = QMap<QString, UsageSum>; ///< By profile; the empty name stands for all.

constexpr int recordCount = 100000;

} // namespace

class TotalsAgreeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void window_data();
    void window();
    void page_data();
    void page();

private:
    Sums listed(const QDate &month);
    static void compare(const AccumulateDialogRecord &record, int monthsBack, const UsageSum &expected);

    QTemporaryDir m_folder;
    QMap<QDate, Sums> m_listed;
};

void TotalsAgreeTest::initTestCase()
{
    qputenv("TZ", "Europe/Berlin");
    tzset();
    qputenv("NETINFO_HISTORY", m_folder.filePath("history.sqlite").toLocal8Bit());
    const QStringList profiles = {"internet.example", "web.example", "B\u00fcro", "spare"};
    std::mt19937_64 random(20251026);
    const qint64 from = QDateTime(QDate(2025, 9, 1), QTime(0, 0)).toSecsSinceEpoch();
    const qint64 until = QDateTime(QDate(2026, 5, 1), QTime(0, 0)).toSecsSinceEpoch();
    std::vector<zelk::Record> records;
    for (int i = 0; i < recordCount; ++i) {
        zelk::Record record;
        record.profile = profiles.at(static_cast<int>(random() % 4)).toStdString();
        record.start = from + static_cast<qint64>(random() % static_cast<quint64>(until - from));
        record.connectedSeconds = static_cast<qint64>(random() % 7200);
        record.end = record.start + record.connectedSeconds;
        record.bytesUploaded = static_cast<qint64>(random() % 40000000);
        record.bytesDownloaded = static_cast<qint64>(random() % 400000000);
        records.push_back(record);
    }
    // The seconds beside every boundary.
    std::size_t next = 0;
    for (QDate month(2025, 10, 1); month <= QDate(2026, 4, 1); month = month.addMonths(1)) {
        for (const int offset : {-1, 0}) {
            zelk::Record &record = records.at(next++);
            record.start = month.startOfDay().toSecsSinceEpoch() + offset;
            record.end = until;
        }
    }
    zelk::ConnectionHistory().add(records);
}

Sums TotalsAgreeTest::listed(const QDate &month)
{
    if (m_listed.contains(month))
        return m_listed.value(month);
    QProcess program;
    program.start(qEnvironmentVariable("NETINFO_BIN_DIR") + "/netinfo-records",
                  {"list", "--json", "--month", month.toString("yyyy-MM")});
    if (!program.waitForFinished(60000) || program.exitCode() != 0)
        qFatal("netinfo-records: %s", program.readAllStandardError().constData());
    Sums sums;
    for (const auto &value : QJsonDocument::fromJson(program.readAllStandardOutput()).array()) {
        const QJsonObject record = value.toObject();
        const auto number = [&record](const char *name) { return static_cast<qint64>(record[name].toDouble()); };
        const UsageSum one{number("bytes_downloaded"), number("bytes_uploaded"), number("connected_seconds"), 1};
        sums[record["profile"].toString()] += one;
        sums[QString()] += one;
    }
    m_listed[month] = sums;
    return sums;
}

void TotalsAgreeTest::window_data()
{
    QTest::addColumn<QDate>("today");
    QTest::newRow("out of summer time") << QDate(2025, 11, 15);
    QTest::newRow("change of year") << QDate(2026, 1, 31);
    QTest::newRow("into summer time") << QDate(2026, 3, 29);
    QTest::newRow("after it") << QDate(2026, 4, 30);
}

void TotalsAgreeTest::compare(const AccumulateDialogRecord &record, int monthsBack, const UsageSum &expected)
{
    const QString up[] = {record.strUploadedThisMonth, record.strUploadedLastMonth, record.strUploadedBeforeLastMonth};
    const QString down[] = {record.strDownloadedThisMonth, record.strDownloadedLastMonth,
                            record.strDownloadedBeforeLastMonth};
    const QString time[] = {record.strTimeThisMonth, record.strTimeLastMonth, record.strTimeBeforeLastMonth};
    QCOMPARE(up[monthsBack], QString::asprintf("%.2f", static_cast<double>(expected.uploaded) / 1048576));
    QCOMPARE(down[monthsBack], QString::asprintf("%.2f", static_cast<double>(expected.downloaded) / 1048576));
    QCOMPARE(time[monthsBack], QString::number(expected.seconds));
}

void TotalsAgreeTest::window()
{
    QFETCH(QDate, today);
    const zelk::ConnectionHistory history(zelk::ConnectionHistory::defaultPath(),
                                          zelk::ConnectionHistory::Access::ReadOnly);
    const auto records = MonthlyTotals::records(history.totals(MonthlyTotals::boundaries(today)), today);
    for (int monthsBack = 0; monthsBack < 3; ++monthsBack) {
        const QDate month = QDate(today.year(), today.month(), 1).addMonths(-monthsBack);
        const Sums sums = listed(month);
        QCOMPARE(sums.size(), 5);
        compare(records[0], monthsBack, sums.value(QString()));
        int found = 0;
        for (const AccumulateDialogRecord &record : records.mid(1)) {
            if (!record.strDateStamp.startsWith(month.toString("yyyyMM")))
                continue;
            ++found;
            QVERIFY(sums.value(record.strProfileName).connections > 1000);
            compare(record, monthsBack, sums.value(record.strProfileName));
        }
        QCOMPARE(found, 4);
    }
}

void TotalsAgreeTest::page_data()
{
    QTest::addColumn<QDate>("month");
    for (QDate month(2025, 9, 1); month <= QDate(2026, 4, 1); month = month.addMonths(1))
        QTest::newRow(qPrintable(month.toString("yyyy-MM"))) << month;
}

void TotalsAgreeTest::page()
{
    QFETCH(QDate, month);
    const Sums sums = listed(month);
    const zelk::ConnectionHistory history(zelk::ConnectionHistory::defaultPath(),
                                          zelk::ConnectionHistory::Access::ReadOnly);
    const UsageMonth usage = UsageMonth::read(history, month);
    for (auto sum = sums.begin(); sum != sums.end(); ++sum) {
        const UsageSum found = usage.total(sum.key().isEmpty() ? std::nullopt : std::optional(sum.key()));
        QCOMPARE(found.downloaded, sum->downloaded);
        QCOMPARE(found.uploaded, sum->uploaded);
        QCOMPARE(found.seconds, sum->seconds);
        QCOMPARE(found.connections, sum->connections);
    }
}

QTEST_GUILESS_MAIN(TotalsAgreeTest)

#include "test_totalsagree.moc"
