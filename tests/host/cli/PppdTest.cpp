// The system log of pppd, as it comes from machines: interleaved, cut off, without years, with clocks that were set.
#include "Program.h"

#include <QDateTime>
#include <QFile>
#include <QTest>

class PppdTest : public QObject
{
    Q_OBJECT

private slots:
    void connections_data();
    void connections();
    void whatIsSkippedIsReported();
    void yearComesFromTheFile_data();
    void yearComesFromTheFile();
    void pipesEndNow();
    void importTwice();
    void profileIsKept();
    void wrongLogs_data();
    void wrongLogs();
};

namespace {

QByteArray logFile(const QString &name)
{
    QFile file(qEnvironmentVariable("NETINFO_SOURCE_DIR") + "/tests/host/cli/data/" + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Cannot read %s", qPrintable(file.fileName()));
    return file.readAll();
}

// Puts the log into the folder as if it had been written last at that time.
QString logIn(const Workplace &place, const QByteArray &text, const QString &writtenAt)
{
    QString name = place.write("syslog", text);
    QFile file(name);
    if (!file.open(QIODevice::ReadWrite) ||
        !file.setFileTime(QDateTime::fromString(writtenAt, Qt::ISODate), QFileDevice::FileModificationTime))
        qFatal("The time of %s cannot be set", qPrintable(name));
    return name;
}

Outcome import(const Workplace &place, const QString &file)
{
    return place.run({"import", file, "--format", "pppd", "--profile", "net"});
}

// One line a connection: start, end, connected time, sent, received, quality, reason.
QByteArrayList figures(const Workplace &place)
{
    QByteArrayList lines = place.run({"export"}).out.split('\n');
    lines.removeFirst();
    lines.removeLast();
    for (QByteArray &line : lines) {
        QByteArrayList cells = line.trimmed().split(',');
        cells = cells.mid(2, 5) + cells.mid(9, 2);
        line = cells.join(' ');
    }
    return lines;
}

} // namespace

void PppdTest::connections_data()
{
    QTest::addColumn<QString>("log");
    QTest::addColumn<QString>("zone");
    QTest::addColumn<QByteArrayList>("expected");
    QTest::newRow("interleaved")
        << "interleaved.log"
        << "Europe/Berlin"
        << QByteArrayList{"2026-08-03T07:20:04+02:00 2026-08-03T07:20:16+02:00 12 102838 4 exact user",
                          "2026-08-03T07:12:09+02:00 2026-08-03T07:57:39+02:00 2730 1234567 89012345 exact network"};
    QTest::newRow("interleaved, read elsewhere")
        << "interleaved.log"
        << "America/St_Johns"
        << QByteArrayList{"2026-08-03T07:20:04-02:30 2026-08-03T07:20:16-02:30 12 102838 4 exact user",
                          "2026-08-03T07:12:09-02:30 2026-08-03T07:57:39-02:30 2730 1234567 89012345 exact network"};
    QTest::newRow("ISO stamps keep their own zone")
        << "iso.log"
        << "Asia/Tokyo"
        << QByteArrayList{"2026-08-03T07:12:09+02:00 2026-08-03T07:57:39+02:00 2730 1234567 89012345 exact carrier",
                          "2026-12-03T07:12:09Z 2026-12-03T08:12:09Z 3600 5000000000 6000000000 exact unknown"};
    QTest::newRow("without totals") << "skipped.log"
                                    << "UTC"
                                    << QByteArrayList{"2026-08-03T09:00:33Z 2026-08-03T09:10:33Z 600 10 20 exact "
                                                      "unknown"};
    QTest::newRow("turns of the year") << "years.log"
                                       << "UTC"
                                       << QByteArrayList{
                                              "2024-02-29T12:00:00Z 2024-02-29T12:10:00Z 600 1 1 exact unknown",
                                              "2024-12-31T23:55:00Z 2025-01-01T00:05:00Z 600 2 2 exact unknown",
                                              "2026-01-02T10:00:00Z 2026-01-02T10:10:00Z 600 3 3 exact unknown"};
    QTest::newRow("the hour that comes twice")
        << "summer-time.log"
        << "Europe/Berlin"
        << QByteArrayList{"2026-10-25T01:50:00+01:00 2026-10-25T02:10:00+01:00 1200 1 1 exact unknown",
                          "2026-10-25T01:15:00+01:00 2026-10-25T03:15:00+01:00 7200 2 2 exact unknown",
                          "2026-10-25T02:20:00+01:00 2026-10-25T03:20:00+01:00 3600 3 3 exact unknown"};
    QTest::newRow("clocks that were set, and sleep")
        << "clock.log"
        << "UTC"
        << QByteArrayList{"2026-08-03T10:30:00Z 2026-08-03T11:30:00Z 3600 1 1 clock-changed unknown",
                          "2026-08-03T13:00:00Z 2026-08-03T15:00:00Z 1800 2 2 exact unknown",
                          "2026-08-03T16:00:00Z 2026-08-03T16:00:14Z 14 3 3 exact unknown"};
    QTest::newRow("begun before the log") << "middle.log"
                                          << "UTC"
                                          << QByteArrayList{"2026-08-02T23:51:00Z 2026-08-03T00:01:00Z 600 1 1 exact "
                                                            "user"};
    QTest::newRow("several of one process")
        << "persist.log"
        << "UTC"
        << QByteArrayList{"2026-08-03T08:00:03Z 2026-08-03T08:10:03Z 600 1 2 exact carrier",
                          "2026-08-03T08:10:53Z 2026-08-03T08:20:53Z 600 3 4 exact user"};
}

void PppdTest::connections()
{
    QFETCH(QString, log);
    QFETCH(QString, zone);
    QFETCH(QByteArrayList, expected);
    Workplace place;
    place.setVariable("TZ", zone);
    const Outcome outcome = import(place, logIn(place, logFile(log), "2026-12-05T10:00:00Z"));
    QVERIFY2(outcome.code == 0, outcome.err);
    QCOMPARE(figures(place).join('\n'), expected.join('\n'));

    Workplace windows; // A log that came through another system's editor.
    windows.setVariable("TZ", zone);
    QCOMPARE(import(windows, logIn(windows, logFile(log).replace("\n", "\r\n"), "2026-12-05T10:00:00Z")).code, 0);
    QCOMPARE(figures(windows).join('\n'), expected.join('\n'));
}

void PppdTest::whatIsSkippedIsReported()
{
    const Workplace place;
    const QString file = logIn(place, logFile("skipped.log"), "2026-08-04T00:00:00Z");
    const Outcome outcome = import(place, file);
    QCOMPARE(outcome.code, 0);
    const QString expected = "%1:1: the connection over ppp0 has no totals and was skipped: pppd stopped without "
                             "writing them\n"
                             "%1:11: the connection over ppp1 has no totals and was skipped: it never got an address\n"
                             "%1:19: the connection over ppp2 has no totals and was skipped: the log ends before it "
                             "does\n";
    QCOMPARE(QString(outcome.err), expected.arg(file));
    QCOMPARE(QString(outcome.out), "Added 1 connection to " + place.history() + ".\n");
    const Outcome json = place.run({"import", file, "--format", "pppd", "--profile", "net", "--json"});
    QCOMPARE(json.out, QByteArray("{\"added\":0,\"already_there\":1,\"skipped\":3}\n"));

    const Workplace middle;
    const QByteArray report = import(middle, logIn(middle, logFile("middle.log"), "2026-08-04T00:00:00Z")).err;
    QVERIFY2(report.endsWith("syslog:5: the connection has no totals and was skipped: nothing tells when it began\n"),
             report);
}

void PppdTest::yearComesFromTheFile_data()
{
    QTest::addColumn<QString>("writtenAt");
    QTest::addColumn<QByteArray>("year");
    QTest::newRow("same day") << "2026-08-03T08:00:00Z" << QByteArray("2026");
    QTest::newRow("a clock a little behind") << "2026-08-02T23:00:00Z" << QByteArray("2026");
    QTest::newRow("later that year") << "2026-12-31T23:00:00Z" << QByteArray("2026");
    QTest::newRow("next spring") << "2027-05-01T00:00:00Z" << QByteArray("2026");
    QTest::newRow("a year later") << "2027-08-03T08:00:00Z" << QByteArray("2027");
    QTest::newRow("long ago") << "2009-09-01T00:00:00Z" << QByteArray("2009");
}

void PppdTest::yearComesFromTheFile()
{
    QFETCH(QString, writtenAt);
    QFETCH(QByteArray, year);
    const Workplace place;
    const Outcome outcome = import(place, logIn(place, logFile("interleaved.log"), writtenAt));
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.err, QByteArray());
    for (const QByteArray &line : figures(place))
        QVERIFY2(line.startsWith(year + "-08-03T"), line);
}

