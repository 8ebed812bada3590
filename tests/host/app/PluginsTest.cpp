// The loader against real small plug-ins, good ones and wrong ones: what is said about each, and the calls in between.
#include "Broadcaster.h"
#include "HostUi.h"
#include "PluginManager.h"
#include "TestSurroundings.h"

#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(Plugin::State)

namespace {

QStringList names(const PluginManager &manager)
{
    QStringList found;
    for (const auto &plugin : manager.plugins())
        found << plugin->fileName();
    return found;
}

} // namespace

class PluginsTest : public QObject
{
    Q_OBJECT

private slots:
    void wrongOnes_data()
    {
        QTest::addColumn<QString>("plugin");
        QTest::addColumn<Plugin::State>("state");
        QTest::addColumn<QString>("message");

        QTest::newRow("no metadata") << "no_metadata" << Plugin::State::NotAPlugin
                                     << "^no_metadata\\.so is not a plug-in: ";
        QTest::newRow("another program's ID")
            << "wrong_id" << Plugin::State::WrongId
            << "^wrong_id\\.so is a plug-in of another program: its ID is “org\\.example\\.SomethingElse”\\.$";
        QTest::newRow("missing library") << "needy" << Plugin::State::NotLoaded
                                         << "^needy\\.so could not be loaded: .*libnetinfo_lost\\.so";
        QTest::newRow("does not answer") << "no_interface" << Plugin::State::NoInterface
                                         << "^no_interface\\.so was loaded, but does not answer the interface "
                                            "“com\\.zantrix\\.quillnet\\.plugin\\.IUIPlugin”\\.$";
        QTest::newRow("refuses to start") << "refuses" << Plugin::State::InitRefused
                                          << "^refuses\\.so was loaded, but refused to start \\(error 7\\)\\.$";
        QTest::newRow("throws") << "throws" << Plugin::State::Failed
                                << "^throws\\.so failed while starting: out of paper$";
    }

    void wrongOnes()
    {
        QFETCH(QString, plugin);
        QFETCH(Plugin::State, state);
        QFETCH(QString, message);
        TestSurroundings surroundings({plugin, QStringLiteral("service")});
        PluginManager manager;
        manager.load(surroundings.folder());
        manager.start();

        QCOMPARE(manager.plugins().size(), std::size_t(2));
        const Plugin &wrong =
            *manager.plugins().at(names(manager).indexOf(plugin + QStringLiteral(".so")) == 0 ? 0 : 1);
        QCOMPARE(wrong.state(), state);
        QVERIFY(wrong.hasFailed());
        QVERIFY(!wrong.isRunning());
        QVERIFY2(QRegularExpression(message).match(wrong.message()).hasMatch(), qPrintable(wrong.message()));
        QCOMPARE(manager.problems(), QStringList(wrong.message()));
        // The host goes on without it.
        QCOMPARE(manager.running(PluginType::Service).size(), std::size_t(1));
        QVERIFY(manager.GetPluginObject(QStringLiteral("service"), 16401) != nullptr);
    }

