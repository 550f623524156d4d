// What a hostile stream can take of a receiver.

#include "Given.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace wire;
using dsmcc::EntryState;
using dsmcc::ModuleState;
using dsmcc::Naming;
using dsmcc::RefusalKind;
using testing::IsEmpty;

namespace {

const ByteVector ROOT = hex("01");

void expectRefusal(const std::optional<dsmcc::Refusal>& refusal, RefusalKind kind, const std::string& text) {
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->kind, kind);
    EXPECT_EQ(refusal->text, text);
}

/// An object carousel of one module.
void send(Given& given, const ByteVector& module) {
    given.take({gatewaySection(2, 1, ROOT), objectDii({2, 4066}, {{1, module.size()}})});
    given.take(blocks({}, 4066, module));
}

ByteVector times(std::size_t count, const ByteVector& bytes) {
    ByteVector all;
    for (; count != 0; --count) {
        all.insert(all.end(), bytes.begin(), bytes.end());
    }
    return all;
}

/// Directories, each with two names for the next one.
ByteVector doublingDirectories(unsigned levels) {
    ByteVector module = directory("srg", ROOT, {{"a", "dir", 1, hex("40")}, {"b", "dir", 1, hex("40")}});
    for (unsigned level = 0; level < levels; ++level) {
        const ByteVector next = u8(0x41U + level);
        module = join({module, directory("dir", u8(0x40U + level), {{"a", "dir", 1, next}, {"b", "dir", 1, next}})});
    }
    return module;
}

} // namespace

TEST(Limits, Carousels) {
    dsmcc::Limits limits;
    limits.carousels = 2;
    limits.silence = 10;
    Given given(limits);
    EXPECT_FALSE(given.takeAt(0, block({1, 0, 1, 0x11}, hex("00"))));
    EXPECT_FALSE(given.takeAt(5, dataDii({0x12}, {})));
    expectRefusal(given.takeAt(10, block({1, 0, 1, 0x13}, hex("00"))), RefusalKind::CarouselLimit,
                  "more than 2 carousels on the PID");
    expectRefusal(given.takeAt(10, dataDii({0x13}, {})), RefusalKind::CarouselLimit,
                  "more than 2 carousels on the PID");
    expectRefusal(given.takeAt(10, gatewaySection(0x13, 1, ROOT)), RefusalKind::CarouselLimit,
                  "more than 2 carousels on the PID");
    EXPECT_FALSE(given.takeAt(11, dataDii({0x13}, {}))); // the first has been silent for longer
    ASSERT_EQ(given.carousels().size(), 2U);
    EXPECT_EQ(given.carousels()[0].id, 0x12U);
    EXPECT_EQ(given.carousels()[1].id, 0x13U);
}

TEST(Limits, NoCarouselAtAll) {
    dsmcc::Limits limits;
    limits.carousels = 0;
    Given given(limits);
    EXPECT_EQ(given.refusalOf(dataDii({}, {})).kind, RefusalKind::CarouselLimit);
}

TEST(Limits, SayWhatIsTaken) {
    Given given;
    const std::size_t nothing = given.memory();
    given.take({dataDii({2, 4000}, {{1, 8000}}), block({1, 0}, fill(4000, 0x11))});
    const std::size_t withBlock = given.memory();
    EXPECT_GT(withBlock, nothing + 4000);
    EXPECT_LT(withBlock, nothing + 8000);
    given.take({dataDii({2, 4000}, {{1, 8000}}), block({1, 0}, fill(4000, 0x11))});
    EXPECT_EQ(given.memory(), withBlock);
    given.take({dataDii({2, 4000}, {{1, 8000, 1, fill(200, 0)}})});
    EXPECT_GT(given.memory(), withBlock + 200 * sizeof(dsmcc::Descriptor));
    given.take({dataDii({2, 4000}, {})});
    EXPECT_LT(given.memory(), nothing + 2000);
}

