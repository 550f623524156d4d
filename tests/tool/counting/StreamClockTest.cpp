#include "packets/StreamClock.h"

#include <array>
#include <gtest/gtest.h>

namespace {

/// A packet with a reference of so many thirtieths of a second.
std::array<std::uint8_t, 188> reference(std::uint64_t thirtieths) {
    const std::uint64_t base = thirtieths * 3000;
    std::array<std::uint8_t, 188> packet{0x47,
                                         0x01,
                                         0x00,
                                         0x20,
                                         0xB7,
                                         0x10,
                                         static_cast<std::uint8_t>(base >> 25U),
                                         static_cast<std::uint8_t>(base >> 17U),
                                         static_cast<std::uint8_t>(base >> 9U),
                                         static_cast<std::uint8_t>(base >> 1U),
                                         static_cast<std::uint8_t>((base & 1U) << 7U | 0x7EU),
                                         0x00};
    return packet;
}

/// A clock of its own events.
struct Clock {
    inspect::Events events;
    inspect::StreamClock clock{events};

    void take(const std::array<std::uint8_t, 188>& packet, std::uint64_t number) {
        inspect::Position position{number, number * 188, {}, {}};
        clock.take(packet.data(), position);
    }

    std::optional<double> duration(std::uint64_t packets) const { return clock.duration(packets); }
};

} // namespace

TEST(StreamClock, KnowsNoDurationBeforeTwoReferences) {
    Clock clock;
    EXPECT_EQ(clock.duration(100), std::nullopt);
    clock.take(reference(0), 10);
    EXPECT_EQ(clock.duration(100), std::nullopt);
}

/// Ten packets in each thirtieth of a second, the first reference in the tenth packet.
TEST(StreamClock, PacketsBeforeTheFirstReferenceTakeTimeToo) {
    Clock clock;
    for (std::uint64_t number = 10; number <= 300; number += 10) {
        clock.take(reference(7 + number / 10), number);
    }
    EXPECT_DOUBLE_EQ(*clock.duration(300), 1.0);
}

/// The rate is not known before the references jump; time begins where it is.
TEST(StreamClock, TimeBeginsWithTheFirstTwoReferencesThatBelongTogether) {
    Clock clock;
    clock.take(reference(900), 10);
    clock.take(reference(0), 150);
    clock.take(reference(15), 300);
    EXPECT_DOUBLE_EQ(*clock.duration(300), 1.0);
}
