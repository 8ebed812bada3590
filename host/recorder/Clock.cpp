#include "host/recorder/Clock.h"

#include <QByteArray>
#include <QFile>

#include <ctime>

namespace recorder {

namespace {

std::int64_t milliseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::int64_t{time.tv_sec} * 1000 + time.tv_nsec / 1'000'000;
}

} // namespace

Moment systemClock()
{
    return {milliseconds(CLOCK_REALTIME), milliseconds(CLOCK_BOOTTIME), milliseconds(CLOCK_MONOTONIC)};
}

QString bootId()
{
    QFile file(QStringLiteral("/proc/sys/kernel/random/boot_id"));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll().trimmed()) : QString();
}

std::int32_t zoneOffset(std::int64_t wallMs)
{
    const std::time_t seconds = wallMs / 1000;
    std::tm local{};
    tzset(); // the traveller's zone may have changed since the last connection
    return localtime_r(&seconds, &local) == nullptr ? 0 : static_cast<std::int32_t>(local.tm_gmtoff);
}

} // namespace recorder
