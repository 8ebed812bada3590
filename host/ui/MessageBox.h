// The message box behind CommonUtils::ShowMessage.
#ifndef NETINFO_HOSTUI_MESSAGEBOX_H
#define NETINFO_HOSTUI_MESSAGEBOX_H

#include <QMessageBox>
#include <QString>

#include <array>

struct MessageRequest {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QWidget *parent = nullptr;
    QString caption;
    QString text;
    std::array<QString, 3> buttons; ///< String IDs; an empty one is left out.
    QString checkText;              ///< String ID of a check box; empty: none.
    Qt::WindowFlags flags;
    bool isModal = true;
    bool isCentred = true;
};

/// Shows the box and waits for the answer: QMessageBox::Ok for the first button, Cancel for the second, No for the
/// third, and Cancel for Escape, the close button and a box that went with its parent. `dialog`, when not null, holds
/// the box while it is open and null afterwards.
int askUser(const MessageRequest &request, QDialog **dialog);

#endif
