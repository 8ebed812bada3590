#include "ui/CommonUtils.h"

#include "HostUi.h"
#include "MessageBox.h"
#include "Settings.h"

#include <QGuiApplication>
#include <QScreen>

QWidget *CommonUtils::GetMainWindow()
{
    return HostUi::instance()->mainWindow();
}

QString CommonUtils::GetSettings(QString group, QString key)
{
    return Settings::read(group, key);
}

int CommonUtils::ShowMessage(QMessageBox::Icon icon, QWidget *parent, QString caption, QString text,
                             QString firstButton, QString secondButton, QString thirdButton, bool isModal,
                             Qt::WindowFlags flags, QDialog **dialog, QString checkText, bool isCentred)
{
    MessageRequest request;
    request.icon = icon;
    request.parent = parent;
    request.caption = caption;
    request.text = text;
    request.buttons = {firstButton, secondButton, thirdButton};
    request.checkText = checkText;
    request.flags = flags;
    request.isModal = isModal;
    request.isCentred = isCentred;
    return askUser(request, dialog);
}

void CommonUtils::MoveCentre(QDialog *dialog)
{
    if (dialog == nullptr)
        return;
    if (!dialog->testAttribute(Qt::WA_Resized) && !dialog->isVisible())
        dialog->adjustSize();
    const QWidget *over = dialog->parentWidget() != nullptr ? dialog->parentWidget()->window() : nullptr;
    const QScreen *screen = over != nullptr ? over->screen() : QGuiApplication::primaryScreen();
    const QRect available = screen->availableGeometry();
    QRect place(QPoint(), dialog->frameGeometry().size());
    place.moveCenter(over != nullptr && over->isVisible() ? over->frameGeometry().center() : available.center());
    // A dialog that hangs over the edge of the screen could not be answered.
    place.moveLeft(qMax(available.left(), qMin(place.left(), available.right() + 1 - place.width())));
    place.moveTop(qMax(available.top(), qMin(place.top(), available.bottom() + 1 - place.height())));
    dialog->move(place.topLeft());
}
