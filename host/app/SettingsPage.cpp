#include "SettingsPage.h"

#include "HostUi.h"

#include "ui/CommonUtils.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOption>
#include <QVBoxLayout>

#include <utility>

namespace {

const QString pluginGroup = QStringLiteral("NetInfoRecordUIPlugin");
const QString summaryKey = QStringLiteral("WhetherShowNotesbox");
const QString recorderGroup = QStringLiteral("Recorder");
const QString connectionsKey = QStringLiteral("Connections");
const QString allConnections = QStringLiteral("all");

/// A line under a check box or radio button, beginning where the button's text begins.
QLabel *hintFor(const QWidget *button)
{
    auto *hint = new QLabel;
    QStyleOptionButton option;
    option.initFrom(button);
    const QStyle *style = button->style();
    hint->setIndent(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, button) +
                    style->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, &option, button));
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    return hint;
}

QGroupBox *group(const char *name)
{
    auto *box = new QGroupBox;
    box->setObjectName(QLatin1String(name));
    return box;
}

} // namespace

SettingsPage::SettingsPage(QWidget *parent)
    : QScrollArea(parent)
    , m_summaryGroup(group("SummaryGroup"))
    , m_summary(new QCheckBox)
    , m_languageGroup(group("LanguageGroup"))
    , m_languageLabel(new QLabel)
    , m_language(new QComboBox)
    , m_connectionsGroup(group("ConnectionsGroup"))
{
    setObjectName(QStringLiteral("SettingsPage"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    auto *page = new QWidget;
    page->setMaximumWidth(640);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(14);
    buildSummary(layout);
    buildLanguage(layout);
    buildConnections(layout);
    layout->addStretch(1);
    setWidget(page);
    viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);

    connect(HostUi::instance(), &HostUi::languageChanged, this, &SettingsPage::retranslate);
    retranslate();
}

void SettingsPage::buildSummary(QVBoxLayout *page)
{
    m_summary->setObjectName(QStringLiteral("ShowSummary"));
    m_summaryHint = hintFor(m_summary);
    auto *layout = new QVBoxLayout(m_summaryGroup);
    layout->addWidget(m_summary);
    layout->addWidget(m_summaryHint);
    page->addWidget(m_summaryGroup);
    connect(m_summary, &QCheckBox::toggled, this, &SettingsPage::storeSummary);
}

void SettingsPage::buildLanguage(QVBoxLayout *page)
{
    m_language->setObjectName(QStringLiteral("Language"));
    m_language->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_languageLabel->setBuddy(m_language);
    auto *layout = new QHBoxLayout(m_languageGroup);
    layout->addWidget(m_languageLabel);
    layout->addWidget(m_language);
    layout->addStretch(1);
    page->addWidget(m_languageGroup);
    connect(m_language, QOverload<int>::of(&QComboBox::activated), this, &SettingsPage::storeLanguage);
}

void SettingsPage::buildConnections(QVBoxLayout *page)
{
    auto *layout = new QVBoxLayout(m_connectionsGroup);
    for (const char *value : {"all", "mobile", "metered"}) {
        auto *button = new QRadioButton;
        const QString name = QLatin1String(value);
        button->setObjectName(QStringLiteral("Connections_") + name);
        m_choices.append(
            {name, QStringLiteral("IDS_HOST_SETTINGS_CONNECTIONS_") + name.toUpper(), button, hintFor(button)});
        layout->addWidget(button);
        layout->addWidget(m_choices.last().hint);
        connect(button, &QRadioButton::clicked, this, &SettingsPage::storeConnections);
    }
    page->addWidget(m_connectionsGroup);
}

void SettingsPage::retranslate()
{
    m_summaryGroup->setTitle(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_SUMMARY_GROUP")));
    m_summary->setText(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_SUMMARY")));
    m_summaryHint->setText(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_SUMMARY_HINT")));
    m_languageGroup->setTitle(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_LANGUAGE_GROUP")));
    m_languageLabel->setText(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_LANGUAGE")));
    m_connectionsGroup->setTitle(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_CONNECTIONS_GROUP")));
    for (const Choice &choice : std::as_const(m_choices)) {
        choice.button->setText(HostUi::text(choice.textId));
        choice.hint->setText(HostUi::text(choice.textId + QStringLiteral("_HINT")));
    }
    fillLanguages();
    readStored();
}

void SettingsPage::fillLanguages()
{
    const HostUi *ui = HostUi::instance();
    const QSignalBlocker blocker(m_language);
    m_language->clear();
    m_language->addItem(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_LANGUAGE_SYSTEM"))
                            .arg(HostUi::languageName(ui->systemLanguage())),
                        QString());
    for (const QString &code : ui->languages())
        m_language->addItem(HostUi::languageName(code), code);
}

void SettingsPage::readStored()
{
    const QSignalBlocker blocker(m_summary);
    const QString summary = CommonUtils::GetSettings(pluginGroup, summaryKey);
    m_summary->setChecked(summary.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0);
    m_language->setCurrentIndex(qMax(0, m_language->findData(HostUi::instance()->chosenLanguage())));
    const QString connections = CommonUtils::GetSettings(recorderGroup, connectionsKey);
    for (const Choice &choice : std::as_const(m_choices)) {
        if (choice.value == connections || (connections.isEmpty() && choice.value == allConnections))
            choice.button->setChecked(true);
    }
}

void SettingsPage::storeDefaults()
{
    if (!HostUi::hasSetting(pluginGroup, summaryKey))
        HostUi::instance()->writeSetting(pluginGroup, summaryKey, QStringLiteral("true"));
    if (!HostUi::hasSetting(recorderGroup, connectionsKey))
        HostUi::instance()->writeSetting(recorderGroup, connectionsKey, allConnections);
}

void SettingsPage::showEvent(QShowEvent *event)
{
    QScrollArea::showEvent(event);
    readStored();
}

void SettingsPage::storeSummary(bool isWanted)
{
    store(pluginGroup, summaryKey, isWanted ? QStringLiteral("true") : QStringLiteral("false"));
}

void SettingsPage::storeLanguage(int index)
{
    const QString code = m_language->itemData(index).toString();
    if (HostUi::instance()->setLanguage(code) && HostUi::instance()->chosenLanguage() != code)
        emit failed(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_NOT_SAVED")).arg(HostUi::settingsFile()));
}

void SettingsPage::storeConnections()
{
    for (const Choice &choice : std::as_const(m_choices)) {
        if (choice.button->isChecked())
            store(recorderGroup, connectionsKey, choice.value);
    }
}

void SettingsPage::store(const QString &group, const QString &key, const QString &value)
{
    if (!HostUi::instance()->writeSetting(group, key, value))
        emit failed(HostUi::text(QStringLiteral("IDS_HOST_SETTINGS_NOT_SAVED")).arg(HostUi::settingsFile()));
}
