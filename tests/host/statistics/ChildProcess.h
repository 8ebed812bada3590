// Other processes at this process's history; see history_child.cpp for what they can do.
#ifndef NETINFO_TESTS_CHILDPROCESS_H
#define NETINFO_TESTS_CHILDPROCESS_H

#include <QByteArrayList>
#include <QCoreApplication>
#include <QProcess>

/// The children's own program, beside the tests'.
inline QString childProgram()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/statistics_history_child");
}

/// What a child that has ended said and how it ended.
struct ChildResult {
    QByteArrayList lines;
    QByteArray errors;
    bool crashed = false;
    int exitCode = -1;
};

inline ChildResult finish(QProcess &child)
{
    ChildResult result;
    if (child.state() != QProcess::NotRunning && !child.waitForFinished(60000))
        qFatal("the child process did not end");
    result.lines = child.readAllStandardOutput().split('\n');
    result.lines.removeAll(QByteArray());
    result.errors = child.readAllStandardError();
    result.crashed = child.exitStatus() == QProcess::CrashExit;
    result.exitCode = child.exitCode();
    return result;
}

/// Runs a child on this process's default history. `fault`: see fault_injection.cpp.
inline ChildResult runChild(const QStringList &arguments, const QByteArray &fault = {})
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!fault.isEmpty()) {
        environment.insert(QStringLiteral("NETINFO_TEST_FAULT"), QString::fromLatin1(fault));
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(FAULT_INJECTION));
        environment.insert(QStringLiteral("ASAN_OPTIONS"),
                           qEnvironmentVariable("ASAN_OPTIONS") + QStringLiteral(":verify_asan_link_order=0"));
    }
    child.setProcessEnvironment(environment);
    child.start(childProgram(), arguments);
    return finish(child);
}

#endif
