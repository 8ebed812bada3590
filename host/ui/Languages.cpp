#include "Languages.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QtGlobal>

namespace {

const QString prefix = QStringLiteral("netinfo_");
const QString suffix = QStringLiteral(".qm");
const QString english = QStringLiteral("en");

QString toolkitFolder()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
}

} // namespace

Languages::Languages()
{
    const QDir dir(folder());
    for (const QString &name : dir.entryList({prefix + QLatin1Char('*') + suffix}, QDir::Files, QDir::Name))
        m_available << name.mid(prefix.size(), name.size() - prefix.size() - suffix.size());
    if (!m_english.load(prefix + english, dir.path()))
        qWarning("The language files are missing: no netinfo_en.qm in %s. Install the program again or set "
                 "NETINFO_LANGUAGE_DIR to the folder with the files.",
                 qPrintable(dir.absolutePath()));
    if (!m_available.contains(english)) {
        m_available << english;
        m_available.sort();
    }
}

QString Languages::folder()
{
    const QString named = qEnvironmentVariable("NETINFO_LANGUAGE_DIR");
    return named.isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/../share/netinfo/languages")
                           : named;
}

QString Languages::bestFor(const QStringList &wanted) const
{
    for (const QString &name : wanted) {
        const QString code = QString(name).replace(QLatin1Char('-'), QLatin1Char('_'));
        if (m_available.contains(code))
            return code;
        const QString language = code.section(QLatin1Char('_'), 0, 0);
        if (m_available.contains(language))
            return language;
    }
    return english;
}

void Languages::use(const QString &code)
{
    m_current = code;
    m_translator.reset();
    // English needs no second look: it is what every language falls back to.
    auto translator = std::make_unique<QTranslator>();
    if (code != english && translator->load(prefix + code, folder()))
        m_translator = std::move(translator);
    QCoreApplication::removeTranslator(&m_toolkit);
    if (m_toolkit.load(QStringLiteral("qtbase_") + code, toolkitFolder()))
        QCoreApplication::installTranslator(&m_toolkit);
}

QString Languages::text(const QString &key, const QString &context) const
{
    const QByteArray contextName = context.toUtf8();
    const QByteArray keyName = key.toUtf8();
    const QString found =
        m_translator ? m_translator->translate(contextName.constData(), keyName.constData()) : QString();
    return found.isEmpty() ? m_english.translate(contextName.constData(), keyName.constData()) : found;
}