void PppdTest::pipesEndNow()
{
    const Workplace place;
    const Outcome outcome =
        place.run({"import", "-", "--format", "pppd", "--profile", "net"}, logFile("interleaved.log"));
    QCOMPARE(outcome.code, 0);
    const auto records = place.records();
    QCOMPARE(records.size(), std::size_t(2));
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    for (const zelk::Record &record : records)
        QVERIFY(record.end < now + 172800 && record.end > now - 31622400);
}

void PppdTest::importTwice()
{
    const Workplace place;
    const QString file = logIn(place, logFile("interleaved.log"), "2026-08-04T00:00:00Z");
    QVERIFY(import(place, file).out.startsWith("Added 2 connections"));
    const Outcome again = import(place, file);
    QCOMPARE(again.code, 0);
    QVERIFY2(again.out.startsWith("Added 0 connections") &&
                 again.out.endsWith("\n2 were already there and were left out.\n"),
             again.out);
    QCOMPARE(place.records().size(), std::size_t(2));
}

void PppdTest::profileIsKept()
{
    const Workplace place;
    const QString file = logIn(place, logFile("middle.log"), "2026-08-04T00:00:00Z");
    QCOMPARE(place.run({"import", file, "--format", "pppd", "--profile", "Κύμα Κινητή"}).code, 0);
    const zelk::Record record = place.records().at(0);
    QCOMPARE(record.profile, std::string("Κύμα Κινητή"));
    QCOMPARE(record.origin, zelk::Origin::Imported);
    QCOMPARE(record.originDetail, std::string("pppd"));
}

