#include "TestSurroundings.h"

#include "HostUi.h"

#include <QDir>
#include <QFile>

TestSurroundings::TestSurroundings(const QStringList &plugins)
{
    QDir().mkpath(folder());
    for (const QString &name : plugins) {
        const QString file = name + QStringLiteral(".so");
        if (!QFile::copy(QStringLiteral(TEST_PLUGINS "/") + file, folder() + QLatin1Char('/') + file))
            qFatal("There is no test plug-in %s.", qPrintable(name));
    }
    qputenv("NETINFO_PLUGIN_DIR", folder().toLocal8Bit());
    qputenv("NETINFO_TEST_LOG", m_dir.filePath(QStringLiteral("calls")).toLocal8Bit());
    QFile::remove(HostUi::settingsFile());
    HostUi::instance()->overrideLanguage(QStringLiteral("en"));
}

TestSurroundings::~TestSurroundings()
{
    qunsetenv("NETINFO_TEST_LOG");
    qunsetenv("NETINFO_PLUGIN_DIR");
}

void TestSurroundings::addFile(const QString &name, const QByteArray &content) const
{
    QFile file(folder() + QLatin1Char('/') + name);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
        qFatal("%s could not be written.", qPrintable(file.fileName()));
}

QStringList TestSurroundings::takeCalls(const QString &prefix)
{
    QFile file(m_dir.filePath(QStringLiteral("calls")));
    if (!file.open(QFile::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    lines.removeLast();
    const QStringList all = lines.mid(m_taken);
    m_taken = static_cast<int>(lines.size());
    if (prefix.isEmpty())
        return all;
    QStringList found;
    for (const QString &line : all) {
        if (line.startsWith(prefix))
            found << line.mid(prefix.size());
    }
    return found;
}
