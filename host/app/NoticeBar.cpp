#include "NoticeBar.h"

#include "HostUi.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

NoticeBar::NoticeBar(QWidget *parent) : QFrame(parent), m_text(new QLabel), m_close(new QToolButton)
{
    setObjectName(QStringLiteral("NoticeBar"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    auto *icon = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size, size));
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_close->setObjectName(QStringLiteral("NoticeBarClose"));
    m_close->setAutoRaise(true);
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    connect(m_close, &QToolButton::clicked, this, &QWidget::hide);

    auto *layout = new QHBoxLayout(this);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_close, 0, Qt::AlignTop);
    hide();
}

void NoticeBar::setNotices(const QStringList &notices)
{
    retranslate(notices);
    setVisible(!notices.isEmpty());
}

void NoticeBar::retranslate(const QStringList &notices)
{
    m_text->setText(notices.join(QLatin1Char('\n')));
    m_close->setToolTip(HostUi::text(QStringLiteral("IDS_HOST_CLOSE")));
    m_close->setAccessibleName(m_close->toolTip());
}

QString NoticeBar::text() const
{
    return m_text->text();
}
