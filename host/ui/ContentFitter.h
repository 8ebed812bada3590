// Keeps the texts of a dialog legible when its size is fixed and a translation is long.
#ifndef NETINFO_HOSTUI_CONTENTFITTER_H
#define NETINFO_HOSTUI_CONTENTFITTER_H

#include <QFont>
#include <QObject>

class QDialog;
class QWidget;

/// Owned by its dialog. Whenever the dialog is shown or its layout has changed: takes the largest font, from the
/// dialog's own downwards, with which every child gets the room that it asks for. Labels that are too wide even in the
/// smallest font are wrapped and carry their text as a tool tip.
class ContentFitter : public QObject
{
    Q_OBJECT

public:
    ContentFitter(QDialog *dialog, bool isResizable);

    /// The smallest height in pixels that is still read with ease.
    static constexpr int smallestPixelSize = 10;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString describeContent() const;
    void fit();
    void usePixelSize(int pixels);
    bool fits() const;
    void wrapWhatIsTooWide();

    QDialog *m_dialog;
    QFont m_fullFont;
    bool m_isResizable;
    QString m_fittedContent;
};

#endif
