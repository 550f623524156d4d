#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace inspect {

/// Serves the page of live inputs over HTTP, to who looks at it. It is only read: nothing can be written, and nobody is
/// answered who comes by another name than the server's own or from a page of somebody else.
class PageServer {
public:
    /// Why nothing can be served at an address, "[ADDRESS:]PORT"; empty when it can.
    static std::string objectionTo(const std::string& address);

    /// @param address that of the loopback when there is a port alone
    /// @throws std::runtime_error when it cannot be listened on
    explicit PageServer(const std::string& address);
    ~PageServer();
    PageServer(const PageServer&) = delete;
    PageServer& operator=(const PageServer&) = delete;

    /// Whether somebody has looked lately. Threads may call it at the same time, as what follows.
    bool isWatched() const;

    /// @param lines in JSON, with what is known of an input so far
    void update(const std::string& source, std::string_view lines);

private:
    struct Server;
    std::unique_ptr<Server> m_server;
};

} // namespace inspect
