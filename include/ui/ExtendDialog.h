// The host's dialog frame: a title and one main widget.
#ifndef NETINFO_UI_EXTENDDIALOG_H
#define NETINFO_UI_EXTENDDIALOG_H

#include <QDialog>
#include <QString>

/// How a frame is drawn.
enum enWidgetType {
    WIDGET_TYPE_PLAIN = 0, ///< No margins around the main widget.
    WIDGET_TYPE_DIALOG = 1 ///< An ordinary dialog.
};

/// A dialog that carries any main widget. Size and modality are the caller's.
class Q_DECL_EXPORT ExtendDialog : public QDialog
{
    Q_OBJECT

public:
    /// \a isResizable: whether the user may resize the frame.
    ExtendDialog(QWidget *parent, Qt::WindowFlags flags, enWidgetType type, bool isResizable);
    ~ExtendDialog();

    /// Installs \a widget as the content and takes ownership of it. The same widget may be handed in again.
    void AddMainWidget(QWidget *widget);

    /// Sets the title as drawn by the frame.
    void setWindowTitle(const QString &title);
};

#endif
