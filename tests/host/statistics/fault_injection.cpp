// Preloaded into a child process: lets the N-th change of a file be the moment of a crash or the beginning of a full
// disk. NETINFO_TEST_FAULT is "kill N" or "full N"; N counts from 1.
#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

long faultAt(const char *kind)
{
    const char *fault = std::getenv("NETINFO_TEST_FAULT");
    const std::size_t length = std::strlen(kind);
    if (fault == nullptr || std::strncmp(fault, kind, length) != 0)
        return 0;
    return std::strtol(fault + length, nullptr, 10);
}

/// True: the change must fail for want of space.
bool isRefused(int file)
{
    static const long killAt = faultAt("kill ");
    static const long fullFrom = faultAt("full ");
    static long changes = 0;
    if (file <= STDERR_FILENO)
        return false;
    ++changes;
    if (changes == killAt)
        ::kill(::getpid(), SIGKILL);
    return fullFrom != 0 && changes >= fullFrom;
}

template <typename Function> Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) ssize_t pwrite64(int file, const void *bytes, size_t count, off64_t offset)
{
    static const auto real = next<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64");
    if (!isRefused(file))
        return real(file, bytes, count, offset);
    errno = ENOSPC;
    return -1;
}

__attribute__((visibility("default"))) ssize_t write(int file, const void *bytes, size_t count)
{
    static const auto real = next<ssize_t (*)(int, const void *, size_t)>("write");
    if (!isRefused(file))
        return real(file, bytes, count);
    errno = ENOSPC;
    return -1;
}

__attribute__((visibility("default"))) int ftruncate64(int file, off64_t size)
{
    static const auto real = next<int (*)(int, off64_t)>("ftruncate64");
    isRefused(file); // Cutting a file needs no space, but it is a moment to die at.
    return real(file, size);
}

} // extern "C"
