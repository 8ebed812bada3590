#include "host/recorder/KernelLink.h"

#include <QDir>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/if_link.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace recorder {

namespace {

// Number of a sysfs file; nothing once the link behind it is gone.
std::optional<qint64> readNumber(int descriptor)
{
    std::array<char, 32> text{};
    const ssize_t size = pread(descriptor, text.data(), text.size() - 1, 0);
    if (size <= 0)
        return std::nullopt;
    return static_cast<qint64>(std::strtoull(text.data(), nullptr, 10));
}

int openNetlink(unsigned groups)
{
    const int descriptor = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = groups;
    if (descriptor >= 0 && bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0)
        return descriptor;
    qWarning("No netlink socket: %s", strerror(errno));
    if (descriptor >= 0)
        close(descriptor);
    return -1;
}

// What one message about a link says.
struct LinkMessage {
    int type = 0;
    int index = 0;
    std::optional<Counters> counters;
};

std::optional<Counters> statistics(const nlmsghdr *header, const ifinfomsg *info)
{
    auto left = static_cast<int>(header->nlmsg_len - NLMSG_LENGTH(sizeof *info));
    for (const rtattr *part = IFLA_RTA(info); RTA_OK(part, left); part = RTA_NEXT(part, left)) {
        if (part->rta_type != IFLA_STATS64)
            continue;
        rtnl_link_stats64 numbers{};
        std::memcpy(&numbers, RTA_DATA(part), std::min<std::size_t>(sizeof numbers, RTA_PAYLOAD(part)));
        return Counters{static_cast<qint64>(numbers.tx_bytes), static_cast<qint64>(numbers.rx_bytes)};
    }
    return std::nullopt;
}

template <typename Function> void forEachLink(const char *data, std::size_t size, Function handle)
{
    auto left = static_cast<unsigned>(size);
    for (auto header = reinterpret_cast<const nlmsghdr *>(data); NLMSG_OK(header, left);
         header = NLMSG_NEXT(header, left)) {
        if (header->nlmsg_type != RTM_NEWLINK && header->nlmsg_type != RTM_DELLINK)
            continue;
        const auto info = static_cast<const ifinfomsg *>(NLMSG_DATA(header));
        handle(LinkMessage{header->nlmsg_type, info->ifi_index, statistics(header, info)});
    }
}

using Buffer = std::array<char, 32768>;

std::optional<Counters> askNetlink(int index)
{
    struct {
        nlmsghdr header;
        ifinfomsg info;
    } request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = RTM_GETLINK;
    request.header.nlmsg_flags = NLM_F_REQUEST;
    request.info.ifi_index = index;
    const FileDescriptor socket(openNetlink(0));
    alignas(nlmsghdr) Buffer buffer;
    pollfd answer{socket.get(), POLLIN, 0};
    if (!socket.isValid() || send(socket.get(), &request, sizeof request, 0) < 0 || ::poll(&answer, 1, 1000) != 1)
        return std::nullopt;
    const ssize_t size = recv(socket.get(), buffer.data(), buffer.size(), 0);
    std::optional<Counters> counters;
    forEachLink(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0,
                [&counters](const LinkMessage &message) { counters = message.counters; });
    return counters;
}

} // namespace

void FileDescriptor::reset(int descriptor)
{
    if (m_descriptor >= 0)
        close(m_descriptor);
    m_descriptor = descriptor;
}

int interfaceIndex(const QString &name)
{
    return static_cast<int>(if_nametoindex(name.toLocal8Bit().constData()));
}

bool isUpperHalf(const QString &interfaceName)
{
    const QDir folder(QStringLiteral("/sys/class/net/") + interfaceName);
    return !folder.entryList({QStringLiteral("lower_*")}, QDir::AllEntries | QDir::System).isEmpty();
}

KernelCounters::KernelCounters(const QString &interfaceName, const QByteArray &sysfsRoot)
{
    const QByteArray path = sysfsRoot + '/' + interfaceName.toLocal8Bit();
    // All files are opened below one folder, and stay open: they belong to this instance of the link for good.
    const FileDescriptor folder(open(path.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    const FileDescriptor index(openat(folder.get(), "ifindex", O_RDONLY | O_CLOEXEC));
    m_sent.reset(openat(folder.get(), "statistics/tx_bytes", O_RDONLY | O_CLOEXEC));
    m_received.reset(openat(folder.get(), "statistics/rx_bytes", O_RDONLY | O_CLOEXEC));
    m_index = index.isValid() ? static_cast<int>(readNumber(index.get()).value_or(0))
                              : recorder::interfaceIndex(interfaceName);
}

std::optional<Counters> KernelCounters::read()
{
    if (m_index == 0)
        return std::nullopt;
    if (!m_sent.isValid() || !m_received.isValid())
        return askNetlink(m_index);
    const auto sent = readNumber(m_sent.get());
    const auto received = readNumber(m_received.get());
    return sent && received ? std::optional<Counters>(Counters{*sent, *received}) : std::nullopt;
}

LinkWatcher::LinkWatcher(QObject *parent) : QObject(parent), m_socket(openNetlink(RTMGRP_LINK))
{
    if (m_socket.isValid()) {
        m_notifier = new QSocketNotifier(m_socket.get(), QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, &LinkWatcher::poll);
    }
    const std::unique_ptr<struct if_nameindex, void (*)(struct if_nameindex *)> links(if_nameindex(), if_freenameindex);
    for (const struct if_nameindex *link = links.get(); link != nullptr && link->if_index != 0; ++link)
        m_highest = std::max(m_highest, static_cast<int>(link->if_index));
}

LinkWatcher::~LinkWatcher()
{
    delete m_notifier;
} // before its descriptor is closed

void LinkWatcher::poll()
{
    alignas(nlmsghdr) Buffer buffer;
    for (;;) {
        const ssize_t size = recv(m_socket.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (size > 0)
            handle(buffer.data(), static_cast<std::size_t>(size));
        else if (size == 0 || (errno != EINTR && errno != ENOBUFS)) // ENOBUFS: some were dropped, more follow
            return;
    }
}

void LinkWatcher::handle(const char *data, std::size_t size)
{
    forEachLink(data, size, [this](const LinkMessage &message) {
        m_highest = std::max(m_highest, message.index);
        if (message.type == RTM_DELLINK)
            emit linkGone(message.index, message.counters.value_or(Counters{}));
    });
}

} // namespace recorder
