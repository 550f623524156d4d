#include "Given.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace wire;
using dsmcc::CarouselType;
using dsmcc::ModuleState;
using dsmcc::RefusalKind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

const ByteVector MODULE = text("The bytes of a module that takes three blocks."); // 46
const auto BLOCKS = blocks({}, 16, MODULE);

ByteVector announcing(std::size_t size = 46, unsigned version = 1, unsigned transactionId = 0x80000002) {
    return dataDii({2, 16, transactionId}, {{1, size, version}});
}

} // namespace

TEST(Modules, BlocksInOrder) {
    Given given;
    given.take({announcing(), BLOCKS[0], BLOCKS[1]});
    const auto& module = given.module(1);
    EXPECT_EQ(module.state, ModuleState::Incomplete);
    EXPECT_EQ(module.version, 1);
    EXPECT_EQ(module.info.size, 46U);
    EXPECT_EQ(module.blockCount, 3U);
    EXPECT_EQ(module.received(), 2U);
    EXPECT_THAT(module.missing(), ElementsAre(Pair(2, 2)));
    EXPECT_EQ(module.content().size, 0U);
    given.take({BLOCKS[2]});
    EXPECT_EQ(given.module(1).state, ModuleState::Complete);
    EXPECT_EQ(given.module(1).received(), 3U);
    EXPECT_THAT(given.module(1).missing(), IsEmpty());
    EXPECT_EQ(given.content(1), MODULE);
    EXPECT_EQ(given.module(1).completed, 3);
}

TEST(Modules, BlocksInAnyOrderAndTwice) {
    Given given;
    given.take({BLOCKS[2], BLOCKS[2], announcing(), BLOCKS[0], BLOCKS[2], BLOCKS[1], announcing(), BLOCKS[0]});
    EXPECT_EQ(given.content(1), MODULE);
}

/// Of what is announced between them, too; what no module of its size has is gone.
TEST(Modules, BlocksCameForTheFirstTime) {
    const auto at = [](std::uint16_t block, double seconds) {
        return testing::AllOf(testing::Field(&dsmcc::Arrival::block, block),
                              testing::Field(&dsmcc::Arrival::seconds, seconds));
    };
    Given given;
    given.take({BLOCKS[2], BLOCKS[2], announcing(), BLOCKS[0], BLOCKS[2]});
    EXPECT_THAT(given.module(1).arrivals, ElementsAre(at(2, 0), at(0, 3)));
    given.take({BLOCKS[1], BLOCKS[0]});
    EXPECT_EQ(given.module(1).state, ModuleState::Complete);
    EXPECT_THAT(given.module(1).arrivals, ElementsAre(at(2, 0), at(0, 3), at(1, 5)));
    Given shorter;
    shorter.take({BLOCKS[1], BLOCKS[2], announcing(32)});
    EXPECT_THAT(shorter.module(1).arrivals, ElementsAre(at(1, 0)));
}

TEST(Modules, AllBlocksBeforeTheirAnnouncement) {
    Given given;
    given.take(BLOCKS);
    const auto carousels = given.carousels();
    ASSERT_EQ(carousels.size(), 1U);
    EXPECT_EQ(carousels[0].type, CarouselType::Unknown);
    EXPECT_EQ(carousels[0].id, 2U);
    ASSERT_EQ(carousels[0].unannounced.size(), 1U);
    EXPECT_EQ(carousels[0].unannounced[0]->state, ModuleState::Unannounced);
    EXPECT_EQ(carousels[0].unannounced[0]->received(), 3U);
    given.take({announcing()});
    EXPECT_EQ(given.content(1), MODULE);
    EXPECT_THAT(given.carousels()[0].unannounced, IsEmpty());
}

TEST(Modules, MissingBlocksInRanges) {
    Given given;
    const ByteVector module = fill(10 * 16, 0x11);
    const auto all = blocks({}, 16, module);
    given.take({announcing(160), all[0], all[1], all[4], all[8]});
    EXPECT_THAT(given.module(1).missing(), ElementsAre(Pair(2, 3), Pair(5, 7), Pair(9, 9)));
}

/// Their section_number is that of the blocks 256 before.
TEST(Modules, MoreThan256Blocks) {
    ByteVector module;
    for (unsigned number = 0; number < 600; ++number) {
        module = join({module, u16(number)});
    }
    Given given;
    given.take({dataDii({2, 2}, {{1, 1200}})});
    given.take(blocks({}, 2, module));
    EXPECT_EQ(given.content(1), module);
}

