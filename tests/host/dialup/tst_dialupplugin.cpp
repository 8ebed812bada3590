// The plug-in as the host loads it: what it answers, what it announces and when, and what is in the history by then.
#include "HostUi.h"
#include "PrivateBus.h"
#include "RecorderElsewhere.h"

#include "host/dialup/SimulatedSource.h"
#include "host/recorder/Clock.h"
#include "host/statistics/ConnectionHistory.h"
#include "plugin/IBasePlugin.h"
#include "plugin/IDialupUIService.h"
#include "plugin/INotify.h"
#include "plugin/IUIPlugin.h"

#include <QPluginLoader>
#include <QtTest>

using zelk::ConnectionHistory;

class DialupPluginTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void isTheDialupService();
    void announcesASimulatedConnection();
    void checkpointsShowTheGrowth();
    void announcesEveryOneOfSeveral();
    void endsSimulationsWithTheHost();
    void closesWhatACrashedHostLeft();
    void refusesToSimulateBeforeInit();
    void announcesWhatWasUpBefore();
    void staysSilentAfterOnDestroy();
    void statusLineFollowsTheLanguage();

private slots: // Connected to the plug-in by name, as the host does it.
    void hear(unsigned int code, unsigned int param, unsigned int extra);

private:
    ConnectionHistory history() const { return ConnectionHistory(m_file, ConnectionHistory::Access::ReadOnly); }
    IBasePlugin *plugin() const { return qobject_cast<IBasePlugin *>(m_object); }
    void simulate(int seconds) { QMetaObject::invokeMethod(m_object, "simulateConnection", Q_ARG(int, seconds)); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::string m_file;
    std::unique_ptr<QPluginLoader> m_loader;
    QObject *m_object = nullptr;
    /// One line an announcement: its status, and how many records and open connections the history held by then.
    QStringList m_heard;
};

void DialupPluginTest::init()
{
    m_heard.clear();
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath("history.sqlite").toStdString();
    qputenv("NETINFO_HISTORY", QByteArray::fromStdString(m_file));
    HostUi::instance()->overrideLanguage("en");
    m_loader = std::make_unique<QPluginLoader>(qEnvironmentVariable("NETINFO_PLUGIN_DIR") + "/libDialupUIPlugin.so");
    m_object = m_loader->instance();
    QVERIFY2(m_object, qPrintable(m_loader->errorString()));
    QVERIFY(connect(m_object, SIGNAL(announce(uint, uint, uint)), this, SLOT(hear(uint, uint, uint))));
}

void DialupPluginTest::cleanup()
{
    plugin()->OnDestroy();
    delete m_object;
}

void DialupPluginTest::hear(unsigned int code, unsigned int param, unsigned int extra)
{
    QCOMPARE(code, unsigned(NOTIFY_CONNECTION_STATUS));
    QCOMPARE(extra, 0U);
    m_heard << QString("%1, %2 recorded, %3 open")
                   .arg(param)
                   .arg(history().list().size())
                   .arg(history().openConnections().size());
}

void DialupPluginTest::isTheDialupService()
{
    QCOMPARE(plugin()->GetCLSID(), QString("92804312-432E-401F-96BB-1C20D852815D"));
    QCOMPARE(plugin()->GetPluginType(), 1);
    QCOMPARE(m_loader->metaData()["IID"].toString(), QString(IBasePlugin_iid));
    QVERIFY(m_object->qt_metacast("com.zantrix.quillnet.plugin.IDialupUIService"));
    QVERIFY(m_object->qt_metacast("com.zantrix.quillnet.plugin.INotify"));
    QVERIFY(!qobject_cast<IUIPlugin *>(m_object));
    QVERIFY(!plugin()->IsAllowRelease());
    QObject *untouched = this;
    QCOMPARE(plugin()->QueryInterface(5, &untouched), 0);
    QCOMPARE(untouched, this);
}

void DialupPluginTest::announcesASimulatedConnection()
{
    QVERIFY(plugin()->Init());
    simulate(2);

    // Up with an open row; down only once the record stands in its place.
    const QStringList expected = QStringList({"1, 0 recorded, 1 open", "0, 1 recorded, 0 open"});
    QTRY_COMPARE(m_heard, expected);
    const zelk::Record record = history().list()[0];
    QCOMPARE(record.profile, std::string("simulation.example"));
    QCOMPARE(record.bytesUploaded, 2 * SimulatedSource::sentPerSecond);
    QCOMPARE(record.bytesDownloaded, 2 * SimulatedSource::receivedPerSecond);
    QCOMPARE(record.connectedSeconds, std::int64_t(2));
    QCOMPARE(record.quality, unsigned(zelk::QualityExact));
    QCOMPARE(record.endReason, zelk::EndReason::User);
}

void DialupPluginTest::checkpointsShowTheGrowth()
{
    QVERIFY(plugin()->Init());
    simulate(3600);

    const auto stored = [this] {
        const auto open = history().openConnections();
        return open.empty() ? std::int64_t(-1) : open[0].bytesDownloaded;
    };
    QTRY_VERIFY(stored() > 0);
    const std::int64_t first = stored();
    QTRY_VERIFY(stored() > first);
}

