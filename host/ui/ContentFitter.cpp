#include "ContentFitter.h"

#include <QDialog>
#include <QEvent>
#include <QFontInfo>
#include <QLabel>
#include <QLayout>
#include <QStringList>
#include <QVariant>

#include <algorithm>

namespace {

bool hasRoom(const QWidget *widget)
{
    // A widget whose size somebody fixed reports the fixed size as its hint's bound, so the hint itself is compared.
    const QSize needed = widget->minimumSizeHint();
    return needed.width() <= widget->width() && needed.height() <= widget->height();
}

} // namespace

ContentFitter::ContentFitter(QDialog *dialog, bool isResizable)
    : QObject(dialog), m_dialog(dialog), m_fullFont(dialog->font()), m_isResizable(isResizable)
{
    dialog->installEventFilter(this);
}

bool ContentFitter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && !m_isResizable)
        m_dialog->setFixedSize(m_dialog->size());
    if (event->type() == QEvent::Show || (event->type() == QEvent::LayoutRequest && m_dialog->isVisible()))
        fit();
    return QObject::eventFilter(watched, event);
}

QString ContentFitter::describeContent() const
{
    QStringList parts = {QStringLiteral("%1x%2").arg(m_dialog->width()).arg(m_dialog->height())};
    for (const QWidget *child : m_dialog->findChildren<QWidget *>()) {
        if (!child->isVisible())
            continue;
        for (const char *property : {"text", "title", "currentText"})
            parts << child->property(property).toString();
        parts << QString::number(reinterpret_cast<quintptr>(child));
    }
    return parts.join(QLatin1Char('\n'));
}

void ContentFitter::fit()
{
    // Trying fonts asks for a new layout, which leads here again: only a new content is worth another try.
    const QString content = describeContent();
    if (content == m_fittedContent)
        return;
    m_fittedContent = content;
    const int full = QFontInfo(m_fullFont).pixelSize();
    int pixels = full;
    usePixelSize(pixels);
    while (!fits() && pixels > smallestPixelSize)
        usePixelSize(--pixels);
    if (!fits())
        wrapWhatIsTooWide();
}

void ContentFitter::usePixelSize(int pixels)
{
    const auto children = m_dialog->findChildren<QWidget *>();
    for (QWidget *child : children) {
        // One by one: below a style sheet, fonts do not pass from parent to child.
        QFont font = child->font();
        font.setPixelSize(pixels);
        child->setFont(font);
    }
    for (const QWidget *child : children) {
        if (child->layout() != nullptr)
            child->layout()->activate();
    }
    m_dialog->layout()->activate();
}

bool ContentFitter::fits() const
{
    const auto children = m_dialog->findChildren<QWidget *>();
    return std::all_of(children.begin(), children.end(),
                       [](const QWidget *child) { return !child->isVisible() || hasRoom(child); });
}

void ContentFitter::wrapWhatIsTooWide()
{
    for (QLabel *label : m_dialog->findChildren<QLabel *>()) {
        if (!label->isVisible() || hasRoom(label))
            continue;
        label->setWordWrap(true);
        label->setToolTip(label->text());
    }
}
