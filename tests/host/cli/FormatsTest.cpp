// CSV and JSON: what goes out comes in again, and wrong input is refused with its place, as a whole.
#include "Program.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <ctime>
#include <set>

class FormatsTest : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip_data();
    void roundTrip();
    void csvIsAsDocumented();
    void jsonIsAsDocumented();
    void emptyHistories_data();
    void emptyHistories();
    void formulasAreGuarded_data();
    void formulasAreGuarded();
    void apostrophesOfOthersStay();
    void spreadsheetsMaySaveIt_data();
    void spreadsheetsMaySaveIt();
    void leftOutColumns();
    void timesOfOthers_data();
    void timesOfOthers();
    void importTwice_data();
    void importTwice();
    void equalRecordsAreCounted();
    void wrongInput_data();
    void wrongInput();
    void wrongInputUndoesWhatCameBefore();
    void unreadableFiles();
    void exportsReplaceWholeFiles();
    void exportsThatCannotBeWritten();
    void exportsAreFiltered();
    void sampleHistory();
    void shiftedSampleEndsYesterday_data();
    void shiftedSampleEndsYesterday();
    void shiftsAcrossSummerTime_data();
    void shiftsAcrossSummerTime();
};

namespace {

const QByteArray header = "profile,start,end,bytes_uploaded,bytes_downloaded\n";
const QByteArray goodRow = "Net,2026-08-03T07:12:09Z,2026-08-03T08:12:09Z,1,2\n";
const QByteArray goodJson = R"({"profile":"Net","start":"2026-08-03T07:12:09Z","end":"2026-08-03T08:12:09Z",)"
                            R"("bytes_uploaded":1,"bytes_downloaded":2})";

QByteArray jsonFile(const QByteArray &records)
{
    return "{\"format\":\"netinfo-history\",\"version\":1,\"records\":[\n" + records + "\n]}\n";
}

// Every name that has ever broken a CSV file, every word, zones on both sides, and two equal records.
std::vector<zelk::Record> awkwardRecords()
{
    std::vector<zelk::Record> records;
    const std::vector<std::string> names = {"",
                                            "plain",
                                            "comma, and \"quotes\"",
                                            "two\nlines",
                                            "two\r\nlines",
                                            "\r",
                                            "\"",
                                            " blank at both ends ",
                                            "\ttab",
                                            "=SUM(A1:A9)",
                                            "+49 30 123",
                                            "-1",
                                            "@cmd",
                                            "  =1+1",
                                            "\n=1",
                                            "'",
                                            "''",
                                            "'=1",
                                            "'plain",
                                            "\uFF1D1+1",
                                            "Κύμα Κινητή",
                                            "星空モバイル",
                                            "سماء موبايل",
                                            "\U0001F4F6",
                                            "a;b",
                                            "back\\slash",
                                            "null",
                                            "\x01\x1f\x7f",
                                            "\u2028"};
    std::int64_t number = 0;
    for (const std::string &name : names) {
        zelk::Record record = sampleRecord();
        record.profile = name;
        record.profileName = names[static_cast<std::size_t>(number * 7 + 3) % names.size()];
        record.start += number * 100000;
        record.end = record.start + number * 977;
        record.connectedSeconds = number * 970;
        record.endZoneOffset = (static_cast<std::int32_t>(number) - 14) * 3600 + (number % 4 == 0 ? 1800 : 0);
        record.bytesUploaded = number * number * 1234567;
        record.bytesDownloaded = (1LL << 53U) - number;
        record.origin = static_cast<zelk::Origin>(number % 3);
        record.originDetail =
            record.origin == zelk::Origin::Imported ? names[static_cast<std::size_t>(number * 5) % names.size()] : "";
        record.quality = static_cast<unsigned>(number % 16);
        record.endReason = static_cast<zelk::EndReason>(number % 6);
        records.push_back(record);
        ++number;
    }
    records.push_back(records.front());
    return records;
}

bool same(const zelk::Record &left, const zelk::Record &right)
{
    return left.profile == right.profile && left.profileName == right.profileName && left.start == right.start &&
           left.end == right.end && left.endZoneOffset == right.endZoneOffset &&
           left.connectedSeconds == right.connectedSeconds && left.bytesUploaded == right.bytesUploaded &&
           left.bytesDownloaded == right.bytesDownloaded && left.origin == right.origin &&
           left.originDetail == right.originDetail && left.quality == right.quality &&
           left.endReason == right.endReason;
}

QString sampleFile()
{
    return qEnvironmentVariable("NETINFO_SOURCE_DIR") + "/host/cli/sample/sample-history.csv";
}

} // namespace