TEST(Modules, OfNoByteAreComplete) {
    Given given;
    given.take({announcing(0)});
    EXPECT_EQ(given.module(1).state, ModuleState::Complete);
    EXPECT_EQ(given.module(1).blockCount, 0U);
    EXPECT_EQ(given.content(1), ByteVector());
}

TEST(Modules, OfTheLargestNumberOfBlocks) {
    Given given;
    given.take({dataDii({2, 1}, {{1, 65536}}), block({1, 65535}, hex("22"))});
    EXPECT_EQ(given.module(1).blockCount, 65536U);
    EXPECT_THAT(given.module(1).missing(), ElementsAre(Pair(0, 65534)));
}

TEST(Modules, OfMoreBlocksThanThereAreNumbers) {
    Given given;
    given.take({dataDii({2, 1}, {{1, 65537}}), block({1, 0}, hex("22"))});
    EXPECT_EQ(given.module(1).state, ModuleState::BadBlockSize);
    EXPECT_EQ(given.module(1).received(), 0U);
    ASSERT_EQ(given.module(1).refusals.size(), 1U);
    EXPECT_EQ(given.module(1).refusals[0].kind, RefusalKind::BlockSize);
    EXPECT_EQ(given.module(1).refusals[0].text, "a module of 65537 bytes in blocks of 1");
}

TEST(Modules, InBlocksOfNoByte) {
    Given given;
    given.take({block({}, {}), dataDii({2, 0}, {{1, 5}}), block({}, {})});
    EXPECT_EQ(given.module(1).state, ModuleState::BadBlockSize);
}

TEST(Modules, BlockBehindTheLast) {
    Given given;
    given.take({announcing()});
    const auto refusal = given.refusalOf(block({1, 3}, hex("00")));
    EXPECT_EQ(refusal.kind, RefusalKind::BlockNumber);
    EXPECT_EQ(refusal.at, 26U);
    EXPECT_EQ(refusal.text, "block 3 of 3");
    EXPECT_EQ(given.module(1).refusals.size(), 1U);
}

TEST(Modules, BlocksOfAWrongLength) {
    Given given;
    given.take({block({1, 1}, fill(15, 0)), announcing()});
    EXPECT_EQ(given.module(1).received(), 0U);
    EXPECT_EQ(given.module(1).refusals.at(0).text, "block 1 has 15 bytes instead of 16");
    EXPECT_EQ(given.refusalOf(block({1, 0}, fill(17, 0))).kind, RefusalKind::BlockLength);
    EXPECT_EQ(given.refusalOf(block({1, 2}, fill(16, 0))).text, "block 2 has 16 bytes instead of 14");
    EXPECT_EQ(given.module(1).received(), 0U);
}

TEST(Modules, BlockWithOtherBytesInTheSameVersion) {
    Given given;
    given.take({announcing(), BLOCKS[0]});
    const ByteVector other = block({1, 0}, fill(16, 0x55));
    EXPECT_EQ(given.refusalOf(other).kind, RefusalKind::BlockChanged);
    given.take({BLOCKS[1], BLOCKS[2]});
    EXPECT_EQ(given.refusalOf(other).text, "block 0 came again with other bytes");
    EXPECT_EQ(given.content(1), MODULE);
    EXPECT_EQ(given.module(1).refusals.size(), 1U);
}

TEST(Modules, ANewVersionDropsTheOldBlocks) {
    Given given;
    given.take({announcing(), BLOCKS[0], BLOCKS[1], announcing(46, 2, 0x80010002), BLOCKS[2]});
    EXPECT_EQ(given.module(1).version, 2);
    EXPECT_EQ(given.module(1).received(), 0U);
    ASSERT_EQ(given.carousels()[0].unannounced.size(), 1U); // it came behind its time
    EXPECT_EQ(given.carousels()[0].unannounced[0]->version, 1);
    const ByteVector next = fill(46, 0x33);
    given.take(blocks({1, 0, 2}, 16, next));
    EXPECT_EQ(given.content(1), next);
}

