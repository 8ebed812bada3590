// Notifications: language, connection status and the request for silence, with the state that the library shares.
#include "NetInfoRecordUIPlugin.h"

#include "ProductFixture.h"
#include "plugin/IDialupUIService.h"

#include <QLabel>
#include <QSignalSpy>

using FakeHostUi::state;

namespace {

const QString s_dialupClsid = QStringLiteral("92804312-432E-401F-96BB-1C20D852815D");
const QString s_settingsKey = QStringLiteral("NetInfoRecordUIPlugin/WhetherShowNotesbox");

class DialupPlugin : public QObject, public IDialupUIService
{
    Q_OBJECT
    Q_INTERFACES(IDialupUIService)
};

} // namespace

class TestNotification : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fixture::reset();
        fixture::fillService(2);
        FakeStatistics::state().last = fixture::numbered(1);
        m_main.reset(new QWidget);
        m_main->show();
        state().mainWindow = m_main.get();
        m_container.objects.clear();
        m_container.objects.insert(s_dialupClsid, &m_dialup);
        m_container.calls.clear();
        state().container = &m_container;
        m_plugin.reset(new NetInfoRecordUIPlugin);
        m_plugin->Init();
        m_page = m_plugin->m_pConnectionHistoryDlg;
        m_store = m_plugin->m_pNetInfoRecordLogic;
        setState(false);
        state().settings[s_settingsKey] = QStringLiteral("true");
        FakeStatistics::state().calls.clear();
        m_container.calls.clear();
        state().settingsCalls.clear();
    }
    void cleanup()
    {
        m_plugin->m_pConnectionHistoryDlg = m_page;
        m_plugin->m_pNetInfoRecordLogic = m_store;
        m_plugin->OnDestroy();
        m_plugin.reset();
        fixture::reset();
        m_main.reset();
    }

    // The state machine: every state, every event, every failed precondition from both states

    void stateMachine_data()
    {
        QTest::addColumn<bool>("isArmed");
        QTest::addColumn<QString>("missing");
        QTest::addColumn<bool>("isSuppressed");
        QTest::addColumn<uint>("status");
        QTest::addColumn<bool>("isHandled");
        QTest::addColumn<bool>("isArmedAfterwards");
        for (const bool isArmed : {false, true}) {
            const char *const from = isArmed ? "armed" : "idle";
            for (const uint status : {0u, 1u, 2u, 0xFFFFFFFFu}) {
                const bool isEnd = isArmed && status == 0;
                QTest::addRow("%s, status %u", from, status)
                    << isArmed << QString() << false << status << isEnd << (status == 1 || (isArmed && !isEnd));
                QTest::addRow("%s, status %u, suppressed", from, status)
                    << isArmed << QString() << true << status << false << (status == 1 || isArmed);
                for (const char *missing : {"store", "page", "container", "dial-up plug-in", "interface"})
                    QTest::addRow("%s, status %u, no %s", from, status, missing)
                        << isArmed << QString::fromLatin1(missing) << false << status << false << isArmed;
            }
        }
    }
    void stateMachine()
    {
        QFETCH(bool, isArmed);
        QFETCH(QString, missing);
        QFETCH(bool, isSuppressed);
        QFETCH(uint, status);
        QFETCH(bool, isHandled);
        QFETCH(bool, isArmedAfterwards);
        setState(isArmed);
        if (isSuppressed)
            m_plugin->Notify(0x950, 0, 0);
        FakeStatistics::state().calls.clear();
        state().dialogs.clear();
        const bool isComplete = missing.isEmpty();
        takeAway(missing);
        {
            const MessageLog log;
            m_plugin->onConnectionReceived(status);
            const QStringList shapes = log.shapes();
            if (isComplete)
                QCOMPARE(shapes.first(), QStringLiteral("Status after connection: "
                                                        "PATH/NetInfoRecordUIPlugin onConnectionReceived %1")
                                             .arg(static_cast<int>(status)));
            else
                QCOMPARE(shapes, QStringList(QStringLiteral(
                                     "Arg is NULL: TIME: PATH/NetInfoRecordUIPlugin: onConnectionReceived LINE")));
        }
        putBack();
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetAll), isHandled ? 1 : 0);
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetLast), isHandled ? 1 : 0);
        QCOMPARE(state().dialogs.size(), isHandled ? 1 : 0);
        m_plugin->m_bSuppressSummary = false;
        QCOMPARE(isArmedNow(), isArmedAfterwards);
    }

    void preconditionsAskForTheDialupPlugin()
    {
        m_plugin->Notify(0x600, 1, 0);
        QCOMPARE(m_container.calls, (QList<QPair<QString, unsigned int>>({{s_dialupClsid, 16401u}})));
    }

    void storeAndPageAreTestedBeforeTheHostIsAsked()
    {
        const int before = state().containerCalls;
        m_plugin->m_pNetInfoRecordLogic = nullptr;
        m_plugin->onConnectionReceived(1);
        m_plugin->m_pNetInfoRecordLogic = m_store;
        m_plugin->m_pConnectionHistoryDlg = nullptr;
        m_plugin->onConnectionReceived(1);
        QCOMPARE(state().containerCalls, before);
    }

    void twoStartsAndOneEndAreOneHandling()
    {
        notify({1, 1, 0});
        QCOMPARE(handlings(), 1);
        QCOMPARE(state().dialogs.size(), 1);
        notify({0});
        QCOMPARE(handlings(), 1);
    }

    void endWithoutAStartDoesNothing()
    {
        notify({0});
        QCOMPARE(handlings(), 0);
        QVERIFY(state().dialogs.isEmpty());
        QVERIFY(state().settingsCalls.isEmpty());
    }

    void thirdArgumentIsIgnored()
    {
        m_plugin->Notify(0x600, 1, 7);
        QCOMPARE(m_plugin->Notify(0x600, 0, 5), 0);
        QCOMPARE(handlings(), 1);
        m_plugin->Notify(0x600, 1, 0);
        QCOMPARE(m_plugin->Notify(0x600, 0, 0), 0);
        QCOMPARE(handlings(), 2);
    }

    void stateIsTheLibrarysNotTheObjects()
    {
        notify({1});
        NetInfoRecordUIPlugin other;
        other.Notify(0x600, 0, 0);
        QCOMPARE(handlings(), 1);
        notify({0});
        QCOMPARE(handlings(), 1);
    }

    void suppressionLastsAndBelongsToTheObject()
    {
        m_plugin->Notify(0x950, 1, 2);
        QVERIFY(m_plugin->m_bSuppressSummary);
        notify({1, 0, 1, 0, 0});
        QCOMPARE(handlings(), 0);
        QVERIFY(state().dialogs.isEmpty());
        QVERIFY(state().settingsCalls.isEmpty());
        NetInfoRecordUIPlugin other;
        QVERIFY(!other.m_bSuppressSummary);
        other.Notify(0x600, 0, 0); // still armed
        QCOMPARE(handlings(), 1);
    }

    // The setting

    void setting_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("isShown");
        for (const char *value : {"true", "TRUE", "True", "tRuE"})
            QTest::newRow(value) << QString::fromLatin1(value) << true;
        for (const char *value : {"false", "", "1", "yes", " true", "true ", "truee", "tru"})
            QTest::newRow(QByteArray(value).prepend("not ").constData()) << QString::fromLatin1(value) << false;
        QTest::newRow("no value") << QString() << false;
    }
    void setting()
    {
        QFETCH(QString, value);
        QFETCH(bool, isShown);
        if (value.isNull())
            state().settings.clear();
        else
            state().settings[s_settingsKey] = value;
        notify({1, 0});
        QCOMPARE(state().dialogs.size(), isShown ? 1 : 0);
        QCOMPARE(handlings(), 1); // the table is refreshed all the same
        QCOMPARE(state().settingsCalls, (QList<QPair<QString, QString>>({{QStringLiteral("NetInfoRecordUIPlugin"),
                                                                          QStringLiteral("WhetherShowNotesbox")}})));
    }

    void settingIsReadAfreshEachTime()
    {
        notify({1, 0});
        state().settings[s_settingsKey] = QStringLiteral("false");
        notify({1, 0});
        QCOMPARE(state().settingsCalls.size(), 2);
        QCOMPARE(state().dialogs.size(), 1);
    }

    // Handling

    void boxIsOverTheMainWindow()
    {
        notify({1, 0});
        QCOMPARE(state().dialogs.first().parent, m_main.get());
    }

    void boxTakesItsFiguresFromTheLastConnectionQuery()
    {
        FakeStatistics::state().last = fixture::numbered(9); // in no list
        notify({1, 0});
        QCOMPARE(m_page->m_pUploadedValueLabel->text(), QStringLiteral("9.00 KB"));
    }

    void stepsAreInOrder()
    {
        m_store->m_vecAccumulate.resize(3);
        notify({1});
        const MessageLog log;
        notify({0});
        QStringList functions;
        for (const QString &shape : log.shapes()) {
            static const QRegularExpression name(
                QStringLiteral("^(?:Enter|Start File|Start): "
                               ".*\\b(ShowDialogOfLastConnectedRecord|ReleaseTable|GetAllConnectedRecords|"
                               "populateTable|GetLastConnectedRecord)\\b"));
            functions.append(name.match(shape).captured(1));
        }
        functions.removeAll(QString());
        QCOMPARE(functions, QStringList({QStringLiteral("ShowDialogOfLastConnectedRecord"),
                                         QStringLiteral("GetLastConnectedRecord"), QStringLiteral("ReleaseTable"),
                                         QStringLiteral("GetAllConnectedRecords"), QStringLiteral("populateTable")}));
        QVERIFY(m_store->m_vecAccumulate.isEmpty());
    }

    void tableShowsTheFinishedConnection()
    {
        QString share(9, QLatin1Char('s'));
        m_store->m_hash.value(0)->strSpare = share;
        QTableWidget *const table = m_page->m_pConnectionTblTreeWidget;
        QCOMPARE(table->rowCount(), 2);
        notify({1});
        FakeStatistics::state().records.push_back(fixture::numbered(2));
        QCOMPARE(table->rowCount(), 2);
        notify({0});
        QCOMPARE(fixture::columnTexts(table, 0),
                 QStringList({QStringLiteral("apn-0"), QStringLiteral("apn-1"), QStringLiteral("apn-2")}));
        QVERIFY(share.isDetached()); // the record that was shown before is freed
        QCOMPARE(m_store->m_hash.size(), 3);
        for (int row = 0; row < 3; ++row)
            QCOMPARE(fixture::linkedRecord(table, row), m_store->m_hash.value(row));
    }

    void failingReloadEmptiesTheTable()
    {
        notify({1});
        FakeStatistics::state().getAllCode = 9;
        notify({0});
        QVERIFY(m_store->m_hash.isEmpty());
        QCOMPARE(m_page->m_pConnectionTblTreeWidget->rowCount(), 0);
        FakeStatistics::state().getAllCode = 0;
        notify({1, 0});
        QCOMPARE(m_page->m_pConnectionTblTreeWidget->rowCount(), 2);
    }

    void twoEndsInQuickSuccessionLeaveOneBox()
    {
        notify({1, 0});
        FakeStatistics::state().last = fixture::numbered(7);
        notify({1, 0});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(m_main->findChildren<ExtendDialog *>().size(), 1);
        QCOMPARE(m_page->m_pUploadedValueLabel->text(), QStringLiteral("7.00 KB"));
    }

    // Notify itself

    void languageChangeRenewsTheTexts()
    {
        state().texts[QStringLiteral("x")][QStringLiteral("IDS_LIST_APN")] = QStringLiteral("Zugang");
        state().language = QStringLiteral("x");
        QCOMPARE(m_plugin->Notify(0x400, 0, 0), 0);
        QCOMPARE(m_page->m_pConnectionTblTreeWidget->horizontalHeaderItem(0)->text(), QStringLiteral("Zugang"));
        QCOMPARE(handlings(), 0);
    }

    void codesAreTheDocumentedOnes()
    {
        QCOMPARE(static_cast<int>(NOTIFY_LANGUAGE_CHANGED), 1024);
        QCOMPARE(static_cast<int>(NOTIFY_CONNECTION_STATUS), 1536);
        QCOMPARE(static_cast<int>(NOTIFY_SUPPRESS_SUMMARY), 2384);
    }

    void otherCodesAreIgnored()
    {
        state().trCalls.clear();
        for (unsigned int code : {0u, 1u, 0x401u, 0x601u, 0x951u, 0xFFFFFFFFu}) {
            const MessageLog log;
            QCOMPARE(m_plugin->Notify(code, 1, 1), 0);
            const QString line = QStringLiteral("Start of PATH/NetInfoRecordUIPlugin: Notify: LINE: ");
            QCOMPARE(log.shapes(), QStringList({line, line})); // both lines read alike
        }
        QVERIFY(state().trCalls.isEmpty());
        QVERIFY(!m_plugin->m_bSuppressSummary);
        QVERIFY(!isArmedNow());
    }

    void withoutAPageNothingIsDispatched()
    {
        m_plugin->m_pConnectionHistoryDlg = nullptr;
        state().trCalls.clear();
        for (unsigned int code : {0x400u, 0x600u, 0x950u}) {
            const MessageLog log;
            QCOMPARE(m_plugin->Notify(code, 1, 0), 0);
            QCOMPARE(log.shapes(), QStringList(QStringLiteral("Start of PATH/NetInfoRecordUIPlugin: Notify: LINE: ")));
        }
        QVERIFY(!m_plugin->m_bSuppressSummary);
        QVERIFY(state().trCalls.isEmpty());
        m_plugin->m_pConnectionHistoryDlg = m_page;
        QVERIFY(!isArmedNow());
    }

