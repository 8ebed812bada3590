// A plug-in that needs another library, which is not there when it is loaded.
#include <QObject>

extern "C" int answer();

class NeedyPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.zantrix.quillnet.plugin.IBasePlugin")

public:
    NeedyPlugin() { setObjectName(QString::number(answer())); }
};

#include "NeedyPlugin.moc"
