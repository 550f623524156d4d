#include "packets/PacketReader.h"

#include "inputs/MemoryInput.h"

#include <gtest/gtest.h>

namespace {

using inspect::EventKind;

constexpr std::size_t PACKETS = 20;

/// Null packets, or of 204 bytes.
std::vector<std::uint8_t> stream(std::size_t spacing = 188) {
    std::vector<std::uint8_t> bytes(PACKETS * spacing, 0xAA);
    for (std::size_t at = 0; at < bytes.size(); at += spacing) {
        bytes[at] = 0x47;
    }
    return bytes;
}

struct Reading {
    std::size_t packets = 0;
    std::uint64_t skipped = 0;
    std::optional<inspect::Position> firstSkipped;
    inspect::Events events;
};

Reading read(std::vector<std::uint8_t> bytes) {
    Reading reading;
    inspect::MemoryInput input("memory", std::move(bytes));
    inspect::PacketReader reader(input, reading.events);
    while (reader.next() != nullptr) {
        ++reading.packets;
    }
    reading.skipped = reader.skippedBytes();
    reading.firstSkipped = reader.firstSkipped();
    return reading;
}

void expectOneLeftOut(std::size_t spacing) {
    std::vector<std::uint8_t> bytes = stream(spacing);
    bytes[7 * spacing] = 0x46;
    const Reading reading = read(bytes);
    EXPECT_EQ(reading.packets, PACKETS - 1);
    EXPECT_EQ(reading.skipped, spacing);
    ASSERT_EQ(reading.events.size(), 1U);
    EXPECT_EQ(reading.events[0].kind, EventKind::SyncByteError);
    EXPECT_EQ(reading.events[0].at.packet, 8U);
    EXPECT_EQ(reading.events[0].at.offset, 7 * spacing);
    ASSERT_TRUE(reading.firstSkipped);
    EXPECT_EQ(reading.firstSkipped->offset, 7 * spacing);
}

} // namespace

TEST(PacketReader, TellsNothingOfAStreamThatIsWhole) {
    EXPECT_EQ(read(stream()).packets, PACKETS);
    EXPECT_TRUE(read(stream()).events.empty());
    EXPECT_FALSE(read(stream()).firstSkipped);
}

TEST(PacketReader, LeavesOutASinglePacketWithoutSyncByte) {
    expectOneLeftOut(188);
    expectOneLeftOut(204);
}

TEST(PacketReader, LosesSyncWithTwo) {
    std::vector<std::uint8_t> bytes = stream();
    bytes[std::size_t{7} * 188] = 0x46;
    bytes[std::size_t{8} * 188] = 0x46;
    const Reading reading = read(bytes);
    EXPECT_EQ(reading.packets, PACKETS - 2);
    EXPECT_EQ(reading.skipped, 2 * 188U);
    ASSERT_EQ(reading.events.size(), 2U);
    EXPECT_EQ(reading.events[0].kind, EventKind::SyncLost);
    EXPECT_EQ(reading.events[0].at.offset, 7 * 188U);
    EXPECT_EQ(reading.events[1].kind, EventKind::BytesSkipped);
    EXPECT_EQ(reading.events[1].at.packet, 8U);
    EXPECT_EQ(reading.events[1].at.offset, 7 * 188U);
    ASSERT_TRUE(reading.firstSkipped);
    EXPECT_EQ(reading.firstSkipped->packet, 8U);
    EXPECT_EQ(reading.firstSkipped->offset, 7 * 188U);
    EXPECT_EQ(reading.events[1].amount, 2 * 188);
}

TEST(PacketReader, TellsWhatStandsInFrontAndAtTheEnd) {
    std::vector<std::uint8_t> bytes = stream();
    bytes.insert(bytes.begin(), 10, 0xAA);
    bytes.insert(bytes.end(), 200, 0xAA);
    const Reading reading = read(bytes);
    ASSERT_EQ(reading.events.size(), 3U);
    EXPECT_EQ(reading.events[0].kind, EventKind::BytesSkipped);
    EXPECT_EQ(reading.events[0].at.offset, 0U);
    EXPECT_EQ(reading.events[0].amount, 10);
    EXPECT_EQ(reading.events[1].kind, EventKind::SyncLost);
    EXPECT_EQ(reading.events[2].kind, EventKind::BytesSkipped);
    EXPECT_EQ(reading.events[2].at.offset, PACKETS * 188 + 10);
    EXPECT_EQ(reading.events[2].amount, 200);
}
