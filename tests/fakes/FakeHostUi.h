// The second face of the host's stand-in: what a test scripts and what it finds out afterwards.
#ifndef NETINFO_FAKEHOSTUI_H
#define NETINFO_FAKEHOSTUI_H

#include "plugin/IPluginContainer.h"
#include "ui/ExtendDialog.h"

#include <QHash>
#include <QList>
#include <QMessageBox>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

namespace FakeHostUi {

/// The twelve arguments of one CommonUtils::ShowMessage(), in their order.
struct MessageCall {
    QMessageBox::Icon icon;
    QWidget *parent;
    QString caption;
    QString text;
    QString firstButton;
    QString secondButton;
    QString thirdButton;
    bool isModal;
    Qt::WindowFlags flags;
    QDialog **dialog;
    QString checkText;
    bool isCentred;
};

/// The arguments of one ExtendDialog and what was done to it.
struct DialogCall {
    QPointer<ExtendDialog> dialog;
    QWidget *parent;
    Qt::WindowFlags flags;
    enWidgetType type;
    bool isResizable;
    QList<QWidget *> mainWidgets; ///< One entry an AddMainWidget().
    QStringList titles;           ///< One entry a setWindowTitle().
};

/// A container with scripted plug-ins.
class Q_DECL_EXPORT PluginContainer : public IPluginContainer
{
public:
    ~PluginContainer() override;
    QObject *GetPluginObject(const QString &clsid, unsigned int flags) override;

    QHash<QString, QObject *> objects;
    QList<QPair<QString, unsigned int>> calls;
};

struct State {
    /// Texts by language and key; a key that is not there is its own text.
    QHash<QString, QHash<QString, QString>> texts;
    QString language;
    QList<QPair<QString, QString>> trCalls; ///< Key and context of every Change::tr().

    QList<int> answers;                  ///< What the next ShowMessage() return, first one first.
    int defaultAnswer = 4194304;         ///< When none is left: QMessageBox::Cancel.
    std::function<void()> duringMessage; ///< Runs while a message box would be open.
    QList<MessageCall> messages;

    QWidget *mainWindow = nullptr;
    QHash<QString, QString> settings;             ///< By "group/key".
    QList<QPair<QString, QString>> settingsCalls; ///< Group and key of every GetSettings().
    QList<QDialog *> centred;                     ///< One entry a MoveCentre().

    QList<DialogCall> dialogs; ///< In the order in which they were made.

    IPluginContainer *container = nullptr;
    int containerCalls = 0;
};

Q_DECL_EXPORT State &state();

/// Back to a host that has nothing and answers every key with itself.
Q_DECL_EXPORT void reset();

} // namespace FakeHostUi

#endif
