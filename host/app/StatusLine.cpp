#include "StatusLine.h"

#include "HostUi.h"
#include "Plugin.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QPainter>
#include <QStyle>
#include <QVariant>

StatusLine::StatusLine(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("StatusLine"));
    setTextFormat(Qt::PlainText);
    setContentsMargins(8, 2, 8, 2);
}

void StatusLine::follow(QObject *source)
{
    m_object = source;
    m_source = source != nullptr ? Source::Object : Source::None;
    if (source != nullptr) {
        const QMetaObject *meta = source->metaObject();
        const QMetaProperty property = meta->property(meta->indexOfProperty("statusText"));
        if (property.hasNotifySignal())
            connect(source, property.notifySignal(), this,
                    metaObject()->method(metaObject()->indexOfSlot("refresh()")));
    }
    refresh();
}

void StatusLine::refresh()
{
    if (m_object != nullptr)
        setText(ownCopy(m_object->property("statusText").toString()));
    else if (m_source == Source::None)
        setText(HostUi::text(QStringLiteral("IDS_HOST_STATUS_NO_RECORDER")));
    else
        clear();
    setToolTip(text());
}

QSize StatusLine::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void StatusLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect place = contentsRect();
    style()->drawItemText(&painter, place, int(Qt::AlignVCenter), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, place.width()), foregroundRole());
}
