#include "pat/TPATTable.h"

#include "sdt/TSDTTable.h"
#include "support/DirtyMemory.h"
#include "support/Sections.h"
#include "support/Survival.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <type_traits>

using Quor::TISDBTTable;
using Quor::TISDBTVersionedTable;
using Quor::TPATTable;
using Quor::TProgramAssociation;

namespace {

ByteVector pat(const ByteVector& entries, const LongHeader& header = {}) {
    return longSection(0x00, header, entries);
}

/// Entries 1, 2, 3, ... with PIDs of the same numbers from byte 8 on to the end, behind a header with section_length.
ByteVector longBuffer(std::size_t size, unsigned sectionLength) {
    ByteVector wire = hex("00 B000 0001 C1 00 00");
    for (unsigned number = 1; wire.size() < size; ++number) {
        for (const QUOR_U8 byte : join({u16(number & 0xFFFF), u16(number & 0x1FFF)})) {
            wire.push_back(byte);
        }
    }
    wire.resize(size);
    return withSectionLength(wire, sectionLength);
}

const ByteVector THREE_ENTRIES = hex("0000 E010  0001 E100  0002 E101");

void expectThreeEntries(const TPATTable& table) {
    EXPECT_EQ(table.getNetworkPid(), 0x0010);
    EXPECT_EQ(taken(table.getProgramNumbers()), (std::vector<QUOR_U16>{1, 2}));
}

void expectTooShort(const ByteVector& section, unsigned left) {
    expectNoTable<TPATTable>(
        section, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TPATTable::parse: Item length not valid: 4 > " + std::to_string(left) + ". Aborting!"});
}

} // namespace

TEST(TPATTable, ChecksTheSectionHeader) {
    expectSectionChecks<TPATTable>(0x00, 10, pat(THREE_ENTRIES), expectThreeEntries);
}

TEST(TPATTable, SwitchesMakeNoDifference) {
    expectSwitchesMakeNoDifference<TPATTable>(pat(THREE_ENTRIES), expectThreeEntries);
}

TEST(TPATTable, ChecksTheVersion) {
    const auto versions = expectVersionChecks<TPATTable>([](const LongHeader& header) {
        return pat(join({u16(header.version), hex("E100")}), header);
    });
    EXPECT_EQ(taken(versions.previous->getProgramNumbers()), std::vector<QUOR_U16>{5});
    EXPECT_EQ(taken(versions.next->getProgramNumbers()), std::vector<QUOR_U16>{6});
}

TEST(TPATTable, ChecksTheTypeOfThePreviousTable) {
    expectTypeCheck<TPATTable>(pat(THREE_ENTRIES));
}

TEST(TPATTable, StartsEmptyOverACopy) {
    const HeapBytes bytes(pat(THREE_ENTRIES, {0x02E1, 12}));
    const InDirtyMemory<TPATTable> table(bytes.data(), bytes.size());
    EXPECT_EQ(table->getType(), TISDBTTable::PAT);
    EXPECT_NE(table->getData(), bytes.data());
    EXPECT_EQ(table->getDataLength(), 24U);
    EXPECT_EQ(table->getTransportStreamID(), 0);
    EXPECT_EQ(table->getNetworkPid(), 0);
    EXPECT_EQ(table->size(), 0U);
}

TEST(TPATTable, ListsServicesAndNetworkPid) {
    const auto parsed = parseSection<TPATTable>(pat(THREE_ENTRIES, {0x02E1, 12}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getType(), TISDBTTable::PAT);
    EXPECT_EQ(parsed->getTransportStreamID(), 0x02E1);
    EXPECT_EQ(parsed->getNetworkPid(), 0x0010);
    EXPECT_EQ(parsed->size(), 2U);
    EXPECT_EQ(taken(parsed->getProgramNumbers()), (std::vector<QUOR_U16>{1, 2}));
    EXPECT_EQ(parsed->get(1)->getProgramNumber(), 1);
    EXPECT_EQ(parsed->get(1)->getProgramMapPid(), 0x0100);
    EXPECT_EQ(parsed->get(2)->getProgramMapPid(), 0x0101);
    EXPECT_EQ(parsed->get(0), nullptr);
    EXPECT_EQ(parsed->get(3), nullptr);
}

TEST(TPATTable, SectionWithoutEntriesIsEmpty) {
    const ByteVector wire = pat({});
    ASSERT_EQ(wire[2], 9); // section_length
    const auto parsed = parseSection<TPATTable>(wire);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed->size(), 0U);
    EXPECT_EQ(taken(parsed->getProgramNumbers()), std::vector<QUOR_U16>{});
    EXPECT_EQ(parsed->get(0), nullptr);
    EXPECT_EQ(parsed->get(1), nullptr);
    EXPECT_EQ(parsed->getNetworkPid(), 0);
}

TEST(TPATTable, ReservedBitsOfThePidAreMaskedOff) {
    EXPECT_EQ(parseSection<TPATTable>(pat(hex("0001 E100")))->get(1)->getProgramMapPid(), 0x0100);
    EXPECT_EQ(parseSection<TPATTable>(pat(hex("0001 0100")))->get(1)->getProgramMapPid(), 0x0100);
    EXPECT_EQ(parseSection<TPATTable>(pat(hex("0001 FFFF")))->get(1)->getProgramMapPid(), 0x1FFF);
    EXPECT_EQ(parseSection<TPATTable>(pat(hex("0000 FFFE")))->getNetworkPid(), 0x1FFE);
}

TEST(TPATTable, LastEntryOfAProgramNumberWins) {
    const auto parsed = parseSection<TPATTable>(pat(hex("0005 E100  0005 E200")));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->size(), 1U);
    EXPECT_EQ(parsed->get(5)->getProgramMapPid(), 0x0200);
}

