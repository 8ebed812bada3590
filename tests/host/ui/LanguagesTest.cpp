// The reader of language files: fall-backs, choice of the first language, change while running.
#include "HostUi.h"

#include "ui/Change.h"

#include <QFile>
#include <QLocale>
#include <QSignalSpy>
#include <QtTest>

class LanguagesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("NETINFO_LANGUAGE_DIR", INCOMPLETE_LANGUAGES);
        QFile::remove(HostUi::settingsFile());
    }

    void init() { QVERIFY(HostUi::instance()->setLanguage(QStringLiteral("en"))); }

    void listsTheFilesThatAreThere()
    {
        QCOMPARE(HostUi::instance()->languages(), QStringList({QStringLiteral("de"), QStringLiteral("en")}));
        QCOMPARE(HostUi::languageName(QStringLiteral("de")), QStringLiteral("Deutsch"));
        QCOMPARE(HostUi::languageName(QStringLiteral("en")), QStringLiteral("English"));
    }

    void findsTexts_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("context");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("expected");

        QTest::newRow("in English") << "en"
                                    << "Test"
                                    << "IDS_BOTH"
                                    << "both in en";
        QTest::newRow("in German") << "de"
                                   << "Test"
                                   << "IDS_BOTH"
                                   << "both in de";
        QTest::newRow("untranslated falls back to English") << "de"
                                                            << "Test"
                                                            << "IDS_ENGLISH_ONLY"
                                                            << "only in English";
        QTest::newRow("unfinished falls back to English") << "de"
                                                          << "Test"
                                                          << "IDS_UNFINISHED"
                                                          << "finished in English";
        QTest::newRow("unknown stays the key") << "de"
                                               << "Test"
                                               << "IDS_NOWHERE"
                                               << "IDS_NOWHERE";
        QTest::newRow("another context's key is unknown") << "en"
                                                          << "Other"
                                                          << "IDS_BOTH"
                                                          << "IDS_BOTH";
        QTest::newRow("empty stays empty") << "de"
                                           << "Test"
                                           << ""
                                           << "";
        QTest::newRow("letters beyond Latin stay") << "de"
                                                   << "Test"
                                                   << "ключ"
                                                   << "ключ";
    }

    void findsTexts()
    {
        QFETCH(QString, language);
        QFETCH(QString, context);
        QFETCH(QString, key);
        QVERIFY(HostUi::instance()->setLanguage(language));
        QTEST(Change::tr(key, context), "expected");
    }

    void changesAtOnceAndSaysSo()
    {
        HostUi *ui = HostUi::instance();
        QSignalSpy changed(ui, &HostUi::languageChanged);
        QVERIFY(ui->setLanguage(QStringLiteral("de")));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).toString(), QStringLiteral("de"));
        QCOMPARE(ui->language(), QStringLiteral("de"));
        QCOMPARE(QLocale().language(), QLocale::C); // The system's locale is C, whose dates everybody can read.

        QVERIFY(ui->setLanguage(QStringLiteral("de")));
        QCOMPARE(changed.count(), 1);
    }

    void refusesWhatIsNotThere()
    {
        HostUi *ui = HostUi::instance();
        QSignalSpy changed(ui, &HostUi::languageChanged);
        QVERIFY(!ui->setLanguage(QStringLiteral("xx")));
        QVERIFY(!ui->overrideLanguage(QStringLiteral("xx")));
        QVERIFY(!ui->overrideLanguage(QString()));
        QCOMPARE(ui->language(), QStringLiteral("en"));
        QCOMPARE(ui->chosenLanguage(), QStringLiteral("en"));
        QCOMPARE(changed.count(), 0);
    }

    void overrideIsNotStored()
    {
        HostUi *ui = HostUi::instance();
        QVERIFY(ui->overrideLanguage(QStringLiteral("de")));
        QCOMPARE(ui->language(), QStringLiteral("de"));
        QCOMPARE(ui->chosenLanguage(), QStringLiteral("en"));
    }

    void emptyChoiceFollowsTheSystem()
    {
        HostUi *ui = HostUi::instance();
        QVERIFY(ui->setLanguage(QStringLiteral("de")));
        QVERIFY(ui->setLanguage(QString()));
        QCOMPARE(ui->language(), ui->systemLanguage());
        QCOMPARE(ui->chosenLanguage(), QString());
    }

    // The first language is decided when the program starts, so programs are started.
    void firstLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("expected");

        QTest::newRow("German system") << "de_DE.UTF-8"
                                       << ""
                                       << "de";
        QTest::newRow("Austrian system") << "de_AT.UTF-8"
                                         << ""
                                         << "de";
        QTest::newRow("British system") << "en_GB.UTF-8"
                                        << ""
                                        << "en";
        QTest::newRow("a language without a file") << "ja_JP.UTF-8"
                                                   << ""
                                                   << "en";
        QTest::newRow("no language at all") << "C"
                                            << ""
                                            << "en";
        QTest::newRow("choice over system") << "en_GB.UTF-8"
                                            << "de"
                                            << "de";
        QTest::newRow("a choice that is gone") << "de_DE.UTF-8"
                                               << "xx"
                                               << "de";
    }

    void firstLanguage()
    {
        QFETCH(QString, locale);
        QFETCH(QString, stored);
        QVERIFY(HostUi::instance()->writeSetting(QStringLiteral("Host"), QStringLiteral("Language"), stored));
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), locale);
        environment.insert(QStringLiteral("LANG"), locale);
        environment.remove(QStringLiteral("LANGUAGE"));
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--print-language")});
        QVERIFY(program.waitForFinished());
        QTEST(QString::fromUtf8(program.readAllStandardOutput()).trimmed(), "expected");
    }
};

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (application.arguments().contains(QStringLiteral("--print-language"))) {
        QTextStream(stdout) << HostUi::instance()->language() << '\n';
        return 0;
    }
    LanguagesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "LanguagesTest.moc"
