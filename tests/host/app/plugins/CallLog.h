// What the small plug-ins of the tests were asked, one line a call, in the file that $NETINFO_TEST_LOG names.
#ifndef NETINFO_TEST_CALLLOG_H
#define NETINFO_TEST_CALLLOG_H

#include <QFile>
#include <QRect>
#include <QString>

inline void logCall(const QString &line)
{
    QFile file(qEnvironmentVariable("NETINFO_TEST_LOG"));
    if (file.open(QFile::Append))
        file.write(line.toUtf8() + '\n');
}

inline QString rectText(const QRect &rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

#endif
