// The list of pages at the left edge of the main window.
#ifndef NETINFO_APP_NAVIGATIONLIST_H
#define NETINFO_APP_NAVIGATIONLIST_H

#include <QListWidget>

/// As wide as its longest text needs.
class NavigationList : public QListWidget
{
    Q_OBJECT

public:
    explicit NavigationList(QWidget *parent = nullptr);

    void addPage(const QIcon &icon);
    void setPageText(int row, const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

#endif