private:
    void notify(const QList<unsigned int> &statuses)
    {
        for (unsigned int status : statuses)
            m_plugin->Notify(0x600, status, 0);
    }

    static int handlings() { return FakeStatistics::count(FakeStatistics::Function::GetAll); }

    /// Brings the library's own flag into a state through events alone.
    void setState(bool isArmed)
    {
        notify({1});
        if (!isArmed)
            notify({0});
    }

    /// Whether an end would be handled now. Disarms.
    bool isArmedNow()
    {
        const int before = handlings();
        notify({0});
        return handlings() > before;
    }

    void takeAway(const QString &piece)
    {
        if (piece == QLatin1String("store"))
            m_plugin->m_pNetInfoRecordLogic = nullptr;
        else if (piece == QLatin1String("page"))
            m_plugin->m_pConnectionHistoryDlg = nullptr;
        else if (piece == QLatin1String("container"))
            state().container = nullptr;
        else if (piece == QLatin1String("dial-up plug-in"))
            m_container.objects.clear();
        else if (piece == QLatin1String("interface"))
            m_container.objects.insert(s_dialupClsid, this);
    }

    void putBack()
    {
        m_plugin->m_pNetInfoRecordLogic = m_store;
        m_plugin->m_pConnectionHistoryDlg = m_page;
        state().container = &m_container;
        m_container.objects.insert(s_dialupClsid, &m_dialup);
    }

    DialupPlugin m_dialup;
    FakeHostUi::PluginContainer m_container;
    std::unique_ptr<QWidget> m_main;
    std::unique_ptr<NetInfoRecordUIPlugin> m_plugin;
    ConnectionHistoryDlg *m_page = nullptr;
    NetInfoRecordLogic *m_store = nullptr;
};

QTEST_MAIN(TestNotification)
#include "tst_notification.moc"
