// The language files: which there are, which is in use, and the text of a string ID in it.
#ifndef NETINFO_HOSTUI_LANGUAGES_H
#define NETINFO_HOSTUI_LANGUAGES_H

#include <QString>
#include <QStringList>
#include <QTranslator>

#include <memory>

/// Reads netinfo_<code>.qm from $NETINFO_LANGUAGE_DIR, else from ../share/netinfo/languages beside the program.
class Languages
{
public:
    Languages();

    /// Sorted codes, English always among them.
    const QStringList &available() const { return m_available; }
    const QString &current() const { return m_current; }

    /// The first of `wanted` (such as "de-AT") that is available, whole or by its language alone; else English.
    QString bestFor(const QStringList &wanted) const;

    /// Changes to an available language, and the toolkit's own texts with it.
    void use(const QString &code);

    /// The text in the current language, else in English, else empty.
    QString text(const QString &key, const QString &context) const;

private:
    static QString folder();

    QStringList m_available;
    QString m_current;
    QTranslator m_english;
    std::unique_ptr<QTranslator> m_translator; ///< Null for English.
    QTranslator m_toolkit;
};

#endif
