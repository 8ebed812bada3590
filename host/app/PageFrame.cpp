#include "PageFrame.h"

#include <QLabel>
#include <QVBoxLayout>

namespace {

constexpr int margin = 18;

}

PageFrame::PageFrame(QWidget *content, int ownMargin, QWidget *parent)
    : QWidget(parent), m_content(content), m_heading(new QLabel), m_hint(new QLabel)
{
    QFont large = m_heading->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setWeight(QFont::DemiBold);
    m_heading->setFont(large);
    m_hint->setForegroundRole(QPalette::PlaceholderText);

    auto *layout = new QVBoxLayout(this);
    const int left = qMax(0, margin - ownMargin);
    layout->setContentsMargins(left, 14, left, 10);
    m_heading->setContentsMargins(margin - left, 0, 0, 0);
    m_hint->setContentsMargins(margin - left, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_heading);
    layout->addWidget(m_hint);
    layout->addSpacing(qMax(0, 12 - ownMargin));
    layout->addWidget(content, 1);
}

void PageFrame::setTexts(const QString &heading, const QString &hint)
{
    m_heading->setText(heading);
    m_hint->setText(hint);
}
