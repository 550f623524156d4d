#include "Sender.h"

#include "Process.h"

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

Sender::Sender(Family family, const std::string& host)
    : m_socket(socket(family == Family::IPv6 ? AF_INET6 : AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    if (family == Family::IPv6) {
        auto& address = reinterpret_cast<sockaddr_in6&>(m_address);
        address.sin6_family = AF_INET6;
        inet_pton(AF_INET6, host.c_str(), &address.sin6_addr);
        m_size = sizeof address;
    } else {
        auto& address = reinterpret_cast<sockaddr_in&>(m_address);
        address.sin_family = AF_INET;
        inet_pton(AF_INET, host.c_str(), &address.sin_addr);
        m_size = sizeof address;
        // What comes from the loopback's address stays on it, groups included.
        sockaddr_in loopback{};
        loopback.sin_family = AF_INET;
        loopback.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(m_socket, reinterpret_cast<const sockaddr*>(&loopback), sizeof loopback);
    }
    findFreePort(family);
}

Sender::~Sender() {
    close(m_socket);
}

void Sender::send(const ByteVector& bytes) const {
    sendto(m_socket, bytes.data(), bytes.size(), 0, reinterpret_cast<const sockaddr*>(&m_address), m_size);
}

void Sender::waitForListener() const {
    std::array<char, 8> digits{};
    std::snprintf(digits.data(), digits.size(), ":%04X ", ntohs(m_port));
    const std::string table = m_address.ss_family == AF_INET6 ? "/proc/net/udp6" : "/proc/net/udp";
    for (int round = 0; round < 10000; ++round) {
        if (readText(table).find(digits.data()) != std::string::npos) {
            return;
        }
        std::this_thread::sleep_for(1ms);
    }
    throw std::runtime_error("nobody listens");
}

/// A port that was free a moment ago. Those that the system chooses itself lie above; and another process that tries
/// begins elsewhere.
void Sender::findFreePort(Family family) {
    static unsigned next = 20000U + static_cast<unsigned>(getpid()) % 100U * 100U;
    in_port_t& port = family == Family::IPv6 ? reinterpret_cast<sockaddr_in6&>(m_address).sin6_port
                                             : reinterpret_cast<sockaddr_in&>(m_address).sin_port;
    bool isFree = false;
    while (!isFree) {
        sockaddr_storage any{};
        any.ss_family = m_address.ss_family;
        // the port stands at the same place in both
        m_port = reinterpret_cast<sockaddr_in&>(any).sin_port = htons(static_cast<in_port_t>(next++));
        const int other = socket(m_address.ss_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        isFree = bind(other, reinterpret_cast<const sockaddr*>(&any), m_size) == 0;
        close(other);
    }
    port = m_port;
}