void FormatsTest::roundTrip_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("CSV") << "csv";
    QTest::newRow("JSON") << "json";
}

void FormatsTest::roundTrip()
{
    QFETCH(QString, format);
    const Workplace from;
    const std::vector<zelk::Record> records = awkwardRecords();
    zelk::ConnectionHistory(from.history().toStdString()).add(records);
    QCOMPARE(from.run({"remove", "3"}).code, 0); // Keys need not be without gaps.
    const Outcome first = from.run({"export", "--format", format});
    QCOMPARE(first.code, 0);
    QCOMPARE(first.err, QByteArray());

    const Workplace to;
    const Outcome import = to.run({"import", "-", "--format", format}, first.out);
    QCOMPARE(import.err, QByteArray());
    QCOMPARE(import.code, 0);
    QCOMPARE(to.run({"export", "--format", format}).out, first.out);

    const auto before = from.records();
    const auto after = to.records();
    QCOMPARE(before.size(), records.size() - 1);
    QCOMPARE(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i)
        QVERIFY2(same(after[i], before[i]), qPrintable(QString("Record %1 has changed.").arg(i)));
}

void FormatsTest::csvIsAsDocumented()
{
    const Workplace place;
    zelk::Record record = sampleRecord();
    record.profile = "say \"hi\", twice";
    record.profileName = "=Büro";
    record.quality = zelk::QualityResumed | zelk::QualityRecovered;
    record.endReason = zelk::EndReason::Network;
    place.add(record);
    record = sampleRecord();
    record.endZoneOffset = 0;
    record.origin = zelk::Origin::Recorded;
    place.add(record);
    QCOMPARE(place.run({"export"}).out,
             QByteArray("profile,profile_name,start,end,connected_seconds,bytes_uploaded,bytes_downloaded,origin,"
                        "origin_detail,quality,end_reason\r\n"
                        "\"say \"\"hi\"\", twice\",'=Büro,2026-08-03T07:12:09+02:00,2026-08-03T07:57:39+02:00,2730,"
                        "1234567,89012345,added,,resumed+recovered,network\r\n"
                        "Nordlicht Mobil,,2026-08-03T05:12:09Z,2026-08-03T05:57:39Z,2730,1234567,89012345,recorded,,"
                        "exact,unknown\r\n"));
}

void FormatsTest::jsonIsAsDocumented()
{
    const Workplace place;
    zelk::Record record = sampleRecord();
    record.origin = zelk::Origin::Imported;
    record.originDetail = "pppd";
    place.add(record);
    const QByteArray text = place.run({"export", "--format", "json"}).out;
    QCOMPARE(text, QByteArray("{\n  \"format\": \"netinfo-history\",\n  \"version\": 1,\n  \"records\": [\n    "
                              "{\"profile\":\"Nordlicht Mobil\",\"profile_name\":\"\","
                              "\"start\":\"2026-08-03T07:12:09+02:00\",\"end\":\"2026-08-03T07:57:39+02:00\","
                              "\"connected_seconds\":2730,\"bytes_uploaded\":1234567,\"bytes_downloaded\":89012345,"
                              "\"origin\":\"imported\",\"origin_detail\":\"pppd\",\"quality\":\"exact\","
                              "\"end_reason\":\"unknown\"}\n  ]\n}\n"));
    QVERIFY(QJsonDocument::fromJson(text).isObject());
}

void FormatsTest::emptyHistories_data()
{
    roundTrip_data();
}

void FormatsTest::emptyHistories()
{
    QFETCH(QString, format);
    const Workplace place;
    const Outcome out = place.run({"export", "--format", format});
    QCOMPARE(out.code, 0);
    const Outcome in = place.run({"import", "-", "--format", format}, out.out);
    QCOMPARE(in.err, QByteArray());
    QCOMPARE(in.code, 0);
    QVERIFY2(in.out.startsWith("Added 0 connections"), in.out);
}