    void notALibraryAtAll_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("This is a letter to my aunt.\n");
        QTest::newRow("a library cut short") << QByteArray("\x7f"
                                                           "ELF\x02\x01\x01",
                                                           7);
    }

    void notALibraryAtAll()
    {
        QFETCH(QByteArray, content);
        const TestSurroundings surroundings;
        surroundings.addFile(QStringLiteral("letter.so"), content);
        PluginManager manager;
        manager.load(surroundings.folder());
        manager.start();
        QCOMPARE(manager.plugins().at(0)->state(), Plugin::State::NotAPlugin);
        QVERIFY2(manager.problems().at(0).startsWith(QLatin1String("letter.so is not a plug-in: ")),
                 qPrintable(manager.problems().at(0)));
        QVERIFY(manager.problems().at(0).size() > int(sizeof("letter.so is not a plug-in: ")));
    }

    void messagesFollowTheLanguage()
    {
        const TestSurroundings surroundings({QStringLiteral("refuses")});
        PluginManager manager;
        manager.load(surroundings.folder());
        manager.start();
        HostUi::instance()->overrideLanguage(QStringLiteral("de"));
        QCOMPARE(manager.problems().at(0),
                 QStringLiteral("refuses.so wurde geladen, verweigert aber den Start (Fehler 7)."));
    }

    void missingFolderAndEmptyFolder()
    {
        const TestSurroundings surroundings;
        PluginManager manager;
        manager.load(surroundings.folder());
        QVERIFY(manager.problems().at(0).startsWith(QLatin1String("No plug-ins were found in the folder ")));
        manager.load(surroundings.folder() + QStringLiteral("/nowhere"));
        QVERIFY(manager.problems().at(0).contains(QLatin1String("nowhere does not exist")));
    }

    void orderIsByName()
    {
        const TestSurroundings surroundings(
            {QStringLiteral("window"), QStringLiteral("service"), QStringLiteral("page")});
        PluginManager manager;
        manager.load(surroundings.folder());
        QCOMPARE(names(manager),
                 QStringList({QStringLiteral("page.so"), QStringLiteral("service.so"), QStringLiteral("window.so")}));
    }

    void filesThatAreNoLibrariesAreLeftAlone()
    {
        const TestSurroundings surroundings({QStringLiteral("service")});
        surroundings.addFile(QStringLiteral("README.txt"), "Hello\n");
        PluginManager manager;
        manager.load(surroundings.folder());
        QCOMPARE(names(manager), QStringList(QStringLiteral("service.so")));
    }

    void servicesCanBeLeftAlone()
    {
        const TestSurroundings surroundings({QStringLiteral("service"), QStringLiteral("page")});
        PluginManager manager;
        manager.load(surroundings.folder(), false);
        QCOMPARE(names(manager), QStringList(QStringLiteral("page.so")));
    }

    void identityIsAsked()
    {
        const TestSurroundings surroundings({QStringLiteral("page")});
        PluginManager manager;
        manager.load(surroundings.folder());
        manager.start();
        const Plugin &page = *manager.plugins().at(0);
        QCOMPARE(page.clsid(), QStringLiteral("page-Id"));
        QCOMPARE(page.name(), QStringLiteral("page"));
        QCOMPARE(page.version(), 0x203U);
        QCOMPARE(page.type(), PluginType::Page);
        QCOMPARE(page.message(), QStringLiteral("Version 2.3, running"));
    }

    void containerComparesIdsExactly()
    {
        const TestSurroundings surroundings({QStringLiteral("page")});
        PluginManager manager;
        manager.load(surroundings.folder());
        manager.start();
        QCOMPARE(manager.GetPluginObject(QStringLiteral("page-Id"), 16401), manager.plugins().at(0)->object());
        QVERIFY(manager.GetPluginObject(QStringLiteral("PAGE-ID"), 16401) == nullptr);
        QVERIFY(manager.GetPluginObject(QString(), 16401) == nullptr);
        manager.unloadAll();
        QVERIFY(manager.GetPluginObject(QStringLiteral("page-Id"), 16401) == nullptr);
    }

    void aTakenIdIsRefused()
    {
        TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("same_id")});
        PluginManager manager;
        manager.load(surroundings.folder());
        manager.start();
        QCOMPARE(
            manager.problems(),
            QStringList(QStringLiteral("same_id.so was left out: another plug-in is already registered as page-Id.")));
        QCOMPARE(manager.GetPluginObject(QStringLiteral("page-Id"), 0), manager.plugins().at(0)->object());
        // It was never started, and still taken down in order.
        QCOMPARE(surroundings.takeCalls(QStringLiteral("same: ")),
                 QStringList({QStringLiteral("OnDestroy"), QStringLiteral("destroyed")}));
    }

    void lifeCycleInOrder()
    {
        TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("service")});
        PluginManager manager;
        manager.load(surroundings.folder());
        QCOMPARE(surroundings.takeCalls(), QStringList());
        manager.start();
        QCOMPARE(surroundings.takeCalls(),
                 QStringList({QStringLiteral("page: Init"), QStringLiteral("service: Init")}));
        manager.unloadAll();
        QCOMPARE(surroundings.takeCalls(),
                 QStringList({QStringLiteral("service: OnDestroy"), QStringLiteral("service: destroyed"),
                              QStringLiteral("page: OnDestroy"), QStringLiteral("page: destroyed")}));
        QVERIFY(manager.plugins().empty());
    }

    void oneThatRefusedIsTakenDown()
    {
        TestSurroundings surroundings({QStringLiteral("refuses")});
        PluginManager manager;
        manager.load(surroundings.folder());
        manager.start();
        QCOMPARE(surroundings.takeCalls(QStringLiteral("refuses: ")),
                 QStringList({QStringLiteral("Init"), QStringLiteral("OnDestroy"), QStringLiteral("destroyed")}));
        QVERIFY(manager.GetPluginObject(QStringLiteral("refuses"), 0) == nullptr);
    }

    void announcementsWaitForTheStart()
    {
        TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("service")});
        PluginManager manager;
        Broadcaster broadcaster(manager);
        manager.load(surroundings.folder());
        broadcaster.connectAnnouncers();
        manager.start();
        surroundings.takeCalls();
        QSignalSpy delivered(&broadcaster, &Broadcaster::delivered);
        broadcaster.start();
        QCOMPARE(surroundings.takeCalls(),
                 QStringList({QStringLiteral("page: Notify 0x600 1 0"), QStringLiteral("service: Notify 0x600 1")}));
        QCOMPARE(delivered.count(), 1);

        broadcaster.stop();
        broadcaster.broadcast(NOTIFY_CONNECTION_STATUS, 0, 0);
        QCOMPARE(surroundings.takeCalls(), QStringList());
    }

    void announcementsKeepTheirOrderAtEveryListener()
    {
        TestSurroundings surroundings({QStringLiteral("page"), QStringLiteral("service")});
        PluginManager manager;
        Broadcaster broadcaster(manager);
        manager.load(surroundings.folder());
        broadcaster.connectAnnouncers();
        manager.start();
        broadcaster.start();
        // A listener that announces in turn: what it says comes after what is being said.
        connect(&broadcaster, &Broadcaster::delivered, &broadcaster, [&broadcaster](unsigned int code) {
            if (code == NOTIFY_SUPPRESS_SUMMARY)
                broadcaster.broadcast(0x123, 0, 0);
        });
        surroundings.takeCalls();
        broadcaster.broadcast(NOTIFY_SUPPRESS_SUMMARY, 2, 3);
        QCOMPARE(surroundings.takeCalls(),
                 QStringList({QStringLiteral("page: Notify 0x950 2 3"), QStringLiteral("service: Notify 0x950 2"),
                              QStringLiteral("page: Notify 0x123 0 0"), QStringLiteral("service: Notify 0x123 0")}));
    }

    void announcementsWaitWhileAMessageIsOpen()
    {
        TestSurroundings surroundings({QStringLiteral("page")});
        PluginManager manager;
        Broadcaster broadcaster(manager);
        manager.load(surroundings.folder());
        manager.start();
        broadcaster.start();
        surroundings.takeCalls();
        {
            const MessageOpenGuard open;
            broadcaster.broadcast(NOTIFY_CONNECTION_STATUS, 1, 0);
            broadcaster.broadcast(NOTIFY_CONNECTION_STATUS, 0, 0);
            QCoreApplication::processEvents();
            QCOMPARE(surroundings.takeCalls(), QStringList());
        }
        QStringList calls;
        QTRY_VERIFY(!(calls += surroundings.takeCalls()).isEmpty());
        QCOMPARE(calls,
                 QStringList({QStringLiteral("page: Notify 0x600 1 0"), QStringLiteral("page: Notify 0x600 0 0")}));
    }
};

QTEST_MAIN(PluginsTest)
#include "PluginsTest.moc"
