#include "Client.h"
#include "Running.h"
#include "Sender.h"
#include "Streams.h"

#include <algorithm>
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string hostOf(in_port_t port, const std::string& name = "127.0.0.1") {
    return "Host: " + name + ":" + std::to_string(port) + "\r\n";
}

/// What a page of the server's own gets.
std::string read(in_port_t port, const std::string& path) {
    return ask(port, "GET " + path + " HTTP/1.1", hostOf(port));
}

std::string statusOf(const std::string& answer) {
    return answer.substr(0, answer.find('\r'));
}

std::string bodyOf(const std::string& answer) {
    const std::size_t end = answer.find("\r\n\r\n");
    return end == std::string::npos ? "" : answer.substr(end + 4);
}

/// Asks until there is something of so many inputs. @return how many there are
std::ptrdiff_t waitForParts(in_port_t port, std::ptrdiff_t count) {
    std::ptrdiff_t found = 0;
    for (int round = 0; round < 100 && found < count; ++round) {
        std::this_thread::sleep_for(100ms);
        const std::string parts = bodyOf(read(port, "/parts"));
        found = std::count(parts.begin(), parts.end(), '\n');
    }
    return found;
}

void waitForServer(in_port_t port) {
    for (int round = 0; round < 300 && read(port, "/").empty(); ++round) {
        std::this_thread::sleep_for(100ms);
    }
}

} // namespace

TEST(InspectServe, ShowsALiveInputOnItsPage) {
    const Sender sender;
    const in_port_t port = Port::free();
    Running program({"--view", "stats", "--serve", std::to_string(port), sender.address()});
    sender.waitForListener();
    sender.send(StreamBuilder().section(PAT_PID, pat("E6A0 E101")).bytes());
    waitForServer(port);
    const std::string page = read(port, "/");
    EXPECT_EQ(statusOf(page), "HTTP/1.1 200 OK");
    EXPECT_THAT(page, HasSubstr("\r\nContent-Type: text/html; charset=utf-8\r\n"));
    EXPECT_THAT(page, HasSubstr("\r\nX-Content-Type-Options: nosniff\r\n"));
    EXPECT_THAT(bodyOf(page), StartsWith("<!DOCTYPE html>"));
    EXPECT_EQ(waitForParts(port, 1), 1);
    EXPECT_THAT(bodyOf(read(port, "/parts")), StartsWith("H4sI")); // gzip
    program.signal(SIGINT);
    program.finish();
}

TEST(InspectServe, ShowsManyInputs) {
    const Sender one;
    const Sender other;
    const in_port_t port = Port::free();
    Running program(
        {"--view", "stats", "--serve", "127.0.0.1:" + std::to_string(port), one.address(), other.address()});
    other.waitForListener();
    waitForServer(port);
    EXPECT_EQ(waitForParts(port, 2), 2);
    program.signal(SIGINT);
    program.finish();
}

TEST(InspectServe, AnswersNobodyElse) {
    const in_port_t port = Port::free();
    Running program({"--view", "stats", "--serve", std::to_string(port), "-"});
    waitForServer(port);
    const std::string own = hostOf(port);
    const std::string get = "GET /parts HTTP/1.1";
    const std::string number = std::to_string(port);
    EXPECT_EQ(statusOf(ask(port, get, hostOf(port, "localhost"))), "HTTP/1.1 200 OK");
    EXPECT_EQ(statusOf(ask(port, get, hostOf(port, "LOCALHOST"))), "HTTP/1.1 200 OK");
    EXPECT_EQ(statusOf(ask(port, get, hostOf(port, "[::1]"))), "HTTP/1.1 200 OK");
    EXPECT_EQ(statusOf(ask(port, get, "Connection: close\r\n")), "HTTP/1.1 403 Forbidden");
    EXPECT_EQ(statusOf(ask(port, get, hostOf(port, "rebound.example"))), "HTTP/1.1 403 Forbidden");
    EXPECT_EQ(statusOf(ask(port, get, "Host: 127.0.0.1\r\n")), "HTTP/1.1 403 Forbidden");
    EXPECT_EQ(statusOf(ask(port, get, own + "Origin: http://127.0.0.1:" + number + "\r\n")), "HTTP/1.1 200 OK");
    EXPECT_EQ(statusOf(ask(port, get, own + "Origin: http://elsewhere.example\r\n")), "HTTP/1.1 403 Forbidden");
    EXPECT_EQ(statusOf(ask(port, get, own + "Origin: null\r\n")), "HTTP/1.1 403 Forbidden");
    for (const char* const method : {"POST", "PUT", "DELETE", "OPTIONS"}) {
        EXPECT_THAT(statusOf(ask(port, std::string(method) + " / HTTP/1.1", own + "Content-Length: 0\r\n")),
                    StartsWith("HTTP/1.1 405"))
            << method;
    }
    EXPECT_EQ(statusOf(ask(port, "GET /etc/passwd HTTP/1.1", own)), "HTTP/1.1 404 Not Found");
    EXPECT_EQ(bodyOf(ask(port, "HEAD / HTTP/1.1", own)), "");
    program.endInput();
    program.finish();
}

/// There are fewer threads that answer than clients here that keep one waiting.
TEST(InspectServe, IsNotHeldUpByClientsThatDoNotRead) {
    const in_port_t port = Port::free();
    Running program({"--view", "stats", "--serve", std::to_string(port), "-"});
    waitForServer(port);
    std::vector<std::unique_ptr<Connection>> idle;
    for (int each = 0; each < 8; ++each) {
        idle.push_back(std::make_unique<Connection>(port));
        idle.back()->send("GET / HTTP/1.1\r\n" + hostOf(port) + (each % 2 == 0 ? "" : "\r\n"));
    }
    EXPECT_EQ(statusOf(read(port, "/")), "HTTP/1.1 200 OK");
    program.endInput();
    EXPECT_EQ(program.finish().status, 1); // nothing came
}

TEST(InspectServe, IsForLiveInputs) {
    const Finished finished = inspect({"--serve", "8080", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.errors, HasSubstr("--serve: it is for live inputs"));
}

TEST(InspectServe, NeedsAnAddressAndAFreePort) {
    EXPECT_THAT(inspect({"--serve", "host:8080", "-"}).errors, HasSubstr("--serve: host:8080: host is no"));
    const Port taken;
    const Finished finished = inspect({"--serve", std::to_string(taken.number()), "-"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.errors, HasSubstr("isdbt-inspect: --serve: 127.0.0.1:" + std::to_string(taken.number()) +
                                           " cannot be listened on\n"));
}
