// See OutputFile.h.
#include "OutputFile.h"

#include "ExitCode.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace cli {
namespace {

// What open() would have given a new file; an older file keeps what it had.
mode_t modeFor(const std::string &file)
{
    struct stat status = {};
    if (stat(file.c_str(), &status) == 0)
        return status.st_mode & 07777U;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666U & ~mask;
}

bool flushToDisk(const std::string &file)
{
    const int descriptor = open(file.c_str(), O_WRONLY | O_CLOEXEC); // NOLINT(cppcoreguidelines-pro-type-vararg)
    if (descriptor < 0)
        return false;
    const bool flushed = fsync(descriptor) == 0;
    const int error = errno;
    close(descriptor);
    errno = error;
    return flushed;
}

} // namespace

OutputFile::OutputFile(const std::string &file) : m_target(file)
{
    std::error_code missing;
    const auto real = std::filesystem::canonical(file, missing);
    if (!missing)
        m_target = real.string(); // A symbolic link stays one.
    if (missing || std::filesystem::is_regular_file(real)) {
        createBeside();
        return;
    }
    errno = 0;
    m_stream.open(m_target, std::ios::binary);
    if (!m_stream)
        fail();
}

OutputFile::~OutputFile()
{
    if (!m_beside.empty())
        unlink(m_beside.c_str());
}

void OutputFile::createBeside()
{
    std::string name = m_target + ".XXXXXX";
    const int descriptor = mkstemp(name.data());
    if (descriptor < 0)
        fail();
    m_beside = name;
    fchmod(descriptor, modeFor(m_target));
    close(descriptor);
    m_stream.open(m_beside, std::ios::binary);
    if (!m_stream)
        fail();
}

void OutputFile::finish()
{
    errno = 0;
    m_stream.close();
    if (!m_stream)
        fail();
    if (m_beside.empty())
        return;
    if (!flushToDisk(m_beside) || std::rename(m_beside.c_str(), m_target.c_str()) != 0)
        fail();
    m_beside.clear();
}

void OutputFile::fail() const
{
    const std::string why = errno == 0 ? "the disk may be full" : std::strerror(errno);
    throw Failure(ExitCode::Failure, "Cannot write " + m_target + ": " + why + '.');
}

} // namespace cli
