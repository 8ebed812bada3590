// A folder of plug-ins, a log of what they were asked, and fresh settings for one test.
#ifndef NETINFO_TEST_TESTSURROUNDINGS_H
#define NETINFO_TEST_TESTSURROUNDINGS_H

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class TestSurroundings
{
public:
    /// Copies the named plug-ins of the tests into a folder that the host then looks into. Removes the settings file
    /// and changes to English.
    explicit TestSurroundings(const QStringList &plugins = {});
    ~TestSurroundings();
    TestSurroundings(const TestSurroundings &) = delete;
    TestSurroundings &operator=(const TestSurroundings &) = delete;

    QString folder() const { return m_dir.filePath(QStringLiteral("plugins")); }
    void addFile(const QString &name, const QByteArray &content) const;

    /// The lines since the last call; only those that begin with `prefix`, without it, when there is one.
    QStringList takeCalls(const QString &prefix = QString());

private:
    QTemporaryDir m_dir;
    int m_taken = 0;
};

#endif
