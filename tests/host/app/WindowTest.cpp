// The main window with small plug-ins that write down what they are asked.
#include "HostUi.h"
#include "MainWindow.h"
#include "NavigationList.h"
#include "NoticeBar.h"
#include "Options.h"
#include "Session.h"
#include "StatusLine.h"
#include "TestSurroundings.h"

#include "ui/CommonUtils.h"
#include "ui/Startup.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QRadioButton>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

namespace {

const QStringList everything = {QStringLiteral("page"), QStringLiteral("service"), QStringLiteral("window")};

QAction *action(Session &session, const char *name)
{
    auto *found = session.window().findChild<QAction *>(QLatin1String(name));
    if (found == nullptr)
        qFatal("There is no action %s.", name);
    return found;
}

template <class Widget> Widget *widget(Session &session, const char *name)
{
    auto *found = session.window().findChild<Widget *>(QLatin1String(name));
    if (found == nullptr)
        qFatal("There is no widget %s.", name);
    return found;
}

QString setting(const char *group, const char *key)
{
    return CommonUtils::GetSettings(QLatin1String(group), QLatin1String(key));
}

Options developer()
{
    Options options;
    options.developer = true;
    return options;
}

} // namespace

class WindowTest : public QObject
{
    Q_OBJECT

private slots:
    void pageLifeCycle()
    {
        TestSurroundings surroundings(everything);
        const QString prefix = QStringLiteral("page: ");
        {
            Session session{Options()};
            QCOMPARE(surroundings.takeCalls(prefix), QStringList(QStringLiteral("Init")));
            session.show();
            QVERIFY(QTest::qWaitForWindowExposed(&session.window()));
            QStringList calls = surroundings.takeCalls(prefix);
            QVERIFY2(!calls.filter(QStringLiteral("ShowWindow 0,0 ")).isEmpty(),
                     qPrintable(calls.join(QLatin1Char('|'))));

            session.window().showPage(QStringLiteral("settings"));
            QCOMPARE(surroundings.takeCalls(prefix), QStringList(QStringLiteral("Hide")));
            session.window().showPage(QStringLiteral("history"));
            calls = surroundings.takeCalls(prefix);
            QCOMPARE(calls.filter(QStringLiteral("ShowWindow")).size(), 1);
        }
        const QStringList calls = surroundings.takeCalls(prefix);
        QCOMPARE(calls.mid(calls.size() - 2), QStringList({QStringLiteral("OnDestroy"), QStringLiteral("destroyed")}));
    }

    void pageFollowsEveryResize()
    {
        TestSurroundings surroundings(everything);
        Session session{Options()};
        session.show();
        auto *page = widget<QLabel>(session, "page_page");
        for (const QSize size : {QSize(1000, 700), QSize(1100, 650), QSize(960, 640)}) {
            surroundings.takeCalls();
            session.window().resize(size);
            QTRY_COMPARE(page->geometry(), page->parentWidget()->rect());
            QVERIFY(!surroundings.takeCalls(QStringLiteral("page: FitSize 0,0 ")).isEmpty());
        }
    }

    void pagesAreReachedByKeyMenuAndList()
    {
        const TestSurroundings surroundings(everything);
        Session session{Options()};
        session.show();
        QVERIFY(QTest::qWaitForWindowActive(&session.window()));
        auto *list = widget<NavigationList>(session, "Navigation");
        const QStringList names = session.window().pageNames();
        QCOMPARE(names.first(), QStringLiteral("history"));
        for (int row = static_cast<int>(names.size()) - 1; row >= 0; --row) {
            QTest::keyClick(&session.window(), static_cast<Qt::Key>(Qt::Key_1 + row), Qt::ControlModifier);
            QCOMPARE(session.window().currentPage(), names.at(row));
            QCOMPARE(list->currentRow(), row);
        }
        list->setCurrentRow(1);
        QCOMPARE(session.window().currentPage(), names.at(1));
        QVERIFY(action(session, qPrintable(QStringLiteral("Page_") + names.at(1)))->isChecked());
        action(session, "Page_settings")->trigger();
        QCOMPARE(session.window().currentPage(), QStringLiteral("settings"));
        QVERIFY(!session.window().showPage(QStringLiteral("nowhere")));
    }

