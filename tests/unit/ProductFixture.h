// What the product's tests share: fresh stand-ins for every test, raw records in words, and the trace lines.
#ifndef NETINFO_PRODUCTFIXTURE_H
#define NETINFO_PRODUCTFIXTURE_H

#include "ConnectionHistoryDlg.h"
#include "ConnectionRecord.h"
#include "FakeHostUi.h"
#include "FakeStatistics.h"
#include "NetInfoRecordLogic.h"

#include <QCoreApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QStringList>
#include <QTableWidget>
#include <QtTest>

/// Catches the toolkit's messages for as long as it lives. The library traces only then: see fixture::reset().
class MessageLog
{
public:
    MessageLog()
    {
        s_log = this;
        QLoggingCategory::setFilterRules(QString());
        m_previous = qInstallMessageHandler(&MessageLog::take);
    }
    ~MessageLog()
    {
        qInstallMessageHandler(m_previous);
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
        s_log = nullptr;
    }
    Q_DISABLE_COPY(MessageLog)

    QStringList lines;    ///< Debug messages, the trace lines among them.
    QStringList warnings; ///< Everything else.

    /// The debug lines with what differs from run to run replaced: PATH for the units' folder, TIME for a time of day
    /// and LINE for a source line.
    QStringList shapes() const
    {
        QStringList result;
        for (const QString &line : lines)
            result.append(shape(line));
        return result;
    }

    static QString shape(QString line)
    {
        static const QRegularExpression time(QStringLiteral("\\b\\d\\d:\\d\\d:\\d\\d:\\d\\d\\d\\b"));
        static const QRegularExpression number(QStringLiteral("(?<= )\\d+(?=: |:$|$)"));
        line.replace(QStringLiteral("../../src/NetInfoRecordUIPlugin/"), QStringLiteral("PATH/"));
        line.replace(time, QStringLiteral("TIME"));
        if (!line.startsWith(QStringLiteral("Status")))
            line.replace(number, QStringLiteral("LINE"));
        return line;
    }

private:
    static void take(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        (type == QtDebugMsg ? s_log->lines : s_log->warnings).append(text);
    }

    static inline MessageLog *s_log = nullptr;
    QtMessageHandler m_previous = nullptr;
};

/// Sets the process's time zone for as long as it lives.
class ZoneSwitch
{
public:
    explicit ZoneSwitch(const char *zone) : m_previous(qgetenv("TZ")) { set(zone); }
    ~ZoneSwitch() { set(m_previous.constData()); }
    Q_DISABLE_COPY(ZoneSwitch)

private:
    static void set(const char *zone)
    {
        qputenv("TZ", zone);
        tzset();
    }

    QByteArray m_previous;
};

namespace fixture {

/// Nothing left of the test before, and no trace lines between the test's own messages.
inline void reset()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    ConnectionHistoryDlg::Destroy();
    NetInfoRecordLogic::Destroy();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    FakeHostUi::reset();
    FakeStatistics::reset();
}

/// A connection of a minute that began on 1 January 2024 at noon UTC plus \a number hours; everything in it tells the
/// number.
inline _ZELK_ST_CONNRECORD numbered(int number)
{
    const std::string start = std::to_string(1704110400 + number * 3600);
    const std::string end = std::to_string(1704110400 + number * 3600 + 60);
    const QString name = QStringLiteral("apn-%1").arg(number);
    return FakeStatistics::record(name.toStdU16String(), start, end, "60", std::to_string(number * 1024),
                                  std::to_string(number * 2048), "exact", "user");
}

/// The service holds the connections 0 to \a count - 1.
inline void fillService(int count)
{
    for (int i = 0; i < count; ++i)
        FakeStatistics::state().records.push_back(numbered(i));
}

/// A page that has loaded what the service holds.
inline ConnectionHistoryDlg *initialisedPage()
{
    ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
    page->Init();
    return page;
}

inline ConnectionRecord *linkedRecord(const QTableWidget *table, int row, int column = 0)
{
    return reinterpret_cast<ConnectionRecord *>(
        static_cast<quintptr>(table->item(row, column)->data(Qt::UserRole).toULongLong()));
}

inline QStringList columnTexts(const QTableWidget *table, int column)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row)
        texts.append(table->item(row, column) ? table->item(row, column)->text() : QString());
    return texts;
}

} // namespace fixture

#endif
