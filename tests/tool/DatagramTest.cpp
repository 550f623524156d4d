#include "Running.h"
#include "Sender.h"
#include "Streams.h"

#include <chrono>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <thread>

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr std::size_t PACKETS_OF_DATAGRAM = 7;

ByteVector patOfOneProgram() {
    return longSection(0x00, {}, hex("0001 E100"));
}

ByteVector tot(const std::string& time) {
    return shortSection(0x73, join({hex("C079"), hex(time), hex("F000")}));
}

unsigned bcd(std::time_t number) {
    return static_cast<unsigned>(number / 10 * 16 + number % 10);
}

/// @param time since 1970
ByteVector totAt(std::time_t time) {
    const ByteVector clock{static_cast<QUOR_U8>(bcd(time / 3600 % 24)), static_cast<QUOR_U8>(bcd(time / 60 % 60)),
                           static_cast<QUOR_U8>(bcd(time % 60))};
    return shortSection(0x73, join({u16(static_cast<unsigned>(40587 + time / 86400)), clock, hex("F000")}));
}

ByteVector rtp(unsigned sequence, const ByteVector& payload) {
    return join({hex("80 21"), u16(sequence), hex("00000000 0A0B0C0D"), payload});
}

/// Ten datagrams; each but the last one carries a PAT and six null packets, and the last one a TOT.
std::vector<ByteVector> datagrams() {
    StreamBuilder stream;
    for (int count = 0; count < 9; ++count) {
        stream.section(PAT_PID, patOfOneProgram()).null(6);
    }
    stream.section(TOT_PID, tot("124500")).null(6);
    std::vector<ByteVector> parts;
    for (std::size_t at = 0; at < stream.bytes().size(); at += PACKETS_OF_DATAGRAM * PACKET_SIZE) {
        parts.push_back(slice(stream.bytes(), at, at + PACKETS_OF_DATAGRAM * PACKET_SIZE));
    }
    return parts;
}

/// Lets the program receive ten datagrams, or what becomes of them, the last of which carries a TOT.
template <class Change> Finished receive(const Sender& sender, const std::string& address, Change change) {
    Running program({"--view", "tables", "--table", "pat,tot", address});
    sender.waitForListener();
    std::size_t number = 0;
    for (const ByteVector& datagram : datagrams()) {
        change(number++, datagram);
    }
    EXPECT_TRUE(program.waitFor("unix_time"));
    program.signal(SIGINT);
    return program.finish();
}

Finished receive(const Sender& sender, const std::string& address) {
    return receive(sender, address,
                   [&sender](std::size_t /*number*/, const ByteVector& datagram) { sender.send(datagram); });
}

constexpr const char* ALL =
    "\n70 packets of 188 bytes, 10 sections on 2 PIDs: 2 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n";

} // namespace

TEST(InspectDatagrams, AreReceivedUntilItIsInterrupted) {
    const Sender sender;
    const Finished finished = receive(sender, "udp://127.0.0.1:" + sender.port());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, StartsWith("PAT  PID 0x0000  version 0  section 0/0  current  packet 1\n"));
    EXPECT_THAT(finished.output, EndsWith(ALL));
}

TEST(InspectDatagrams, OnAnyAddress) {
    const Sender sender;
    EXPECT_THAT(receive(sender, "udp://:" + sender.port()).output, EndsWith(ALL));
}

TEST(InspectDatagrams, OfIPv6) {
    const Sender sender(Sender::Family::IPv6, "::1");
    EXPECT_THAT(receive(sender, "udp://[::1]:" + sender.port()).output, EndsWith(ALL));
}

TEST(InspectDatagrams, OfAGroup) {
    const Sender sender(Sender::Family::IPv4, "239.255.17.23");
    EXPECT_THAT(receive(sender, "udp://239.255.17.23@127.0.0.1:" + sender.port()).output, EndsWith(ALL));
}

/// The loopback carries no groups of IPv6, but joins them.
TEST(InspectDatagrams, OfAGroupOfIPv6) {
    const Sender sender(Sender::Family::IPv6, "ff11::17:23");
    Running program({"--view", "tables", "--table", "tot", "udp://[ff11::17:23]@[::1]:" + sender.port()});
    sender.waitForListener();
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
}