TEST(Limits, Groups) {
    dsmcc::Limits limits;
    limits.groups = 1;
    limits.silence = 10;
    Given given(limits);
    EXPECT_FALSE(given.takeAt(0, dataDii({2, 16, 0x80000002}, {{1, 5}})));
    expectRefusal(given.takeAt(1, dataDii({2, 16, 0x80000004}, {{2, 5}})), RefusalKind::GroupLimit, "more than 1 DIIs");
    EXPECT_FALSE(given.takeAt(11, dataDii({2, 16, 0x80000004}, {{2, 5}})));
    ASSERT_EQ(given.carousels()[0].groups.size(), 1U);
    EXPECT_EQ(given.carousels()[0].groups[0].modules.at(0)->id, 2);
}

TEST(Limits, Modules) {
    dsmcc::Limits limits;
    limits.modules = 2;
    Given given(limits);
    given.take({block({7}, hex("00")), dataDii({}, {{1, 5}, {2, 5}, {3, 5}})});
    const auto group = given.carousels()[0].groups.at(0);
    ASSERT_EQ(group.modules.size(), 1U);
    ASSERT_EQ(group.refusals.size(), 1U);
    expectRefusal(group.refusals[0], RefusalKind::ModuleLimit, "more than 2 modules");
    expectRefusal(given.refusalOf(block({8}, hex("00"))), RefusalKind::ModuleLimit, "more than 2 modules");
}

TEST(Limits, MemoryOfBlocks) {
    dsmcc::Limits limits;
    limits.memory = 2 * (16 + 64);
    Given given(limits);
    given.take({dataDii({2, 16}, {{1, 48}}), block({1, 0}, fill(16, 0)), block({1, 1}, fill(16, 0))});
    expectRefusal(given.refusalOf(block({1, 2}, fill(16, 0))), RefusalKind::MemoryLimit,
                  "the carousel takes more than 160 bytes");
    EXPECT_EQ(given.module(1).received(), 2U);
    expectRefusal(given.module(1).refusals.at(0), RefusalKind::MemoryLimit, "the carousel takes more than 160 bytes");
}

TEST(Limits, MemoryOfBlocksWithoutAnAnnouncement) {
    dsmcc::Limits limits;
    limits.memory = 2 * (16 + 64);
    Given given(limits);
    given.take({block({9, 0}, fill(16, 0)), block({9, 1}, fill(16, 0))});
    EXPECT_EQ(given.refusalOf(block({9, 2}, fill(16, 0))).kind, RefusalKind::MemoryLimit);
    given.take({dataDii({2, 16}, {{1, 16}}), block({1, 0}, fill(16, 0x11))}); // what is announced goes first
    EXPECT_EQ(given.content(1), fill(16, 0x11));
    EXPECT_THAT(given.carousels()[0].unannounced, IsEmpty());
}

TEST(Limits, MemoryIsFreeAgainWithTheNextVersion) {
    dsmcc::Limits limits;
    limits.memory = 3 * (16 + 64);
    Given given(limits);
    for (unsigned version = 0; version < 100; ++version) {
        const ByteVector module = fill(48, static_cast<QUOR_U8>(version));
        given.take({dataDii({2, 16, 0x80000002 + (version << 16U)}, {{1, 48, version}})});
        given.take(blocks({1, 0, version}, 16, module));
        ASSERT_EQ(given.content(1), module);
    }
}

TEST(Limits, ModuleLargerThanTheMemory) {
    Given given;
    given.take({dataDii({2, 0xFFFF}, {{1, 0xFFFF0000}}), block({1, 0}, hex("00"))});
    EXPECT_EQ(given.module(1).state, ModuleState::TooLarge);
    EXPECT_EQ(given.module(1).received(), 0U);
    expectRefusal(given.module(1).refusals.at(0), RefusalKind::MemoryLimit, "a module of 4294901760 bytes");
}

