// The command line: understood in a table, and tried with the real program.
#include "Options.h"
#include "TestSurroundings.h"

#include <QApplication>
#include <QImage>
#include <QProcess>
#include <QtTest>

#include <csignal>

namespace {

struct Outcome {
    int status = -1;
    QString out;
    QString err;
};

Outcome runHost(const QStringList &arguments, const QMap<QString, QString> &variables = {})
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        environment.insert(variable.key(), variable.value());
    program.setProcessEnvironment(environment);
    program.start(qEnvironmentVariable("NETINFO_BIN_DIR") + QStringLiteral("/netinfo-host"), arguments);
    Outcome outcome;
    if (program.waitForFinished(60000) && program.exitStatus() == QProcess::NormalExit)
        outcome.status = program.exitCode();
    outcome.out = QString::fromUtf8(program.readAllStandardOutput());
    outcome.err = QString::fromUtf8(program.readAllStandardError());
    return outcome;
}

} // namespace

class OptionsTest : public QObject
{
    Q_OBJECT

private slots:
    void understands()
    {
        const Options options =
            Options::parse({QStringLiteral("netinfo-host"), QStringLiteral("--trace"), QStringLiteral("--developer"),
                            QStringLiteral("-platform"), QStringLiteral("xcb"), QStringLiteral("--simulate-connection"),
                            QStringLiteral("5"), QStringLiteral("--history"), QStringLiteral("a b.sqlite"),
                            QStringLiteral("--page"), QStringLiteral("settings"), QStringLiteral("--language=de"),
                            QStringLiteral("--screenshot"), QStringLiteral("x.png")});
        QCOMPARE(options.action, Options::Action::Run);
        QVERIFY(options.trace);
        QVERIFY(options.developer);
        QCOMPARE(options.simulateSeconds, 5);
        QCOMPARE(options.history, QStringLiteral("a b.sqlite"));
        QCOMPARE(options.page, QStringLiteral("settings"));
        QCOMPARE(options.language, QStringLiteral("de"));
        QCOMPARE(options.screenshot, QStringLiteral("x.png"));
    }

    void nothingIsAskedForByDefault()
    {
        const Options options = Options::parse({QStringLiteral("netinfo-host")});
        QCOMPARE(options.action, Options::Action::Run);
        QVERIFY(!options.trace && !options.developer && options.simulateSeconds == 0);
        QVERIFY(options.history.isEmpty() && options.screenshot.isEmpty() && options.page.isEmpty());
    }

