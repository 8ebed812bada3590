// The settings page. Every change is stored and takes effect at once.
#ifndef NETINFO_APP_SETTINGSPAGE_H
#define NETINFO_APP_SETTINGSPAGE_H

#include <QScrollArea>
#include <QVector>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QRadioButton;
class QVBoxLayout;

class SettingsPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit SettingsPage(QWidget *parent = nullptr);

    /// Stores the defaults of what was never set: a summary after each connection, all connections recorded.
    static void storeDefaults();

signals:
    /// A setting could not be stored; the message names the file.
    void failed(const QString &message);

protected:
    /// Shows what is stored now: another program may have changed it meanwhile.
    void showEvent(QShowEvent *event) override;

private slots:
    void retranslate();
    void storeSummary(bool isWanted);
    void storeLanguage(int index);
    void storeConnections();

private:
    struct Choice {
        QString value;
        QString textId;
        QRadioButton *button;
        QLabel *hint;
    };

    void buildSummary(QVBoxLayout *page);
    void buildLanguage(QVBoxLayout *page);
    void buildConnections(QVBoxLayout *page);
    void fillLanguages();
    void readStored();
    void store(const QString &group, const QString &key, const QString &value);

    QGroupBox *m_summaryGroup;
    QCheckBox *m_summary;
    QLabel *m_summaryHint;
    QGroupBox *m_languageGroup;
    QLabel *m_languageLabel;
    QComboBox *m_language;
    QGroupBox *m_connectionsGroup;
    QVector<Choice> m_choices;
};

#endif