TEST(TPATTable, LastNetworkPidWins) {
    const auto parsed = parseSection<TPATTable>(pat(hex("0000 E010  0001 E100  0000 E011")));
    EXPECT_EQ(parsed->getNetworkPid(), 0x0011);
    EXPECT_EQ(parsed->size(), 1U);
}

TEST(TPATTable, ProgramNumbersComeInAscendingOrder) {
    const auto parsed = parseSection<TPATTable>(pat(hex("FFFF E101  0100 E102  00FF E103  0001 E104")));
    EXPECT_EQ(taken(parsed->getProgramNumbers()), (std::vector<QUOR_U16>{0x0001, 0x00FF, 0x0100, 0xFFFF}));
    EXPECT_EQ(parsed->get(0xFFFF)->getProgramMapPid(), 0x0101);
}

TEST(TPATTable, SectionOfFullLengthIsRead) {
    ByteVector entries;
    for (unsigned number = 1; number <= 1021; ++number) { // 4084 bytes, section_length 4093
        entries = join({std::move(entries), u16(number), u16(number, 0xE000)});
    }
    const auto parsed = parseSection<TPATTable>(pat(entries));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->size(), 1021U);
    EXPECT_EQ(parsed->get(1021)->getProgramMapPid(), 1021);
}

TEST(TPATTable, HasNoDescriptors) {
    const auto parsed = parseSection<TPATTable>(pat(THREE_ENTRIES));
    const TISDBTTable& base = *parsed.object;
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(base.getDescriptor(static_cast<QUOR_U8>(tag)), nullptr);
    }
    EXPECT_EQ(taken(base.getDescriptorTags()), std::vector<QUOR_U8>{});
}

TEST(TPATTable, StaysReadableWhenTheCallersBytesAreGone) {
    std::unique_ptr<TPATTable> table;
    const ByteVector wire = pat(THREE_ENTRIES, {0x02E1, 12});
    {
        const HeapBytes bytes(wire);
        table.reset(TPATTable::parse(bytes.data(), bytes.size(), 0, 0, nullptr, nullptr));
    }
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->getTransportStreamID(), 0x02E1);
    EXPECT_EQ(table->getVersion(), 12);
    EXPECT_EQ(table->getNetworkPid(), 0x0010);
    EXPECT_EQ(table->get(2)->getProgramMapPid(), 0x0101);
    EXPECT_EQ(ByteVector(table->getData(), table->getData() + table->getDataLength()), wire);
}

TEST(TPATTable, ParseAfterATableOfAnotherTypeGivesNone) {
    // A receiver that keeps its tables by PID may hand over the wrong one, whatever its cast says.
    const auto sdt = parseSection<Quor::TSDTTable>(longSection(0x42, {0x0001, 12}, hex("7ED4 FF")));
    ASSERT_NE(sdt.object, nullptr);
    for (const unsigned number : {12U, 13U}) {
        const auto parsed = parseSection<TPATTable>(pat(THREE_ENTRIES, {0x0001, number}),
                                                    reinterpret_cast<TPATTable*>(sdt.object.get()));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE);
        EXPECT_EQ(parsed.lines, Lines{});
    }
}

TEST(TPATTable, EntriesThatDoNotEndAtTheCrcFail) {
    // One to three bytes too many in the loop: the walk goes on through the CRC_32 until the data end.
    expectTooShort(pat(hex("0001 E100  00")), 1);
    expectTooShort(pat(hex("0001 E100  0002")), 2);
    expectTooShort(pat(hex("0001 E100  0002 E1")), 3);
}

TEST(TPATTable, EntriesThatDoNotEndAtTheCrcFailInALongBufferToo) {
    // A count that is no multiple of 4 passes 0 in every round of its 16 bits.
    expectTooShort(longBuffer(200008, 15), 0);
}