TEST(InspectDatagrams, NoneAtAll) {
    const Sender sender;
    Running program({"--view", "tables", "udp://127.0.0.1:" + sender.port()});
    sender.waitForListener();
    sender.send({});
    std::this_thread::sleep_for(50ms);
    program.signal(SIGTERM);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, "3 faults:\n"
                               "! Transport stream: no PAT came\n"
                               "! Transport stream: no NIT came\n"
                               "! Transport stream: no SDT came\n"
                               "0 sections: 0 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n");
}

TEST(InspectDatagrams, RtpIsRecognisedByItself) {
    for (const char* const scheme : {"udp", "rtp"}) {
        const Sender sender;
        const Finished finished = receive(sender, scheme + ("://127.0.0.1:" + sender.port()),
                                          [&sender](std::size_t number, const ByteVector& datagram) {
                                              sender.send(rtp(static_cast<unsigned>(65530 + number), datagram));
                                          });
        EXPECT_EQ(finished.status, 0);
        EXPECT_THAT(finished.output, EndsWith(ALL));
    }
}

TEST(InspectDatagrams, LostRtpIsCounted) {
    const Sender sender;
    const Finished finished =
        receive(sender, "rtp://127.0.0.1:" + sender.port(), [&sender](std::size_t number, const ByteVector& datagram) {
            if (number != 3 && number != 4 && number != 7) {
                sender.send(rtp(static_cast<unsigned>(100 + number), datagram));
            }
        });
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output,
                EndsWith("\n49 packets of 188 bytes, 7 sections on 2 PIDs: 2 shown, 0 rejected, 0 CRC errors, "
                         "2 discontinuities (PID 0x0000), 3 lost RTP datagrams\n"));
}

TEST(InspectDatagrams, LostRtpIsAFaultInJson) {
    const Sender sender;
    const std::vector<ByteVector> sent = datagrams();
    Running program({"--json", "--table", "tot", "rtp://127.0.0.1:" + sender.port()});
    sender.waitForListener();
    sender.send(rtp(100, sent.front()));
    sender.send(rtp(103, sent.back()));
    EXPECT_TRUE(program.waitFor("unix_time"));
    program.signal(SIGINT);
    EXPECT_THAT(program.finish().output,
                HasSubstr(R"("fault":"input_losses","severity":"error","about":"Transport stream",)"
                          R"("text":"2 lost RTP datagrams","pid":null,)"));
}

/// Some networks send everything over two ways.
TEST(InspectDatagrams, RtpThatComesTwiceIsTakenOnce) {
    const Sender sender;
    const Finished finished =
        receive(sender, "rtp://127.0.0.1:" + sender.port(), [&sender](std::size_t number, const ByteVector& datagram) {
            sender.send(rtp(static_cast<unsigned>(100 + number), datagram));
            sender.send(rtp(static_cast<unsigned>(100 + number), datagram));
        });
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, EndsWith(ALL));
}

TEST(InspectDatagrams, WhatIsNoTransportStream) {
    const Sender sender;
    Running program({"--view", "tables", "udp://127.0.0.1:" + sender.port()});
    sender.waitForListener();
    for (int count = 0; count < 1000; ++count) {
        sender.send(fill(1400, 0x11));
        std::this_thread::sleep_for(100us);
    }
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, "isdbt-inspect: udp://127.0.0.1:" + sender.port() +
                                   ": not a transport stream: no packets of 188, 192 or 204 bytes found\n");
}

