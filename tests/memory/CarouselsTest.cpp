// What a carousel leaves behind when memory runs out, and what it can do then.

#include "dsmcc/Carousels.h"
#include "CarouselMessages.h"
#include "OutOfMemory.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

#include <new>

using namespace wire;

namespace {

/// A directory with a file, a stream event, and a compressed module that is empty.
std::vector<ByteVector> objectCarousel() {
    const ByteVector root =
        join({directory("srg", hex("01"), {{"main.ncl", "fil", 1, hex("02")}, {"e", "ste", 1, hex("03")}}),
              file(hex("02"), text("A document that is long enough for the heap.")),
              object("ste", hex("03"), hex("00 00000000 00000000 00 00 00 0001 03 696D00"),
                     join({hex("01"), objectTap(0x0C), hex("01 0007")}))});
    const ByteVector deflated = hex("789C 03 00 00000001");
    std::vector<ByteVector> sections = {
        gatewaySection(2, 1, hex("01")), block({9, 0}, text("announced by nobody")),
        objectDii({2, 64}, {{1, root.size()}, {2, deflated.size(), 1, hex("09 05 78 00000000")}}),
        block({2, 0}, deflated)};
    for (const ByteVector& each : blocks({}, 64, root)) {
        sections.push_back(each);
    }
    return sections;
}

void takeAll(dsmcc::Carousels& carousels, const std::vector<ByteVector>& sections) {
    for (const ByteVector& each : sections) {
        carousels.take({each.data(), each.size()}, 0);
    }
}

void expectAllThere(const dsmcc::Carousels& carousels) {
    const auto all = carousels.carousels();
    const auto tree = carousels.tree(all.at(0));
    ASSERT_EQ(tree.entries.size(), 2U);
    EXPECT_EQ(tree.entries[0].state, dsmcc::EntryState::Complete);
    EXPECT_EQ(tree.entries[0].content().size, 44U);
    EXPECT_EQ(tree.entries[1].object->stream->events.at(0).id, 7);
    EXPECT_EQ(all.at(0).groups.at(0).modules.at(1)->state, dsmcc::ModuleState::Complete);
}

} // namespace

TEST(CarouselsOutOfMemory, LeaveNothingBehindAndTakeTheNextTurn) {
    const std::vector<ByteVector> sections = objectCarousel();
    const int before = allocationsAlive();
    bool enough = false;
    for (int allowed = 0; allowed < 10000 && !enough; ++allowed) {
        dsmcc::Carousels carousels;
        try {
            const OutOfMemory limit(allowed);
            takeAll(carousels, sections);
            enough = true;
        } catch (const std::bad_alloc&) {
            takeAll(carousels, sections);
        }
        expectAllThere(carousels);
    }
    EXPECT_TRUE(enough);
    EXPECT_EQ(allocationsAlive(), before);
}

TEST(CarouselsOutOfMemory, TreesLeaveNothingBehind) {
    dsmcc::Carousels carousels;
    takeAll(carousels, objectCarousel());
    const int before = allocationsAlive();
    bool enough = false;
    for (int allowed = 0; allowed < 10000 && !enough; ++allowed) {
        try {
            const OutOfMemory limit(allowed);
            enough = carousels.tree(carousels.carousels().at(0)).entries.size() == 2;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(allocationsAlive(), before) << "with room for " << allowed;
        }
    }
    EXPECT_TRUE(enough);
    EXPECT_EQ(allocationsAlive(), before);
}
