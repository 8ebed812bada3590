// An object that answers nothing, under the interface ID that the build names.
#include <QObject>

class EmptyPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID PLUGIN_IID)
};

#include "EmptyPlugin.moc"
