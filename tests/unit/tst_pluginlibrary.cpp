// The real library, loaded as a host loads it: exported symbols, the toolkit's entry points, interface casts, and calls
// through the virtual tables alone.
#include "FakeHostUi.h"
#include "FakeStatistics.h"
#include "plugin/INotify.h"
#include "plugin/IUIPlugin.h"

#include <QLibrary>
#include <QLoggingCategory>
#include <QPluginLoader>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QTableWidget>
#include <QtTest>

#include <cstring>

namespace {

/// One entry of an object's primary virtual table, as a host's compiler would fetch it.
void *slotAt(void *object, int index)
{
    void **table = nullptr;
    std::memcpy(&table, object, sizeof(table));
    return table[index];
}

template <typename Result, typename... Arguments> Result callSlot(void *object, int index, Arguments... arguments)
{
    using Function = Result (*)(void *, Arguments...);
    Function function = nullptr;
    void *const address = slotAt(object, index);
    std::memcpy(&function, &address, sizeof(function));
    return function(object, arguments...);
}

// The two destructors of the compiler's ABI come first, then the operations in the documented order.
enum PrimarySlot {
    SlotRelease = 2,
    SlotGetLastError,
    SlotInit,
    SlotGetPluginType,
    SlotGetCLSID,
    SlotGetVersion,
    SlotGetPluginName,
    SlotIsAllowRelease,
    SlotQueryInterface,
    SlotShowWindow,
    SlotDoModal,
    SlotHide,
    SlotFitSize,
    SlotIsReady,
    SlotChangeLang
};

} // namespace

class TestPluginLibrary : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        m_loader.setFileName(QStringLiteral(NETINFO_PRODUCT_LIBRARY));
        QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
        m_library.setFileName(QStringLiteral(NETINFO_PRODUCT_LIBRARY));
        QVERIFY(m_library.load());
    }

    void init()
    {
        FakeHostUi::reset();
        FakeStatistics::reset();
        m_object = m_loader.instance();
        QVERIFY(m_object);
        m_ui = qobject_cast<IUIPlugin *>(m_object);
        QVERIFY(m_ui);
    }
    void cleanup()
    {
        m_ui->OnDestroy();
        delete m_object;
    }

    void exportsOnlyWhatIsDocumented()
    {
        QProcess nm;
        nm.start(QStringLiteral(NETINFO_NM),
                 {QStringLiteral("-D"), QStringLiteral("-C"), QStringLiteral("--defined-only"),
                  QStringLiteral(NETINFO_PRODUCT_LIBRARY)});
        QVERIFY(nm.waitForFinished());
        QCOMPARE(nm.exitCode(), 0);
        QStringList plain;
        bool hasWindow = false;
        const QList<QByteArray> lines = nm.readAllStandardOutput().split('\n');
        for (const QByteArray &line : lines) {
            const QString symbol = QString::fromUtf8(line).section(QLatin1Char(' '), 2);
            static const QRegularExpression window(
                QStringLiteral("^((vtable|typeinfo|typeinfo name) for )?AccumulateDlg(::|$)"));
            if (window.match(symbol).hasMatch())
                hasWindow = true;
            else if (!symbol.isEmpty())
                plain.append(symbol);
        }
        plain.sort();
        QStringList expected = {QStringLiteral("NET_INFO_RECORD_VERSION"), QStringLiteral("qt_plugin_instance"),
                                QStringLiteral("qt_plugin_query_verification_data")};
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        expected.insert(2, QStringLiteral("qt_plugin_query_metadata_v2"));
#else
        expected.insert(2, QStringLiteral("qt_plugin_query_metadata"));
#endif
        QCOMPARE(plain, expected);
        QVERIFY(hasWindow);
    }

    void exportsTheWindowsEntryPoints()
    {
        for (const char *symbol : {"_ZN13AccumulateDlg8InstanceEv", "_ZN13AccumulateDlg7DestroyEv",
                                   "_ZN13AccumulateDlg10showWindowEP7QWidget"})
            QVERIFY2(m_library.resolve(symbol), symbol);
    }

    void verificationTextIsTheToolkits()
    {
        using Query = const char *(*)();
        const Query query = reinterpret_cast<Query>(m_library.resolve("qt_plugin_query_verification_data"));
        QVERIFY(query);
        const QByteArray text = query();
        QCOMPARE(query(), query()); // an address, not a copy
        const QList<QByteArray> lines = text.split('\n');
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines.at(0), QByteArray("pattern=QT_PLUGIN_VERIFICATION_DATA"));
        QCOMPARE(lines.at(1), QByteArray("version=" QT_VERSION_STR));