void DialupPluginTest::announcesEveryOneOfSeveral()
{
    QVERIFY(plugin()->Init());
    simulate(2);
    QTRY_COMPARE(m_heard.size(), 1);
    simulate(1);

    // The first end is followed by another beginning, since one connection is still up.
    const QStringList expected = QStringList({"1, 0 recorded, 1 open", "1, 0 recorded, 2 open", "0, 1 recorded, 1 open",
                                              "1, 1 recorded, 1 open", "0, 2 recorded, 0 open"});
    QTRY_COMPARE(m_heard, expected);
}

void DialupPluginTest::endsSimulationsWithTheHost()
{
    QVERIFY(plugin()->Init());
    simulate(3600);
    QTRY_COMPARE(m_heard.size(), 1);

    plugin()->OnDestroy();

    QCOMPARE(history().openConnections().size(), size_t(0));
    const auto records = history().list();
    QCOMPARE(records.size(), size_t(1));
    QCOMPARE(records[0].endReason, zelk::EndReason::User);
    QVERIFY(records[0].bytesDownloaded < 3600 * SimulatedSource::receivedPerSecond);
}

void DialupPluginTest::closesWhatACrashedHostLeft()
{
    zelk::OpenConnection row;
    row.profile = "simulation.example";
    row.serviceOwner = "netinfo.simulation/1/0"; // The first process of all did not begin at that moment.
    row.bootId = recorder::bootId().toStdString();
    row.startWallMs = 1700000000000;
    row.seenWallMs = 1700000060000;
    row.seenBootMs = 60000;
    row.bytesDownloaded = 4096;
    ConnectionHistory(m_file).openConnection(row);

    QVERIFY(plugin()->Init());

    // It is announced after all, so that the history page shows it.
    const QStringList expected = QStringList({"1, 1 recorded, 0 open", "0, 1 recorded, 0 open"});
    QTRY_COMPARE(m_heard, expected);
    const zelk::Record record = history().list()[0];
    QCOMPARE(record.bytesDownloaded, std::int64_t(4096));
    QCOMPARE(record.connectedSeconds, std::int64_t(60));
    QVERIFY(record.quality & zelk::QualityRecovered);
}

void DialupPluginTest::refusesToSimulateBeforeInit()
{
    QTest::ignoreMessage(QtWarningMsg, "A connection can be simulated only while the dial-up plug-in runs.");
    simulate(1);
    QVERIFY(m_heard.isEmpty());
}

void DialupPluginTest::announcesWhatWasUpBefore()
{
    RecorderElsewhere recorder(QString::fromStdString(m_file));
    recorder.connectionUp("internet.example");
    QTRY_COMPARE(history().openConnections().size(), size_t(1));

    QVERIFY(plugin()->Init());
    QTRY_COMPARE(m_heard, QStringList({"1, 0 recorded, 1 open"}));

    recorder.connectionDown();
    QTRY_COMPARE(m_heard, QStringList({"1, 0 recorded, 1 open", "0, 1 recorded, 0 open"}));
    QCOMPARE(history().list()[0].profile, std::string("internet.example"));
}

void DialupPluginTest::staysSilentAfterOnDestroy()
{
    QVERIFY(plugin()->Init());
    simulate(1);
    QTRY_COMPARE(m_heard.size(), 1);
    plugin()->OnDestroy();
    plugin()->OnDestroy();
    QCOMPARE(m_heard.size(), 1);
    QTest::ignoreMessage(QtWarningMsg, "A connection can be simulated only while the dial-up plug-in runs.");
    simulate(1);
    QCOMPARE(m_heard.size(), 1);
}

void DialupPluginTest::statusLineFollowsTheLanguage()
{
    QSignalSpy changed(m_object, SIGNAL(statusTextChanged()));
    QVERIFY(plugin()->Init());
    const auto text = [this] { return m_object->property("statusText").toString(); };
    QTRY_VERIFY2(text().startsWith("Connections are not being recorded: there is no system bus"), qPrintable(text()));
    QVERIFY(changed.count() > 0);

    changed.clear();
    HostUi::instance()->overrideLanguage("de");
    qobject_cast<INotify *>(m_object)->Notify(NOTIFY_LANGUAGE_CHANGED, 0, 0);
    QVERIFY2(text().startsWith("Verbindungen werden nicht aufgezeichnet: Es gibt keinen Systembus"),
             qPrintable(text()));
    QCOMPARE(changed.count(), 1);
    qobject_cast<INotify *>(m_object)->Notify(NOTIFY_SUPPRESS_SUMMARY, 0, 0);
    QCOMPARE(changed.count(), 1);
}

int main(int argc, char **argv)
{
    PrivateBus bus;
    bus.offerToThisProcess();
    const QApplication application(argc, argv);
    DialupPluginTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_dialupplugin.moc"
