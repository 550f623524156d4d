#pragma once

#include <netinet/in.h>
#include <string>

/// A TCP port of the loopback that is taken as long as the object lives, and free behind it.
class Port {
public:
    Port();
    ~Port();
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    in_port_t number() const { return m_number; }

    static in_port_t free() { return Port().number(); }

private:
    int m_socket;
    in_port_t m_number;
};

/// A connection to a port of the loopback.
class Connection {
public:
    explicit Connection(in_port_t port);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool isMade() const { return m_isMade; }
    void send(const std::string& text) const;

    /// All that comes until the other side ends.
    std::string receive() const;

private:
    int m_socket;
    bool m_isMade;
};

/// What a request gets; empty when nobody answers.
/// @param headers each with a line break behind it
std::string ask(in_port_t port, const std::string& line, const std::string& headers);

/// What a plain request gets; empty when nobody answers.
std::string get(in_port_t port, const std::string& path);