void FormatsTest::formulasAreGuarded_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("cell");
    QTest::newRow("equals sign") << QByteArray("=1+1") << QByteArray("'=1+1");
    QTest::newRow("plus") << QByteArray("+49") << QByteArray("'+49");
    QTest::newRow("minus") << QByteArray("-1") << QByteArray("'-1");
    QTest::newRow("at sign") << QByteArray("@SUM(1)") << QByteArray("'@SUM(1)");
    QTest::newRow("tab") << QByteArray("\t=1") << QByteArray("'\t=1");
    QTest::newRow("carriage return") << QByteArray("\r=1") << QByteArray("\"'\r=1\"");
    QTest::newRow("line feed") << QByteArray("\n=1") << QByteArray("\"'\n=1\"");
    QTest::newRow("behind blanks") << QByteArray("  =1") << QByteArray("'  =1");
    QTest::newRow("full width") << QByteArray("\uFF1D1") << QByteArray("'\uFF1D1");
    QTest::newRow("guarded already") << QByteArray("'=1") << QByteArray("''=1");
    QTest::newRow("apostrophe") << QByteArray("'tis") << QByteArray("''tis");
    QTest::newRow("harmless inside") << QByteArray("a=1") << QByteArray("a=1");
    QTest::newRow("only blanks") << QByteArray("  ") << QByteArray("\"  \"");
}

void FormatsTest::formulasAreGuarded()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, cell);
    const Workplace from;
    zelk::Record record = sampleRecord();
    record.profile = name.toStdString();
    from.add(record);
    const QByteArray text = from.run({"export"}).out;
    const QByteArray row = text.mid(text.indexOf("\r\n") + 2);
    QVERIFY2(row.startsWith(cell + ",,2026"), row);
    const Workplace to;
    QCOMPARE(to.run({"import", "-", "--format", "csv"}, text).code, 0);
    QCOMPARE(to.records().at(0).profile, record.profile);
}

void FormatsTest::apostrophesOfOthersStay()
{
    const Workplace place;
    const Outcome outcome =
        place.run({"import", "-", "--format", "csv"}, header + "'tis" + goodRow.mid(3) + "'" + goodRow.mid(3));
    QCOMPARE(outcome.code, 0);
    QCOMPARE(place.records().at(0).profile, std::string("'tis"));
    QCOMPARE(place.records().at(1).profile, std::string("'"));
}

void FormatsTest::spreadsheetsMaySaveIt_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray plain = header + goodRow;
    QTest::newRow("line feeds") << plain;
    QTest::newRow("carriage returns and line feeds") << QByteArray(plain).replace("\n", "\r\n");
    QTest::newRow("byte order mark") << "\xEF\xBB\xBF" + plain;
    QTest::newRow("no line end at the end") << plain.chopped(1);
    QTest::newRow("blank lines") << "\n" + header + "\n\r\n" + goodRow + "\n\n";
    QTest::newRow("everything quoted")
        << "\"" + QByteArray(plain.chopped(1)).replace(",", "\",\"").replace("\n", "\"\n\"") + "\"\n";
    QTest::newRow("another order of columns") << QByteArray("bytes_downloaded,end,profile,bytes_uploaded,start\n"
                                                            "2,2026-08-03T08:12:09Z,Net,1,2026-08-03T07:12:09Z\n");
}

void FormatsTest::spreadsheetsMaySaveIt()
{
    QFETCH(QByteArray, text);
    const Workplace place;
    const Outcome outcome = place.run({"import", place.write("in.csv", text)});
    QCOMPARE(outcome.err, QByteArray());
    QCOMPARE(outcome.code, 0);
    const auto records = place.records();
    QCOMPARE(records.size(), std::size_t(1));
    QCOMPARE(records[0].profile, std::string("Net"));
    QCOMPARE(records[0].start, std::int64_t(1785741129));
    QCOMPARE(records[0].end, std::int64_t(1785744729));
    QCOMPARE(records[0].bytesUploaded, std::int64_t(1));
    QCOMPARE(records[0].bytesDownloaded, std::int64_t(2));
}

void FormatsTest::leftOutColumns()
{
    const Workplace place;
    QCOMPARE(place.run({"import", "-", "--format", "csv"}, header + goodRow).code, 0);
    QCOMPARE(place.run({"import", "-", "--format", "json"}, jsonFile(QByteArray(goodJson).replace("Net", "N"))).code,
             0);
    const auto records = place.records();
    QCOMPARE(records.size(), std::size_t(2));
    for (const zelk::Record &record : records) {
        QCOMPARE(record.profileName, std::string());
        QCOMPARE(record.connectedSeconds, std::int64_t(3600));
        QCOMPARE(record.origin, zelk::Origin::Imported);
        QCOMPARE(record.quality, unsigned(zelk::QualityExact));
        QCOMPARE(record.endReason, zelk::EndReason::Unknown);
    }
    QCOMPARE(records[0].originDetail, std::string("csv"));
    QCOMPARE(records[1].originDetail, std::string("json"));
}

