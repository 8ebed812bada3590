#include "DeveloperMenu.h"

#include "HostUi.h"

#include <utility>

DeveloperMenu::DeveloperMenu(QWidget *parent) : QMenu(parent)
{
    setObjectName(QStringLiteral("DeveloperMenu"));
    for (const int seconds : {3, 10, 60}) {
        QAction *action = addAction(QString());
        action->setObjectName(QStringLiteral("Simulate%1").arg(seconds));
        connect(action, &QAction::triggered, this, [this, seconds] { emit simulationWanted(seconds); });
        m_simulations.append({seconds, action});
    }
    addSeparator();
    m_suppress = addAction(QString());
    m_suppress->setObjectName(QStringLiteral("SuppressSummaries"));
    connect(m_suppress, &QAction::triggered, this, &DeveloperMenu::suppressionWanted);
}

void DeveloperMenu::retranslate()
{
    setTitle(HostUi::text(QStringLiteral("IDS_HOST_MENU_DEVELOPER")));
    for (const Simulation &simulation : std::as_const(m_simulations))
        simulation.action->setText(HostUi::text(QStringLiteral("IDS_HOST_MENU_SIMULATE")).arg(simulation.seconds));
    m_suppress->setText(HostUi::text(QStringLiteral("IDS_HOST_MENU_SUPPRESS")));
}
