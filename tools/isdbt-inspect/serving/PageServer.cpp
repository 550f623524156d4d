#include "serving/PageServer.h"

#include "inputs/ListeningAddress.h"
#include "pages/Page.h"
#include "pages/PageParts.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <cctype>
#include <chrono>
#include <civetweb.h>
#include <fmt/format.h>
#include <map>
#include <mutex>
#include <stdexcept>

namespace inspect {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto LATELY = 10s; ///< a page asks every other second
constexpr const char* THREADS = "8";
constexpr const char* PATIENCE = "5000"; ///< in milliseconds, with a client that does not read

constexpr std::string_view HEADERS = "Cache-Control: no-store\r\n"
                                     "X-Content-Type-Options: nosniff\r\n"
                                     "X-Frame-Options: DENY\r\n"
                                     "Referrer-Policy: no-referrer\r\n"
                                     "Cross-Origin-Resource-Policy: same-origin\r\n"
                                     "Connection: close\r\n";

std::string_view orEmpty(const char* text) {
    return text == nullptr ? "" : text;
}

void answer(mg_connection* client, std::string_view status, std::string_view type, std::string_view body) {
    const bool wantsBody = orEmpty(mg_get_request_info(client)->request_method) == "GET";
    const std::string head =
        fmt::format("HTTP/1.1 {}\r\nContent-Type: {}; charset=utf-8\r\nContent-Length: {}\r\n{}\r\n", status, type,
                    body.size(), HEADERS);
    mg_write(client, head.data(), head.size());
    if (wantsBody) {
        mg_write(client, body.data(), body.size());
    }
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char each) { return static_cast<char>(std::tolower(each)); });
    return lower;
}

/// "192.0.2.7" or "[2001:db8::7]".
bool isAddress(std::string host) {
    in6_addr address{};
    if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
        return inet_pton(AF_INET6, host.substr(1, host.size() - 2).c_str(), &address) == 1;
    }
    return inet_pton(AF_INET, host.c_str(), &address) == 1;
}

} // namespace

struct PageServer::Server {
    explicit Server(const std::string& address) : port(address.substr(address.rfind(':'))) {
        std::array<const char*, 9> options{
            "listening_ports", address.c_str(),     "num_threads", THREADS, "request_timeout_ms",
            PATIENCE,          "linger_timeout_ms", "1000",        nullptr};
        const mg_callbacks callbacks{};
        context = mg_start(&callbacks, nullptr, options.data());
        if (context != nullptr) {
            mg_set_request_handler(context, "/", handle, this);
        }
    }

    ~Server() { mg_stop(context); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    static int handle(mg_connection* client, void* self) {
        static_cast<Server*>(self)->handle(client);
        return 1;
    }

    /// A name that somebody else gave this machine would let his page read what it serves; an address is nobody's to
    /// give.
    bool isAsked(const mg_connection* client) const {
        const std::string host = lowerCase(orEmpty(mg_get_header(client, "Host")));
        const std::string_view origin = orEmpty(mg_get_header(client, "Origin"));
        return isOwn(host) && (origin.empty() || lowerCase(origin) == "http://" + host);
    }

    bool isOwn(std::string host) const {
        const bool hasPort =
            host.size() > port.size() && host.compare(host.size() - port.size(), port.size(), port) == 0;
        if (!hasPort && port != ":80") {
            return false;
        }
        host.resize(host.size() - (hasPort ? port.size() : 0));
        return host == "localhost" || isAddress(host);
    }

    void handle(mg_connection* client) {
        const mg_request_info& request = *mg_get_request_info(client);
        const std::string_view method = orEmpty(request.request_method);
        const std::string_view path = orEmpty(request.local_uri);
        if (!isAsked(client)) {
            answer(client, "403 Forbidden", "text/plain", "ask by the server's own name\n");
        } else if (method != "GET" && method != "HEAD") {
            answer(client, "405 Method Not Allowed", "text/plain", "it can only be read\n");
        } else if (path == "/") {
            answer(client, "200 OK", "text/html", page);
        } else if (path == "/parts") {
            watched = Clock::now();
            answer(client, "200 OK", "text/plain", allParts());
        } else {
            answer(client, "404 Not Found", "text/plain", "there is nothing\n");
        }
    }

    /// What is sent is a copy: who reads it slowly keeps nobody waiting.
    std::string allParts() {
        const std::lock_guard lock(mutex);
        std::string all;
        for (const auto& [source, part] : parts) {
            all += part + '\n';
        }
        return all;
    }

    const std::string page = std::string(PAGE_BEGIN) + LIVE + std::string(PAGE_END);
    const std::string port; ///< ":8080"
    std::atomic<Clock::time_point> watched{Clock::time_point::min()};
    std::mutex mutex;
    std::map<std::string, std::string> parts; ///< by source
    mg_context* context = nullptr;

    static constexpr const char* LIVE = "<script type=\"text/plain\" id=\"live\"></script>\n";
};

std::string PageServer::objectionTo(const std::string& address) {
    return objectionToListeningOn(address);
}

PageServer::PageServer(const std::string& address)
    : m_server(std::make_unique<Server>(lowerCase(listeningAddress(address)))) {
    if (m_server->context == nullptr) {
        throw std::runtime_error(fmt::format("--serve: {} cannot be listened on", listeningAddress(address)));
    }
}

PageServer::~PageServer() = default;

bool PageServer::isWatched() const {
    const Clock::time_point watched = m_server->watched;
    return watched != Clock::time_point::min() && Clock::now() - watched < LATELY;
}

void PageServer::update(const std::string& source, std::string_view lines) {
    std::string part = base64(compressed(lines));
    const std::lock_guard lock(m_server->mutex);
    m_server->parts[source] = std::move(part);
}

} // namespace inspect
