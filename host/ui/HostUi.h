// The host's own side of the UI library: what the program sets up at its start and changes while it runs. Plug-ins see
// the headers in include/ui only.
#ifndef NETINFO_HOSTUI_H
#define NETINFO_HOSTUI_H

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class IPluginContainer;
class Languages;

/// One object for the program's life, made at the first call of instance() and owned by the application object, which
/// must exist by then. Belongs to the GUI thread.
class Q_DECL_EXPORT HostUi : public QObject
{
    Q_OBJECT

public:
    static HostUi *instance();
    ~HostUi() override;

    /// What CommonUtils::GetMainWindow() hands out. Not owned; forgotten by itself when the window goes.
    void setMainWindow(QWidget *window);
    QWidget *mainWindow() const;

    /// What Startup::GetPluginContainer() hands out. Not owned: set it back to null before the container goes.
    void setPluginContainer(IPluginContainer *container);
    IPluginContainer *pluginContainer() const;

    /// Codes of the languages that have a file, such as "de", sorted. English is always among them.
    QStringList languages() const;
    /// The language's name for itself, such as "Deutsch".
    static QString languageName(const QString &code);
    /// The language in use.
    QString language() const;
    /// The best language for the system's locale.
    QString systemLanguage() const;
    /// The user's choice as stored; empty: follow the system.
    QString chosenLanguage() const;
    /// Stores the user's choice and uses it at once; an empty code follows the system. False, and nothing changed, when
    /// there is no such language. A choice that cannot be stored still holds for this run.
    bool setLanguage(const QString &code);
    /// Uses a language for this run without storing it. False when there is no such language.
    bool overrideLanguage(const QString &code);

    /// The text of a string ID in the current language, else in English, else the ID itself.
    QString translation(const QString &key, const QString &context) const;
    /// The host's own text for a string ID (translation context "Host").
    static QString text(const QString &key);

    /// The file with all settings, an INI file.
    static QString settingsFile();
    /// Whether a value is stored, be it an empty one.
    static bool hasSetting(const QString &group, const QString &key);
    /// Stores a value. False when the file could not be written.
    bool writeSetting(const QString &group, const QString &key, const QString &value);

    /// Whether a message box of CommonUtils::ShowMessage is open. Its caller is then in the middle of an operation, so
    /// nothing may change under it.
    bool isMessageOpen() const;

signals:
    /// The language in use has changed; all texts are to be asked for again.
    void languageChanged(const QString &code);
    /// A setting was stored through writeSetting() with another value than before.
    void settingChanged(const QString &group, const QString &key, const QString &value);
    /// The last message box was closed and its caller has returned to the event loop.
    void messagesClosed();

private:
    friend class MessageOpenGuard;

    HostUi();
    void useLanguage(const QString &code);

    QPointer<QWidget> m_mainWindow;
    IPluginContainer *m_container = nullptr;
    std::unique_ptr<Languages> m_languages;
    int m_openMessages = 0;
};

/// Marks a message box as open while it lives.
class Q_DECL_EXPORT MessageOpenGuard
{
public:
    MessageOpenGuard();
    ~MessageOpenGuard();
    MessageOpenGuard(const MessageOpenGuard &) = delete;
    MessageOpenGuard &operator=(const MessageOpenGuard &) = delete;
};

#endif
