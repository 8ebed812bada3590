#include "StatusLine.h"

#include "HostUi.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QVariant>

StatusLine::StatusLine(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("StatusLine"));
    setTextFormat(Qt::PlainText);
    setContentsMargins(8, 2, 8, 2);
}

void StatusLine::follow(QObject *source)
{
    m_source = source;
    m_hasSource = source != nullptr;
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
    setText(m_source != nullptr ? m_source->property("statusText").toString()
            : m_hasSource       ? QString()
                                : HostUi::text(QStringLiteral("IDS_HOST_STATUS_NO_RECORDER")));
    setToolTip(text());
}