    void ctrlQQuits()
    {
        TestSurroundings surroundings(everything);
        Session session{Options()};
        session.show();
        QVERIFY(QTest::qWaitForWindowActive(&session.window()));
        QTimer::singleShot(0, &session,
                           [&session] { QTest::keyClick(&session.window(), Qt::Key_Q, Qt::ControlModifier); });
        QTimer::singleShot(20000, &session, [] { QCoreApplication::exit(99); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(!session.window().isVisible());
    }

    void languageChangesEverywhereAtOnce()
    {
        TestSurroundings surroundings(everything);
        Session session(developer());
        session.show();
        surroundings.takeCalls();
        auto *languages = widget<QComboBox>(session, "Language");
        languages->setCurrentIndex(languages->findData(QStringLiteral("de")));
        emit languages->activated(languages->currentIndex());

        QCOMPARE(surroundings.takeCalls(QStringLiteral("page: ")), QStringList(QStringLiteral("Notify 0x400 0 0")));
        QCOMPARE(widget<QLabel>(session, "page_page")->text(), QStringLiteral("Profil"));
        QCOMPARE(session.window().windowTitle(), QStringLiteral("Verbindungsverlauf"));
        QCOMPARE(action(session, "Quit")->text(), QStringLiteral("&Beenden"));
        QCOMPARE(action(session, "Page_settings")->text(), QStringLiteral("Einstellungen"));
        QCOMPARE(action(session, "Window_window")->text(), QString::fromUtf8("&Monatssummen …"));
        QVERIFY(action(session, "Simulate10")->text().contains(QLatin1String("10 Sekunden")));
        QCOMPARE(widget<NavigationList>(session, "Navigation")->item(0)->text(), QStringLiteral("Verlauf"));
        QVERIFY(widget<QCheckBox>(session, "ShowSummary")->text().contains(QLatin1String("Zusammenfassung")));
        QCOMPARE(languages->currentData().toString(), QStringLiteral("de"));
        QCOMPARE(setting("Host", "Language"), QStringLiteral("de"));
        for (const QWidget *child : session.window().findChildren<QWidget *>()) {
            for (const char *property : {"text", "title"})
                QVERIFY2(!child->property(property).toString().contains(QLatin1String("IDS_")),
                         qPrintable(child->objectName()));
        }
    }

    void settingsAreStoredAtOnce()
    {
        const TestSurroundings surroundings(everything);
        Session session{Options()};
        session.show();
        session.window().showPage(QStringLiteral("settings"));
        auto *summary = widget<QCheckBox>(session, "ShowSummary");
        QCOMPARE(setting("NetInfoRecordUIPlugin", "WhetherShowNotesbox"), QStringLiteral("true"));
        QVERIFY(summary->isChecked());
        summary->click();
        QCOMPARE(setting("NetInfoRecordUIPlugin", "WhetherShowNotesbox"), QStringLiteral("false"));
        summary->click();
        QCOMPARE(setting("NetInfoRecordUIPlugin", "WhetherShowNotesbox"), QStringLiteral("true"));

        QCOMPARE(setting("Recorder", "Connections"), QStringLiteral("all"));
        QVERIFY(widget<QRadioButton>(session, "Connections_all")->isChecked());
        for (const char *choice : {"mobile", "metered", "all"}) {
            widget<QRadioButton>(session, qPrintable(QStringLiteral("Connections_") + QLatin1String(choice)))->click();
            QCOMPARE(setting("Recorder", "Connections"), QLatin1String(choice));
        }
    }

    void storedSettingsAreKept()
    {
        const TestSurroundings surroundings(everything);
        HostUi *ui = HostUi::instance();
        ui->writeSetting(QStringLiteral("NetInfoRecordUIPlugin"), QStringLiteral("WhetherShowNotesbox"), QString());
        ui->writeSetting(QStringLiteral("Recorder"), QStringLiteral("Connections"), QStringLiteral("metered"));
        Session session{Options()};
        QCOMPARE(setting("NetInfoRecordUIPlugin", "WhetherShowNotesbox"), QString());
        QVERIFY(!widget<QCheckBox>(session, "ShowSummary")->isChecked());
        QVERIFY(widget<QRadioButton>(session, "Connections_metered")->isChecked());
        // What another program stores meanwhile is seen when the page is opened.
        ui->writeSetting(QStringLiteral("NetInfoRecordUIPlugin"), QStringLiteral("WhetherShowNotesbox"),
                         QStringLiteral("TRUE"));
        session.show();
        session.window().showPage(QStringLiteral("settings"));
        QVERIFY(widget<QCheckBox>(session, "ShowSummary")->isChecked());
    }

    void aSettingThatCannotBeStoredIsToldInTheWindow()
    {
        const TestSurroundings surroundings(everything);
        Session session{Options()};
        session.show();
        QVERIFY(QFile::remove(HostUi::settingsFile()));
        QVERIFY(QDir().mkpath(HostUi::settingsFile()));
        widget<QCheckBox>(session, "ShowSummary")->click();
        auto *notice = widget<NoticeBar>(session, "NoticeBar");
        QVERIFY(notice->isVisible());
        QVERIFY2(notice->text().contains(HostUi::settingsFile()), qPrintable(notice->text()));
        QVERIFY(QDir().rmdir(HostUi::settingsFile()));
    }

    void geometryAndPageAreRemembered()
    {
        const TestSurroundings surroundings(everything);
        QRect place;
        {
            Session session{Options()};
            session.show();
            QVERIFY(QTest::qWaitForWindowExposed(&session.window()));
            session.window().setGeometry(40, 60, 790, 555);
            session.window().showPage(QStringLiteral("settings"));
            QCoreApplication::processEvents();
            place = session.window().geometry();
        }
        Session again{Options()};
        again.show();
        QVERIFY(QTest::qWaitForWindowExposed(&again.window()));
        QCOMPARE(again.window().geometry(), place);
        QCOMPARE(again.window().currentPage(), QStringLiteral("settings"));
    }

    void nonsenseInTheSettingsIsPassedOver()
    {
        const TestSurroundings surroundings(everything);
        HostUi::instance()->writeSetting(QStringLiteral("Host"), QStringLiteral("Geometry"), QStringLiteral("%%%"));
        HostUi::instance()->writeSetting(QStringLiteral("Host"), QStringLiteral("Page"), QStringLiteral("nowhere"));
        Session session{Options()};
        session.show();
        QCOMPARE(session.window().currentPage(), QStringLiteral("history"));
        QVERIFY(session.window().width() > 400);
    }

    void hostServicesArePresentWhileItRuns()
    {
        const TestSurroundings surroundings(everything);
        {
            Session session{Options()};
            QCOMPARE(CommonUtils::GetMainWindow(), &session.window());
            QVERIFY(Startup::GetPluginContainer() != nullptr);
            QVERIFY(Startup::GetPluginContainer()->GetPluginObject(QStringLiteral("service"), 16401) != nullptr);
        }
        QVERIFY(CommonUtils::GetMainWindow() == nullptr);
        QVERIFY(Startup::GetPluginContainer() == nullptr);
    }

    void windowsOfPluginsOpenFromTheMenu()
    {
        TestSurroundings surroundings(everything);
        Session session{Options()};
        session.show();
        QCOMPARE(action(session, "Window_window")->text(), QString::fromUtf8("Monthly &totals…"));
        surroundings.takeCalls();
        action(session, "Window_window")->trigger();
        QCOMPARE(surroundings.takeCalls(QStringLiteral("window: ShowWindow")).size(), 1);
    }

    void developerMenuOnlyOnRequest()
    {
        TestSurroundings surroundings(everything);
        {
            Session session{Options()};
            QVERIFY(session.window().findChild<QMenu *>(QStringLiteral("DeveloperMenu")) == nullptr);
        }
        Session session(developer());
        session.show();
        surroundings.takeCalls();
        action(session, "Simulate10")->trigger();
        QCOMPARE(surroundings.takeCalls(),
                 QStringList({QStringLiteral("service: simulate 10"), QStringLiteral("page: Notify 0x600 1 0"),
                              QStringLiteral("service: Notify 0x600 1"), QStringLiteral("window: Notify 0x600 1 0"),
                              QStringLiteral("page: Notify 0x600 0 0"), QStringLiteral("service: Notify 0x600 0"),
                              QStringLiteral("window: Notify 0x600 0 0")}));
        action(session, "SuppressSummaries")->trigger();
        QCOMPARE(surroundings.takeCalls(QStringLiteral("page: ")), QStringList(QStringLiteral("Notify 0x950 0 0")));
    }

    void whatWasAnnouncedAtTheStartIsHeard()
    {
        TestSurroundings surroundings(everything);
        Session session{Options()};
        QVERIFY(surroundings.takeCalls().filter(QStringLiteral("Notify")).isEmpty());
        session.show();
        QCOMPARE(surroundings.takeCalls(QStringLiteral("page: Notify ")), QStringList(QStringLiteral("0x600 1 0")));
    }

    void simulationWithoutItsPluginIsANotice()
    {
        const TestSurroundings surroundings({QStringLiteral("page")});
        Session session{Options()};
        session.show();
        session.simulateConnection(3);
        auto *notice = widget<NoticeBar>(session, "NoticeBar");
        QVERIFY(notice->isVisible());
        QVERIFY(notice->text().contains(QLatin1String("dial-up plug-in is not running")));
    }

    void statusLineFollowsItsPlugin()
    {
        const TestSurroundings surroundings(everything);
        Session session{Options()};
        auto *line = widget<StatusLine>(session, "StatusLine");
        QCOMPARE(line->text(), QStringLiteral("recording"));
        session.simulateConnection(3);
        QCOMPARE(line->text(), QStringLiteral("simulating for 3 s"));
    }

    void statusLineSaysWhenNothingRecords()
    {
        const TestSurroundings surroundings({QStringLiteral("page")});
        Session session{Options()};
        QVERIFY(
            widget<StatusLine>(session, "StatusLine")->text().startsWith(QLatin1String("Connections are not being")));
    }

    void problemsAreANoticeThatCanBeClosed()
    {
        const TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("refuses")});
        Session session{Options()};
        session.show();
        auto *notice = widget<NoticeBar>(session, "NoticeBar");
        QVERIFY(notice->isVisible());
        QVERIFY(notice->text().startsWith(QLatin1String("refuses.so")));
        QTest::mouseClick(widget<QToolButton>(session, "NoticeBarClose"), Qt::LeftButton);
        QVERIFY(!notice->isVisible());
        HostUi::instance()->overrideLanguage(QStringLiteral("de"));
        QVERIFY(!notice->isVisible());
    }

    void withoutProblemsThereIsNoNotice()
    {
        const TestSurroundings surroundings(everything);
        Session session{Options()};
        session.show();
        QVERIFY(!widget<NoticeBar>(session, "NoticeBar")->isVisible());
    }

    void withoutItsPluginTheHistoryPageSaysSo()
    {
        const TestSurroundings surroundings({QStringLiteral("service")});
        Session session{Options()};
        session.show();
        auto *missing = widget<QLabel>(session, "NoHistoryPage");
        QVERIFY(missing->isVisible());
        QVERIFY(missing->text().contains(QLatin1String("not available")));
    }

    void furtherPagesOfPluginsHaveTheirPlace()
    {
        const TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("second_page")});
        Session session{Options()};
        QCOMPARE(session.window().pageNames().last(), QStringLiteral("second"));
        session.show();
        QVERIFY(session.window().showPage(QStringLiteral("second")));
        QVERIFY(widget<QLabel>(session, "second_page")->isVisible());
        QVERIFY(!widget<QLabel>(session, "page_page")->isVisible());
    }
};

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
