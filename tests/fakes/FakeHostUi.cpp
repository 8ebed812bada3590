// A host without windows of its own: it answers from its script and notes every call.
#include "FakeHostUi.h"

#include "ui/Change.h"
#include "ui/CommonUtils.h"
#include "ui/Startup.h"

#include <QVBoxLayout>

namespace FakeHostUi {

PluginContainer::~PluginContainer() = default;

QObject *PluginContainer::GetPluginObject(const QString &clsid, unsigned int flags)
{
    calls.append(qMakePair(clsid, flags));
    return objects.value(clsid, nullptr);
}

State &state()
{
    static State instance;
    return instance;
}

void reset()
{
    state() = State();
}

} // namespace FakeHostUi

using FakeHostUi::state;

QString Change::tr(QString key, QString context)
{
    state().trCalls.append(qMakePair(key, context));
    return state().texts.value(state().language).value(key, key);
}

QWidget *CommonUtils::GetMainWindow()
{
    return state().mainWindow;
}

QString CommonUtils::GetSettings(QString group, QString key)
{
    state().settingsCalls.append(qMakePair(group, key));
    return state().settings.value(group + QLatin1Char('/') + key);
}

int CommonUtils::ShowMessage(QMessageBox::Icon icon, QWidget *parent, QString caption, QString text,
                             QString firstButton, QString secondButton, QString thirdButton, bool isModal,
                             Qt::WindowFlags flags, QDialog **dialog, QString checkText, bool isCentred)
{
    state().messages.append({icon, parent, caption, text, firstButton, secondButton, thirdButton, isModal, flags,
                             dialog, checkText, isCentred});
    if (state().duringMessage)
        state().duringMessage();
    return state().answers.isEmpty() ? state().defaultAnswer : state().answers.takeFirst();
}

void CommonUtils::MoveCentre(QDialog *dialog)
{
    state().centred.append(dialog);
}

IPluginContainer *Startup::GetPluginContainer()
{
    ++state().containerCalls;
    return state().container;
}

namespace {

FakeHostUi::DialogCall *callOf(const ExtendDialog *dialog)
{
    for (FakeHostUi::DialogCall &call : state().dialogs) {
        if (call.dialog.data() == dialog)
            return &call;
    }
    return nullptr;
}

} // namespace

ExtendDialog::ExtendDialog(QWidget *parent, Qt::WindowFlags flags, enWidgetType type, bool isResizable)
    : QDialog(parent, flags)
{
    state().dialogs.append({this, parent, flags, type, isResizable, {}, {}});
}

ExtendDialog::~ExtendDialog() = default;

void ExtendDialog::AddMainWidget(QWidget *widget)
{
    if (!layout())
        new QVBoxLayout(this);
    layout()->addWidget(widget);
    if (FakeHostUi::DialogCall *call = callOf(this))
        call->mainWidgets.append(widget);
}

void ExtendDialog::setWindowTitle(const QString &title)
{
    QDialog::setWindowTitle(title);
    if (FakeHostUi::DialogCall *call = callOf(this))
        call->titles.append(title);
}
