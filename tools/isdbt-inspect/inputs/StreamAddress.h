#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/socket.h>

namespace inspect {

/// An IPv4 or IPv6 address with a port.
struct SocketAddress {
    sockaddr_storage storage;
    socklen_t size;
};

/// Where the datagrams of a stream are received, as the user writes it: udp://[GROUP@]ADDRESS:PORT, or rtp:// with the
/// same meaning, because RTP is recognised by itself. Addresses are numbers; those of IPv6 stand in brackets.
///
///     udp://239.1.1.1:5000              the multicast group, joined on the interface that the system chooses
///     udp://239.1.1.1@192.168.1.7:5000  the group, joined on the interface of this host that has the address
///     udp://[ff12::1%eth1]:5000         an IPv6 group with the name of the interface
///     udp://192.168.1.7:5000            what is sent to this address of the host
///     udp://:5000                       what is sent to any IPv4 address of the host, to udp://[::]:5000 to any
///
/// An empty GROUP counts as none, as in udp://@239.1.1.1:5000.
class StreamAddress {
public:
    /// Whether the user means the address of a stream, and no file.
    static bool isOne(const std::string& text);

    /// @throws std::invalid_argument that says what is wrong
    explicit StreamAddress(const std::string& text);

    /// What the datagrams are sent to.
    const SocketAddress& destination() const { return m_destination; }
    bool isMulticast() const { return m_isMulticast; }

    /// That of the interface on which the group is joined; nothing when the system may choose.
    const std::optional<SocketAddress>& interface() const { return m_interface; }

private:
    SocketAddress m_destination{};
    bool m_isMulticast = false;
    std::optional<SocketAddress> m_interface;
};

} // namespace inspect
