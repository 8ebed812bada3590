#include "HostUi.h"

#include "Languages.h"
#include "Settings.h"

#include <QApplication>
#include <QLocale>

namespace {

const QString hostGroup = QStringLiteral("Host");
const QString languageKey = QStringLiteral("Language");

} // namespace

HostUi::HostUi() : QObject(qApp), m_languages(new Languages)
{
    const QString chosen = chosenLanguage();
    useLanguage(m_languages->available().contains(chosen) ? chosen : systemLanguage());
}

HostUi::~HostUi() = default;

HostUi *HostUi::instance()
{
    static QPointer<HostUi> s_instance;
    if (s_instance.isNull())
        s_instance = new HostUi;
    return s_instance;
}

void HostUi::setMainWindow(QWidget *window)
{
    m_mainWindow = window;
}

QWidget *HostUi::mainWindow() const
{
    return m_mainWindow;
}

void HostUi::setPluginContainer(IPluginContainer *container)
{
    m_container = container;
}

IPluginContainer *HostUi::pluginContainer() const
{
    return m_container;
}

QStringList HostUi::languages() const
{
    return m_languages->available();
}

QString HostUi::languageName(const QString &code)
{
    QString name = QLocale(code).nativeLanguageName();
    // Some toolkit generations call plain English "American English".
    if (code == QLatin1String("en") || name.isEmpty())
        name = QLocale::languageToString(QLocale(code).language());
    return name.left(1).toUpper() + name.mid(1);
}

QString HostUi::language() const
{
    return m_languages->current();
}

QString HostUi::systemLanguage() const
{
    return m_languages->bestFor(QLocale::system().uiLanguages());
}

QString HostUi::chosenLanguage() const
{
    return Settings::read(hostGroup, languageKey);
}

bool HostUi::setLanguage(const QString &code)
{
    if (!code.isEmpty() && !m_languages->available().contains(code))
        return false;
    writeSetting(hostGroup, languageKey, code);
    useLanguage(code.isEmpty() ? systemLanguage() : code);
    return true;
}

bool HostUi::overrideLanguage(const QString &code)
{
    if (!m_languages->available().contains(code))
        return false;
    useLanguage(code);
    return true;
}

void HostUi::useLanguage(const QString &code)
{
    if (m_languages->current() == code)
        return;
    m_languages->use(code);
    // Dates and numbers keep the system's own habits as long as its language is shown.
    const QLocale system = QLocale::system();
    const QLocale own(code);
    QLocale::setDefault(system.language() == QLocale::C || system.language() == own.language() ? system : own);
    QApplication::setLayoutDirection(own.textDirection());
    emit languageChanged(code);
}

QString HostUi::translation(const QString &key, const QString &context) const
{
    const QString found = m_languages->text(key, context);
    return found.isEmpty() ? key : found;
}

QString HostUi::text(const QString &key)
{
    return instance()->translation(key, hostGroup);
}

QString HostUi::settingsFile()
{
    return Settings::file();
}

bool HostUi::hasSetting(const QString &group, const QString &key)
{
    return Settings::contains(group, key);
}

bool HostUi::writeSetting(const QString &group, const QString &key, const QString &value)
{
    const bool changed = !hasSetting(group, key) || Settings::read(group, key) != value;
    if (!Settings::write(group, key, value))
        return false;
    if (changed)
        emit settingChanged(group, key, value);
    return true;
}

bool HostUi::isMessageOpen() const
{
    return m_openMessages > 0;
}

MessageOpenGuard::MessageOpenGuard()
{
    ++HostUi::instance()->m_openMessages;
}

MessageOpenGuard::~MessageOpenGuard()
{
    HostUi *ui = HostUi::instance();
    if (--ui->m_openMessages == 0)
        // Queued: the box's caller still acts on the answer before it returns to the event loop.
        QMetaObject::invokeMethod(ui, "messagesClosed", Qt::QueuedConnection);
}
