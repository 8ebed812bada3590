// A menu for those who work on plug-ins: plays connections and sends notifications.
#ifndef NETINFO_APP_DEVELOPERMENU_H
#define NETINFO_APP_DEVELOPERMENU_H

#include <QMenu>
#include <QVector>

class QAction;

class DeveloperMenu : public QMenu
{
    Q_OBJECT

public:
    explicit DeveloperMenu(QWidget *parent = nullptr);

    void retranslate();

signals:
    void simulationWanted(int seconds);
    void suppressionWanted();

private:
    struct Simulation {
        int seconds;
        QAction *action;
    };

    QVector<Simulation> m_simulations;
    QAction *m_suppress;
};

#endif
