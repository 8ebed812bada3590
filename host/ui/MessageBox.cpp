#include "MessageBox.h"

#include "HostUi.h"

#include "ui/Change.h"
#include "ui/CommonUtils.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>

namespace {

/// QMessageBox takes the only button for the answer to Escape and to the close button. Here both always mean no.
class Question : public QMessageBox
{
public:
    explicit Question(QWidget *parent) : QMessageBox(parent) {}

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->matches(QKeySequence::Cancel))
            done(QMessageBox::Cancel);
        else
            QMessageBox::keyPressEvent(event);
    }

    void closeEvent(QCloseEvent *event) override
    {
        event->accept();
        done(QMessageBox::Cancel);
    }
};

QString label(const QString &id)
{
    const QString own = HostUi::text(id);
    return own == id ? Change::tr(id, QStringLiteral("NetInfoRecordUIPlugin")) : own;
}

QWidget *visibleParent(QWidget *parent)
{
    if (parent != nullptr && parent->isVisible())
        return parent->window();
    QWidget *mainWindow = HostUi::instance()->mainWindow();
    return mainWindow != nullptr && mainWindow->isVisible() ? mainWindow : nullptr;
}

void addButtons(Question *box, const MessageRequest &request)
{
    const std::array<QMessageBox::StandardButton, 3> answers = {QMessageBox::Ok, QMessageBox::Cancel, QMessageBox::No};
    for (std::size_t i = 0; i < answers.size(); ++i) {
        if (!request.buttons[i].isEmpty())
            box->addButton(answers[i])->setText(label(request.buttons[i]));
    }
    if (box->buttons().isEmpty())
        box->addButton(QMessageBox::Ok)->setText(label(QStringLiteral("IDS_OK")));
    if (QAbstractButton *first = box->button(QMessageBox::Ok)) {
        box->setDefaultButton(qobject_cast<QPushButton *>(first));
        first->setFocus();
    }
}

QPointer<Question> makeBox(const MessageRequest &request)
{
    QPointer<Question> box = new Question(visibleParent(request.parent));
    box->setObjectName(QStringLiteral("NetInfoMessage"));
    box->setIcon(request.icon);
    box->setWindowTitle(request.caption);
    // The text may quote a profile's name, which must not be read as markup.
    box->setTextFormat(Qt::PlainText);
    box->setText(request.text);
    if (request.flags != Qt::WindowFlags())
        box->setWindowFlags(Qt::Dialog | request.flags);
    box->setModal(request.isModal);
    addButtons(box, request);
    if (!request.checkText.isEmpty())
        box->setCheckBox(new QCheckBox(label(request.checkText)));
    return box;
}

} // namespace

int askUser(const MessageRequest &request, QDialog **dialog)
{
    const MessageOpenGuard guard;
    const QPointer<Question> box = makeBox(request);
    if (dialog != nullptr)
        *dialog = box;

    // Not exec(), which would make every box modal. The box may be deleted with its parent while it is open.
    QEventLoop loop;
    QObject::connect(box, &QDialog::finished, &loop, &QEventLoop::quit);
    QObject::connect(box, &QObject::destroyed, &loop, &QEventLoop::quit);
    box->show();
    if (request.isCentred)
        CommonUtils::MoveCentre(box);
    loop.exec(QEventLoop::DialogExec);

    if (dialog != nullptr)
        *dialog = nullptr;
    if (box.isNull())
        return QMessageBox::Cancel;
    const int answer = box->result();
    delete box;
    return answer == 0 ? QMessageBox::Cancel : answer;
}