#ifdef QT_NO_DEBUG
        QCOMPARE(lines.at(2), QByteArray("debug=false"));
#else
        QCOMPARE(lines.at(2), QByteArray("debug=true"));
#endif
        const QByteArray processor = QSysInfo::buildCpuArchitecture() == QLatin1String("i386")
                                         ? QByteArray("i386")
                                         : QSysInfo::buildCpuArchitecture().toLatin1();
        QVERIFY2(lines.at(3).startsWith("buildkey=" + processor + " linux "), lines.at(3).constData());
        QVERIFY(lines.at(3).endsWith(" full-config"));
    }

    void metadataNamesTheInterface()
    {
        QCOMPARE(m_loader.metaData().value(QStringLiteral("IID")).toString(),
                 QStringLiteral("com.zantrix.quillnet.plugin.IUIPlugin"));
        QCOMPARE(m_loader.metaData().value(QStringLiteral("className")).toString(),
                 QStringLiteral("NetInfoRecordUIPlugin"));
    }

    void versionWordIsWritable()
    {
        auto *const word = reinterpret_cast<quint32 *>(m_library.resolve("NET_INFO_RECORD_VERSION"));
        QVERIFY(word);
        QCOMPARE(*word, 0x101u);
        QCOMPARE(m_ui->GetVersion(), 0x101u);
        *word = 0x102;
        QCOMPARE(m_ui->GetVersion(), 0x102u);
        *word = 0x101;
    }

    void instanceIsOneUntilDeleted()
    {
        using Factory = QObject *(*)();
        const Factory factory = reinterpret_cast<Factory>(m_library.resolve("qt_plugin_instance"));
        QVERIFY(factory);
        QObject *const first = factory();
        QCOMPARE(factory(), first);
        QCOMPARE(first, m_object);
        const QPointer<QObject> guard(first);
        m_ui->OnDestroy();
        delete first;
        QVERIFY(guard.isNull());
        m_object = factory();
        QVERIFY(m_object);
        QCOMPARE(factory(), m_object);
        m_ui = qobject_cast<IUIPlugin *>(m_object);
        QVERIFY(m_ui->Init());
    }

    void casts()
    {
        void *const ui = static_cast<void *>(m_ui);
        void *const notify = static_cast<void *>(qobject_cast<INotify *>(m_object));
        void *const object = static_cast<void *>(m_object);
        QVERIFY(notify);
        QVERIFY(ui != notify);
        QVERIFY(!m_object->qt_metacast(nullptr));
        QCOMPARE(m_object->qt_metacast("NetInfoRecordUIPlugin"), object);
        QCOMPARE(m_object->qt_metacast("IUIPlugin"), ui);
        QCOMPARE(m_object->qt_metacast("INotify"), notify);
        QCOMPARE(m_object->qt_metacast("com.zantrix.quillnet.plugin.IBasePlugin"), ui);
        QCOMPARE(m_object->qt_metacast("com.zantrix.quillnet.plugin.IUIPlugin"), ui);
        QCOMPARE(m_object->qt_metacast("com.zantrix.quillnet.plugin.INotify"), notify);
        QCOMPARE(m_object->qt_metacast("QObject"), object);
        for (const char *name : {"IBasePlugin", "IDestroyEvent", "IBaseInterface", "", "iuiplugin", "QWidget",
                                 "com.zantrix.quillnet.plugin.IDialupUIService"})
            QVERIFY2(!m_object->qt_metacast(name), name);
    }

    void metaObjectDeclaresNothing()
    {
        const QMetaObject *const meta = m_object->metaObject();
        QCOMPARE(meta->className(), "NetInfoRecordUIPlugin");
        QCOMPARE(meta->superClass(), &QObject::staticMetaObject);
        QCOMPARE(meta->methodCount(), QObject::staticMetaObject.methodCount());
        QCOMPARE(meta->propertyCount(), QObject::staticMetaObject.propertyCount());
        void *arguments[] = {nullptr};
        const int beyond = meta->methodCount() + 3;
        QCOMPARE(m_object->qt_metacall(QMetaObject::InvokeMetaMethod, beyond, arguments), 3);
    }

    void primaryTableIsInTheDocumentedOrder()
    {
        FakeStatistics::state().records.push_back(FakeStatistics::record(u"one", "0", "0", "0", "0", "0"));
        void *const ui = static_cast<void *>(m_ui);
        callSlot<void>(ui, SlotRelease);
        QCOMPARE(callSlot<int>(ui, SlotGetLastError), 0);
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetAll), 0);
        QVERIFY(callSlot<bool>(ui, SlotInit));
        QCOMPARE(FakeStatistics::count(FakeStatistics::Function::GetAll), 1);
        QCOMPARE(callSlot<int>(ui, SlotGetPluginType), 0);
        QCOMPARE(callSlot<unsigned int>(ui, SlotGetVersion), 0x101u);
        QVERIFY(!callSlot<bool>(ui, SlotIsAllowRelease));
        QObject *untouched = this;
        QCOMPARE((callSlot<int, int, QObject **>(ui, SlotQueryInterface, 5, &untouched)), 0);
        QCOMPARE(untouched, this);

        QWidget host;
        host.show();
        QRect rect(1, 2, 300, 200);
        QVERIFY((callSlot<bool, QWidget *, QRect &>(ui, SlotShowWindow, &host, rect)));
        QPointer<QWidget> page =
            host.findChild<QWidget *>(QStringLiteral("NetInfoRecordUIPlugin_ConnectionHistoryWidget"));
        QVERIFY(page);
        QCOMPARE(page->geometry(), rect);
        rect = QRect(5, 6, 310, 210);
        callSlot<void, QRect &>(ui, SlotFitSize, rect);
        QCOMPARE(page->geometry(), rect);
        callSlot<void>(ui, SlotHide);
        QVERIFY(page->isHidden());
        QCOMPARE(callSlot<int>(ui, SlotDoModal), 0);
        QVERIFY(page->isVisible());
        QVERIFY(!page->parentWidget());
        QVERIFY(!callSlot<bool>(ui, SlotIsReady));
        const QString none;
        const QString german = QStringLiteral("de");
        QVERIFY(!(callSlot<bool, const QString &>(ui, SlotChangeLang, none)));
        QVERIFY((callSlot<bool, const QString &>(ui, SlotChangeLang, german)));
    }

    void textsComeByValueFromTheirSlots()
    {
        QCOMPARE(callSlot<QString>(m_ui, SlotGetCLSID), QStringLiteral("27A315A2-D587-498a-9FC5-7CF2738679DF"));
        QCOMPARE(callSlot<QString>(m_ui, SlotGetPluginName), QStringLiteral("NetInfoRecordUIPlugin"));
    }

    void secondTablesHaveOneOperationEach()
    {
        QVERIFY(m_ui->Init());
        INotify *const notify = qobject_cast<INotify *>(m_object);
        FakeHostUi::state().trCalls.clear();
        QCOMPARE((callSlot<int, unsigned, unsigned, unsigned>(notify, 2, 0x400, 0, 0)), 0);
        QCOMPARE(FakeHostUi::state().trCalls.size(), 7); // six headers and the note

        IDestroyEvent *const destroy = m_ui;
        QVERIFY(static_cast<void *>(destroy) != static_cast<void *>(m_ui));
        const QPointer<QWidget> page = shownPage();
        QVERIFY(page);
        callSlot<void>(destroy, 2);
        QVERIFY(page.isNull());
    }

    void basePluginIsTheUiPlugin()
    {
        IBasePlugin *const base = qobject_cast<IBasePlugin *>(m_object);
        QCOMPARE(static_cast<void *>(base), static_cast<void *>(m_ui));
    }

    void showsTheServicesRecordsInTheHostsWindow()
    {
        for (int i = 0; i < 5; ++i)
            FakeStatistics::state().records.push_back(
                FakeStatistics::record(u"internet", "1704110400", "1704114000", "3600", "1048576", "2048"));
        QVERIFY(m_ui->Init());
        QWidget host;
        host.show();
        QRect rect(0, 0, 800, 400);
        QVERIFY(m_ui->ShowWindow(&host, rect));
        const QTableWidget *const table = host.findChild<QTableWidget *>();
        QVERIFY(table);
        QCOMPARE(table->rowCount(), 5);
        QCOMPARE(table->item(4, 4)->text(), QStringLiteral("1.00 MB"));
        QCOMPARE(table->item(4, 3)->text(), QStringLiteral("01:00:00"));
        m_ui->OnDestroy();
        QVERIFY(host.children().isEmpty());
    }

private:
    QWidget *shownPage()
    {
        m_ui->DoModal();
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            if (widget->objectName() == QLatin1String("NetInfoRecordUIPlugin_ConnectionHistoryWidget"))
                return widget;
        }
        return nullptr;
    }

    QPluginLoader m_loader;
    QLibrary m_library;
    QObject *m_object = nullptr;
    IUIPlugin *m_ui = nullptr;
};

QTEST_MAIN(TestPluginLibrary)
#include "tst_pluginlibrary.moc"
