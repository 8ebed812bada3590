// The place in the main window that a plug-in shows its page in.
#ifndef NETINFO_APP_PLUGINPAGE_H
#define NETINFO_APP_PLUGINPAGE_H

#include <QWidget>

class IUIPlugin;

/// Shows, hides and resizes the plug-in's page as it is itself shown, hidden and resized by the program; a minimised
/// window leaves the page alone.
class PluginPage : public QWidget
{
    Q_OBJECT

public:
    /// `plugin` is not owned.
    explicit PluginPage(IUIPlugin &plugin, QWidget *parent = nullptr);

    /// Ends all calls to the plug-in, which is about to go.
    void detach();

    QSize minimumSizeHint() const override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyStyle();

    IUIPlugin *m_plugin;
};

#endif