TEST(Modules, ANewVersionBeforeItsAnnouncement) {
    Given given;
    given.take({announcing()});
    given.take(BLOCKS);
    const ByteVector next = fill(20, 0x33);
    given.take(blocks({1, 0, 2}, 16, next));
    EXPECT_EQ(given.content(1), MODULE);
    given.take({announcing(20, 2, 0x80010002)});
    EXPECT_EQ(given.content(1), next);
    EXPECT_EQ(given.module(1).version, 2);
}

TEST(Modules, BackToTheOldVersion) {
    Given given;
    given.take({announcing(46, 255)});
    given.take(blocks({1, 0, 255}, 16, MODULE));
    given.take({announcing(46, 0, 0x80010002), announcing(46, 255, 0x80020002)});
    EXPECT_EQ(given.module(1).received(), 0U);
    given.take(blocks({1, 0, 255}, 16, MODULE));
    EXPECT_EQ(given.content(1), MODULE);
}

TEST(Modules, AnotherSizeInTheSameVersionBeginsAnew) {
    Given given;
    given.take({announcing()});
    given.take(BLOCKS);
    given.take({announcing(45)});
    EXPECT_EQ(given.module(1).state, ModuleState::Incomplete);
    EXPECT_EQ(given.module(1).received(), 0U);
}

TEST(Modules, StayThroughAnUpdateOfOthers) {
    Given given;
    given.take({dataDii({}, {{1, 46}, {2, 5}})});
    given.take(BLOCKS);
    const auto revision = given.carousels()[0].revision;
    given.take({dataDii({2, 16, 0x80010003}, {{1, 46}, {3, 5}})});
    EXPECT_EQ(given.content(1), MODULE);
    EXPECT_GT(given.carousels()[0].revision, revision);
    ASSERT_EQ(given.carousels()[0].groups.size(), 1U);
    EXPECT_EQ(given.carousels()[0].groups[0].dii->transactionId, 0x80010003U);
    EXPECT_EQ(given.carousels()[0].groups[0].modules.size(), 2U);
    EXPECT_EQ(given.carousels()[0].groups[0].modules[1]->id, 3);
}

TEST(Modules, RevisionStaysWhereNothingChanges) {
    Given given;
    given.take({announcing()});
    given.take(BLOCKS);
    const auto revision = given.carousels()[0].revision;
    given.take({announcing()});
    given.take(BLOCKS);
    EXPECT_EQ(given.carousels()[0].revision, revision);
}

TEST(Modules, CycleTime) {
    Given given;
    given.takeAt(10, announcing());
    given.takeAt(11, BLOCKS[1]);
    given.takeAt(12, BLOCKS[2]);
    given.takeAt(13, BLOCKS[0]);
    given.takeAt(14, BLOCKS[1]);
    given.takeAt(19, BLOCKS[1]);
    const auto& repetition = given.module(1).repetition;
    EXPECT_EQ(given.module(1).turnBlock, 1);
    EXPECT_EQ(repetition.count, 3U);
    EXPECT_EQ(repetition.first, 11);
    EXPECT_EQ(repetition.last, 19);
    EXPECT_EQ(repetition.shortest, 3);
    EXPECT_EQ(repetition.longest, 5);
    EXPECT_EQ(given.carousels()[0].first, 10);
    EXPECT_EQ(given.carousels()[0].last, 19);
    EXPECT_EQ(given.carousels()[0].groups[0].repetition.count, 1U);
}

TEST(Modules, AClockThatGoesBack) {
    Given given;
    given.takeAt(10, announcing());
    given.takeAt(10, BLOCKS[0]);
    given.takeAt(4, BLOCKS[0]);
    EXPECT_EQ(given.module(1).repetition.shortest, 0);
    EXPECT_EQ(given.module(1).repetition.longest, 0);
}

TEST(Modules, TwiceInOneIndication) {
    Given given;
    given.take({dataDii({}, {{1, 46}, {1, 5}})});
    given.take(BLOCKS);
    const auto group = given.carousels().at(0).groups.at(0);
    EXPECT_EQ(given.content(1), MODULE);
    EXPECT_EQ(group.modules.size(), 1U);
    ASSERT_EQ(group.refusals.size(), 1U);
    EXPECT_EQ(group.refusals[0].kind, RefusalKind::AnnouncedTwice);
}

