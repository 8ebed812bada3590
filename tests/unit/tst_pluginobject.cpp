// The plug-in object: its fixed answers, and what it passes on to the history page.
#include "NetInfoRecordUIPlugin.h"

#include "ProductFixture.h"

#include <QPointer>

class TestPluginObject : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fixture::reset();
        m_plugin = new NetInfoRecordUIPlugin;
    }
    void cleanup()
    {
        delete m_plugin;
        fixture::reset();
        NET_INFO_RECORD_VERSION = 0x101;
    }

    void constructorTakesTheSingletonsStoreFirst()
    {
        QCOMPARE(m_plugin->m_pNetInfoRecordLogic, NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
        QCOMPARE(m_plugin->m_pConnectionHistoryDlg, ConnectionHistoryDlg::m_pConnectionHistoryInst);
        QVERIFY(m_plugin->m_pNetInfoRecordLogic);
        QVERIFY(m_plugin->m_pConnectionHistoryDlg);
        QVERIFY(!m_plugin->parent());
        QVERIFY(!m_plugin->m_bReady);
        QVERIFY(!m_plugin->m_bSpare);
        QVERIFY(!m_plugin->m_bShown);
        QVERIFY(!m_plugin->m_bSuppressSummary);
        QCOMPARE(m_plugin->m_rect, QRect());

        delete m_plugin;
        fixture::reset();
        const MessageLog log;
        m_plugin = new NetInfoRecordUIPlugin;
        const QStringList shapes = log.shapes();
        QCOMPARE(shapes.first(),
                 QStringLiteral("Start File: PATH/NetInfoRecordUIPlugin NetInfoRecordUIPlugin: LINE: 20:40:33:"));
        QCOMPARE(shapes.last(),
                 QStringLiteral("End File: PATH/NetInfoRecordUIPlugin: NetInfoRecordUIPlugin: LINE: 20:40:33:"));
        const auto store =
            shapes.indexOf(QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: NetInfoRecordLogic LINE"));
        const auto page =
            shapes.indexOf(QStringLiteral("Start File: PATH/ConnectionHistoryDlg ConnectionHistoryDlg: LINE: TIME:"));
        QVERIFY(store > 0);
        QVERIFY(page > store);
    }

    void destructorLeavesTheSingletons()
    {
        const MessageLog log;
        delete m_plugin;
        m_plugin = nullptr;
        QVERIFY(NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
        QVERIFY(ConnectionHistoryDlg::m_pConnectionHistoryInst);
        QVERIFY(log.lines.isEmpty());
    }

    void fixedAnswers()
    {
        const MessageLog log;
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(m_plugin->GetLastError(), 0);
            QCOMPARE(m_plugin->GetPluginType(), 0);
            QCOMPARE(m_plugin->GetCLSID(), QStringLiteral("27A315A2-D587-498a-9FC5-7CF2738679DF"));
            QCOMPARE(m_plugin->GetVersion(), 0x101u);
            QCOMPARE(m_plugin->GetPluginName(), QStringLiteral("NetInfoRecordUIPlugin"));
            QVERIFY(!m_plugin->IsAllowRelease());
            QVERIFY(!m_plugin->IsReady());
            const QPointer<NetInfoRecordUIPlugin> guard(m_plugin);
            m_plugin->Release();
            QVERIFY(guard);
            QVERIFY(m_plugin->m_pConnectionHistoryDlg);
        }
        QVERIFY(log.lines.isEmpty());
    }

    void versionIsTheExportedWord()
    {
        NET_INFO_RECORD_VERSION = 0x203;
        QCOMPARE(m_plugin->GetVersion(), 0x203u);
    }

    void queryInterfaceAnswersNothing()
    {
        const MessageLog log;
        QObject *object = this;
        for (int selector : {5, 0, -1, 1, 2147483647}) {
            QCOMPARE(m_plugin->QueryInterface(selector, &object), 0);
            QCOMPARE(object, this);
        }
        QCOMPARE(m_plugin->QueryInterface(5, nullptr), 0);
        QVERIFY(log.lines.isEmpty());
    }

    void initInitialisesThePage()
    {
        fixture::fillService(2);
        QVERIFY(m_plugin->Init());
        QCOMPARE(table()->rowCount(), 2);
        QVERIFY(!m_plugin->IsReady());
    }

    void showStoresAndPassesTheRectangle()
    {
        m_plugin->Init();
        QWidget host;
        QRect rect(3, 4, 50, 60);
        QVERIFY(m_plugin->ShowWindow(&host, rect));
        QCOMPARE(m_plugin->m_rect, rect);
        QVERIFY(m_plugin->m_bShown);
        QCOMPARE(pageWidget()->geometry(), rect);
        QCOMPARE(pageWidget()->parentWidget(), &host);
        QVERIFY(!m_plugin->IsReady());
        m_plugin->Hide();
        QVERIFY(pageWidget()->isHidden());
        pageWidget()->setParent(nullptr);
    }

    void modalBeforeAnyShow()
    {
        m_plugin->Init();
        QCOMPARE(m_plugin->DoModal(), 0); // at once: there is no loop to leave
        QVERIFY(!pageWidget()->parentWidget());
        QVERIFY(pageWidget()->isVisible());
        QCOMPARE(pageWidget()->pos(), QPoint(0, 0));
        QCOMPARE(m_plugin->m_rect, QRect());
        QVERIFY(m_plugin->m_bShown);
        m_plugin->Hide();
    }

    void modalGoesThroughTheVirtualTable()
    {
        class Probe : public NetInfoRecordUIPlugin
        {
        public:
            bool ShowWindow(QWidget *parent, QRect &rect) override
            {
                calls.append(qMakePair(parent, rect));
                isOwnRect = &rect == &m_rect;
                return true;
            }
            QList<QPair<QWidget *, QRect>> calls;
            bool isOwnRect = false;
        } probe;
        probe.Init();
        QRect rect(1, 2, 30, 40);
        probe.FitSize(rect);
        QCOMPARE(probe.DoModal(), 0);
        QCOMPARE(probe.calls, (QList<QPair<QWidget *, QRect>>({{nullptr, rect}})));
        QVERIFY(probe.isOwnRect);
    }

    void fitSizeThenModalUsesTheFittedRectangle()
    {
        m_plugin->Init();
        QRect rect(11, 12, 413, 414);
        m_plugin->FitSize(rect);
        QCOMPARE(m_plugin->m_rect, rect);
        QCOMPARE(pageWidget()->geometry(), rect);
        QVERIFY(!m_plugin->m_bShown);
        pageWidget()->setGeometry(0, 0, 640, 480);
        m_plugin->DoModal();
        QCOMPARE(pageWidget()->size(), QSize(413, 414));
        QCOMPARE(pageWidget()->pos(), QPoint(11, 12));
        m_plugin->Hide();
    }

    void changeLangOnlyJudgesItsArgument()
    {
        m_plugin->Init();
        FakeHostUi::state().trCalls.clear();
        const MessageLog log;
        QVERIFY(!m_plugin->ChangeLang(QString()));
        QVERIFY(!m_plugin->ChangeLang(QStringLiteral("")));
        QVERIFY(m_plugin->ChangeLang(QStringLiteral("de")));
        QVERIFY(m_plugin->ChangeLang(QStringLiteral("no such language")));
        QVERIFY(FakeHostUi::state().trCalls.isEmpty());
        const QString start = QStringLiteral("Start of PATH/NetInfoRecordUIPlugin: ChangeLang: LINE: ");
        const QString empty = QStringLiteral("Empty String PATH/NetInfoRecordUIPlugin: ChangeLang: LINE: ");
        QCOMPARE(log.shapes(), QStringList({start, empty, start, empty, start, start, start, start}));
    }

    void withoutAPageEverythingAnswersAsUsual()
    {
        m_plugin->m_pConnectionHistoryDlg = nullptr;
        QRect rect(1, 2, 3, 4);
        const MessageLog log;
        QVERIFY(m_plugin->Init());
        QVERIFY(m_plugin->ShowWindow(nullptr, rect));
        QVERIFY(m_plugin->m_bShown);
        QCOMPARE(m_plugin->m_rect, QRect());
        m_plugin->FitSize(rect);
        QCOMPARE(m_plugin->m_rect, QRect());
        m_plugin->Hide();
        QCOMPARE(m_plugin->DoModal(), 0);
        QCOMPARE(m_plugin->GetLastError(), 0);
        QCOMPARE(log.shapes(),
                 QStringList({QStringLiteral("Start of PATH/NetInfoRecordUIPlugin: Init: LINE: "),
                              QStringLiteral("End of PATH/NetInfoRecordUIPlugin: Init: LINE: "),
                              QStringLiteral("Start File: PATH/NetInfoRecordUIPlugin: ShowWindow: LINE: 20:40:33:"),
                              QStringLiteral("End File: PATH/NetInfoRecordUIPlugin: ShowWindow: LINE: 20:40:33:"),
                              QStringLiteral("Start of PATH/NetInfoRecordUIPlugin: FitSize: LINE: "),
                              QStringLiteral("End of PATH/NetInfoRecordUIPlugin: FitSize: LINE: "),
                              QStringLiteral("Start of PATH/NetInfoRecordUIPlugin: Hide: LINE: "),
                              QStringLiteral("End of PATH/NetInfoRecordUIPlugin: Hide: LINE: "),
                              QStringLiteral("Start of PATH/NetInfoRecordUIPlugin: DoModal: LINE: "),
                              QStringLiteral("Start File: PATH/NetInfoRecordUIPlugin: ShowWindow: LINE: 20:40:33:"),
                              QStringLiteral("End File: PATH/NetInfoRecordUIPlugin: ShowWindow: LINE: 20:40:33:"),
                              QStringLiteral("End of PATH/NetInfoRecordUIPlugin: DoModal: LINE: ")}));
    }

    void destroyTakesThePageThenTheStore()
    {
        m_plugin->Init();
        const ConnectionHistoryDlg *const page = m_plugin->m_pConnectionHistoryDlg;
        const NetInfoRecordLogic *const store = m_plugin->m_pNetInfoRecordLogic;
        const MessageLog log;
        m_plugin->OnDestroy();
        QVERIFY(!ConnectionHistoryDlg::m_pConnectionHistoryInst);
        QVERIFY(!NetInfoRecordLogic::m_pNetInfoRecordLogicInst);
        QVERIFY(m_plugin->m_pConnectionHistoryDlg == page); // left as they were
        QVERIFY(m_plugin->m_pNetInfoRecordLogic == store);
        const QStringList shapes = log.shapes();
        QCOMPARE(shapes.first(), QStringLiteral("Start: PATH/NetInfoRecordUIPlugin OnDestroy: LINE: TIME:"));
        QCOMPARE(shapes.last(), QStringLiteral("End: PATH/NetInfoRecordUIPlugin OnDestroy: LINE: TIME:"));
        const auto pageEnd = shapes.indexOf(QStringLiteral("End: PATH/ConnectionHistoryDlg Destroy: LINE: TIME:"));
        const QString storeStart = QStringLiteral("Start  : TIME: PATH/NetInfoRecordLogic: Destroy LINE");
        QVERIFY(pageEnd > 0);
        QCOMPARE(shapes.count(storeStart), 2); // once from the page, once for nothing
        QVERIFY(shapes.lastIndexOf(storeStart) > pageEnd);
        QCOMPARE(shapes.count(QStringLiteral("Start: TIME: PATH/NetInfoRecordLogic: ~NetInfoRecordLogic LINE")), 1);
    }

    void aNewObjectAfterDestroy()
    {
        fixture::fillService(1);
        m_plugin->Init();
        m_plugin->OnDestroy();
        delete m_plugin;
        m_plugin = new NetInfoRecordUIPlugin;
        QVERIFY(m_plugin->Init());
        QCOMPARE(table()->rowCount(), 1);
    }

private:
    QWidget *pageWidget() const { return m_plugin->m_pConnectionHistoryDlg->m_pConnectionHistoryWidget; }
    QTableWidget *table() const { return m_plugin->m_pConnectionHistoryDlg->m_pConnectionTblTreeWidget; }

    NetInfoRecordUIPlugin *m_plugin = nullptr;
};

QTEST_MAIN(TestPluginObject)
#include "tst_pluginobject.moc"
