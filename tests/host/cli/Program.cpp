// See Program.h.
#include "Program.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>

#include <array>
#include <csignal>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int patience = 120000; // Milliseconds; a bound for a hang, far above what anything here takes.

QString programFile()
{
    return qEnvironmentVariable("NETINFO_BIN_DIR") + "/netinfo-records";
}

} // namespace

Workplace::Workplace()
{
    if (!m_folder.isValid())
        qFatal("No temporary folder can be made: %s", qPrintable(m_folder.errorString()));
}

QString Workplace::write(const QString &name, const QByteArray &content) const
{
    QFile target(file(name));
    if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size())
        qFatal("Cannot write %s", qPrintable(target.fileName()));
    return target.fileName();
}

QByteArray Workplace::read(const QString &name) const
{
    QFile source(file(name));
    if (!source.open(QIODevice::ReadOnly))
        qFatal("Cannot read %s", qPrintable(source.fileName()));
    return source.readAll();
}

Outcome Workplace::run(const QStringList &arguments, const QByteArray &input, const QString &outputFile) const
{
    return runBare(QStringList{"--history", history()} + arguments, input, outputFile);
}

Outcome Workplace::runBare(const QStringList &arguments, const QByteArray &input, const QString &outputFile) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto it = m_variables.begin(); it != m_variables.end(); ++it)
        environment.insert(it.key(), it.value());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder.path());
    if (!outputFile.isEmpty())
        process.setStandardOutputFile(outputFile);
    process.start(programFile(), arguments);
    process.write(input);
    process.closeWriteChannel();
    Outcome outcome;
    if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit)
        outcome.code = process.exitCode();
    outcome.out = process.readAllStandardOutput();
    outcome.err = process.readAllStandardError();
    return outcome;
}

std::vector<zelk::Record> Workplace::records() const
{
    return zelk::ConnectionHistory(history().toStdString(), zelk::ConnectionHistory::Access::ReadOnly).list();
}

void Workplace::add(const zelk::Record &record) const
{
    zelk::ConnectionHistory(history().toStdString()).add(record);
}

TerminalProgram::TerminalProgram(const QStringList &arguments)
{
    std::vector<std::string> texts{programFile().toStdString()};
    for (const QString &argument : arguments)
        texts.push_back(argument.toStdString());
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    m_process = forkpty(&m_terminal, nullptr, nullptr, nullptr);
    if (m_process == 0) {
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    if (m_process < 0)
        qFatal("No pseudo-terminal can be made.");
}

TerminalProgram::~TerminalProgram()
{
    if (m_process > 0) {
        kill();
        finish();
    }
    close(m_terminal);
}

bool TerminalProgram::readMore()
{
    pollfd waiting = {m_terminal, POLLIN, 0};
    if (poll(&waiting, 1, patience) <= 0)
        return false;
    std::array<char, 4096> buffer = {};
    const ssize_t length = ::read(m_terminal, buffer.data(), buffer.size());
    if (length <= 0)
        return false; // The other side has closed.
    m_shown.append(buffer.data(), static_cast<int>(length));
    return true;
}

bool TerminalProgram::waitFor(const std::function<bool(const QByteArray &)> &condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition(m_shown)) {
        if (timer.elapsed() > patience || !readMore())
            return false;
    }
    return true;
}

void TerminalProgram::type(const QByteArray &keys) const
{
    if (::write(m_terminal, keys.constData(), static_cast<std::size_t>(keys.size())) != keys.size())
        qFatal("The terminal takes no keys.");
}

void TerminalProgram::kill() const
{
    ::kill(m_process, SIGKILL);
}

int TerminalProgram::finish()
{
    while (readMore())
        ;
    int status = 0;
    waitpid(m_process, &status, 0);
    m_process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

zelk::Record sampleRecord()
{
    zelk::Record record;
    record.profile = "Nordlicht Mobil";
    record.start = 1785733929; // 2026-08-03T05:12:09Z
    record.end = record.start + 2730;
    record.endZoneOffset = 7200;
    record.connectedSeconds = 2730;
    record.bytesUploaded = 1234567;
    record.bytesDownloaded = 89012345;
    return record;
}

QJsonArray jsonArray(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (!document.isArray())
        qWarning("No JSON array: %s", qPrintable(error.errorString()));
    return document.array();
}