/// Thirty megabits a second, of which every packet is there in the end, though for most of the time nobody reads what
/// the program writes.
TEST(InspectDatagrams, NoneIsLostWhileTheOutputWaits) {
    constexpr std::size_t DATAGRAMS = 7125; // 30 Mbit/s for 2.5 s
    constexpr auto INTERVAL = std::chrono::nanoseconds(350877);
    const Sender sender;
    // The time goes back and forth, which is no fault of the input.
    Running program({"--view", "tables", "--table", "pat,tot", "--lenient", "udp://127.0.0.1:" + sender.port()});
    sender.waitForListener();
    ByteVector datagram =
        StreamBuilder().section(TOT_PID, tot("124500")).section(TOT_PID, tot("124501")).null(5).bytes();
    const auto begin = std::chrono::steady_clock::now();
    for (std::size_t number = 0; number < DATAGRAMS; ++number) {
        datagram[3] = static_cast<QUOR_U8>(0x10U | (2 * number & 0x0FU));
        datagram[PACKET_SIZE + 3] = static_cast<QUOR_U8>(0x10U | ((2 * number + 1) & 0x0FU));
        std::this_thread::sleep_until(begin + number * INTERVAL);
        sender.send(datagram);
    }
    sender.send(StreamBuilder().section(PAT_PID, patOfOneProgram()).null(6).bytes());
    ASSERT_TRUE(program.waitFor("PAT  PID 0x0000"));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, EndsWith("\n49882 packets of 188 bytes, 14251 sections on 2 PIDs: 14251 shown, "
                                          "0 rejected, 0 CRC errors, 0 discontinuities\n"));
}

/// What has arrived is read before it ends.
TEST(InspectDatagrams, TellTheZoneByTheTimeOfThisMachine) {
    const std::map<std::time_t, const char*> lines{
        {0, " (UTC-3 assumed), by this machine's clock rather UTC\n"},
        {-10800, " (UTC-3 assumed)\n"},
        {32400, " (UTC-3 assumed), by this machine's clock rather UTC+9\n"},
        {-3600, " (UTC-3 assumed)\n"},
    };
    for (const auto& [ahead, line] : lines) {
        const Sender sender;
        Running program({"--table", "tot", "udp://127.0.0.1:" + sender.port()});
        sender.waitForListener();
        sender.send(StreamBuilder().section(TOT_PID, totAt(std::time(nullptr) + ahead)).null(6).bytes());
        program.signal(SIGINT);
        EXPECT_THAT(program.finish().output, HasSubstr(line)) << ahead;
    }
}

/// That of their arrival, whatever the TOT says.
TEST(InspectDatagrams, HaveTheTimeOfThisMachine) {
    const Sender sender;
    Running program({"--json", "--view", "diff", "--table", "tot", "udp://127.0.0.1:" + sender.port()});
    sender.waitForListener();
    const std::time_t before = std::time(nullptr);
    sender.send(StreamBuilder().section(TOT_PID, tot("124500")).null(6).bytes());
    EXPECT_TRUE(program.waitFor(R"("time_source":"arrival")"));
    const std::string output = program.output();
    const std::string time = output.substr(output.find(R"("time":")") + 8, 24);
    std::tm shown{};
    EXPECT_NE(strptime(time.c_str(), "%Y-%m-%dT%H:%M:%S", &shown), nullptr) << time;
    EXPECT_GE(timegm(&shown), before);
    EXPECT_LE(timegm(&shown), std::time(nullptr));
    EXPECT_EQ(time.back(), 'Z');
    program.signal(SIGINT);
    program.finish();
}

TEST(InspectDatagrams, WrongAddresses) {
    for (const char* const address : {"udp://127.0.0.1", "rtp://localhost:5000", "udp://127.0.0.1@127.0.0.1:5000"}) {
        const Finished finished = inspect({address});
        EXPECT_EQ(finished.status, 2);
        EXPECT_THAT(finished.errors, StartsWith(std::string("isdbt-inspect: FILE: ") + address + ": "));
    }
}

TEST(InspectDatagrams, AddressesThatThisHostDoesNotHave) {
    const Finished unicast = inspect({"udp://192.0.2.200:5000"});
    EXPECT_EQ(unicast.status, 1);
    EXPECT_EQ(unicast.errors, "isdbt-inspect: udp://192.0.2.200:5000: bind: Cannot assign requested address\n");
    const Finished group = inspect({"udp://239.255.17.23@192.0.2.200:5000"});
    EXPECT_EQ(group.status, 1);
    EXPECT_EQ(group.errors,
              "isdbt-inspect: udp://239.255.17.23@192.0.2.200:5000: interface: Cannot assign requested address\n");
}
