// Every subcommand but import and export: what it prints, what it changes, and how it ends when something is wrong.
#include "Program.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class CommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void helpTellsTheOptions_data();
    void helpTellsTheOptions();
    void helpTellsTheExitCodes();
    void pathIsTheOneThatWasNamed();
    void wrongCommandLines_data();
    void wrongCommandLines();
    void addStoresWhatWasGiven();
    void addTakesLocalTimes();
    void addRefusesWrongValues_data();
    void addRefusesWrongValues();
    void tableIsAligned();
    void emptyListsSaySo();
    void jsonIsExact();
    void monthsAreLocal();
    void periods_data();
    void periods();
    void profilesAreToldApart();
    void namesCannotDriveTheTerminal();
    void removeTakesKeys();
    void removeWithOneWrongKeyRemovesNothing();
    void removeAllWithoutQuestion();
    void removeAllAsksOnATerminal_data();
    void removeAllAsksOnATerminal();
    void damagedHistory();
    void fullOutput_data();
    void fullOutput();
    void optionsMayStandBehindTheCommand();
};

namespace {

QStringList addArguments()
{
    return {"add", "--profile", "P", "--start", "2026-08-03T07:12:09+02:00"};
}

void addAt(const Workplace &place, const std::string &profile, std::int64_t start)
{
    zelk::Record record = sampleRecord();
    record.profile = profile;
    record.start = start;
    record.end = start + 60;
    record.connectedSeconds = 60;
    place.add(record);
}

QStringList profilesIn(const QByteArray &json)
{
    QStringList profiles;
    const QJsonArray records = jsonArray(json);
    for (const auto &value : records)
        profiles.append(value.toObject().value("profile").toString());
    return profiles;
}

} // namespace

void CommandsTest::helpTellsTheOptions_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QByteArrayList>("expected");
    QTest::newRow("program") << QStringList{} << QByteArrayList{"--history", "--version", "list",   "add",
                                                                "remove",    "import",    "export", "path"};
    QTest::newRow("list") << QStringList{"list"} << QByteArrayList{"--profile", "--month", "--from", "--to", "--json"};
    QTest::newRow("add") << QStringList{"add"}
                         << QByteArrayList{"--profile",  "--start",      "--end",     "--duration", "--connected",
                                           "--uploaded", "--downloaded", "--quality", "--reason",   "--json"};
    QTest::newRow("remove") << QStringList{"remove"} << QByteArrayList{"KEY", "--all", "--yes", "--json"};
    QTest::newRow("import") << QStringList{"import"}
                            << QByteArrayList{"FILE", "--format", "--profile", "--shift-to-now", "--json"};
    QTest::newRow("export") << QStringList{"export"} << QByteArrayList{"FILE", "--format", "--month"};
    QTest::newRow("path") << QStringList{"path"} << QByteArrayList{"--json"};
}

void CommandsTest::helpTellsTheOptions()
{
    QFETCH(QStringList, command);
    QFETCH(QByteArrayList, expected);
    const Workplace place;
    const Outcome outcome = place.runBare(command + QStringList{"--help"});
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.err, QByteArray());
    for (const QByteArray &text : expected)
        QVERIFY2(outcome.out.contains(text), text + " is missing in:\n" + outcome.out);
}

void CommandsTest::helpTellsTheExitCodes()
{
    const Workplace place;
    const QByteArray help = place.runBare({"--help"}).out;
    for (const char *line :
         {"  0  success", "  1  the history or a file could not be read or written", "  2  the command line is wrong",
          "  3  the values to import or to add are wrong", "  4  a key names no connection"})
        QVERIFY2(help.contains(line), help);
    QCOMPARE(place.runBare({"--version"}).out, QByteArray("netinfo-records " NETINFO_VERSION "\n"));
}