TEST(Limits, Objects) {
    dsmcc::Limits limits;
    limits.objects = 4;
    Given given(limits);
    send(given, join({directory("srg", ROOT, {{"a", "fil", 1, hex("05")}}), file(hex("05"), {}), file(hex("06"), {})}));
    EXPECT_EQ(given.module(1).objects.size(), 2U); // the binding and its tap are parts
    expectRefusal(given.module(1).refusals.at(0), RefusalKind::ObjectLimit,
                  "the carousel has more than 4 objects and parts of them");
}

TEST(Limits, ObjectsAreFreeAgainWithTheNextVersion) {
    dsmcc::Limits limits;
    limits.objects = 4;
    Given given(limits);
    const ByteVector module = join({directory("srg", ROOT, {{"a", "fil", 1, hex("05")}}), file(hex("05"), {})});
    for (unsigned version = 0; version < 10; ++version) {
        given.take({objectDii({2, 4066, 0x80000002 + (version << 16U)}, {{1, module.size(), version}})});
        given.take(blocks({1, 0, version}, 4066, module));
        ASSERT_EQ(given.module(1).objects.size(), 2U);
        ASSERT_THAT(given.module(1).refusals, IsEmpty());
    }
}

TEST(Limits, Entries) {
    dsmcc::Limits limits;
    limits.entries = 3;
    Given given(limits);
    send(given, doublingDirectories(2));
    EXPECT_EQ(given.tree().entries.size(), 3U);
    expectRefusal(given.tree().refusal, RefusalKind::EntryLimit, "the tree has more than 3 entries");
}

TEST(Limits, DirectoriesThatDoubleEachTime) {
    Given given;
    send(given, doublingDirectories(30));
    EXPECT_EQ(given.tree().entries.size(), 65536U);
    expectRefusal(given.tree().refusal, RefusalKind::EntryLimit, "the tree has more than 65536 entries");
}

TEST(Limits, Depth) {
    ByteVector module = directory("srg", ROOT, {{"d", "dir", 1, hex("40")}});
    for (unsigned level = 0; level < 40; ++level) {
        module = join({module, directory("dir", u8(0x40U + level), {{"d", "dir", 1, u8(0x41U + level)}})});
    }
    Given given;
    send(given, module);
    const auto entries = given.tree().entries;
    ASSERT_GE(entries.size(), 33U);
    EXPECT_EQ(entries[31].state, EntryState::Complete);
    EXPECT_EQ(entries[32].state, EntryState::TooDeep);
    EXPECT_EQ(entries[33].naming, Naming::None); // what is below
}

TEST(Limits, LengthOfNames) {
    dsmcc::Limits limits;
    limits.name = 3;
    Given given(limits);
    send(given, join({directory("srg", ROOT, {{"abc", "fil", 1, hex("05")}, {"abcd", "fil", 1, hex("05")}}),
                      file(hex("05"), {})}));
    EXPECT_EQ(given.tree().entries.at(0).naming, Naming::Good);
    EXPECT_EQ(given.tree().entries.at(1).naming, Naming::Unsafe);
}

/// A name of many components, in directories with many names.
TEST(Limits, PathsTakeNoMoreMemoryThanModules) {
    ByteVector component = join({u8(201), fill(200, 'n'), hex("00 00")});
    const ByteVector bound =
        join({hex("06"), times(6, component), hex("01"), ior("fil", 2, 1, hex("05")), hex("0000")});
    const ByteVector module =
        join({object("srg", ROOT, {}, join({hex("0003"), times(3, bound)})), file(hex("05"), {})});
    dsmcc::Limits limits;
    limits.memory = module.size() + 2 * 64;
    Given given(limits);
    send(given, module);
    ASSERT_EQ(given.module(1).state, ModuleState::Complete);
    EXPECT_EQ(given.tree().entries.size(), 3U);
    EXPECT_FALSE(given.tree().refusal);
    const ByteVector twice = join({directory("srg", ROOT, {{"a", "dir", 1, hex("04")}, {"b", "dir", 1, hex("04")}}),
                                   object("dir", hex("04"), {}, join({hex("0003"), times(3, bound)}))});
    limits.memory = twice.size() + 2 * 64;
    Given doubled(limits);
    send(doubled, twice);
    ASSERT_EQ(doubled.module(1).state, ModuleState::Complete);
    EXPECT_EQ(doubled.tree().entries.size(), 5U);
    expectRefusal(doubled.tree().refusal, RefusalKind::EntryLimit, "the tree has more than 5 entries");
}

