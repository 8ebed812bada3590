// The frame around every page of the main window: a heading, a line that says what the page is for, and the page.
#ifndef NETINFO_APP_PAGEFRAME_H
#define NETINFO_APP_PAGEFRAME_H

#include <QWidget>

class QLabel;

class PageFrame : public QWidget
{
    Q_OBJECT

public:
    /// Takes ownership of `content`, which already keeps `ownMargin` pixels free at its edges.
    explicit PageFrame(QWidget *content, int ownMargin = 0, QWidget *parent = nullptr);

    QWidget *content() const { return m_content; }
    void setTexts(const QString &heading, const QString &hint);

private:
    QWidget *m_content;
    QLabel *m_heading;
    QLabel *m_hint;
};

#endif