void FormatsTest::timesOfOthers_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<int>("offset");
    QTest::newRow("UTC") << QByteArray("2026-08-03T08:12:09Z") << qint64(1785744729) << 0;
    QTest::newRow("east") << QByteArray("2026-08-03T13:42:09+05:30") << qint64(1785744729) << 19800;
    QTest::newRow("west") << QByteArray("2026-08-03T04:42:09-03:30") << qint64(1785744729) << -12600;
    QTest::newRow("unknown zone") << QByteArray("2026-08-03T08:12:09-00:00") << qint64(1785744729) << 0;
    QTest::newRow("lower case") << QByteArray("2026-08-03t08:12:09z") << qint64(1785744729) << 0;
    QTest::newRow("blank") << QByteArray("2026-08-03 08:12:09Z") << qint64(1785744729) << 0;
    QTest::newRow("fraction") << QByteArray("2026-08-03T08:12:09.999Z") << qint64(1785744729) << 0;
    QTest::newRow("leap day") << QByteArray("2028-02-29T00:00:00Z") << qint64(1835395200) << 0;
    QTest::newRow("leap second") << QByteArray("2026-12-31T23:59:60Z") << qint64(1798761600) << 0;
}

void FormatsTest::timesOfOthers()
{
    QFETCH(QByteArray, end);
    QFETCH(qint64, seconds);
    QFETCH(int, offset);
    const Workplace place;
    const Outcome outcome =
        place.run({"import", "-", "--format", "csv"}, header + "Net,2026-08-03T07:12:09Z," + end + ",1,2\n");
    QCOMPARE(outcome.err, QByteArray());
    QCOMPARE(qint64(place.records().at(0).end), seconds);
    QCOMPARE(int(place.records().at(0).endZoneOffset), offset);
}

void FormatsTest::importTwice_data()
{
    roundTrip_data();
}

void FormatsTest::importTwice()
{
    QFETCH(QString, format);
    const Workplace from;
    zelk::ConnectionHistory(from.history().toStdString()).add(awkwardRecords());
    const QString file = from.file("all." + format);
    QCOMPARE(from.run({"export", file}).code, 0);
    const int count = static_cast<int>(awkwardRecords().size());

    const Outcome own = from.run({"import", file});
    QCOMPARE(own.code, 0);
    QCOMPARE(QString(own.out), QString("Added 0 connections to %1.\n%2 were already there and were left out.\n")
                                   .arg(from.history())
                                   .arg(count));
    const Workplace to;
    const QString added = "{\"added\":%1,\"already_there\":%2,\"skipped\":0}\n";
    QCOMPARE(QString(to.run({"import", file, "--json"}).out), added.arg(count).arg(0));
    const QByteArray once = to.run({"export"}).out;
    QCOMPARE(QString(to.run({"import", file, "--json"}).out), added.arg(0).arg(count));
    QCOMPARE(to.run({"export"}).out, once);
}

void FormatsTest::equalRecordsAreCounted()
{
    const Workplace place;
    const QStringList import{"import", "-", "--format", "csv"};
    QVERIFY(place.run(import, header + goodRow).out.startsWith("Added 1 connection to"));
    const Outcome more = place.run(import, header + goodRow + goodRow + goodRow);
    QVERIFY2(more.out.startsWith("Added 2 connections to"), more.out);
    QVERIFY2(more.out.endsWith("\n1 was already there and was left out.\n"), more.out);
    QCOMPARE(place.records().size(), std::size_t(3));
}

