// The plug-in "Monthly totals" as the host loads it, with the product's real library and a real history file.
#include "AccumulateDlg.h"
#include "FakeClock.h"
#include "HostUi.h"
#include "plugin/INotify.h"
#include "plugin/IUIPlugin.h"
#include "statistics/ConnectionHistory.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPluginLoader>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

int s_monthSlots = 0;
QtMessageHandler s_previousHandler = nullptr;

/// The product's trace says how often its slots ran.
void countSlots(QtMsgType type, const QMessageLogContext &context, const QString &line)
{
    if (line.startsWith("Enter:") && line.contains("onSelectComboItemOf"))
        ++s_monthSlots;
    else if (type != QtDebugMsg)
        s_previousHandler(type, context, line);
}

zelk::Record record(const char *profile, const char *localStart, std::int64_t seconds, std::int64_t up,
                    std::int64_t down)
{
    zelk::Record result;
    result.profile = profile;
    result.start = QDateTime::fromString(localStart, Qt::ISODate).toSecsSinceEpoch();
    result.end = result.start + seconds;
    result.connectedSeconds = seconds;
    result.bytesUploaded = up;
    result.bytesDownloaded = down;
    return result;
}

constexpr std::int64_t mb = 1048576;

} // namespace

class CumulativePluginTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void identity();
    void opensWithRealTotals();
    void everyMonthAndProfile();
    void missingHistoryIsEmpty();
    void secondRequestRaisesTheOpenWindow();
    void reopeningStartsAfresh();
    void newRecordsAreThereOnTheNextOpening();
    void escapeDestroysTheInstanceToo();
    void endOfConnectionRefillsTheOpenWindow();
    void connectionEndWhileClosedDoesNothing();
    void languageChangeReachesTheOpenWindow();
    void mainWindowTakesTheWindowAlong();
    void unloadingClosesTheWindow();
    void damagedHistoryIsReported();

private:
    void load();
    QDialog *window() const;
    template <typename T> T *child(const char *name) const { return window()->findChild<T *>(name); }
    QStringList shown() const;
    QStringList profiles() const;
    void choose(const char *combo, int index);
    bool open();
    void add(const zelk::Record &record) { zelk::ConnectionHistory().add(record); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QWidget> m_mainWindow;
    QObject *m_object = nullptr;
    IUIPlugin *m_plugin = nullptr;
    QPluginLoader m_loader;
};

void CumulativePluginTest::initTestCase()
{
    s_previousHandler = qInstallMessageHandler(countSlots);
    m_loader.setFileName(qEnvironmentVariable("NETINFO_PLUGIN_DIR") + "/libCumulativeUIPlugin.so");
}

void CumulativePluginTest::init()
{
    FakeClock::stopAt("2025-08-15 12:00:00");
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("NETINFO_HISTORY", m_folder->filePath("history.sqlite").toLocal8Bit());
    m_mainWindow = std::make_unique<QWidget>();
    m_mainWindow->show();
    HostUi::instance()->setMainWindow(m_mainWindow.get());
    QVERIFY(HostUi::instance()->overrideLanguage("en"));
    load();
}

void CumulativePluginTest::load()
{
    m_object = m_loader.instance();
    QVERIFY2(m_object, qPrintable(m_loader.errorString()));
    m_plugin = qobject_cast<IUIPlugin *>(m_object);
    QVERIFY(m_plugin);
    QVERIFY(m_plugin->Init());
}

void CumulativePluginTest::cleanup()
{
    if (m_object) {
        m_plugin->OnDestroy();
        delete m_object;
        m_object = nullptr;
    }
    m_mainWindow.reset();
    FakeClock::release();
}

bool CumulativePluginTest::open()
{
    QRect anywhere;
    return m_plugin->ShowWindow(m_mainWindow.get(), anywhere);
}

