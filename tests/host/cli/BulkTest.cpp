// A hundred thousand connections at once: all or nothing, even when the program is killed, with a progress bar for
// people and none for programs.
#include "Program.h"

#include <QRegularExpression>
#include <QTest>

#include <csignal>

class BulkTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void importsAndExports_data();
    void importsAndExports();
    void progressOnATerminal();
    void noProgressInAPipe();
    void killedHalfWay_data();
    void killedHalfWay();
    void othersReadMeanwhile();

private:
    static constexpr int count = 100000;
    Workplace m_files;
};

void BulkTest::initTestCase()
{
    QByteArray text = "profile,start,end,bytes_uploaded,bytes_downloaded\r\n";
    zelk::Record record = sampleRecord();
    std::vector<zelk::Record> records;
    for (int i = 0; i < count; ++i) {
        record.profile = "Profile " + std::to_string(i % 7);
        record.start += 977;
        record.end = record.start + i % 900;
        record.connectedSeconds = record.end - record.start;
        record.bytesUploaded = i * std::int64_t(1000);
        records.push_back(record);
    }
    zelk::ConnectionHistory(m_files.file("source.sqlite").toStdString()).add(records);
    for (const char *format : {"csv", "json"})
        QCOMPARE(m_files
                     .runBare({"--history", m_files.file("source.sqlite"), "export",
                               m_files.file(QString("many.") + format)})
                     .code,
                 0);
}

void BulkTest::importsAndExports_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("CSV") << "csv";
    QTest::newRow("JSON") << "json";
}

void BulkTest::importsAndExports()
{
    QFETCH(QString, format);
    const Workplace place;
    const QString file = m_files.file("many." + format);
    const QString json = "{\"added\":%1,\"already_there\":%2,\"skipped\":0}\n";
    QCOMPARE(QString(place.run({"import", file, "--json"}).out), json.arg(count).arg(0));
    QCOMPARE(place.run({"export", "--format", format}).out, m_files.read("many." + format));
    QCOMPARE(QString(place.run({"import", file, "--json"}).out), json.arg(0).arg(count));
    QCOMPARE(place.records().size(), std::size_t(count));
}

void BulkTest::progressOnATerminal()
{
    const Workplace place;
    TerminalProgram program({"--history", place.history(), "import", m_files.file("many.csv")});
    QCOMPARE(program.finish(), 0);
    const QByteArray &shown = program.shown();
    for (const char *step : {"\rImporting [........................................]   0 %",
                             "\rImporting [####################....................]  50 %",
                             "\rImporting [########################################] 100 %"})
        QVERIFY2(shown.contains(step), step);
    // Only steps that show something new are drawn, and the bar is taken away before the outcome is told.
    QCOMPARE(shown.count('%'), 101);
    const auto cleared = shown.lastIndexOf("\r\033[K");
    QVERIFY(cleared > shown.lastIndexOf('%'));
    QVERIFY2(shown.mid(cleared).contains("Added 100000 connections"), shown.mid(cleared));
}

void BulkTest::noProgressInAPipe()
{
    const Workplace place;
    const Outcome outcome = place.run({"import", m_files.file("many.csv")});
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.err, QByteArray());
    QCOMPARE(QString(outcome.out), "Added 100000 connections to " + place.history() + ".\n");
}

void BulkTest::killedHalfWay_data()
{
    QTest::addColumn<QByteArray>("percent");
    for (const char *percent : {" 0 %", "25 %", "75 %"})
        QTest::newRow(percent) << QByteArray(percent);
}

void BulkTest::killedHalfWay()
{
    QFETCH(QByteArray, percent);
    const Workplace place;
    place.add(sampleRecord());
    const QByteArray before = place.run({"export"}).out;
    {
        TerminalProgram program({"--history", place.history(), "import", m_files.file("many.csv")});
        QVERIFY(program.waitFor([&percent](const QByteArray &shown) { return shown.contains(percent); }));
        program.kill();
        QCOMPARE(program.finish(), -SIGKILL);
    }
    QCOMPARE(place.run({"export"}).out, before);
    QVERIFY(place.run({"import", m_files.file("many.csv")}).out.startsWith("Added 100000 connections"));
    QCOMPARE(place.records().size(), std::size_t(count + 1));
}

void BulkTest::othersReadMeanwhile()
{
    const Workplace place;
    place.add(sampleRecord());
    TerminalProgram program({"--history", place.history(), "import", m_files.file("many.csv")});
    QVERIFY(program.waitFor([](const QByteArray &shown) { return shown.contains("10 %"); }));
    const std::size_t seen = place.records().size();
    QVERIFY2(seen == 1 || seen == count + 1, "An import is seen whole or not at all.");
    QCOMPARE(program.finish(), 0);
    QCOMPARE(place.records().size(), std::size_t(count + 1));
}

QTEST_GUILESS_MAIN(BulkTest)
#include "BulkTest.moc"
