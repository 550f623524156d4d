#include "CarouselMessages.h"
#include "Running.h"
#include "Streams.h"
#include "support/Bytes.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

using testing::HasSubstr;

namespace {

constexpr std::size_t PACKET = 188;
constexpr std::size_t MEGABYTE = 1000000;

#ifdef QUOR_ISDBT_SANITIZE
constexpr int ROUNDS = 10;
constexpr std::size_t BOUND = 800 * MEGABYTE; // it keeps what was freed
#else
constexpr int ROUNDS = 100;
constexpr std::size_t BOUND = 48 * MEGABYTE; // where another machine is emulated, what it is emulated with counts, too
#endif

/// Sections that are never the same, on PIDs that they signal themselves.
class HostileStream {
public:
    /// The next packets.
    ByteVector next(std::size_t packets) {
        ByteVector bytes;
        for (std::size_t count = 0; count < packets; ++count) {
            const ByteVector packet = count % 4 == 0 ? nextPacket() : nullPacket();
            bytes.insert(bytes.end(), packet.begin(), packet.end());
        }
        return bytes;
    }

private:
    unsigned random(unsigned end) { return static_cast<unsigned>(m_random() % end); }

    LongHeader header() {
        LongHeader header;
        header.extension = static_cast<QUOR_U16>(random(0x10000));
        header.version = random(32);
        header.section = static_cast<QUOR_U8>(random(256));
        header.last = 255;
        return header;
    }

    ByteVector pat() {
        ByteVector programs;
        for (unsigned count = 0; count < 40; ++count) {
            programs = join({programs, u16(1 + random(0xFFFF)), u16(random(0x1FFF), 0xE000)});
        }
        return longSection(0x00, header(), programs);
    }

    ByteVector pmt() {
        ByteVector streams;
        for (unsigned count = 0; count < 30; ++count) {
            streams = join({streams,
                            {static_cast<QUOR_U8>(count % 2 == 0 ? 0x05 : 0x0D)},
                            u16(random(0x1FFF), 0xE000),
                            hex("F000")});
        }
        return longSection(0x02, header(), join({hex("E100 F000"), streams}));
    }

    ByteVector section() {
        switch (random(8)) {
        case 0:
            return pat();
        case 1:
        case 2:
            return pmt();
        case 3:
            return longSection(0x3D, header(), {});
        case 4:
            return longSection(0x74, header(), hex("F000 F000"));
        case 5:
            return longSection(0x42, header(), hex("0735 FF"));
        case 6:
            return longSection(0x74, header(), hex("F003 00")); // is rejected
        default:
            return withSectionLength(longSection(0x40, header(), hex("F000 F000")), 4093); // never ends
        }
    }

    ByteVector nextPacket() {
        const ByteVector content = section();
        const bool isPat = content[0] == 0x00;
        const unsigned pid = isPat ? 0 : random(0x1FFF);
        ByteVector packet = join(
            {hex("47"), u16(pid, 0x4000), {static_cast<QUOR_U8>(0x10 | m_continuity[pid]++ % 16)}, hex("00"), content});
        packet.resize(PACKET, 0xFF);
        return packet;
    }

    static ByteVector nullPacket() {
        ByteVector packet = hex("47 1FFF 10");
        packet.resize(PACKET, 0xFF);
        return packet;
    }

    std::mt19937 m_random{1};
    std::array<unsigned, 8192> m_continuity{};
};

/// Messages and blocks of carousels that never are the same, on any PID.
class HostileCarousels {
public:
    /// The next packets, of at least so many bytes.
    ByteVector next(std::size_t size) {
        StreamBuilder stream;
        while (stream.bytes().size() < size) {
            stream.sections(0x0100 + random(80), {section()});
        }
        return stream.bytes();
    }

private:
    unsigned random(unsigned end) { return static_cast<unsigned>(m_random() % end); }

    ByteVector section() {
        const unsigned id = random(8);
        if (random(8) != 0) {
            return wire::block({random(500), random(20), random(4), id}, fill(4066, static_cast<QUOR_U8>(random(256))));
        }
        std::vector<wire::Announced> modules;
        for (unsigned count = 0; count < 80; ++count) {
            modules.push_back({random(500), 4066U * (1 + random(20)), random(4), fill(2U * random(8), 0)});
        }
        return wire::objectDii({id, 4066, 0x80000000 | random(0x20000)}, modules);
    }

    std::mt19937 m_random{1};
};

} // namespace

/// As many sections as a multiplex carries in hours, each of which says something new, or does not end.
TEST(InspectMemory, StaysFlatWhateverComes) {
    constexpr std::size_t BLOCK = 5319; // a megabyte
    HostileStream stream;
    std::vector<ByteVector> blocks;
    for (int count = 0; count < 10; ++count) {
        blocks.push_back(stream.next(BLOCK));
    }
    Running program({"--view", "tables", "--table", "tot", "-"});
    for (int round = 0; round < ROUNDS; ++round) {
        program.write(blocks[static_cast<std::size_t>(round % 10)]);
    }
    program.endInput();
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr(std::to_string(5319 * ROUNDS) + " packets of 188 bytes"));
    EXPECT_GT(program.memory(), MEGABYTE);
    EXPECT_LT(program.memory(), BOUND);
}

/// Blocks and announcements that displace each other: what is kept of them, and what is written of that in the end.
TEST(InspectMemory, StaysFlatWhateverCarouselsBring) {
    HostileCarousels stream;
    std::vector<ByteVector> blocks;
    for (int count = 0; count < 5; ++count) {
        blocks.push_back(stream.next(2 * MEGABYTE));
    }
    Running program({"--view", "carousels", "--json", "-"});
    for (int round = 0; round < 20; ++round) {
        program.write(blocks[static_cast<std::size_t>(round % 5)]);
    }
    program.endInput();
    EXPECT_EQ(program.finish().status, 3);
    EXPECT_LT(program.memory(), 4 * BOUND);
}
