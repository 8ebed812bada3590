#include "PageFrame.h"

#include <QLabel>
#include <QVBoxLayout>

PageFrame::PageFrame(QWidget *content, QWidget *parent)
    : QWidget(parent), m_content(content), m_heading(new QLabel), m_hint(new QLabel)
{
    QFont large = m_heading->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setWeight(QFont::DemiBold);
    m_heading->setFont(large);
    m_hint->setForegroundRole(QPalette::PlaceholderText);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 14, 18, 10);
    layout->setSpacing(2);
    layout->addWidget(m_heading);
    layout->addWidget(m_hint);
    layout->addSpacing(8);
    layout->addWidget(content, 1);
}

void PageFrame::setTexts(const QString &heading, const QString &hint)
{
    m_heading->setText(heading);
    m_hint->setText(hint);
}
