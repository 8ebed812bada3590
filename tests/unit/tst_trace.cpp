// The trace lines: every text to the letter, real source lines, and silence where nobody listens.
#include "Trace.h"

#include "NetInfoRecordUIPlugin.h"
#include "ProductFixture.h"

static const trace::Unit s_traceUnit = {"path/of/unit", nullptr};
static const trace::Unit s_builtUnit = {"path/of/unit", "20:40:36"};

class TestTrace : public QObject
{
    Q_OBJECT

private slots:
    void init() { fixture::reset(); }
    void cleanup() { fixture::reset(); }

    void texts_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("shape");
        const auto add = [](const char *name, trace::Line line, const char *shape) {
            QTest::newRow(name) << static_cast<int>(line) << QString::fromLatin1(shape);
        };
        add("StartOf", trace::StartOf, "Start of path/of/unit: fn: LINE: ");
        add("EndOf", trace::EndOf, "End of path/of/unit: fn: LINE: ");
        add("EmptyString", trace::EmptyString, "Empty String path/of/unit: fn: LINE: ");
        add("StartFile", trace::StartFile, "Start File: path/of/unit fn: LINE: TIME:");
        add("StartFileColon", trace::StartFileColon, "Start File: path/of/unit: fn: LINE: TIME:");
        add("EndFile", trace::EndFile, "End File: path/of/unit: fn: LINE: TIME:");
        add("EndFileBlank", trace::EndFileBlank, "End File: path/of/unit fn: LINE: TIME:");
        add("NotYetInitialized", trace::NotYetInitialized,
            "AccumulateDlg is not yet initialized: path/of/unit fn: LINE: TIME:");
        add("Start", trace::Start, "Start: path/of/unit fn: LINE: TIME:");
        add("End", trace::End, "End: path/of/unit fn: LINE: TIME:");
        add("Enter", trace::Enter, "Enter: path/of/unit: fn: LINE: TIME:");
        add("Entered", trace::Entered, "Entered: path/of/unit: fn: LINE: TIME:");
        add("Exit", trace::Exit, "Exit: path/of/unit: fn: LINE: TIME:");
        add("TimedEnter", trace::TimedEnter, "Enter: TIME: path/of/unit: fn LINE");
        add("TimedExit", trace::TimedExit, "Exit: TIME: path/of/unit: fn LINE");
        add("TimedStart", trace::TimedStart, "Start: TIME: path/of/unit: fn LINE");
        add("TimedStartPadded", trace::TimedStartPadded, "Start  : TIME: path/of/unit: fn LINE");
        add("TimedEnd", trace::TimedEnd, "End: TIME: path/of/unit: fn LINE");
        add("TimedEndPadded", trace::TimedEndPadded, "End  : TIME: path/of/unit: fn LINE");
        add("ArgIsNull", trace::ArgIsNull, "Arg is NULL: TIME: path/of/unit: fn LINE");
        add("CallingGetAll", trace::CallingGetAll,
            "=======> TIME: path/of/unit: fn: LINE: Calling ZELK_Statistics_GetAllConnRecord()");
        add("CallingGetLast", trace::CallingGetLast,
            "=======> TIME: path/of/unit: fn: LINE: Calling ZELK_Statistics_GetLastConnRecord()");
        add("CallingRemove", trace::CallingRemove,
            "=======> TIME: path/of/unit: fn: LINE: Calling ZELK_Statistics_ConnRecord_RemoveRecord ()");
        add("FinishedGetAll", trace::FinishedGetAll,
            "<======= TIME: path/of/unit: fn: LINE: Finished ZELK_Statistics_GetAllConnRecord(), retVal=-12");
        add("FinishedGetLast", trace::FinishedGetLast,
            "<======= TIME: path/of/unit: fn: LINE: Finished ZELK_Statistics_GetLastConnRecord(), retVal=-12");
        add("FinishedRemove", trace::FinishedRemove,
            "<======= TIME: path/of/unit: fn: LINE: FinishedZELK_Statistics_ConnRecord_RemoveRecord (), retVal=-12");
        add("StatusAfterConnection", trace::StatusAfterConnection, "Status after connection: path/of/unit fn -12");
    }
    void texts()
    {
        QFETCH(int, line);
        QFETCH(QString, shape);
        const MessageLog log;
        trace::write(static_cast<trace::Line>(line), s_traceUnit, "fn", 77, -12);
        QCOMPARE(log.shapes(), QStringList(shape));
        QVERIFY(!shape.contains(QLatin1String("LINE")) || log.lines.first().contains(QLatin1String("77")));
    }

    void fileLinesCarryTheBuildTimeOfUnitsThatHaveOne()
    {
        const MessageLog log;
        for (trace::Line line :
             {trace::StartFile, trace::StartFileColon, trace::EndFile, trace::EndFileBlank, trace::NotYetInitialized})
            trace::write(line, s_builtUnit, "fn", 5);
        trace::write(trace::Start, s_builtUnit, "fn", 5);
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Start File: path/of/unit fn: LINE: 20:40:36:"),
                              QStringLiteral("Start File: path/of/unit: fn: LINE: 20:40:36:"),
                              QStringLiteral("End File: path/of/unit: fn: LINE: 20:40:36:"),
                              QStringLiteral("End File: path/of/unit fn: LINE: 20:40:36:"),
                              QStringLiteral("AccumulateDlg is not yet initialized: path/of/unit fn: LINE: 20:40:36:"),
                              QStringLiteral("Start: path/of/unit fn: LINE: TIME:")}));
    }

    void callSiteNamesFunctionAndLine()
    {
        const MessageLog log;
        TRACE(trace::StartOf);
        const int line = __LINE__ - 1;
        QCOMPARE(log.lines,
                 QStringList(QStringLiteral("Start of path/of/unit: %1: %2: ").arg(QLatin1String(__func__)).arg(line)));
    }

    void timeOfDayIsTheClocks()
    {
        const QTime before = QTime::currentTime();
        const MessageLog log;
        TRACE(trace::ArgIsNull);
        const QTime after = QTime::currentTime();
        const QTime written = QTime::fromString(log.lines.first().section(QLatin1Char(' '), 3, 3).chopped(1),
                                                QStringLiteral("hh:mm:ss:zzz"));
        QVERIFY(written.isValid());
        QVERIFY(after < before || (written >= before && written <= after)); // midnight may pass in between
    }

    void disabledLinesAreNotEvenFormatted()
    {
        const MessageLog log;
        QVERIFY(trace::isEnabled());
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        QVERIFY(!trace::isEnabled());
        int evaluated = 0;
        TRACE(trace::StartOf);
        TRACE_NUMBER(trace::FinishedGetAll, ++evaluated);
        fixture::fillService(3);
        fixture::initialisedPage();
        QCOMPARE(log.lines, QStringList());
        QCOMPARE(evaluated, 0);
    }

    /// Every line that a whole life of the library writes names a source line that writes one.
    void linesPointAtTheirSource()
    {
        fixture::fillService(2);
        const MessageLog log;
        {
            NetInfoRecordUIPlugin plugin;
            plugin.Init();
            QRect rect(0, 0, 100, 100);
            QWidget parent;
            plugin.ShowWindow(&parent, rect);
            plugin.FitSize(rect);
            plugin.Hide();
            plugin.ChangeLang(QString());
            plugin.Notify(NOTIFY_CONNECTION_STATUS, 0, 0);
            ConnectionHistoryDlg::Instance()->onDelete();
            ConnectionHistoryDlg::Instance()->onDeleteAll();
            ConnectionHistoryDlg::Instance()->ShowDialogOfLastConnectedRecord(&parent);
            ConnectionHistoryDlg::Instance()->onClickOkButton();
            plugin.OnDestroy();
        }
        QVERIFY(log.lines.size() > 80);
        static const QRegularExpression parts(
            QStringLiteral("\\.\\./\\.\\./src/NetInfoRecordUIPlugin/(\\w+):? (~?\\w+):? (\\d+)(:|$)"));
        for (const QString &line : log.lines) {
            const QRegularExpressionMatch match = parts.match(line);
            QVERIFY2(match.hasMatch(), qPrintable(line));
            const QString source = sourceLine(match.captured(1), match.captured(3).toInt());
            QVERIFY2(source.trimmed().startsWith(QLatin1String("TRACE")),
                     qPrintable(line + QLatin1Char('\n') + source));
        }
    }

private:
    static QString sourceLine(const QString &unit, int number)
    {
        QFile file(qEnvironmentVariable("NETINFO_SOURCE_DIR") + QStringLiteral("/src/NetInfoRecordUIPlugin/") + unit +
                   QStringLiteral(".cpp"));
        if (!file.open(QIODevice::ReadOnly))
            return QStringLiteral("cannot read ") + file.fileName();
        const QList<QByteArray> lines = file.readAll().split('\n');
        return number >= 1 && number <= lines.size() ? QString::fromUtf8(lines.at(number - 1)) : QString();
    }
};

QTEST_MAIN(TestTrace)
#include "tst_trace.moc"