void FormatsTest::wrongInput_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("message");
    const auto csv = [](const char *name, const QByteArray &text, const char *message) {
        QTest::addRow("CSV: %s", name) << "csv" << text << QByteArray(message);
    };
    const auto cells = [&csv](const char *name, const QByteArray &row, const char *message) {
        csv(name, header + goodRow + row + "\n", message);
    };
    csv("empty", "", ":1: the input is empty; a CSV file begins with a header line");
    csv("blank", "\n\n", ":1: the input is empty");
    csv("no header", goodRow, ":1: the column \"Net\" is not known; columns are profile, profile_name, start, end");
    csv("unknown column", "profile,start,end,bytes_uploaded,colour,bytes_downloaded\n" + goodRow,
        ":1: the column \"colour\" is not known");
    csv("semicolons", QByteArray(header).replace(',', ';'), "separated by commas, not by semicolons");
    csv("column twice", "profile,start,end,profile,bytes_uploaded,bytes_downloaded\n",
        ":1: the column \"profile\" comes twice");
    csv("missing columns", "profile,start,bytes_uploaded\n", ":1: the header line lacks end, bytes_downloaded");
    csv("UTF-16", QByteArray("\xFF\xFEp\0r\0", 6), ":1: the file is written in UTF-16; save it as UTF-8");
    csv("not text", QByteArray(3 << 20, 'x'), ":1: the line is longer than any line of a text file");
    csv("open quotation mark", header + "\"" + goodRow + goodRow, ":2: the input ends inside a quoted text");
    csv("quotation mark open for a megabyte", header + goodRow + "\"" + goodRow.repeated(30000),
        ":3: the row is too long; a closing quotation mark seems to be missing");
    cells("stray quotation mark", "N\"et" + goodRow.mid(3), ":3: a quotation mark is out of place");
    cells("text behind a quotation mark", "\"Net\"x" + goodRow.mid(3), ":3: a quotation mark is out of place");
    cells("too few fields", "Net,2026-08-03T07:12:09Z", ":3: the row has 2 fields where the header has 5");
    cells("too many fields", goodRow.trimmed() + ",3", ":3: the row has 6 fields where the header has 5");
    cells("end before start", "Net,2026-08-03T07:12:09+02:00,2026-08-03T07:12:08+02:00,1,2",
          ":3: the end, 2026-08-03T07:12:08+02:00, is before the start, 2026-08-03T07:12:09+02:00");
    cells("negative amount", "Net,2026-08-03T07:12:09Z,2026-08-03T08:12:09Z,-1,2", ":3: The uploaded amount");
    cells("absurd amount", "Net,2026-08-03T07:12:09Z,2026-08-03T08:12:09Z,1,9007199254740993",
          ":3: The downloaded amount in bytes is 9007199254740993");
    cells("amount beyond all", "Net,2026-08-03T07:12:09Z,2026-08-03T08:12:09Z,1,99999999999999999999",
          ":3: bytes_downloaded is 99999999999999999999, which is beyond any amount");
    cells("amount with a fraction", "Net,2026-08-03T07:12:09Z,2026-08-03T08:12:09Z,1,2.5",
          ":3: bytes_downloaded is \"2.5\"; it must be a whole number");
    cells("amount left empty", "Net,2026-08-03T07:12:09Z,2026-08-03T08:12:09Z,,2",
          ":3: bytes_uploaded is \"\"; it must be a whole number");
    cells("name too long", QByteArray(2000, 'n') + goodRow.mid(3), ":3: The profile is 2000 bytes long");
    cells("name not UTF-8", "N\xE4t" + goodRow.mid(3), ":3: The profile is not valid UTF-8 at byte 2");
    cells("zero character", QByteArray("N\0t", 3) + goodRow.mid(3), ":3: The profile holds a zero character");
    for (const char *time :
         {"", "yesterday", "2026-08-03", "2026-08-03T08:12:09", "2026-13-03T08:12:09Z", "2026-02-29T08:12:09Z",
          "2026-08-03T24:12:09Z", "2026-08-03T08:60:09Z", "2026-08-03T08:12:61Z", "2026-08-03T08:12:09+24:00",
          "2026-08-03T08:12:09.Z", "2026-08-03T08:12:09Z ", "20260803T081209Z", "12026-08-03T08:12:09Z"})
        QTest::addRow("CSV: time \"%s\"", time)
            << "csv" << header + "Net,2026-08-03T07:12:09Z," + time + ",1,2\n"
            << ":2: end is \"" + QByteArray(time) + "\"; write a time as 2026-08-03T07:12:09+02:00";
    csv("time before 1970", header + "Net,1969-08-03T07:12:09Z,2026-08-03T07:12:09Z,1,2\n", ":2: The start is -");
    csv("line counted through quoted texts",
        header + "\"two\n\nlines\"" + goodRow.mid(3) + "\n" + "Net,x,2026-08-03T07:12:09Z,1,2\n", ":6: start is \"x\"");
    csv("row that begins above its error", header + "\"two\nlines\",x,2026-08-03T07:12:09Z,1,2\n", ":2: start is");
    const QByteArray words = header.trimmed() + ",origin,quality,end_reason\n" + goodRow.trimmed();
    csv("origin", words + ",stolen,exact,user\n", ":2: origin is \"stolen\"; it must be recorded, imported or added");
    csv("quality", words + ",added,exact+resumed,user\n", ":2: quality is \"exact+resumed\"; it must be exact, or");
    csv("reason", words + ",added,exact,rain\n", ":2: end_reason is \"rain\"; it must be unknown, user");
    csv("connected longer than it lasted", header.trimmed() + ",connected_seconds\n" + goodRow.trimmed() + ",360000\n",
        ":2: The connected time");

    const auto json = [](const char *name, const QByteArray &text, const char *message) {
        QTest::addRow("JSON: %s", name) << "json" << text << QByteArray(message);
    };
    const auto member = [&json](const char *name, const char *from, const char *to, const char *message) {
        json(name, jsonFile(goodJson + ",\n" + QByteArray(goodJson).replace(from, to)), message);
    };
    const QByteArray whole = jsonFile(goodJson);
    json("empty", "", ":1: this is not valid JSON: syntax error while parsing value - unexpected end of input");
    json("truncated in a record", whole.left(60), ":2: this is not valid JSON");
    json("truncated behind a record", whole.left(whole.size() - 4), ":2: this is not valid JSON");
    json("something behind it", whole + "x", ":4: this is not valid JSON");
    json("CSV", header + goodRow, ":1: this is not valid JSON");
    json("invalid UTF-8", QByteArray(whole).replace("Net", "N\xE4t"), ":2: this is not valid JSON: ");
    json("array", "[" + goodJson + "]", ":1: the file must hold one object with \"format\"");
    json("only a number", "17", ":1: the file must hold one object with \"format\"");
    json("no format", "{\"version\":1,\"records\":[]}", ":1: the object lacks \"format\", \"version\" or \"records\"");
    json("no records", "{\"format\":\"netinfo-history\",\"version\":1}", "the object lacks");
    json("other format", QByteArray(whole).replace("netinfo-history", "recipes"),
         ":1: the format is \"recipes\"; only \"netinfo-history\"");
    json("newer version", QByteArray(whole).replace("\"version\":1", "\"version\":2"),
         ":1: the file has version 2 of the format; this program reads version 1, so use a newer one");
    json("unknown member above", "{\"format\":\"netinfo-history\",\n\"colour\":1}", ":2: the member \"colour\"");
    json("member twice above", "{\"version\":1,\"version\":1}", ":1: the member \"version\" comes twice");
    json("records are no array", "{\"records\":{}}", ":1: records must not be an object");
    json("records hold a number", jsonFile("17"), ":2: \"records\" may hold objects only");
    json("records nested", jsonFile("[" + goodJson + "]"), ":2: \"records\" may hold objects only");
    json("deeply nested", QByteArray(1 << 20, '['), ":1: the file must hold one object");
    member("unknown member", "\"profile\"", "\"colour\"", ":3: the member \"colour\" is not known");
    member("member twice", "\"start\"", "\"profile\":\"x\",\"start\"", ":3: the member \"profile\" comes twice");
    member("missing member", ",\"bytes_downloaded\":2", "", ":3: the record lacks bytes_downloaded");
    member("number as text", ":1,", ":\"1\",", ":3: bytes_uploaded must be a number, without quotation marks");
    member("text as number", "\"Net\"", "17", ":3: profile must be a text in quotation marks");
    member("null", "\"Net\"", "null", ":3: profile must not be null");
    member("boolean", "\"Net\"", "true", ":3: profile must not be true or false");
    member("object", "\"Net\"", "{}", ":3: profile must not be an object");
    member("fraction", ":1,", ":1.5,", ":3: bytes_uploaded is 1.5; it must be a whole number");
    member("negative", ":1,", ":-1,", ":3: The uploaded amount in bytes is -1");
    member("beyond 64 bits", ":1,", ":18446744073709551615,", ":3: bytes_uploaded is 18446744073709551615; it must");
    member("beyond all", ":1,", ":99999999999999999999,", ":3: bytes_uploaded is 99999999999999999999; it must be");
    member("end before start", "08:12:09", "06:12:09", ":3: the end, 2026-08-03T06:12:09Z, is before the start");
    member("time", "2026-08-03T08:12:09Z", "noon", ":3: end is \"noon\"; write a time as");
    json("number at the end of a line", jsonFile("{\"bytes_uploaded\": 1.5\n}"), ":2: bytes_uploaded is 1.5;");
    json("record over several lines", jsonFile("\n{\n\"profile\":\"x\"\n}"), ":3: the record lacks start, end");
}

