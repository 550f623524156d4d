#pragma once

#include "support/Bytes.h"

#include <netinet/in.h>
#include <string>
#include <sys/socket.h>

/// Sends datagrams to a port of its own on the loopback.
class Sender {
public:
    enum class Family { IPv4, IPv6 };

    explicit Sender(Family family = Family::IPv4, const std::string& host = "127.0.0.1");
    ~Sender();
    Sender(const Sender&) = delete;
    Sender& operator=(const Sender&) = delete;

    std::string port() const { return std::to_string(ntohs(m_port)); }

    /// How the tool is told to receive them on the loopback's address.
    std::string address() const { return "udp://127.0.0.1:" + port(); }

    void send(const ByteVector& bytes) const;

    /// Waits until somebody listens on the port.
    void waitForListener() const;

private:
    void findFreePort(Family family);

    int m_socket;
    sockaddr_storage m_address{};
    socklen_t m_size = 0;
    in_port_t m_port = 0;
};
