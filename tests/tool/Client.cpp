#include "Client.h"

#include <array>
#include <sys/socket.h>
#include <unistd.h>

namespace {

sockaddr_in loopback(in_port_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = port;
    return address;
}

} // namespace

Port::Port() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    bind(m_socket, reinterpret_cast<const sockaddr*>(&address), size);
    listen(m_socket, 1);
    getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size);
    m_number = ntohs(address.sin_port);
}

Port::~Port() {
    close(m_socket);
}

Connection::Connection(in_port_t port) : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const sockaddr_in address = loopback(htons(port));
    m_isMade = connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

Connection::~Connection() {
    close(m_socket);
}

void Connection::send(const std::string& text) const {
    [[maybe_unused]] const ssize_t count = write(m_socket, text.data(), text.size());
}

std::string Connection::receive() const {
    std::string answer;
    std::array<char, 65536> part{};
    for (ssize_t count = 1; count > 0;) {
        count = read(m_socket, part.data(), part.size());
        answer.append(part.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return answer;
}

std::string ask(in_port_t port, const std::string& line, const std::string& headers) {
    const Connection connection(port);
    if (!connection.isMade()) {
        return {};
    }
    connection.send(line + "\r\n" + headers + "\r\n");
    return connection.receive();
}

std::string get(in_port_t port, const std::string& path) {
    return ask(port, "GET " + path + " HTTP/1.0", "Host: localhost\r\n");
}
