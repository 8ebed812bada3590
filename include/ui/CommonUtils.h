// The host's general services for windows: main window, settings, message box, centring.
#ifndef NETINFO_UI_COMMONUTILS_H
#define NETINFO_UI_COMMONUTILS_H

#include <QDialog>
#include <QMessageBox>
#include <QString>

/// All members are static and belong to the GUI thread.
class Q_DECL_EXPORT CommonUtils
{
public:
    /// The host's main window, or null before it exists. Not owned by the caller.
    static QWidget *GetMainWindow();

    /// The stored value as text; empty when there is none.
    static QString GetSettings(QString group, QString key);

    /// Shows a modal message box and returns the pressed button: 1024 (QMessageBox::Ok) for the first one, another
    /// value for every other way of closing it.
    ///
    /// \a caption and \a text are display texts; the three buttons are string IDs that the host translates, an empty
    /// one meaning "no such button". \a isModal and \a isCentred default the box's behaviour; \a dialog, when not null,
    /// receives the box while it is open; \a checkText, when not empty, is the string ID of a check box under the text.
    static int ShowMessage(QMessageBox::Icon icon, QWidget *parent, QString caption, QString text, QString firstButton,
                           QString secondButton, QString thirdButton, bool isModal, Qt::WindowFlags flags,
                           QDialog **dialog, QString checkText, bool isCentred);

    /// Moves \a dialog to the centre of its parent window, or of the screen when it has none.
    static void MoveCentre(QDialog *dialog);
};

#endif