void FormatsTest::wrongInput()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, message);
    const Workplace place;
    place.add(sampleRecord());
    const QByteArray before = place.run({"export"}).out;
    const QString file = place.write("in." + format, text);
    const Outcome outcome = place.run({"import", file});
    QVERIFY2(outcome.err.contains(message), outcome.err);
    QVERIFY2(outcome.err.startsWith("netinfo-records: " + file.toUtf8() + ':'), outcome.err);
    QVERIFY2(outcome.err.endsWith("\nNothing was imported.\n"), outcome.err);
    QCOMPARE(outcome.code, 3);
    QCOMPARE(outcome.out, QByteArray());
    QCOMPARE(place.run({"export"}).out, before);

    const Outcome piped = place.run({"import", "-", "--format", format}, text);
    QCOMPARE(piped.code, 3);
    QVERIFY2(piped.err.startsWith("netinfo-records: standard input:"), piped.err);
}

void FormatsTest::wrongInputUndoesWhatCameBefore()
{
    const Workplace place;
    const Outcome outcome = place.run({"import", "-", "--format", "csv"}, header + goodRow.repeated(5000) + "x\n");
    QCOMPARE(outcome.code, 3);
    QVERIFY2(outcome.err.contains(":5002: "), outcome.err);
    QCOMPARE(place.records().size(), std::size_t(0));
}

