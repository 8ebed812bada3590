#include "PluginPage.h"

#include "HistoryStyle.h"

#include "plugin/IUIPlugin.h"

#include <QEvent>
#include <QHideEvent>
#include <QRect>
#include <QShowEvent>

PluginPage::PluginPage(IUIPlugin &plugin, QWidget *parent) : QWidget(parent), m_plugin(&plugin)
{
    applyStyle();
}

void PluginPage::detach()
{
    m_plugin = nullptr;
}

QSize PluginPage::minimumSizeHint() const
{
    // A page is not in a layout of ours, so its needs are looked up.
    QSize needed(0, 0);
    for (const QObject *child : children()) {
        if (const auto *page = qobject_cast<const QWidget *>(child))
            needed = needed.expandedTo(page->minimumSizeHint());
    }
    return needed;
}

void PluginPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (event->spontaneous() || m_plugin == nullptr)
        return;
    QRect place = rect();
    m_plugin->ShowWindow(this, place);
    updateGeometry();
}

void PluginPage::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous() && m_plugin != nullptr)
        m_plugin->Hide();
}

void PluginPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_plugin == nullptr)
        return;
    QRect place = rect();
    m_plugin->FitSize(place);
}

void PluginPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        applyStyle();
}

void PluginPage::applyStyle()
{
    const QString sheet = HistoryStyle::sheet(font());
    if (styleSheet() != sheet)
        setStyleSheet(sheet);
}
