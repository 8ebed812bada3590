// The list of plug-ins with their state.
#ifndef NETINFO_APP_PLUGINSDIALOG_H
#define NETINFO_APP_PLUGINSDIALOG_H

#include <QDialog>

class PluginManager;

class PluginsDialog : public QDialog
{
    Q_OBJECT

public:
    PluginsDialog(const PluginManager &plugins, QWidget *parent);
};

#endif
