// A page (or, with PLUGIN_TYPE 2, a window) that writes down every call.
#include "CallLog.h"

#include "plugin/INotify.h"
#include "plugin/IUIPlugin.h"
#include "ui/Change.h"

#include <QLabel>

#include <stdexcept>

class PagePlugin : public QObject, public IUIPlugin, public INotify
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IUIPlugin_iid)
    Q_INTERFACES(IBasePlugin IUIPlugin INotify)
    Q_PROPERTY(QString menuTextId READ menuTextId CONSTANT)

public:
    ~PagePlugin() override { log(QStringLiteral("destroyed")); }

    void Release() override {}
    int GetLastError() override { return 7; }
    void OnDestroy() override
    {
        log(QStringLiteral("OnDestroy"));
        delete m_page;
    }
    bool Init() override
    {
        log(QStringLiteral("Init"));
#ifdef THROWS_IN_INIT
        throw std::runtime_error("out of paper");
#endif
#ifdef REFUSES_INIT
        return false;
#else
        m_page = new QLabel;
        m_page->setObjectName(GetPluginName() + QStringLiteral("_page"));
        return true;
#endif
    }
    int GetPluginType() override
    {
        return PLUGIN_TYPE;
    }
    QString GetCLSID() override
    {
        return QStringLiteral(PLUGIN_CLSID);
    }
    unsigned int GetVersion() override
    {
        return 0x203;
    }
    QString GetPluginName() override
    {
        return QStringLiteral(PLUGIN_NAME);
    }
    bool IsAllowRelease() override
    {
        return true;
    }
    int QueryInterface(int, QObject **) override
    {
        return 0;
    }

    bool ShowWindow(QWidget *parent, QRect &rect) override
    {
        log(QStringLiteral("ShowWindow ") + rectText(rect));
        if (PLUGIN_TYPE == 0) {
            m_page->setParent(parent);
            m_page->setGeometry(rect);
            m_page->show();
        }
        return true;
    }
    int DoModal() override
    {
        return 0;
    }
    void Hide() override
    {
        log(QStringLiteral("Hide"));
        m_page->hide();
    }
    void FitSize(QRect &rect) override
    {
        log(QStringLiteral("FitSize ") + rectText(rect));
        m_page->setGeometry(rect);
    }
    bool IsReady() override
    {
        return true;
    }
    bool ChangeLang(const QString &) override
    {
        return true;
    }

    int Notify(unsigned int code, unsigned int param, unsigned int extra) override
    {
        log(QStringLiteral("Notify 0x%1 %2 %3").arg(code, 0, 16).arg(param).arg(extra));
        if (code == NOTIFY_LANGUAGE_CHANGED)
            m_page->setText(Change::tr(QStringLiteral("IDS_LIST_APN"), QStringLiteral("NetInfoRecordUIPlugin")));
        return 0;
    }

private:
    static QString menuTextId()
    {
        return QStringLiteral("IDS_MENU_MONTHLYTOTALS");
    }
    void log(const QString &what)
    {
        logCall(QStringLiteral(PLUGIN_NAME ": ") + what);
    }

    QLabel *m_page = nullptr;
};

#include "PagePlugin.moc"