void CommandsTest::pathIsTheOneThatWasNamed()
{
    Workplace place;
    place.setVariable("NETINFO_HISTORY", "/somewhere/else.sqlite");
    QCOMPARE(place.runBare({"path"}).out, QByteArray("/somewhere/else.sqlite\n"));
    QCOMPARE(place.run({"path"}).out, place.history().toUtf8() + '\n');
    place.setVariable("NETINFO_HISTORY", "");
    place.setVariable("XDG_DATA_HOME", place.file("data"));
    QCOMPARE(place.runBare({"path"}).out, place.file("data/netinfo/history.sqlite").toUtf8() + '\n');

    QJsonObject json = QJsonDocument::fromJson(place.run({"path", "--json"}).out).object();
    QCOMPARE(json.value("path").toString(), place.history());
    QCOMPARE(json.value("exists").toBool(true), false);
    place.add(sampleRecord());
    json = QJsonDocument::fromJson(place.run({"path", "--json"}).out).object();
    QCOMPARE(json.value("exists").toBool(false), true);
}

void CommandsTest::wrongCommandLines_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *name, const QStringList &arguments, const char *message) {
        QTest::newRow(name) << arguments << QByteArray(message);
    };
    row("no command", {}, "give a command: list, add, remove, import, export or path");
    row("unknown command", {"shuffle"}, "shuffle");
    row("unknown option", {"list", "--nonsense"}, "--nonsense");
    row("option without value", {"list", "--month"}, "--month");
    row("month out of the year", {"list", "--month", "2026-13"}, "--month: \"2026-13\" is no month");
    row("month without its zero", {"list", "--month", "2026-8"}, "--month: \"2026-8\" is no month");
    row("month and from", {"list", "--month", "2026-08", "--from", "2026-08-01"}, "--month excludes --from");
    row("date that does not exist", {"list", "--from", "2026-02-30"}, "--from: \"2026-02-30\" is no date");
    row("time that is none", {"list", "--to", "tomorrow"}, "--to: \"tomorrow\" is no time");
    row("add without profile", {"add", "--start", "2026-08-03 07:12", "--duration", "5"}, "--profile is required");
    row("add without end", addArguments(), "give the end with --end or the length with --duration");
    row("add with both ends", addArguments() + QStringList{"--end", "2026-08-03 09:00", "--duration", "5"}, "excludes");
    row("add with wrong duration", addArguments() + QStringList{"--duration", "1:2:3:4"}, "is no duration");
    row("add with open duration", addArguments() + QStringList{"--duration", "1:"}, "is no duration");
    row("add with wrong quality", addArguments() + QStringList{"--duration", "5", "--quality", "good"},
        "--quality: \"good\" is not known");
    row("add with wrong reason", addArguments() + QStringList{"--duration", "5", "--reason", "rain"},
        "--reason: \"rain\" is not known");
    row("add with negative amount", addArguments() + QStringList{"--duration", "5", "--uploaded=-5"},
        "--uploaded: an amount cannot be negative");
    row("remove without keys", {"remove"}, "give the keys of the connections, or --all");
    row("remove a word", {"remove", "all"}, "KEY");
    row("remove keys and all", {"remove", "1", "--all"}, "KEY excludes --all");
    row("remove all unasked", {"remove", "--all"}, "--all needs --yes");
    row("import without file", {"import"}, "FILE is required");
    row("import of unknown format", {"import", "x.txt"}, "give --format csv, json or pppd");
    row("import of wrong format", {"import", "x.csv", "--format", "xml"}, "--format");
    row("import from a pipe without format", {"import", "-"}, "give --format csv, json or pppd");
    row("import of a log without profile", {"import", "x.log", "--format", "pppd"}, "give it with --profile");
    row("import of CSV with profile", {"import", "x.csv", "--profile", "P"}, "--profile goes with --format pppd");
    row("export of unknown format", {"export", "x.txt"}, "give --format csv or json");
    row("export as a log", {"export", "--format", "pppd"}, "--format");
}

void CommandsTest::wrongCommandLines()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, message);
    const Workplace place;
    const Outcome outcome = place.run(arguments);
    QVERIFY2(outcome.err.contains(message), outcome.err);
    QVERIFY2(outcome.err.startsWith("netinfo-records: "), outcome.err);
    QCOMPARE(outcome.code, 2);
    QCOMPARE(outcome.out, QByteArray());
    QCOMPARE(place.records().size(), std::size_t(0));
}

