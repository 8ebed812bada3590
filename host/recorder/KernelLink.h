// Network links as the kernel knows them: which exist, what they have carried, and the last word when one goes.
#ifndef NETINFO_RECORDER_KERNELLINK_H
#define NETINFO_RECORDER_KERNELLINK_H

#include "host/recorder/ConnectionSource.h"

#include <QByteArray>

class QSocketNotifier;

namespace recorder {

/// A file descriptor that is closed with its owner; -1: none.
class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    ~FileDescriptor() { reset(); }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    int get() const { return m_descriptor; }
    bool isValid() const { return m_descriptor >= 0; }
    void reset(int descriptor = -1);

private:
    int m_descriptor;
};

/// The kernel's number for an interface; 0 when there is none of that name. Numbers are never reused within a boot, so
/// a link that was taken away and made again has another one.
int interfaceIndex(const QString &name);

/// Whether the link is the upper half of others, such as a bridge, a bond, a VLAN or a stacked tunnel: what it carries
/// is counted below it.
bool isUpperHalf(const QString &interfaceName);

/// Counters of one instance of a link: of that very link under whatever name, and of none that comes after it.
class KernelCounters : public CounterReader
{
public:
    /// `sysfsRoot` is the folder with one folder an interface. Where it cannot be read, the kernel is asked by netlink.
    explicit KernelCounters(const QString &interfaceName, const QByteArray &sysfsRoot = "/sys/class/net");
    std::optional<Counters> read() override;
    /// 0 when there was no such interface.
    int index() const { return m_index; }

private:
    int m_index = 0;
    FileDescriptor m_sent;
    FileDescriptor m_received;
};

/// Hears of links that appear and go. Needs no privilege.
class LinkWatcher : public QObject
{
    Q_OBJECT
public:
    explicit LinkWatcher(QObject *parent = nullptr);
    ~LinkWatcher() override;
    /// Handles what the kernel has said until now, without waiting for the event loop.
    void poll();
    /// Highest number of a link seen so far: links that come later have higher ones.
    int highestIndex() const { return m_highest; }

signals:
    void linkGone(int index, const recorder::Counters &last);

private:
    void handle(const char *data, std::size_t size);

    FileDescriptor m_socket;
    QSocketNotifier *m_notifier = nullptr;
    int m_highest = 0;
};

} // namespace recorder

#endif
