#include "inputs/StreamAddress.h"

#include <algorithm>
#include <cstring>
#include <netdb.h>
#include <netinet/in.h>

namespace inspect {

namespace {

constexpr std::size_t SCHEME_SIZE = 6;
constexpr unsigned long HIGHEST_PORT = 65535;

constexpr const char* ANY_ADDRESS = "0.0.0.0";

bool isPort(const std::string& text) {
    return !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string::npos &&
           std::stoul(text) > 0 && std::stoul(text) <= HIGHEST_PORT;
}

/// "[ff15::1]" without its brackets; IPv6 addresses must have them.
std::string withoutBrackets(const std::string& text) {
    if (text.size() > 2 && text.front() == '[' && text.back() == ']') {
        return text.substr(1, text.size() - 2);
    }
    if (text.find(':') != std::string::npos) {
        throw std::invalid_argument(text + ": an IPv6 address stands in brackets");
    }
    return text;
}

SocketAddress resolve(const std::string& text, const std::string& port) {
    const std::string address = withoutBrackets(text);
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(address.c_str(), port.c_str(), &hints, &found) != 0) {
        throw std::invalid_argument(address + " is no IPv4 or IPv6 address");
    }
    SocketAddress result{{}, found->ai_addrlen};
    std::memcpy(&result.storage, found->ai_addr, found->ai_addrlen);
    freeaddrinfo(found);
    return result;
}

bool isGroup(const SocketAddress& address) {
    if (address.storage.ss_family == AF_INET6) {
        return IN6_IS_ADDR_MULTICAST(&reinterpret_cast<const sockaddr_in6&>(address.storage).sin6_addr);
    }
    return IN_MULTICAST(ntohl(reinterpret_cast<const sockaddr_in&>(address.storage).sin_addr.s_addr));
}

} // namespace

bool StreamAddress::isOne(const std::string& text) {
    return text.compare(0, SCHEME_SIZE, "udp://") == 0 || text.compare(0, SCHEME_SIZE, "rtp://") == 0;
}

StreamAddress::StreamAddress(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    const std::string port = text.substr(colon + 1);
    if (colon < SCHEME_SIZE || !isPort(port)) {
        throw std::invalid_argument("a port is missing, 1 to 65535");
    }
    const std::string host = text.substr(SCHEME_SIZE, colon - SCHEME_SIZE);
    const std::size_t at = host.find('@');
    const std::string group = at == std::string::npos ? "" : host.substr(0, at);
    const std::string address = at == std::string::npos ? host : host.substr(at + 1);
    if (group.empty()) {
        m_destination = resolve(address.empty() ? ANY_ADDRESS : address, port);
        m_isMulticast = isGroup(m_destination);
        return;
    }
    m_destination = resolve(group, port);
    m_isMulticast = isGroup(m_destination);
    if (!m_isMulticast) {
        throw std::invalid_argument(group + " is no multicast group");
    }
    if (!address.empty()) {
        m_interface = resolve(address, port);
        if (m_interface->storage.ss_family != m_destination.storage.ss_family) {
            throw std::invalid_argument("group and address must both be IPv4 or both IPv6");
        }
    }
}

} // namespace inspect