void CommandsTest::addStoresWhatWasGiven()
{
    const Workplace place;
    const Outcome outcome = place.run({"add",
                                       "--profile",
                                       "internet.example",
                                       "--profile-name",
                                       "Büro",
                                       "--start",
                                       "2026-08-03T07:12:09+02:00",
                                       "--end",
                                       "2026-08-03T09:12:09+02:00",
                                       "--connected",
                                       "1:59:00",
                                       "--uploaded",
                                       "12MB",
                                       "--downloaded",
                                       "4567",
                                       "--quality",
                                       "resumed+clock-changed",
                                       "--reason",
                                       "sleep",
                                       "--json"});
    QCOMPARE(outcome.err, QByteArray());
    QCOMPARE(outcome.code, 0);
    const auto records = place.records();
    QCOMPARE(records.size(), std::size_t(1));
    const zelk::Record &record = records.front();
    QCOMPARE(outcome.out, "{\"key\":" + QByteArray::number(static_cast<qint64>(record.key)) + "}\n");
    QCOMPARE(record.profile, std::string("internet.example"));
    QCOMPARE(record.profileName, std::string("Büro"));
    QCOMPARE(record.start, std::int64_t(1785733929));
    QCOMPARE(record.end, std::int64_t(1785733929 + 7200));
    QCOMPARE(record.endZoneOffset, std::int32_t(7200));
    QCOMPARE(record.connectedSeconds, std::int64_t(7140));
    QCOMPARE(record.bytesUploaded, std::int64_t(12 * 1048576));
    QCOMPARE(record.bytesDownloaded, std::int64_t(4567));
    QCOMPARE(record.origin, zelk::Origin::Added);
    QCOMPARE(record.quality, unsigned(zelk::QualityResumed | zelk::QualityClockChanged));
    QCOMPARE(record.endReason, zelk::EndReason::Sleep);
}

void CommandsTest::addTakesLocalTimes()
{
    Workplace place;
    place.setVariable("TZ", "Europe/Berlin");
    const QStringList start{"add", "--profile", "P", "--start"};
    QCOMPARE(place.run(start + QStringList{"2026-08-03 07:12", "--duration", "1:00"}).code, 0);
    QCOMPARE(place.run(start + QStringList{"2026-12-03T07:12:09", "--duration", "3600"}).code, 0);
    const auto records = place.records();
    QCOMPARE(records.size(), std::size_t(2));
    QCOMPARE(records[0].start, std::int64_t(1785733920));
    QCOMPARE(records[0].end, std::int64_t(1785733980));
    QCOMPARE(records[0].endZoneOffset, std::int32_t(7200));
    QCOMPARE(records[1].start, std::int64_t(1796278329));
    QCOMPARE(records[1].connectedSeconds, std::int64_t(3600));
    QCOMPARE(records[1].endZoneOffset, std::int32_t(3600));

    const Outcome springForward = place.run(start + QStringList{"2026-03-29 02:30", "--duration", "60"});
    QCOMPARE(springForward.code, 2);
    QVERIFY2(springForward.err.contains("does not exist in local time"), springForward.err);
}

void CommandsTest::addRefusesWrongValues_data()
{
    QTest::addColumn<QStringList>("more");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("end before start") << QStringList{"--end", "2026-08-03T07:12:08+02:00"}
                                      << QByteArray("the end is before the start");
    QTest::newRow("absurd amount") << QStringList{"--duration", "60", "--downloaded", "9223372036854775807"}
                                   << QByteArray("9223372036854775807");
    QTest::newRow("amount beyond all") << QStringList{"--duration", "60", "--downloaded", "18446744073709551615"}
                                       << QByteArray("beyond any amount");
    QTest::newRow("longer connected than it lasted")
        << QStringList{"--duration", "60", "--connected", "9:00:00"} << QByteArray("32400");
    QTest::newRow("name too long") << QStringList{"--duration", "60", "--profile-name", QString(2000, 'x')}
                                   << QByteArray("2000 bytes long");
}