TEST(Limits, Crc32NeedNotBeChecked) {
    ByteVector section = dataDii({}, {{1, 5}});
    section.back() ^= 0x01;
    Given checking;
    EXPECT_EQ(checking.refusalOf(section).kind, RefusalKind::Crc32);
    dsmcc::Limits limits;
    limits.crc32 = false;
    Given given(limits);
    EXPECT_FALSE(given.takeAt(0, section));
}

TEST(Limits, RefusalsOfAModuleAreKeptOnceAndFew) {
    Given given;
    given.take({dataDii({2, 16}, {{1, 16}})});
    for (unsigned number = 1; number < 100; ++number) {
        given.take({block({1, number}, hex("00")), block({1, number}, hex("00"))});
    }
    EXPECT_EQ(given.module(1).refusals.size(), 16U);
}

/// Each message seems to be as large as all the rest, and the next one to begin in it.
TEST(Hostile, MessagesWithinMessagesTakeNoLongerThanTheirBytes) {
    const ByteVector message = hex("42494F50 01000000 00000000 00 7FFFFFFF");
    Given given;
    send(given, times(100000, message));
    EXPECT_THAT(given.module(1).objects, IsEmpty());
}

/// It has no message_size that could lead on.
TEST(Hostile, AMessageThatEndsInItsHeader) {
    Given given;
    send(given, hex("42494F50 01"));
    EXPECT_EQ(given.module(1).refusals.at(0).text, "BIOP header takes 6 bytes, and 5 are left");
}

TEST(Hostile, KeysThatAreAllTheSame) {
    const ByteVector message = object("xyz", hex("05"), {}, {});
    Given given;
    send(given, times(60000, message));
    EXPECT_EQ(given.module(1).objects.size(), 60000U);
    EXPECT_EQ(given.module(1).refusals.size(), 16U);
}

TEST(Hostile, BlocksOfOneByte) {
    Given given;
    given.take({dataDii({2, 1}, {{1, 65536}})});
    for (unsigned number = 0; number < 65536; ++number) {
        given.take({block({1, number}, hex("00"))});
    }
    EXPECT_EQ(given.content(1), fill(65536, 0));
}

/// Blocks of two versions in turns are no reason to lose those of the one that is announced.
TEST(Hostile, VersionsInTurns) {
    const ByteVector module = fill(48, 0x11);
    const auto right = blocks({1, 0, 1}, 16, module);
    const auto wrong = blocks({1, 0, 2}, 16, fill(48, 0x22));
    Given given;
    given.take({dataDii({2, 16}, {{1, 48}}), wrong[0], right[0], wrong[1], right[1], wrong[2], right[2]});
    EXPECT_EQ(given.content(1), module);
}

/// Two DIIs that do not agree must not keep each other's modules from becoming complete.
TEST(Hostile, IndicationsThatDisagreeInTurns) {
    const ByteVector module = fill(48, 0x11);
    const auto all = blocks({1, 0, 1}, 16, module);
    const ByteVector one = dataDii({2, 16, 0x80000002}, {{1, 48}});
    const ByteVector other = dataDii({2, 16, 0x80000004}, {{1, 40}});
    Given given;
    given.take({one, all[0], other, all[1], one, other, all[2], one});
    EXPECT_EQ(given.content(1), module);
}