void FormatsTest::unreadableFiles()
{
    const Workplace place;
    const Outcome missing = place.run({"import", place.file("missing.csv")});
    QCOMPARE(missing.code, 1);
    QVERIFY2(missing.err.contains("missing.csv: No such file or directory"), missing.err);
    const Outcome folder = place.run({"import", place.file("."), "--format", "csv"});
    QCOMPARE(folder.code, 1);
    QVERIFY2(folder.err.contains("it is a folder"), folder.err);
    place.write("list", header + goodRow); // A file may have the name of a command.
    QCOMPARE(place.run({"import", "--format", "csv", "list"}).code, 0);
    QCOMPARE(place.records().size(), std::size_t(1));
}

void FormatsTest::exportsReplaceWholeFiles()
{
    const Workplace place;
    place.add(sampleRecord());
    const QByteArray expected = place.run({"export"}).out;
    const QString file = place.write("kept.csv", "older");
    QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
    QVERIFY(QFile::link(file, place.file("link.csv")));
    QCOMPARE(place.run({"export", place.file("link.csv")}).code, 0);
    QVERIFY(QFileInfo(place.file("link.csv")).isSymLink());
    QCOMPARE(place.read("kept.csv"), expected);
    const QFile::Permissions others = QFile::ReadGroup | QFile::ReadOther;
    QVERIFY(!(QFile::permissions(file) & others));
    QCOMPARE(place.run({"export", place.file("new.json")}).code, 0);
    QVERIFY(place.read("new.json").startsWith("{\n  \"format\""));
    QCOMPARE(QDir(place.file(".")).entryList({"*.csv*", "*.json*"}, QDir::Files),
             QStringList({"kept.csv", "link.csv", "new.json"}));
}

void FormatsTest::exportsThatCannotBeWritten()
{
    const Workplace place;
    place.add(sampleRecord());
    const Outcome full = place.run({"export", "/dev/full", "--format", "csv"});
    QCOMPARE(full.code, 1);
    QVERIFY2(full.err.contains("Cannot write /dev/full: No space left on device"), full.err);
    const Outcome nowhere = place.run({"export", place.file("no/where.csv")});
    QCOMPARE(nowhere.code, 1);
    QVERIFY2(nowhere.err.contains("no/where.csv: No such file or directory"), nowhere.err);
}

void FormatsTest::exportsAreFiltered()
{
    const Workplace place;
    QCOMPARE(place.run({"import", sampleFile()}).code, 0);
    const QByteArray june = place.run({"export", "--month", "2026-06"}).out;
    QVERIFY(june.count("\r\n") > 1 && june.count("\r\n") < 62);
    QCOMPARE(june.count(",2026-06-"), 2 * (june.count("\r\n") - 1));
    const QByteArray japanese = place.run({"export", "--profile", "星空モバイル"}).out;
    QCOMPARE(japanese.count("星空モバイル"), japanese.count("\r\n") - 1);
}

