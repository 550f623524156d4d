#include "inputs/DatagramSocket.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>
#include <system_error>
#include <unistd.h>

namespace inspect {

namespace {

constexpr std::size_t LARGEST_DATAGRAM = 65536;

/// Some seconds of a multiplex, for when this process has to wait for the processor. The system may grant less.
constexpr int SOCKET_BUFFER_SIZE = 16 << 20;

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

template <class Value> bool setOption(int descriptor, int level, int option, const Value& value) {
    return setsockopt(descriptor, level, option, &value, sizeof value) == 0;
}

bool sameHost(const sockaddr_storage& one, const sockaddr* other) {
    if (other == nullptr || other->sa_family != one.ss_family) {
        return false;
    }
    if (one.ss_family == AF_INET) {
        return reinterpret_cast<const sockaddr_in&>(one).sin_addr.s_addr ==
               reinterpret_cast<const sockaddr_in*>(other)->sin_addr.s_addr;
    }
    return std::memcmp(&reinterpret_cast<const sockaddr_in6&>(one).sin6_addr,
                       &reinterpret_cast<const sockaddr_in6*>(other)->sin6_addr, sizeof(in6_addr)) == 0;
}

/// The index of the interface of this host that has an address.
unsigned indexOfInterface(const SocketAddress& address) {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) {
        fail("interfaces");
    }
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> owner(list, freeifaddrs);
    for (const ifaddrs* each = list; each != nullptr; each = each->ifa_next) {
        if (sameHost(address.storage, each->ifa_addr)) {
            return if_nametoindex(each->ifa_name);
        }
    }
    errno = EADDRNOTAVAIL;
    fail("interface");
}

/// The index of the interface on which a group is joined; 0 leaves the choice to the system.
unsigned interfaceFor(const StreamAddress& address) {
    if (address.interface()) {
        return indexOfInterface(*address.interface());
    }
    const sockaddr_storage& group = address.destination().storage;
    return group.ss_family == AF_INET6 ? reinterpret_cast<const sockaddr_in6&>(group).sin6_scope_id : 0;
}

double secondsOf(const timespec& time) {
    constexpr double NANOSECOND = 1e-9;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * NANOSECOND;
}

double now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return secondsOf(time);
}

/// @param stamp of the clock that shows the time of the world, which may be set at any time
Arrival arrivalAt(const timespec& stamp) {
    constexpr int MILLISECONDS = 1000;
    constexpr int NANOSECONDS = 1000000;
    const double age = now(CLOCK_REALTIME) - secondsOf(stamp);
    return {now(CLOCK_MONOTONIC) - age, std::int64_t{stamp.tv_sec} * MILLISECONDS + stamp.tv_nsec / NANOSECONDS};
}

} // namespace

DatagramSocket::DatagramSocket(const StreamAddress& address)
    : m_descriptor(socket(address.destination().storage.ss_family, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)),
      m_buffer(LARGEST_DATAGRAM) {
    if (m_descriptor < 0) {
        fail("socket");
    }
    try {
        listen(address);
    } catch (...) {
        close(m_descriptor);
        throw;
    }
}

DatagramSocket::~DatagramSocket() {
    close(m_descriptor);
}

void DatagramSocket::listen(const StreamAddress& address) const {
    setOption(m_descriptor, SOL_SOCKET, SO_RCVBUF, SOCKET_BUFFER_SIZE);
    setOption(m_descriptor, SOL_SOCKET, SO_RXQ_OVFL, 1);
    setOption(m_descriptor, SOL_SOCKET, SO_TIMESTAMPNS, 1);
    if (address.isMulticast()) {
        joinGroup(address);
    } else {
        bindTo(address.destination());
    }
}

void DatagramSocket::bindTo(const SocketAddress& address) const {
    if (bind(m_descriptor, reinterpret_cast<const sockaddr*>(&address.storage), address.size) != 0) {
        fail("bind");
    }
}

void DatagramSocket::joinGroup(const StreamAddress& address) const {
    SocketAddress group = address.destination();
    const bool isLong = group.storage.ss_family == AF_INET6;
    const unsigned interface = interfaceFor(address);
    auto& longGroup = reinterpret_cast<sockaddr_in6&>(group.storage);
    if (isLong) {
        longGroup.sin6_scope_id = interface;
    }
    setOption(m_descriptor, SOL_SOCKET, SO_REUSEADDR, 1); // others may listen, too
    bindTo(group);                                        // not to any address: other groups have the same port
    const bool joined =
        isLong ? setOption(m_descriptor, IPPROTO_IPV6, IPV6_JOIN_GROUP, ipv6_mreq{longGroup.sin6_addr, interface})
               : setOption(
                     m_descriptor, IPPROTO_IP, IP_ADD_MEMBERSHIP,
                     ip_mreqn{reinterpret_cast<sockaddr_in&>(group.storage).sin_addr, {}, static_cast<int>(interface)});
    if (!joined) {
        fail("join");
    }
}

std::optional<Datagram> DatagramSocket::receive() {
    iovec part{m_buffer.data(), m_buffer.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof m_dropped) + CMSG_SPACE(sizeof(timespec))> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = recvmsg(m_descriptor, &message, 0);
    if (size < 0) {
        if (errno == EAGAIN || errno == EINTR) {
            return std::nullopt;
        }
        fail("receive");
    }
    std::uint32_t dropped = m_dropped;
    timespec stamp{};
    clock_gettime(CLOCK_REALTIME, &stamp); // unless the system knows better
    for (cmsghdr* each = CMSG_FIRSTHDR(&message); each != nullptr; each = CMSG_NXTHDR(&message, each)) {
        if (each->cmsg_level == SOL_SOCKET && each->cmsg_type == SO_RXQ_OVFL) {
            std::memcpy(&dropped, CMSG_DATA(each), sizeof dropped);
        } else if (each->cmsg_level == SOL_SOCKET && each->cmsg_type == SCM_TIMESTAMPNS) {
            std::memcpy(&stamp, CMSG_DATA(each), sizeof stamp);
        }
    }
    const std::uint32_t since = dropped - m_dropped;
    m_dropped = dropped;
    return Datagram{m_buffer.data(), static_cast<std::size_t>(size), since, arrivalAt(stamp)};
}

} // namespace inspect
