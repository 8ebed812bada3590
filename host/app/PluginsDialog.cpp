#include "PluginsDialog.h"

#include "HostUi.h"
#include "PluginManager.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

PluginsDialog::PluginsDialog(const PluginManager &plugins, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("PluginsDialog"));
    setWindowTitle(HostUi::text(QStringLiteral("IDS_HOST_PLUGINS_TITLE")));
    QStringList lines;
    for (const auto &plugin : plugins.plugins())
        lines << (plugin->hasFailed() ? plugin->message()
                                      : plugin->fileName() + QStringLiteral(": ") + plugin->message());
    auto *folder = new QLabel(HostUi::text(QStringLiteral("IDS_HOST_PLUGINS_FOLDER")).arg(plugins.folder()));
    folder->setTextFormat(Qt::PlainText);
    folder->setWordWrap(true);
    auto *list = new QTextEdit;
    list->setReadOnly(true);
    list->setPlainText(lines.join(QStringLiteral("\n\n")));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setText(HostUi::text(QStringLiteral("IDS_HOST_CLOSE")));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(folder);
    layout->addWidget(list, 1);
    layout->addWidget(buttons);
    resize(560, 300);
}