void FormatsTest::sampleHistory()
{
    const Workplace place;
    const Outcome outcome = place.run({"import", sampleFile()});
    QCOMPARE(outcome.err, QByteArray());
    const auto records = place.records();
    QVERIFY(records.size() >= 55 && records.size() <= 65);
    std::set<std::string> profiles;
    for (std::size_t i = 0; i < records.size(); ++i) {
        profiles.insert(records[i].profile);
        QVERIFY2(i == 0 || records[i].start >= records[i - 1].end, "One modem makes one connection at a time.");
    }
    const double days = static_cast<double>(records.back().end - records.front().start) / 86400;
    QVERIFY2(days > 80 && days < 93, "The sample spans three months.");
    for (const char *profile : {"Nordlicht Mobil", "Κύμα Κινητή", "星空モバイル", "سماء موبايل"})
        QVERIFY2(profiles.count(profile) == 1, profile);
    const QString installed = qEnvironmentVariable("NETINFO_BUILD_DIR") + "/share/netinfo/sample-history.csv";
    QVERIFY2(QFile::exists(installed), qPrintable(installed));
}

void FormatsTest::shiftedSampleEndsYesterday_data()
{
    QTest::addColumn<QString>("zone");
    for (const char *zone : {"UTC", "Europe/Berlin", "Pacific/Kiritimati", "Pacific/Pago_Pago", "America/New_York"})
        QTest::newRow(zone) << zone;
}

// A date in a zone, as the C library of the program sees it.
static QByteArray dateIn(const QString &zone, qint64 seconds)
{
    qputenv("TZ", zone.toUtf8());
    tzset();
    const std::time_t moment = seconds;
    std::tm parts = {};
    localtime_r(&moment, &parts);
    char text[16] = {};
    std::strftime(text, sizeof text, "%Y-%m-%d", &parts);
    qputenv("TZ", "UTC");
    tzset();
    return text;
}

void FormatsTest::shiftedSampleEndsYesterday()
{
    QFETCH(QString, zone);
    Workplace place;
    place.setVariable("TZ", zone);
    const qint64 before = QDateTime::currentSecsSinceEpoch();
    QCOMPARE(place.run({"import", "--shift-to-now", sampleFile()}).code, 0);
    const qint64 after = QDateTime::currentSecsSinceEpoch();
    const Workplace plain;
    QCOMPARE(plain.run({"import", sampleFile()}).code, 0);
    const auto shifted = place.records();
    const auto original = plain.records();
    QCOMPARE(shifted.size(), original.size());
    const std::int64_t by = shifted.front().start - original.front().start;
    QCOMPARE(by % 86400, std::int64_t(0));
    for (std::size_t i = 0; i < shifted.size(); ++i) {
        zelk::Record moved = original[i];
        moved.start += by;
        moved.end += by;
        QVERIFY2(same(shifted[i], moved), "Nothing but the times may change, and they by the same.");
    }
    const QByteArray ended = dateIn(zone, shifted.back().end);
    // The clock may have passed midnight meanwhile.
    QVERIFY2(ended == dateIn(zone, before - 86400) || ended == dateIn(zone, after - 86400), ended);
}

// Half an hour from midnight the local date changes with summer time; today lies in the one or in the other.
void FormatsTest::shiftsAcrossSummerTime_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("from summer") << QByteArray("2026-08-03T22:30:00Z");
    QTest::newRow("from winter") << QByteArray("2026-01-10T22:30:00Z");
}

void FormatsTest::shiftsAcrossSummerTime()
{
    QFETCH(QByteArray, end);
    const QString zone = "Europe/Berlin";
    Workplace place;
    place.setVariable("TZ", zone);
    const qint64 before = QDateTime::currentSecsSinceEpoch();
    QCOMPARE(
        place.run({"import", "-", "--format", "csv", "--shift-to-now"}, header + "Net," + end + "," + end + ",1,2\n")
            .code,
        0);
    const qint64 after = QDateTime::currentSecsSinceEpoch();
    const QByteArray ended = dateIn(zone, place.records().at(0).end);
    QVERIFY2(ended == dateIn(zone, before - 86400) || ended == dateIn(zone, after - 86400), ended);
}

QTEST_GUILESS_MAIN(FormatsTest)
#include "FormatsTest.moc"
