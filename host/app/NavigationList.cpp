#include "NavigationList.h"

NavigationList::NavigationList(QWidget *parent) : QListWidget(parent)
{
    setObjectName(QStringLiteral("Navigation"));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setIconSize(QSize(20, 20));
    setStyleSheet(QStringLiteral("QListWidget { background: palette(window); padding: 8px; outline: none; }"
                                 "QListWidget::item { color: palette(window-text); padding: 8px 10px;"
                                 "  margin-bottom: 2px; border-radius: 6px; }"
                                 "QListWidget::item:hover:!selected { background: palette(midlight); }"
                                 "QListWidget::item:selected { background: palette(highlight);"
                                 "  color: palette(highlighted-text); }"));
}

void NavigationList::addPage(const QIcon &icon)
{
    auto *item = new QListWidgetItem(this);
    item->setIcon(icon);
}

void NavigationList::setPageText(int row, const QString &text)
{
    item(row)->setText(text);
    updateGeometry();
}

QSize NavigationList::sizeHint() const
{
    return {qMax(150, sizeHintForColumn(0) + 2 * 8 + 2), QListWidget::sizeHint().height()};
}

QSize NavigationList::minimumSizeHint() const
{
    return {sizeHint().width(), QListWidget::minimumSizeHint().height()};
}
