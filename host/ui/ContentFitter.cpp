#include "ContentFitter.h"

#include <QDialog>
#include <QEvent>
#include <QFontInfo>
#include <QLabel>
#include <QLayout>

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

void ContentFitter::fit()
{
    if (m_isFitting)
        return;
    m_isFitting = true;
    const int full = QFontInfo(m_fullFont).pixelSize();
    int pixels = full;
    usePixelSize(pixels);
    while (!fits() && pixels > smallestPixelSize)
        usePixelSize(--pixels);
    if (!fits())
        wrapWhatIsTooWide();
    m_isFitting = false;
}

void ContentFitter::usePixelSize(int pixels)
{
    QFont font = m_fullFont;
    font.setPixelSize(pixels);
    if (m_dialog->font() != font)
        m_dialog->setFont(font);
    for (QWidget *child : m_dialog->findChildren<QWidget *>()) {
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
