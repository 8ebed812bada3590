// The dialog frame. The window system draws title and border; the frame gives the content its place and sees to it that
// texts fit into sizes that the caller has fixed.
#include "ui/ExtendDialog.h"

#include "ContentFitter.h"

#include <QFontMetrics>
#include <QVBoxLayout>

namespace {

/// Contents leave twenty pixels free inside a group for its title and fix the group's height. Most styles put the title
/// above the group's frame instead and would have no room left for the lines, so the title stands on the frame here.
QString groupStyle(const QFont &font)
{
    return QStringLiteral("QGroupBox { margin-top: %1px; border: 1px solid palette(mid); border-radius: 4px; }"
                          "QGroupBox::title { subcontrol-origin: margin; left: 8px; padding: 0 3px; }")
        .arg(qMin(QFontMetrics(font).height() / 2, 8));
}

} // namespace

ExtendDialog::ExtendDialog(QWidget *parent, Qt::WindowFlags flags, enWidgetType type, bool isResizable)
    : QDialog(parent, flags)
{
    auto *layout = new QVBoxLayout(this);
    // The contents bring margins of their own and fixed sizes that leave no room for a second set.
    layout->setContentsMargins(0, 0, 0, 0);
    setStyleSheet(groupStyle(font()));
    setSizeGripEnabled(isResizable && type == WIDGET_TYPE_DIALOG);
    new ContentFitter(this, isResizable);
}

ExtendDialog::~ExtendDialog() = default;

void ExtendDialog::AddMainWidget(QWidget *widget)
{
    if (widget == nullptr || layout()->indexOf(widget) != -1)
        return;
    while (QLayoutItem *item = layout()->takeAt(0)) {
        // An earlier content stays ours, and the caller's pointer to it valid, until the frame goes.
        if (item->widget() != nullptr)
            item->widget()->hide();
        delete item;
    }
    layout()->addWidget(widget);
    widget->show();
}

void ExtendDialog::setWindowTitle(const QString &title)
{
    QDialog::setWindowTitle(title);
}
