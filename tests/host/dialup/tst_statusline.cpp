// The status line in both languages: problems first, then what is being recorded.
#include "HostUi.h"
#include "host/dialup/StatusLine.h"

#include <QtTest>

using recorder::Announcement;
using recorder::Status;

class StatusLineTest : public QObject
{
    Q_OBJECT

private slots:
    void everyProblemHasItsText_data();
    void everyProblemHasItsText();
    void silentWhenAllIsWell();
    void namesWhatIsRecorded();
    void problemsComeFirst();
    void detailsAreNotReadAsPlaceholders();
};

void StatusLineTest::everyProblemHasItsText_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("part");

    QTest::newRow("unheard recorder") << int(Status::NotAnnounced) << "en"
                                      << "without a session bus";
    QTest::newRow("silent recorder") << int(Status::OtherRecorder) << "en"
                                     << "process <detail>";
    QTest::newRow("refused") << int(Status::NoPermission) << "en"
                             << "<detail>";
    QTest::newRow("no service") << int(Status::NoNetworkManager) << "en"
                                << "NetworkManager is not running";
    QTest::newRow("no bus") << int(Status::NoSystemBus) << "en"
                            << "<detail>";
    QTest::newRow("no history") << int(Status::NoHistory) << "en"
                                << "<detail>";
    QTest::newRow("unheard recorder, German") << int(Status::NotAnnounced) << "de"
                                              << "Sitzungsbus";
    QTest::newRow("silent recorder, German") << int(Status::OtherRecorder) << "de"
                                             << "Prozess <detail>";
    QTest::newRow("refused, German") << int(Status::NoPermission) << "de"
                                     << "<detail>";
    QTest::newRow("no service, German") << int(Status::NoNetworkManager) << "de"
                                        << "NetworkManager läuft nicht";
    QTest::newRow("no bus, German") << int(Status::NoSystemBus) << "de"
                                    << "<detail>";
    QTest::newRow("no history, German") << int(Status::NoHistory) << "de"
                                        << "<detail>";
}

void StatusLineTest::everyProblemHasItsText()
{
    QFETCH(int, code);
    QFETCH(QString, language);
    QFETCH(QString, part);
    QVERIFY(HostUi::instance()->overrideLanguage(language));

    const QString line = statusLine({Status::Code(code), "<detail>"}, {});

    QVERIFY2(line.contains(part), qPrintable(line));
    QVERIFY2(!line.contains("IDS_") && !line.contains("%1") && !line.contains('\n'), qPrintable(line));
}

void StatusLineTest::silentWhenAllIsWell()
{
    QCOMPARE(statusLine({}, {}), QString());
}

void StatusLineTest::namesWhatIsRecorded()
{
    Announcement first;
    first.profile = "internet.example";
    Announcement second;
    second.profile = "Café %1";
    HostUi::instance()->overrideLanguage("en");
    QCOMPARE(statusLine({}, {first, second}), QString("Recording: internet.example, Café %1"));
    HostUi::instance()->overrideLanguage("de");
    QCOMPARE(statusLine({}, {first}), QString("Wird aufgezeichnet: internet.example"));
}

void StatusLineTest::problemsComeFirst()
{
    Announcement connection;
    connection.profile = "internet.example";
    QVERIFY(!statusLine({Status::NoHistory, "no space"}, {connection}).contains("internet.example"));
}

void StatusLineTest::detailsAreNotReadAsPlaceholders()
{
    HostUi::instance()->overrideLanguage("en");
    QVERIFY(statusLine({Status::NoHistory, "50%2 of %1"}, {}).contains("50%2 of %1"));
}

QTEST_MAIN(StatusLineTest)
#include "tst_statusline.moc"
