// The language files themselves: complete, of one mind about place-holders, and holding every text that the sources ask
// for.
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

using Texts = QMap<QString, QString>; // "context/key" to text

QString sourceDir()
{
    return qEnvironmentVariable("NETINFO_SOURCE_DIR");
}

Texts readTexts(const QString &language)
{
    Texts texts;
    QFile file(sourceDir() + QStringLiteral("/host/languages/netinfo_%1.ts").arg(language));
    if (!file.open(QFile::ReadOnly))
        return texts;
    QXmlStreamReader xml(&file);
    QString context;
    QString key;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("source"))
            key = xml.readElementText();
        else if (xml.name() == QLatin1String("translation"))
            texts.insert(context + QLatin1Char('/') + key, xml.readElementText());
    }
    return xml.hasError() ? Texts() : texts;
}

QSet<QString> placeholders(const QString &text)
{
    QSet<QString> found;
    QRegularExpressionMatchIterator matches = QRegularExpression(QStringLiteral("%[0-9L]+")).globalMatch(text);
    while (matches.hasNext())
        found.insert(matches.next().captured());
    return found;
}

QMap<QString, QString> keysInSources()
{
    QMap<QString, QString> found;
    static const QRegularExpression literal(QStringLiteral("\"(IDS_[A-Z0-9_]+)\""));
    for (const char *room : {"/src", "/host"}) {
        QDirIterator files(sourceDir() + QLatin1String(room), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QFile::ReadOnly))
                continue;
            QRegularExpressionMatchIterator matches = literal.globalMatch(QString::fromUtf8(file.readAll()));
            while (matches.hasNext())
                found.insert(matches.next().captured(1), file.fileName());
        }
    }
    return found;
}

} // namespace

class TextsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_english = readTexts(QStringLiteral("en"));
        m_german = readTexts(QStringLiteral("de"));
        QVERIFY(m_english.size() > 50);
    }

    void bothLanguagesHaveTheSameKeys() { QCOMPARE(m_german.keys(), m_english.keys()); }

    void noTextIsEmptyOrItsOwnKey()
    {
        for (const Texts &texts : {m_english, m_german}) {
            for (auto text = texts.begin(); text != texts.end(); ++text) {
                QVERIFY2(!text.value().trimmed().isEmpty(), qPrintable(text.key()));
                QVERIFY2(!text.value().startsWith(QLatin1String("IDS_")), qPrintable(text.key()));
            }
        }
    }

    void placeholdersAgree()
    {
        for (auto text = m_english.begin(); text != m_english.end(); ++text)
            QVERIFY2(placeholders(text.value()) == placeholders(m_german.value(text.key())), qPrintable(text.key()));
    }

    void everyTextOfTheSourcesIsThere()
    {
        QSet<QString> known;
        for (const QString &key : m_english.keys())
            known.insert(key.section(QLatin1Char('/'), 1));
        const QMap<QString, QString> wanted = keysInSources();
        QVERIFY(wanted.size() > 30);
        for (auto key = wanted.begin(); key != wanted.end(); ++key) {
            // A literal that ends in an underscore is the beginning of several keys.
            bool isKnown = known.contains(key.key());
            for (const QString &candidate : known)
                isKnown = isKnown || (key.key().endsWith(QLatin1Char('_')) && candidate.startsWith(key.key()));
            QVERIFY2(isKnown, qPrintable(key.key() + QStringLiteral(" in ") + key.value()));
        }
    }

    void theCompiledFilesAreWhereTheProgramLooks()
    {
        const QString folder = qEnvironmentVariable("NETINFO_LANGUAGE_DIR");
        for (const char *language : {"en", "de"})
            QVERIFY(QFile::exists(folder + QStringLiteral("/netinfo_%1.qm").arg(QLatin1String(language))));
    }

private:
    Texts m_english;
    Texts m_german;
};

QTEST_GUILESS_MAIN(TextsTest)
#include "TextsTest.moc"