TEST(TPATTable, SectionShorterThanItsHeaderFailsWhereTheDataEnd) {
    // section_length below 9: the count of bytes wraps to nearly 65536.
    for (unsigned sectionLength = 0; sectionLength < 9; ++sectionLength) {
        SCOPED_TRACE(sectionLength);
        expectTooShort(withSectionLength(pat(THREE_ENTRIES), sectionLength), 0);
    }
}

TEST(TPATTable, WrappedCountIsWalkedInsideALongerBuffer) {
    // section_length 1 leaves 1 - 9 = 65528 bytes, which with the 8 of the header come to 64 KiB.
    const auto parsed = parseSection<TPATTable>(longBuffer(65536, 1));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->size(), 16382U);
    EXPECT_EQ(parsed->get(16382)->getProgramMapPid(), 16382 & 0x1FFF);
}

TEST(TPATTable, WrappedCountStopsAtItsEndInAnEvenLongerBuffer) {
    const auto parsed = parseSection<TPATTable>(longBuffer(70000, 1));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->size(), 16382U);
    EXPECT_EQ(parsed->get(16383), nullptr);
    const auto four = parseSection<TPATTable>(longBuffer(70000, 5)); // 65532 bytes
    ASSERT_NE(four.object, nullptr);
    EXPECT_EQ(four->size(), 16383U);
}

TEST(TPATTable, WrappedCountOneByteBeyondTheDataFails) {
    expectTooShort(longBuffer(65535, 1), 3);
    EXPECT_NE(parseSection<TPATTable>(longBuffer(65540, 5)).object, nullptr);
    expectTooShort(longBuffer(65539, 5), 3);
}

TEST(TPATTable, ParsePrintsNothing) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    parseSection<TPATTable>(pat(THREE_ENTRIES));
    parseSection<TPATTable>(pat(hex("0001 E100  0002")));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(TPATTable, ThreadsParseWithoutMeeting) {
    const auto work = [](QUOR_U16 number, bool& sound) {
        for (int round = 0; round < 200; ++round) {
            const auto good = parseSection<TPATTable>(pat(join({u16(number), u16(number, 0xE000)}), {number}));
            const auto broken = parseSection<TPATTable>(pat(hex("0001 E100  0002")));
            sound = sound && good.object != nullptr && good->getTransportStreamID() == number &&
                    good->get(number) != nullptr && good->get(number)->getProgramMapPid() == number &&
                    broken.object == nullptr && broken.lines.size() == 1;
        }
    };
    bool sound[4] = {true, true, true, true};
    std::vector<std::thread> threads;
    for (QUOR_U16 number = 0; number < 4; ++number) {
        threads.emplace_back(work, static_cast<QUOR_U16>(number + 1), std::ref(sound[number]));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(sound, testing::Each(true));
}

TEST(TPATTable, AddKeepsProgramNumberZeroLikeAnyOther) {
    QUOR_U8 nothing = 0;
    TPATTable table(&nothing, 0);
    table.add(new TProgramAssociation(0, 0x0010));
    EXPECT_EQ(table.size(), 1U);
    EXPECT_EQ(table.get(0)->getProgramMapPid(), 0x0010);
    EXPECT_EQ(table.getNetworkPid(), 0);
}

TEST(TPATTable, EveryPrefixSurvives) {
    expectEveryPrefixSurvives<TPATTable>(pat(THREE_ENTRIES, {0x02E1, 12}));
}

TEST(TPATTable, EveryByteChangeSurvives) {
    expectEveryByteChangeSurvives<TPATTable>(pat(THREE_ENTRIES, {0x02E1, 12}));
}

TEST(TPATTable, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&TPATTable::parse),
                                TPATTable* (*)(QUOR_U8*, QUOR_U32, int, int, QUOR_U16*, TPATTable*)>();
    testing::StaticAssertTypeEq<decltype(&TPATTable::getTransportStreamID), QUOR_U16 (TPATTable::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TPATTable::getNetworkPid), QUOR_U16 (TPATTable::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TPATTable::size), QUOR_U32 (TPATTable::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TPATTable::get), TProgramAssociation* (TPATTable::*)(QUOR_U16) const>();
    testing::StaticAssertTypeEq<decltype(&TPATTable::getProgramNumbers), std::list<QUOR_U16>* (TPATTable::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TPATTable::add), void (TPATTable::*)(TProgramAssociation*)>();
    testing::StaticAssertTypeEq<decltype(&TPATTable::remove), QUOR_BOOL (TPATTable::*)(QUOR_U16)>();
    const bool isVersioned = std::is_base_of<TISDBTVersionedTable, TPATTable>::value;
    EXPECT_TRUE(isVersioned);
    EXPECT_FALSE(std::is_copy_constructible<TPATTable>::value);
}