    void refuses_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("names");
        QTest::newRow("unknown option") << QStringList({QStringLiteral("--colour")}) << "colour";
        QTest::newRow("stray argument") << QStringList({QStringLiteral("file.csv")}) << "file.csv";
        QTest::newRow("missing value") << QStringList({QStringLiteral("--history")}) << "history";
        QTest::newRow("empty value") << QStringList({QStringLiteral("--history=")}) << "history";
        for (const char *seconds : {"0", "-1", "1.5", "ten", "86401", "99999999999"})
            QTest::newRow(seconds) << QStringList({QStringLiteral("--simulate-connection=") + QLatin1String(seconds)})
                                   << QString::fromLatin1(seconds);
    }

    void refuses()
    {
        QFETCH(QStringList, arguments);
        const Options options = Options::parse(QStringList(QStringLiteral("netinfo-host")) + arguments);
        QCOMPARE(options.action, Options::Action::Refuse);
        QFETCH(QString, names);
        QVERIFY2(options.text.contains(names), qPrintable(options.text));
        QVERIFY(options.text.contains(QLatin1String("--help")));
    }

    void helpAndVersionNeedNoDisplay()
    {
        const QMap<QString, QString> none = {{QStringLiteral("DISPLAY"), QString()},
                                             {QStringLiteral("WAYLAND_DISPLAY"), QString()},
                                             {QStringLiteral("QT_QPA_PLATFORM"), QString()}};
        const Outcome help = runHost({QStringLiteral("--help")}, none);
        QCOMPARE(help.status, 0);
        for (const char *option : {"--history", "--language", "--page", "--screenshot", "--trace", "--developer",
                                   "--simulate-connection", "--help", "--version"})
            QVERIFY2(help.out.contains(QLatin1String(option)), option);
        const Outcome version = runHost({QStringLiteral("--version")}, none);
        QCOMPARE(version.status, 0);
        QCOMPARE(version.out, QStringLiteral("netinfo-host " NETINFO_VERSION "\n"));

        const Outcome start = runHost({}, none);
        QCOMPARE(start.status, 1);
        QVERIFY2(start.err.contains(QLatin1String("--screenshot")), qPrintable(start.err));
    }

    void wrongNamesEndWithStatusTwo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("says");
        QTest::newRow("option") << QStringList({QStringLiteral("--colour")}) << "colour";
        QTest::newRow("page") << QStringList({QStringLiteral("--page"), QStringLiteral("nowhere")})
                              << "There is no page \"nowhere\". The pages are: history,";
        QTest::newRow("language") << QStringList({QStringLiteral("--language"), QStringLiteral("xx")})
                                  << "There is no language \"xx\". The languages are: de, en.";
    }

    void wrongNamesEndWithStatusTwo()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, says);
        const TestSurroundings surroundings({QStringLiteral("page")});
        const Outcome outcome = runHost(arguments);
        QCOMPARE(outcome.status, 2);
        QVERIFY2(outcome.err.contains(says), qPrintable(outcome.err));
    }

    void drawsAPictureWithoutServices()
    {
        TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("service")});
        const QString file = surroundings.folder() + QStringLiteral("/picture.png");
        const Outcome outcome =
            runHost({QStringLiteral("--screenshot"), file, QStringLiteral("--page"), QStringLiteral("settings")});
        QVERIFY2(outcome.status == 0, qPrintable(outcome.err));
        QCOMPARE(QImage(file).size(), QSize(980, 620));
        QCOMPARE(surroundings.takeCalls(QStringLiteral("service: ")), QStringList());

        const Outcome nowhere =
            runHost({QStringLiteral("--screenshot"), surroundings.folder() + QStringLiteral("/no/x.png")});
        QCOMPARE(nowhere.status, 1);
        QVERIFY2(nowhere.err.contains(QLatin1String("/no/x.png")), qPrintable(nowhere.err));
    }

    void reportsAWrongPluginAndGoesOn()
    {
        TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("refuses")});
        const QString file = surroundings.folder() + QStringLiteral("/picture.png");
        const Outcome outcome = runHost({QStringLiteral("--screenshot"), file});
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.err.contains(QLatin1String("netinfo-host: refuses.so was loaded, but refused to start")),
                 qPrintable(outcome.err));
        QVERIFY(surroundings.takeCalls().contains(QStringLiteral("page: Init")));
    }

    void endsInOrderOnSigterm()
    {
        TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("service")});
        QProcess program;
        program.start(qEnvironmentVariable("NETINFO_BIN_DIR") + QStringLiteral("/netinfo-host"),
                      {QStringLiteral("--simulate-connection"), QStringLiteral("4")});
        // Asked for from inside the event loop, so the program is fully up by then.
        QStringList calls;
        QTRY_VERIFY_WITH_TIMEOUT((calls += surroundings.takeCalls()).contains(QStringLiteral("service: simulate 4")),
                                 30000);
        QCOMPARE(::kill(static_cast<pid_t>(program.processId()), SIGTERM), 0);
        QVERIFY(program.waitForFinished(30000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        calls += surroundings.takeCalls();
        QCOMPARE(calls.mid(calls.size() - 4),
                 QStringList({QStringLiteral("service: OnDestroy"), QStringLiteral("service: destroyed"),
                              QStringLiteral("page: OnDestroy"), QStringLiteral("page: destroyed")}));
    }
};

QTEST_MAIN(OptionsTest)
#include "OptionsTest.moc"
