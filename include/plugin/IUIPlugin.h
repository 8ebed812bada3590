// A plug-in that shows a page inside a widget of the host.
#ifndef NETINFO_PLUGIN_IUIPLUGIN_H
#define NETINFO_PLUGIN_IUIPLUGIN_H

#include "plugin/IBasePlugin.h"

class QRect;
class QWidget;

/// Valid after Init() returned true and until OnDestroy().
class IUIPlugin : public IBasePlugin
{
public:
    virtual ~IUIPlugin() {}

    /// Embeds the page into \a parent at \a rect (parent coordinates, pixels) and shows it.
    virtual bool ShowWindow(QWidget *parent, QRect &rect) = 0;

    /// Shows the page without a parent. Returns at once.
    virtual int DoModal() = 0;

    /// Hides the page; its contents stay.
    virtual void Hide() = 0;

    /// Moves and resizes the page to \a rect (parent coordinates, pixels).
    virtual void FitSize(QRect &rect) = 0;

    /// Whether the plug-in declares itself ready.
    virtual bool IsReady() = 0;

    /// Offers a language name. False when \a lang is not acceptable.
    virtual bool ChangeLang(const QString &lang) = 0;
};

#define IUIPlugin_iid "com.zantrix.quillnet.plugin.IUIPlugin"
Q_DECLARE_INTERFACE(IUIPlugin, IUIPlugin_iid)

#endif
