// The settings file as plug-ins, the host and other processes see it.
#include "HostUi.h"

#include "ui/CommonUtils.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString group = QStringLiteral("NetInfoRecordUIPlugin");
const QString key = QStringLiteral("WhetherShowNotesbox");

void writeFile(const QByteArray &content)
{
    QDir().mkpath(QFileInfo(HostUi::settingsFile()).path());
    QFile file(HostUi::settingsFile());
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(content);
}

} // namespace

class SettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QFile::remove(HostUi::settingsFile());
        HostUi::instance();
    }

    void livesInTheConfigurationFolder()
    {
        QCOMPARE(HostUi::settingsFile(),
                 qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/netinfo/netinfo.ini"));
    }

    void missingIsEmpty()
    {
        QCOMPARE(CommonUtils::GetSettings(group, key), QString());
        QVERIFY(!HostUi::hasSetting(group, key));
    }

    void keepsWhatIsWritten_data()
    {
        QTest::addColumn<QString>("value");
        for (const char *value : {"true", "false", "", " blank at both ends ", "a, b", "semi;colon", "\"quoted\"",
                                  "line\nbreak", "Größe ключ 漢字", "back\\slash", "50%", "@Invalid()"})
            QTest::newRow(value) << QString::fromUtf8(value);
    }

    void keepsWhatIsWritten()
    {
        QFETCH(QString, value);
        QVERIFY(HostUi::instance()->writeSetting(group, key, value));
        QCOMPARE(CommonUtils::GetSettings(group, key), value);
        QVERIFY(HostUi::hasSetting(group, key));
    }

    void readsWhatPeopleWrite_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain") << QByteArray("TRUE") << "TRUE";
        QTest::newRow("empty") << QByteArray() << "";
        QTest::newRow("unquoted comma") << QByteArray("a, b") << "a, b";
        QTest::newRow("UTF-8") << QByteArray("Größe") << QString::fromUtf8("Größe");
    }

    void readsWhatPeopleWrite()
    {
        QFETCH(QByteArray, line);
        writeFile("[NetInfoRecordUIPlugin]\nWhetherShowNotesbox=" + line + "\n");
        QTEST(CommonUtils::GetSettings(group, key), "expected");
    }

    void seesWhatAnotherProcessWrote()
    {
        QVERIFY(HostUi::instance()->writeSetting(group, key, QStringLiteral("true")));
        QCOMPARE(CommonUtils::GetSettings(group, key), QStringLiteral("true"));
        writeFile("[NetInfoRecordUIPlugin]\nWhetherShowNotesbox=false\n\n[Recorder]\nConnections=metered\n");
        QCOMPARE(CommonUtils::GetSettings(group, key), QStringLiteral("false"));
        // And loses none of it with its next own change.
        QVERIFY(HostUi::instance()->writeSetting(group, key, QStringLiteral("true")));
        QCOMPARE(CommonUtils::GetSettings(QStringLiteral("Recorder"), QStringLiteral("Connections")),
                 QStringLiteral("metered"));
    }

    void announcesChangesOnly()
    {
        HostUi *ui = HostUi::instance();
        QSignalSpy changed(ui, &HostUi::settingChanged);
        QVERIFY(ui->writeSetting(group, key, QString()));
        QVERIFY(ui->writeSetting(group, key, QStringLiteral("true")));
        QVERIFY(ui->writeSetting(group, key, QStringLiteral("true")));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(changed.at(1), QVariantList({group, key, QStringLiteral("true")}));
    }

    void saysWhenItCannotWrite()
    {
        // A folder in the file's place fails for every user, the superuser included.
        QVERIFY(QDir().mkpath(HostUi::settingsFile()));
        QSignalSpy changed(HostUi::instance(), &HostUi::settingChanged);
        QVERIFY(!HostUi::instance()->writeSetting(group, key, QStringLiteral("true")));
        QCOMPARE(changed.count(), 0);
        QVERIFY(QDir().rmdir(HostUi::settingsFile()));
    }
};

QTEST_MAIN(SettingsTest)
#include "SettingsTest.moc"
