// The line in the status bar that says whether connections are being recorded.
#ifndef NETINFO_APP_STATUSLINE_H
#define NETINFO_APP_STATUSLINE_H

#include <QLabel>
#include <QPointer>

/// Follows the property "statusText" of an object, which announces changes by the property's signal. A line that is too
/// long for the window ends in dots; the tool tip has all of it.
class StatusLine : public QLabel
{
    Q_OBJECT

public:
    explicit StatusLine(QWidget *parent = nullptr);

    /// Shows what `source` says, or, with null, that nothing records. Before the first call the line is empty.
    void follow(QObject *source);

    QSize minimumSizeHint() const override;

public slots:
    /// Asks again; also for a change of language.
    void refresh();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    enum class Source { Unknown, None, Object };

    QPointer<QObject> m_object;
    Source m_source = Source::Unknown;
};

#endif
