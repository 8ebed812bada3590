// A bar above the pages for what the user should know without being interrupted.
#ifndef NETINFO_APP_NOTICEBAR_H
#define NETINFO_APP_NOTICEBAR_H

#include <QFrame>
#include <QStringList>

class QLabel;
class QToolButton;

/// Hidden while it has nothing to say or once the user has closed it.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    /// Shows the bar with one line a notice, or hides it when there is none.
    void setNotices(const QStringList &notices);
    /// The same notices in another language: a closed bar stays closed.
    void retranslate(const QStringList &notices);
    QString text() const;

private:
    QLabel *m_text;
    QToolButton *m_close;
};

#endif