void CommandsTest::addRefusesWrongValues()
{
    QFETCH(QStringList, more);
    QFETCH(QByteArray, message);
    const Workplace place;
    const Outcome outcome = place.run(addArguments() + more);
    QVERIFY2(outcome.err.contains(message), outcome.err);
    QCOMPARE(outcome.code, 3);
    QCOMPARE(place.records().size(), std::size_t(0));
}

void CommandsTest::tableIsAligned()
{
    Workplace place;
    place.setVariable("TZ", "Europe/Berlin");
    zelk::Record record = sampleRecord();
    place.add(record);
    record.profile = "星空モバイル";
    record.end = record.start + 360000;
    record.connectedSeconds = 360000;
    record.bytesUploaded = 0;
    record.bytesDownloaded = 5LL << 40U;
    record.quality = zelk::QualityRecovered | zelk::QualityCounterRestarted;
    record.endReason = zelk::EndReason::Unplugged;
    place.add(record);
    record.profile = "An APN whose name is far too long to be shown whole";
    record.quality = zelk::QualityExact;
    place.add(record);
    const Outcome outcome = place.run({"list"});
    QCOMPARE(outcome.code, 0);
    QCOMPARE(QString::fromUtf8(outcome.out),
             QString::fromUtf8(
                 "Key  Profile                                   Start                End                  Connected  "
                 "Uploaded  Downloaded  Figures                       Ended\n"
                 "  1  Nordlicht Mobil                           2026-08-03 07:12:09  2026-08-03 07:57:39    0:45:30   "
                 "1.18 MB    84.89 MB  exact                         unknown\n"
                 "  2  星空モバイル                              2026-08-03 07:12:09  2026-08-07 11:12:09  100:00:00   "
                 "0.00 KB  5120.00 GB  recovered, counter restarted  modem unplugged\n"
                 "  3  An APN whose name is far too long to be…  2026-08-03 07:12:09  2026-08-07 11:12:09  100:00:00   "
                 "0.00 KB  5120.00 GB  exact                         modem unplugged\n"));
}

void CommandsTest::emptyListsSaySo()
{
    const Workplace place;
    QCOMPARE(place.run({"list"}).out, QByteArray("The history is empty.\n"));
    QCOMPARE(place.run({"list", "--json"}).out, QByteArray("[]\n"));
    QVERIFY2(!QFile::exists(place.history()), "Listing shall not make a history.");
    place.add(sampleRecord());
    const Outcome outcome = place.run({"list", "--profile", "other"});
    QCOMPARE(outcome.out, QByteArray("No connection matches.\n"));
    QCOMPARE(outcome.code, 0);
}

void CommandsTest::jsonIsExact()
{
    Workplace place;
    place.setVariable("TZ", "Asia/Tokyo");
    zelk::Record record = sampleRecord();
    record.profile = "say \"hi\"\x1b[31m";
    record.profileName = "Κύμα";
    record.bytesDownloaded = (1LL << 53U) - 1;
    record.origin = zelk::Origin::Imported;
    record.originDetail = "pppd";
    record.quality = zelk::QualityResumed | zelk::QualityCounterRestarted;
    record.endReason = zelk::EndReason::Carrier;
    place.add(record);
    const Outcome outcome = place.run({"list", "--json"});
    QCOMPARE(outcome.code, 0);
    QCOMPARE(QString::fromUtf8(outcome.out),
             QString::fromUtf8("[\n  {\"key\":1,\"profile\":\"say \\\"hi\\\"\\u001b[31m\",\"profile_name\":\"Κύμα\","
                               "\"start\":\"2026-08-03T05:12:09Z\",\"end\":\"2026-08-03T05:57:39Z\","
                               "\"end_zone_offset\":7200,\"connected_seconds\":2730,\"bytes_uploaded\":1234567,"
                               "\"bytes_downloaded\":9007199254740991,\"origin\":\"imported\","
                               "\"origin_detail\":\"pppd\",\"quality\":\"resumed+counter-restarted\","
                               "\"end_reason\":\"carrier\"}\n]\n"));
    QCOMPARE(jsonArray(outcome.out).size(), 1);
}

