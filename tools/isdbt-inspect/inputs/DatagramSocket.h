#pragma once

#include "inputs/StreamAddress.h"
#include "packets/Input.h"

#include <vector>

namespace inspect {

/// What came in.
struct Datagram {
    const std::uint8_t* data; ///< until the next one is received
    std::size_t size;
    std::uint32_t dropped; ///< datagrams before it for which the socket had no room
    Arrival arrival;
};

/// A UDP socket that receives what is sent to an address.
class DatagramSocket {
public:
    /// @throws std::system_error
    explicit DatagramSocket(const StreamAddress& address);
    ~DatagramSocket();
    DatagramSocket(const DatagramSocket&) = delete;
    DatagramSocket& operator=(const DatagramSocket&) = delete;

    int descriptor() const { return m_descriptor; }

    /// Does not wait. @return nothing when nothing has come in.
    /// @throws std::system_error
    std::optional<Datagram> receive();

private:
    void listen(const StreamAddress& address) const;
    void bindTo(const SocketAddress& address) const;
    void joinGroup(const StreamAddress& address) const;

    int m_descriptor;
    std::vector<std::uint8_t> m_buffer;
    std::uint32_t m_dropped = 0; ///< as the socket counts them
};

} // namespace inspect
