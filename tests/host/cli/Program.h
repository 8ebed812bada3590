// The real netinfo-records on real files in a folder of its own, for the tests beside this file.
#ifndef NETINFO_TESTS_CLI_PROGRAM_H
#define NETINFO_TESTS_CLI_PROGRAM_H

#include "statistics/ConnectionHistory.h"

#include <QByteArray>
#include <QJsonArray>
#include <QMap>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <sys/types.h>

struct Outcome {
    int code = -1; ///< Exit code; -1 when it crashed or did not end.
    QByteArray out;
    QByteArray err;
};

/// A folder with a history in it, and the program working on that history.
class Workplace
{
public:
    Workplace();

    QString file(const QString &name) const { return m_folder.filePath(name); }
    QString history() const { return file("history.sqlite"); }
    /// Writes a file into the folder and returns its full name.
    QString write(const QString &name, const QByteArray &content) const;
    QByteArray read(const QString &name) const;

    /// Sets a variable of the program's environment, on top of the test's own.
    void setVariable(const QString &name, const QString &value) { m_variables.insert(name, value); }
    /// Runs the program with --history before the arguments.
    Outcome run(const QStringList &arguments, const QByteArray &input = {}, const QString &outputFile = {}) const;
    /// Runs it with the arguments alone.
    Outcome runBare(const QStringList &arguments, const QByteArray &input = {}, const QString &outputFile = {}) const;

    /// What the history holds, asked of the library.
    std::vector<zelk::Record> records() const;
    void add(const zelk::Record &record) const;

private:
    QTemporaryDir m_folder;
    QMap<QString, QString> m_variables;
};

/// The program on a pseudo-terminal.
class TerminalProgram
{
public:
    explicit TerminalProgram(const QStringList &arguments);
    ~TerminalProgram();
    TerminalProgram(const TerminalProgram &) = delete;
    TerminalProgram &operator=(const TerminalProgram &) = delete;

    /// Reads until what was shown satisfies the condition; false when the program ends or two minutes pass first.
    bool waitFor(const std::function<bool(const QByteArray &shown)> &condition);
    void type(const QByteArray &keys) const;
    void kill() const;
    /// Reads to the end and returns the exit code, or minus the signal that ended it.
    int finish();
    const QByteArray &shown() const { return m_shown; }

private:
    bool readMore();

    int m_terminal = -1;
    pid_t m_process = -1;
    QByteArray m_shown;
};

/// A record with sensible values, to be changed by a test.
zelk::Record sampleRecord();

/// The text of a JSON array.
QJsonArray jsonArray(const QByteArray &text);

#endif