void PppdTest::wrongLogs_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("message");
    const QByteArray begin = "Aug  3 08:00:00 box pppd[1]: Connect: ppp0 <--> /dev/ttyUSB0\n";
    const QByteArray stamp = "Aug  3 08:10:00 box pppd[1]: ";
    const auto row = [](const char *name, const QByteArray &text, const char *message) {
        QTest::newRow(name) << text << QByteArray(message);
    };
    row("empty", "", ":1: no line of the log comes from pppd; is this the system log?");
    row("of other programs", "Aug  3 08:00:00 box cron[1]: hello\nAug  3 08:00:01 box cron[1]: pppd\n",
        ":2: no line of the log comes from pppd");
    row("without stamps", begin + "box pppd[1]: Exit.\n", ":2: the line has no time stamp such as");
    row("stamp that does not exist", "Aug 32 08:00:00 box pppd[1]: Exit.\n", ":1: the line has no time stamp");
    row("unreadable connect time", begin + stamp + "Connect time ten minutes.\n",
        ":2: the connect time cannot be read");
    row("absurd connect time", begin + stamp + "Connect time 99999999999.0 minutes.\n",
        ":2: the connect time cannot be read");
    row("unreadable amounts", begin + stamp + "Sent many bytes, received 4 bytes.\n", ":2: the amounts cannot be read");
    row("negative amount", begin + stamp + "Sent -1 bytes, received 4 bytes.\n", ":2: the amounts cannot be read");
    row("amount beyond 64 bits", begin + stamp + "Sent 99999999999999999999 bytes, received 4 bytes.\n",
        ":2: the amounts cannot be read");
    row("absurd amount", begin + stamp + "Sent 9223372036854775807 bytes, received 4 bytes.\n",
        ":1: The uploaded amount in bytes is 9223372036854775807");
    row("end before start without a figure to tell",
        begin + "Aug  3 07:00:00 box pppd[1]: Sent 1 bytes, received 4 bytes.\n", "is before the start");
    row("endless line", QByteArray(3 << 20, 'x'), ":1: the line is longer than any line of a text file");
}

void PppdTest::wrongLogs()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, message);
    const Workplace place;
    const Outcome outcome = import(place, logIn(place, text, "2026-08-04T00:00:00Z"));
    QVERIFY2(outcome.err.contains(message), outcome.err);
    QVERIFY2(outcome.err.endsWith("\nNothing was imported.\n"), outcome.err);
    QCOMPARE(outcome.code, 3);
    QCOMPARE(place.records().size(), std::size_t(0));
}

QTEST_GUILESS_MAIN(PppdTest)
#include "PppdTest.moc"