void CommandsTest::monthsAreLocal()
{
    Workplace place;
    place.setVariable("TZ", "Europe/Berlin");
    addAt(place, "last of July", 1785535199);    // 2026-07-31T21:59:59Z
    addAt(place, "first of August", 1785535200); // 2026-07-31T22:00:00Z
    addAt(place, "last of August", 1788213599);  // 2026-08-31T21:59:59Z
    addAt(place, "first of September", 1788213600);
    QCOMPARE(profilesIn(place.run({"list", "--json", "--month", "2026-08"}).out),
             QStringList({"first of August", "last of August"}));
    place.setVariable("TZ", "UTC");
    QCOMPARE(profilesIn(place.run({"list", "--json", "--month", "2026-08"}).out),
             QStringList({"last of August", "first of September"}));
    QCOMPARE(profilesIn(place.run({"list", "--json", "--month", "2026-12"}).out), QStringList());
}

void CommandsTest::periods_data()
{
    QTest::addColumn<QStringList>("filter");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("from a date on") << QStringList{"--from", "2026-08-02"} << QStringList{"second", "third"};
    QTest::newRow("to a date, itself included") << QStringList{"--to", "2026-08-02"} << QStringList{"first", "second"};
    QTest::newRow("one day") << QStringList{"--from", "2026-08-02", "--to", "2026-08-02"} << QStringList{"second"};
    QTest::newRow("from a moment") << QStringList{"--from", "2026-08-02 12:00"} << QStringList{"second", "third"};
    QTest::newRow("before a moment") << QStringList{"--to", "2026-08-02 12:00"} << QStringList{"first"};
    QTest::newRow("zones") << QStringList{"--from", "2026-08-02T14:00:01+02:00"} << QStringList{"third"};
    QTest::newRow("profile too") << QStringList{"--from", "2026-08-02", "--profile", "third"} << QStringList{"third"};
}

void CommandsTest::periods()
{
    QFETCH(QStringList, filter);
    QFETCH(QStringList, expected);
    const Workplace place;
    addAt(place, "first", 1785585600); // 2026-08-01T12:00:00Z
    addAt(place, "second", 1785672000);
    addAt(place, "third", 1785758400);
    QCOMPARE(profilesIn(place.run(QStringList{"list", "--json"} + filter).out), expected);
}

void CommandsTest::profilesAreToldApart()
{
    const Workplace place;
    addAt(place, "Net", 1785585600);
    addAt(place, "net", 1785585600);
    addAt(place, "Net 2", 1785585600);
    QCOMPARE(profilesIn(place.run({"list", "--json", "--profile", "net"}).out), QStringList({"net"}));
}

void CommandsTest::namesCannotDriveTheTerminal()
{
    const Workplace place;
    zelk::Record record = sampleRecord();
    record.profile = "a\x1b[2Jb\nc\td\u202Ee\u0085f\x7fg";
    place.add(record);
    const QByteArray table = place.run({"list"}).out;
    QVERIFY2(table.contains("a\\x1b[2Jb\\x0ac\\x09d\\u{202e}e\\u{85}f\\x7fg"), table);
    for (const char *dangerous : {"\x1b", "\u202E", "\t", "\u0085", "\x7f"})
        QVERIFY2(!table.contains(dangerous), table);
    QCOMPARE(table.count('\n'), 2);

    const QString evil = place.write("e\x1bvil.csv", "profile,\x1b]0;title\x07\xff\n");
    const QByteArray error = place.run({"import", evil}).err;
    QVERIFY2(error.contains("e\\x1bvil.csv:1: ") && error.contains("\\x1b]0;title\\x07\\xff"), error);
    QVERIFY2(!error.contains('\x1b') && !error.contains('\xff'), error);
}

