#include "inputs/StreamAddress.h"

#include <arpa/inet.h>
#include <array>
#include <gtest/gtest.h>
#include <netinet/in.h>

namespace {

using inspect::StreamAddress;

/// "127.0.0.1 5000"
std::string text(const inspect::SocketAddress& address) {
    std::array<char, INET6_ADDRSTRLEN> host{};
    const bool isLong = address.storage.ss_family == AF_INET6;
    const auto& four = reinterpret_cast<const sockaddr_in&>(address.storage);
    const auto& six = reinterpret_cast<const sockaddr_in6&>(address.storage);
    inet_ntop(address.storage.ss_family,
              isLong ? static_cast<const void*>(&six.sin6_addr) : static_cast<const void*>(&four.sin_addr), host.data(),
              host.size());
    return std::string(host.data()) + ' ' + std::to_string(ntohs(isLong ? six.sin6_port : four.sin_port));
}

/// "239.1.1.1 5000, group on 192.168.1.7 5000"
std::string read(const std::string& address) {
    const StreamAddress read(address);
    return text(read.destination()) + (read.isMulticast() ? ", group" : "") +
           (read.interface() ? " on " + text(*read.interface()) : "");
}

std::string fault(const std::string& address) {
    try {
        const StreamAddress read(address);
        return "none";
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

} // namespace

TEST(StreamAddress, IsToldFromAFile) {
    EXPECT_TRUE(StreamAddress::isOne("udp://127.0.0.1:5000"));
    EXPECT_TRUE(StreamAddress::isOne("rtp://127.0.0.1:5000"));
    EXPECT_FALSE(StreamAddress::isOne("udp:/stream.ts"));
    EXPECT_FALSE(StreamAddress::isOne("stream.ts"));
    EXPECT_FALSE(StreamAddress::isOne("-"));
}

TEST(StreamAddress, OfThisHost) {
    EXPECT_EQ(read("udp://127.0.0.1:5000"), "127.0.0.1 5000");
    EXPECT_EQ(read("rtp://192.168.1.7:1"), "192.168.1.7 1");
    EXPECT_EQ(read("udp://[::1]:65535"), "::1 65535");
}

TEST(StreamAddress, OfAnyOfThisHost) {
    EXPECT_EQ(read("udp://:5000"), "0.0.0.0 5000");
    EXPECT_EQ(read("udp://@:5000"), "0.0.0.0 5000");
    EXPECT_EQ(read("udp://[::]:5000"), ":: 5000");
}

TEST(StreamAddress, OfAGroup) {
    EXPECT_EQ(read("udp://239.1.1.1:5000"), "239.1.1.1 5000, group");
    EXPECT_EQ(read("udp://@239.1.1.1:5000"), "239.1.1.1 5000, group");
    EXPECT_EQ(read("udp://239.1.1.1@:5000"), "239.1.1.1 5000, group");
    EXPECT_EQ(read("udp://[ff15::1]:5000"), "ff15::1 5000, group");
}

TEST(StreamAddress, OfAGroupOnAnInterface) {
    EXPECT_EQ(read("udp://239.1.1.1@192.168.1.7:5000"), "239.1.1.1 5000, group on 192.168.1.7 5000");
    EXPECT_EQ(read("udp://[ff15::1]@[fd00::7]:5000"), "ff15::1 5000, group on fd00::7 5000");
}

TEST(StreamAddress, Faults) {
    for (const char* const address : {"udp://", "udp://127.0.0.1", "udp://127.0.0.1:", "udp://127.0.0.1:0",
                                      "udp://127.0.0.1:65536", "udp://127.0.0.1:x", "udp://127.0.0.1:+5"}) {
        EXPECT_EQ(fault(address), "a port is missing, 1 to 65535") << address;
    }
    EXPECT_EQ(fault("udp://localhost:5000"), "localhost is no IPv4 or IPv6 address");
    EXPECT_EQ(fault("udp://300.1.1.1:5000"), "300.1.1.1 is no IPv4 or IPv6 address");
    EXPECT_EQ(fault("udp://ff15::1:5000"), "ff15::1: an IPv6 address stands in brackets");
    EXPECT_EQ(fault("udp://192.168.1.7@192.168.1.8:5000"), "192.168.1.7 is no multicast group");
    EXPECT_EQ(fault("udp://239.1.1.1@[::1]:5000"), "group and address must both be IPv4 or both IPv6");
}