/// The open window, found as a user finds it; null when there is none.
QDialog *CumulativePluginTest::window() const
{
    QDialog *found = nullptr;
    for (QWidget *top : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<QDialog *>(top);
        if (dialog && dialog->isVisible() && dialog->findChild<QWidget *>("m_pMonthSelectionComboBox"))
            found = dialog;
    }
    return found;
}

QStringList CumulativePluginTest::shown() const
{
    const auto *layout = qobject_cast<QFormLayout *>(child<QGroupBox>("m_pStatisticsGrp")->layout());
    QStringList texts;
    for (int row = 0; row < 3; ++row)
        texts << qobject_cast<QLabel *>(layout->itemAt(row, QFormLayout::FieldRole)->widget())->text();
    return texts;
}

QStringList CumulativePluginTest::profiles() const
{
    const auto *combo = child<QComboBox>("m_pProfileSelectionComboBox");
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i)
        texts << combo->itemText(i);
    return texts;
}

/// With the keyboard, from wherever the entry is now.
void CumulativePluginTest::choose(const char *combo, int index)
{
    auto *box = child<QComboBox>(combo);
    box->setFocus();
    while (box->currentIndex() != index)
        QTest::keyClick(box, box->currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
}

void CumulativePluginTest::identity()
{
    QCOMPARE(m_plugin->GetPluginType(), 2);
    QCOMPARE(m_plugin->GetPluginName(), QString("CumulativeUIPlugin"));
    QCOMPARE(m_plugin->GetCLSID(), QString("8E0C4D1B-6B2F-4C57-9A43-51D27E90C3A6"));
    QVERIFY(m_plugin->IsReady());
    QVERIFY(m_plugin->ChangeLang("de"));
    QVERIFY(!m_plugin->ChangeLang(QString()));
    QVERIFY(qobject_cast<INotify *>(m_object));
    const QString menuTextId = m_object->property("menuTextId").toString();
    QCOMPARE(menuTextId, QString("IDS_MENU_MONTHLYTOTALS"));
    for (const QString &language : HostUi::instance()->languages()) {
        QVERIFY(HostUi::instance()->overrideLanguage(language));
        QVERIFY(HostUi::text(menuTextId) != menuTextId);
    }
}

void CumulativePluginTest::opensWithRealTotals()
{
    add(record("web", "2025-08-01T00:00:00", 3725, 2 * mb, 3 * mb));
    add(record("mail", "2025-08-14T10:00:00", 86400, mb / 2, mb));
    QVERIFY(open());
    QCOMPARE(profiles(), QStringList({"All profiles", "mail", "web"}));
    QCOMPARE(shown(), QStringList({"2.50 MB", "4.00 MB", "01:02:05"}));
    QCOMPARE(window()->windowTitle(), QString("Monthly totals ( 01/08/2025 - 31/08/2025 ) "));
    QCOMPARE(window()->parentWidget(), m_mainWindow.get());
    QCOMPARE(m_plugin->GetLastError(), 0);
}

void CumulativePluginTest::everyMonthAndProfile()
{
    add(record("web", "2025-08-02T00:00:00", 1, mb, 10 * mb));
    add(record("web", "2025-07-31T23:59:59", 2, 2 * mb, 20 * mb));
    add(record("mail", "2025-07-01T00:00:00", 4, 4 * mb, 40 * mb));
    add(record("old", "2025-06-01T00:00:00", 8, 8 * mb, 80 * mb));
    add(record("older", "2025-05-31T23:59:59", 16, 16 * mb, 160 * mb));
    QVERIFY(open());
    QCOMPARE(shown(), QStringList({"1.00 MB", "10.00 MB", "00:00:01"}));
    choose("m_pProfileSelectionComboBox", 1);
    QCOMPARE(shown(), QStringList({"1.00 MB", "10.00 MB", "00:00:01"}));

    choose("m_pMonthSelectionComboBox", 1);
    QCOMPARE(profiles(), QStringList({"All profiles", "mail", "web"}));
    QCOMPARE(shown(), QStringList({"6.00 MB", "60.00 MB", "00:00:06"}));
    choose("m_pProfileSelectionComboBox", 1);
    QCOMPARE(shown(), QStringList({"4.00 MB", "40.00 MB", "00:00:04"}));
    choose("m_pProfileSelectionComboBox", 2);
    QCOMPARE(shown(), QStringList({"2.00 MB", "20.00 MB", "00:00:02"}));

    choose("m_pMonthSelectionComboBox", 2);
    QCOMPARE(profiles(), QStringList({"All profiles", "old"}));
    QCOMPARE(shown(), QStringList({"8.00 MB", "80.00 MB", "00:00:08"}));
    QCOMPARE(window()->windowTitle(), QString("Monthly totals ( 01/06/2025 - 30/06/2025 ) "));
}

void CumulativePluginTest::missingHistoryIsEmpty()
{
    QVERIFY(open());
    QCOMPARE(profiles(), QStringList("All profiles"));
    QCOMPARE(shown(), QStringList({"0.00 MB", "0.00 MB", "00:00:00"}));
    QVERIFY(!QFile::exists(m_folder->filePath("history.sqlite")));
}

void CumulativePluginTest::secondRequestRaisesTheOpenWindow()
{
    add(record("web", "2025-08-02T00:00:00", 1, mb, 10 * mb));
    QVERIFY(open());
    const QPointer<QDialog> first = window();
    QVERIFY(open());
    QCOMPARE(window(), first.data());
    QCOMPARE(shown(), QStringList({"1.00 MB", "10.00 MB", "00:00:01"}));
    s_monthSlots = 0;
    choose("m_pMonthSelectionComboBox", 1);
    QCOMPARE(s_monthSlots, 1);
}

void CumulativePluginTest::reopeningStartsAfresh()
{
    add(record("web", "2025-08-02T00:00:00", 1, mb, 10 * mb));
    for (int round = 0; round < 3; ++round) {
        QVERIFY(open());
        const QPointer<QDialog> frame = window();
        QCOMPARE(profiles(), QStringList({"All profiles", "web"}));
        QCOMPARE(shown(), QStringList({"1.00 MB", "10.00 MB", "00:00:01"}));
        s_monthSlots = 0;
        choose("m_pMonthSelectionComboBox", 1);
        QCOMPARE(s_monthSlots, 1);
        QTest::mouseClick(child<QPushButton>("m_pPushButton"), Qt::LeftButton);
        QVERIFY(!window());
        if (round == 1) // At once: before the closed one is cleared away.
            continue;
        QTRY_VERIFY(!frame);
        QVERIFY(!AccumulateDlg::m_pAccumulateDlgInst);
    }
    QTest::qWait(0);
    QVERIFY(!window());
}

void CumulativePluginTest::newRecordsAreThereOnTheNextOpening()
{
    add(record("web", "2025-08-02T00:00:00", 1, mb, mb));
    QVERIFY(open());
    const QPointer<QDialog> frame = window();
    window()->close();
    QTRY_VERIFY(!frame);
    add(record("web", "2025-08-03T00:00:00", 1, mb, mb));
    QVERIFY(open());
    QCOMPARE(shown(), QStringList({"2.00 MB", "2.00 MB", "00:00:02"}));
}

void CumulativePluginTest::escapeDestroysTheInstanceToo()
{
    QVERIFY(open());
    const QPointer<QDialog> frame = window();
    QTest::keyClick(frame, Qt::Key_Escape);
    QTRY_VERIFY(!frame);
}

void CumulativePluginTest::endOfConnectionRefillsTheOpenWindow()
{
    add(record("web", "2025-07-02T00:00:00", 1, mb, mb));
    QVERIFY(open());
    choose("m_pMonthSelectionComboBox", 1);
    choose("m_pProfileSelectionComboBox", 1);
    add(record("another", "2025-07-05T00:00:00", 1, mb, mb));
    add(record("web", "2025-07-06T00:00:00", 9, mb, mb));
    qobject_cast<INotify *>(m_object)->Notify(NOTIFY_CONNECTION_STATUS, 0, 0);

    QTRY_COMPARE(profiles(), QStringList({"All profiles", "another", "web"}));
    QCOMPARE(child<QComboBox>("m_pMonthSelectionComboBox")->currentIndex(), 1);
    QCOMPARE(child<QComboBox>("m_pProfileSelectionComboBox")->currentText(), QString("web"));
    QCOMPARE(shown(), QStringList({"2.00 MB", "2.00 MB", "00:00:10"}));
}

void CumulativePluginTest::connectionEndWhileClosedDoesNothing()
{
    qobject_cast<INotify *>(m_object)->Notify(NOTIFY_CONNECTION_STATUS, 0, 0);
    qobject_cast<INotify *>(m_object)->Notify(NOTIFY_LANGUAGE_CHANGED, 0, 0);
    QCoreApplication::processEvents();
    QVERIFY(!window());
}

void CumulativePluginTest::languageChangeReachesTheOpenWindow()
{
    add(record("web", "2025-07-02T00:00:00", 61, mb, 2 * mb));
    QVERIFY(open());
    choose("m_pMonthSelectionComboBox", 1);
    choose("m_pProfileSelectionComboBox", 1);
    QVERIFY(HostUi::instance()->overrideLanguage("de"));
    qobject_cast<INotify *>(m_object)->Notify(NOTIFY_LANGUAGE_CHANGED, 0, 0);

    QCOMPARE(window()->windowTitle(), QString("Monatssummen ( 01/07/2025 - 31/07/2025 ) "));
    QCOMPARE(child<QComboBox>("m_pMonthSelectionComboBox")->currentText(), QString("Letzter Monat"));
    QCOMPARE(profiles(), QStringList({"Alle Profile", "web"}));
    QCOMPARE(child<QComboBox>("m_pProfileSelectionComboBox")->currentText(), QString("web"));
    QCOMPARE(shown(), QStringList({"1.00 MB", "2.00 MB", "00:01:01"}));
}

void CumulativePluginTest::mainWindowTakesTheWindowAlong()
{
    add(record("web", "2025-08-02T00:00:00", 1, mb, 10 * mb));
    QVERIFY(open());
    m_mainWindow.reset();
    QVERIFY(!window());
    QVERIFY(!AccumulateDlg::m_pAccumulateDlgInst);
    m_mainWindow = std::make_unique<QWidget>();
    QVERIFY(open());
    QCOMPARE(shown(), QStringList({"1.00 MB", "10.00 MB", "00:00:01"}));
    s_monthSlots = 0;
    choose("m_pMonthSelectionComboBox", 1);
    QCOMPARE(s_monthSlots, 1);
}

void CumulativePluginTest::unloadingClosesTheWindow()
{
    QVERIFY(open());
    const QPointer<QDialog> frame = window();
    m_plugin->OnDestroy();
    QVERIFY(!frame);
    QVERIFY(!AccumulateDlg::m_pAccumulateDlgInst);
    delete m_object;
    m_object = nullptr;
    QVERIFY(m_loader.unload());
    QVERIFY(m_mainWindow->isVisible());
    load();
    QVERIFY(open());
}

void CumulativePluginTest::damagedHistoryIsReported()
{
    QFile file(m_folder->filePath("history.sqlite"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
    file.close();
    QString said;
    QTimer answer;
    connect(&answer, &QTimer::timeout, this, [&said] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            said = box->text();
            box->close();
        }
    });
    answer.start(10);
    QVERIFY(!open());
    QVERIFY2(said.contains(file.fileName()), qPrintable(said));
    QCOMPARE(m_plugin->GetLastError(), static_cast<int>(zelk::ResultCode::Damaged));
    QVERIFY(!window());
}

int main(int argc, char **argv)
{
    FakeClock::takeOver(argv);
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    CumulativePluginTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_cumulativeplugin.moc"