TEST(Modules, OfTwoIndications) {
    Given given;
    given.take({dataDii({2, 16, 0x80000002}, {{1, 46}}), dataDii({2, 16, 0x80000004}, {{2, 3}, {1, 46}})});
    given.take(BLOCKS);
    const auto carousel = given.carousels().at(0);
    ASSERT_EQ(carousel.groups.size(), 2U);
    EXPECT_EQ(carousel.groups[0].modules.at(0), carousel.groups[1].modules.at(1));
    EXPECT_EQ(given.content(1), MODULE);
}

TEST(Modules, AnnouncedOtherwiseByAnotherIndication) {
    Given given;
    given.take({dataDii({2, 16, 0x80000002}, {{1, 46}}), dataDii({2, 16, 0x80000004}, {{1, 47}})});
    given.take(BLOCKS);
    const auto carousel = given.carousels().at(0);
    EXPECT_EQ(given.content(1), MODULE);
    EXPECT_THAT(carousel.groups[1].modules, IsEmpty());
    EXPECT_EQ(carousel.groups[1].refusals.at(0).text, "module 1 is announced otherwise by another DII");
}

TEST(Carousels, SeveralOnOnePid) {
    Given given;
    given.take({dataDii({2, 16}, {{1, 46}}), dataDii({3, 16}, {{1, 46}})});
    given.take(BLOCKS);
    given.take(blocks({1, 0, 1, 3}, 16, fill(46, 0x77)));
    const auto carousels = given.carousels();
    ASSERT_EQ(carousels.size(), 2U);
    EXPECT_EQ(carousels[0].id, 2U);
    EXPECT_EQ(carousels[1].id, 3U);
    EXPECT_EQ(bytesOf(carousels[0].groups.at(0).modules.at(0)->content()), MODULE);
    EXPECT_EQ(bytesOf(carousels[1].groups.at(0).modules.at(0)->content()), fill(46, 0x77));
}

TEST(Carousels, GroupsOfTwoLayers) {
    const ByteVector dsi = messageSection(
        0x1006, 0x80000000,
        join({fill(20, 0xFF), hex("0000"),
              counted16(
                  hex("0003 80000004 0000002E 0000 0000 80000002 0000002E 0000 0000 80000008 00 000000 0000 0000"))}));
    Given given;
    given.take({dataDii({0x101, 16, 0x80010002}, {{1, 46}})}); // its version is another one
    EXPECT_EQ(given.carousels().at(0).id, 0x101U);
    given.take({dsi, dataDii({0x102, 16, 0x80000004}, {{1, 46}}), dataDii({0x103, 16, 0x80000006}, {{1, 46}})});
    given.take(blocks({1, 0, 1, 0x101}, 16, MODULE));
    given.take(blocks({1, 0, 1, 0x102}, 16, fill(46, 0x77)));
    const auto carousels = given.carousels();
    ASSERT_EQ(carousels.size(), 2U);
    EXPECT_EQ(carousels[0].type, CarouselType::Data);
    EXPECT_FALSE(carousels[0].id);
    ASSERT_EQ(carousels[0].groups.size(), 3U);
    EXPECT_EQ(carousels[0].groups[0].dii->downloadId, 0x102U);
    EXPECT_EQ(bytesOf(carousels[0].groups[0].modules.at(0)->content()), fill(46, 0x77));
    EXPECT_EQ(carousels[0].groups[1].dii->downloadId, 0x101U);
    EXPECT_EQ(bytesOf(carousels[0].groups[1].modules.at(0)->content()), MODULE);
    EXPECT_EQ(carousels[0].groups[2].dii, nullptr);
    EXPECT_EQ(carousels[0].groups[2].info->id, 0x80000008U);
    EXPECT_EQ(carousels[1].id, 0x103U);
    EXPECT_EQ(carousels[1].dsi, nullptr);
}

TEST(Carousels, ServerInitiateOfAnObjectCarousel) {
    Given given;
    given.take({gatewaySection(2, 1, hex("01")), gatewaySection(2, 1, hex("01"))});
    const auto carousel = given.carousels().at(0);
    EXPECT_EQ(carousel.type, CarouselType::Object);
    EXPECT_EQ(carousel.id, 2U);
    EXPECT_EQ(carousel.repetition.count, 2U);
    EXPECT_EQ(carousel.dsi->gateway->location->moduleId, 1);
    EXPECT_THAT(carousel.groups, IsEmpty());
}