void CommandsTest::removeTakesKeys()
{
    const Workplace place;
    for (const char *name : {"one", "two", "three", "four"})
        addAt(place, name, 1785585600);
    const Outcome outcome = place.run({"remove", "1", "3", "3"});
    QCOMPARE(outcome.err, QByteArray());
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.out, QByteArray("Removed 2 connections.\n"));
    QCOMPARE(profilesIn(place.run({"list", "--json"}).out), QStringList({"two", "four"}));
    QCOMPARE(place.run({"remove", "2", "--json"}).out, QByteArray("{\"removed\":1}\n"));
    QCOMPARE(profilesIn(place.run({"list", "--json"}).out), QStringList({"four"}));
}

void CommandsTest::removeWithOneWrongKeyRemovesNothing()
{
    const Workplace place;
    addAt(place, "one", 1785585600);
    addAt(place, "two", 1785585600);
    const Outcome outcome = place.run({"remove", "1", "99", "2"});
    QCOMPARE(outcome.code, 4);
    QVERIFY2(outcome.err.contains("No connection has the key 99; nothing was removed"), outcome.err);
    QCOMPARE(place.records().size(), std::size_t(2));
}

void CommandsTest::removeAllWithoutQuestion()
{
    const Workplace place;
    addAt(place, "one", 1785585600);
    addAt(place, "two", 1785585600);
    const Outcome outcome = place.run({"remove", "--all", "--yes"});
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.out, QByteArray("Removed 2 connections.\n"));
    QCOMPARE(place.records().size(), std::size_t(0));
}

void CommandsTest::removeAllAsksOnATerminal_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("left");
    QTest::newRow("yes") << QByteArray("y\n") << 0 << 0;
    QTest::newRow("no") << QByteArray("n\n") << 1 << 2;
    QTest::newRow("only return") << QByteArray("\n") << 1 << 2;
    QTest::newRow("end of input") << QByteArray("\x04") << 1 << 2;
}

void CommandsTest::removeAllAsksOnATerminal()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    QFETCH(int, left);
    const Workplace place;
    addAt(place, "one", 1785585600);
    addAt(place, "two", 1785585600);
    TerminalProgram program({"--history", place.history(), "remove", "--all"});
    QVERIFY(program.waitFor([](const QByteArray &shown) { return shown.contains("[y/N] "); }));
    QVERIFY2(program.shown().contains("Remove 2 connections from "), program.shown());
    program.type(answer);
    QCOMPARE(program.finish(), code);
    QCOMPARE(static_cast<int>(place.records().size()), left);
}

void CommandsTest::damagedHistory()
{
    const Workplace place;
    place.write("history.sqlite", QByteArray(8192, 'x'));
    for (const QStringList &arguments : {QStringList{"list"}, QStringList{"export"}, QStringList{"remove", "1"},
                                         addArguments() + QStringList{"--duration", "5"}}) {
        const Outcome outcome = place.run(arguments);
        QCOMPARE(outcome.code, 1);
        QVERIFY2(outcome.err.contains("history.sqlite"), outcome.err);
        QCOMPARE(outcome.out, QByteArray());
    }
    QCOMPARE(place.read("history.sqlite"), QByteArray(8192, 'x'));
}

void CommandsTest::fullOutput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("list") << QStringList{"list"};
    QTest::newRow("list --json") << QStringList{"list", "--json"};
    QTest::newRow("export") << QStringList{"export"};
    QTest::newRow("path") << QStringList{"path"};
    QTest::newRow("help") << QStringList{"--help"};
}

void CommandsTest::fullOutput()
{
    QFETCH(QStringList, arguments);
    const Workplace place;
    place.add(sampleRecord());
    const Outcome outcome = place.run(arguments, {}, "/dev/full");
    QCOMPARE(outcome.code, 1);
    QVERIFY2(outcome.err.contains("Cannot write to standard output"), outcome.err);
}

void CommandsTest::optionsMayStandBehindTheCommand()
{
    const Workplace place;
    QCOMPARE(place.runBare({"path", "--history", "/x/y.sqlite"}).out, QByteArray("/x/y.sqlite\n"));
    const Outcome empty = place.runBare({"--history", "", "path"});
    QCOMPARE(empty.code, 2);
    QVERIFY2(empty.err.contains("--history"), empty.err);
}

QTEST_GUILESS_MAIN(CommandsTest)
#include "CommandsTest.moc"
