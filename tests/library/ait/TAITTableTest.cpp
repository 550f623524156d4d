#include "ait/TAITTable.h"

#include "Kinds.h"
#include "Sections.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Lifetime.h"
#include "support/Sections.h"
#include "support/Survival.h"

#include <algorithm>
#include <type_traits>

using ait::application;
using Quor::TAITTable;
using Quor::TApplication;
using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;
using testing::ElementsAre;
using testing::MatchesRegex;

static_assert(std::is_base_of<Quor::TISDBTVersionedTable, TAITTable>::value, "a table with versions");

#define PLAIN(type, name)                                                                                              \
    static_assert(std::is_same_v<decltype(std::declval<const TAITTable&>().name()), Quor::type*>, #name)

PLAIN(TApplicationDescriptor, getApplicationDescriptor);
PLAIN(TApplicationNameDescriptor, getApplicationNameDescriptor);
PLAIN(TApplicationIconDescriptor, getApplicationIconDescriptor);
PLAIN(TExternalApplicationAuthorizationDescriptor, getExternalApplicationAuthorizationDescriptor);
PLAIN(TTransportProtocolDescriptor, getTransportProtocolDescriptor);
PLAIN(TIPSignalingDescriptor, getIPSignalingDescriptor);
PLAIN(TPrefetchDescriptor, getPrefetchDescriptor);
PLAIN(TDIILocationDescriptor, getDIILocationDescriptor);
PLAIN(TGingaApplicationDescriptor, getGingaApplicationDescriptor);
PLAIN(TGingaApplicationLocationDescriptor, getGingaApplicationLocationDescriptor);

EXPECT_GETTER(QUOR_U16, TAITTable, getApplicationType);
EXPECT_GETTER(QUOR_U32, TAITTable, getApplicationsCount);
EXPECT_GETTER(std::list<std::string>&, TAITTable, getApplicationsIDs);
EXPECT_GETTER(std::list<QUOR_U8>*, TAITTable, getDescriptorTags);

namespace {

const char* const INVALID_ITEM = "ISDBTUtils: TAITTable::parse: Invalid item. Aborting!";

Parsed<TAITTable> parsed(const ByteVector& section, TAITTable* previous = nullptr) {
    return parseSection<TAITTable>(section, previous);
}

void expectRejected(const Parsed<TAITTable>& result, QUOR_U16 code, const Lines& lines) {
    EXPECT_EQ(result.object, nullptr);
    EXPECT_EQ(result.error, code);
    EXPECT_EQ(result.lines, lines);
}

/// A table whose own walk would leave the bytes: one line, whose numbers say nothing then.
void expectLeftItsBytes(const Parsed<TAITTable>& result) {
    EXPECT_EQ(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_THAT(result.lines, ElementsAre(MatchesRegex("ISDBTUtils: TAITTable::parse: Item length not valid: "
                                                       "[0-9]+ > [0-9]+. Aborting!")));
}

/// A table with an application whose walk would leave the bytes.
void expectApplicationLeftItsBytes(const Parsed<TAITTable>& result) {
    EXPECT_EQ(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_INVALID_ITEM);
    EXPECT_THAT(result.lines, ElementsAre(MatchesRegex("ISDBTUtils: TApplication::parse: Item length not valid: "
                                                       "[0-9]+( > [0-9]+)?. Aborting!"),
                                          INVALID_ITEM));
}

Lines exceeds(const std::string& numbers) {
    return {"ISDBTUtils: TAITTable::parse: Item length not valid: " + numbers + ". Aborting!"};
}

Lines unknown(unsigned tag) {
    char line[80];
    std::snprintf(line, sizeof line, "ISDBTUtils: TAITTable::parse: Unknown descriptor: 0x%02X. Ignored!", tag);
    return {line};
}

std::vector<std::string> keys(const TAITTable& table) {
    const std::unique_ptr<std::list<std::string>> list(&table.getApplicationsIDs());
    return std::vector<std::string>(list->begin(), list->end());
}

/// A section with every descriptor, at the table and in its two applications.
ByteVector fullSection() {
    ByteVector java;
    ByteVector ncl;
    for (const ait::Kind& kind : ait::kinds()) {
        if (kind.tag != 0x06 && kind.tag != 0x07) {
            java = join({java, kind.wire});
        }
        if (kind.tag != 0x03 && kind.tag != 0x04) {
            ncl = join({ncl, kind.otherWire});
        }
    }
    return ait::section(join({java, hex("4200 F101 00"), ncl}),
                        join({application(0xABCD, 0x12, 1, java), application(0xABCD, 0x13, 2, ncl)}));
}

ByteVector described() {
    return ait::section(ait::kind(0x11).wire, application(1, 2, 1, ait::kind(0x0C).wire));
}

void expectDescribed(const TAITTable& table) {
    EXPECT_NE(table.getDescriptor(0x11), nullptr);
    EXPECT_NE(table.getApplication("000000010002")->getDescriptor(0x0C), nullptr);
}

} // namespace

TEST(TAITTable, ChecksTheSectionHeader) {
    expectSectionChecks<TAITTable>(0x74, 4, described(), expectDescribed);
}

TEST(TAITTable, IsReadWholeWhateverTheSwitchesSay) {
    expectSwitchesMakeNoDifference<TAITTable>(described(), expectDescribed);
}

TEST(TAITTable, ChecksTheVersion) {
    const auto versions = expectVersionChecks<TAITTable>([](const LongHeader& header) {
        return longSection(0x74, header, ait::loops({}, application(1, header.version, 1)));
    });
    EXPECT_EQ(keys(*versions.previous.object), std::vector<std::string>{"000000010005"});
    EXPECT_EQ(keys(*versions.next.object), std::vector<std::string>{"000000010006"});
}

TEST(TAITTable, ChecksTheTypeOfThePreviousTable) {
    expectTypeCheck<TAITTable>(ait::section({}, {}));
}

TEST(TAITTable, StartsEmptyOverACopyOfTheSection) {
    const HeapBytes bytes(ait::section(ait::kind(0x11).wire, application(1, 2, 1)));
    const InDirtyMemory<TAITTable> memory(bytes.data(), bytes.size());
    const TAITTable& table = *memory;
    EXPECT_EQ(table.getType(), TISDBTTable::AIT);
    EXPECT_EQ(static_cast<QUOR_U32>(table.getType()), 4294901876U);
    EXPECT_NE(table.getData(), bytes.data());
    EXPECT_EQ(ByteVector(table.getData(), table.getData() + table.getDataLength()),
              ByteVector(bytes.data(), bytes.data() + bytes.size()));
    EXPECT_EQ(table.getApplicationType(), 0);
    EXPECT_EQ(table.getVersion(), 0);
    EXPECT_FALSE(table.getCurrentIndicator());
    EXPECT_EQ(table.getSectionNumber(), 0);
    EXPECT_EQ(table.getLastSectionNumber(), 0);
    EXPECT_EQ(table.getApplicationsCount(), 0U);
    EXPECT_TRUE(keys(table).empty());
    EXPECT_TRUE(taken(table.getDescriptorTags()).empty());
    for (const ait::Kind& kind : ait::kinds()) {
        EXPECT_EQ(kind.ofTable(table), nullptr) << kind.name;
        EXPECT_EQ(table.getDescriptor(kind.tag), nullptr) << kind.name;
    }
}

TEST(TAITTable, ExpectsItsTableIdAndFourBytes) {
    TAITTable table(nullptr, 0);
    EXPECT_EQ(parseHeader(table, hex("74 B0 00")).lines,
              Lines{"ISDBTUtils: TISDBTTable::parse: Longer data length is required: 3 < 4. Aborting!"});
    const Header good = parseHeader(table, ait::section({}, {}));
    EXPECT_TRUE(good.good);
    EXPECT_EQ(good.sectionLength, 4);
}

TEST(TAITTable, MayBeEmpty) {
    const auto result = parsed(ait::section({}, {}));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(result.lines, Lines{});
    EXPECT_EQ(result->getApplicationsCount(), 0U);
    EXPECT_TRUE(keys(*result.object).empty());
    EXPECT_TRUE(taken(result->getDescriptorTags()).empty());
    EXPECT_EQ(result->getApplication("000000010002"), nullptr);
    EXPECT_EQ(result->getApplication(""), nullptr);
}

TEST(TAITTable, ShowsItsHeader) {
    const auto result = parsed(longSection(0x74, {0x1234, 21, true, 3, 4}, ait::loops({}, {})));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result->getApplicationType(), 0x1234);
    EXPECT_EQ(result->getGenericDataField(), 0x1234);
    EXPECT_EQ(result->getVersion(), 21);
    EXPECT_TRUE(result->getCurrentIndicator());
    EXPECT_EQ(result->getSectionNumber(), 3);
    EXPECT_EQ(result->getLastSectionNumber(), 4);
    EXPECT_EQ(result->getDataLength(), 16U);
}

TEST(TAITTable, TheApplicationTypeHasSixteenBits) {
    for (const unsigned type : {0x0001U, 0x0009U, 0x7FFFU, 0x8000U, 0x8009U, 0xFFFFU}) {
        const auto result =
            parsed(longSection(0x74, {static_cast<QUOR_U16>(type)}, ait::loops({}, application(1, 2, 1))));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result->getApplicationType(), type);
        EXPECT_EQ(result->getApplication("000000010002")->getApplicationType(), type);
    }
}

TEST(TAITTable, ListsApplicationsInOrder) {
    const auto result = parsed(ait::section({}, join({application(0xABCD, 0x12, 1), application(0xFFFFFFFF, 1, 2),
                                                      application(0xABCD, 0x2, 3), application(1, 0xFFFF, 4)})));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(result.lines, Lines{});
    EXPECT_EQ(result->getApplicationsCount(), 4U);
    EXPECT_EQ(keys(*result.object),
              (std::vector<std::string>{"00000001FFFF", "0000ABCD0002", "0000ABCD0012", "FFFFFFFF0001"}));
    const TApplication* const entry = result->getApplication("0000ABCD0012");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->getHashID(), "0000ABCD0012");
    EXPECT_EQ(entry->getApplicationIdentifier()->getOrganizationID(), 0xABCDU);
    EXPECT_EQ(entry->getApplicationIdentifier()->getApplicationID(), 0x12);
    EXPECT_EQ(entry->getControlCode(), 1);
    EXPECT_EQ(entry->getApplicationType(), 9);
    EXPECT_EQ(result->getApplication("FFFFFFFF0001")->getControlCode(), 2);
    EXPECT_EQ(result->getApplication("0000abcd0012"), nullptr);
}

TEST(TAITTable, EachApplicationIsOfferedAllBytesUpToTheCrc) {
    const auto result =
        parsed(ait::section(ait::kind(0x11).wire, join({application(1, 1, 1, hex("4200")), application(1, 2, 1)})));
    ASSERT_NE(result.object, nullptr);
    const TApplication& first = *result->getApplication("000000010001");
    const TApplication& second = *result->getApplication("000000010002");
    EXPECT_EQ(first.getData(), result.bytes.data() + 17);
    EXPECT_EQ(first.getDataLength(), 20U);
    EXPECT_EQ(second.getData(), result.bytes.data() + 28);
    EXPECT_EQ(second.getDataLength(), 9U);
}

TEST(TAITTable, LastApplicationOfAKeyWins) {
    const auto result = parsed(ait::section(
        {}, join({application(1, 2, 1, ait::kind(0x11).wire), application(1, 2, 4, ait::kind(0x0C).wire)})));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result->getApplicationsCount(), 1U);
    EXPECT_EQ(result->getApplication("000000010002")->getControlCode(), 4);
    EXPECT_EQ(result->getApplication("000000010002")->getDescriptor(0x11), nullptr);
    EXPECT_NE(result->getApplication("000000010002")->getDescriptor(0x0C), nullptr);
}

TEST(TAITTable, HoldsOneCommonDescriptorOfEachKind) {
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        const auto result = parsed(ait::section(kind.wire, {}));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(result.lines, kind.tableLine[0] == '\0' ? Lines{} : Lines{kind.tableLine});
        const TISDBTDescriptor* const descriptor = result->getDescriptor(kind.tag);
        EXPECT_EQ(ait::shown(descriptor), kind.shown);
        EXPECT_EQ(kind.ofTable(*result.object), descriptor);
        EXPECT_EQ(descriptor->getDescriptorTag(), kind.tag);
        EXPECT_EQ(descriptor->getData(), result.bytes.data() + 10); // the caller's bytes, not the table's copy
        EXPECT_EQ(descriptor->getDataLength(), kind.wire.size() - (kind.tag == 0x02 ? 2 : 0));
        EXPECT_EQ(taken(result->getDescriptorTags()), std::vector<QUOR_U8>{kind.tag});
        const TISDBTTable& base = *result.object;
        EXPECT_EQ(base.getDescriptor(kind.tag), descriptor);
        EXPECT_EQ(taken(base.getDescriptorTags()), std::vector<QUOR_U8>{kind.tag});
        for (unsigned tag = 0; tag <= 0xFF; ++tag) {
            EXPECT_EQ(result->getDescriptor(static_cast<QUOR_U8>(tag)), tag == kind.tag ? descriptor : nullptr) << tag;
        }
        for (const ait::Kind& other : ait::kinds()) {
            EXPECT_EQ(other.ofTable(*result.object), ait::sameMember(kind, other) ? descriptor : nullptr) << other.name;
        }
    }
}

TEST(TAITTable, WithoutDescriptorsNoTagIsHeld) {
    const auto result = parsed(ait::section({}, {}));
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(result->getDescriptor(static_cast<QUOR_U8>(tag)), nullptr) << tag;
    }
}

TEST(TAITTable, TagsOfEverySelectionComeInTheirOrder) {
    for (const bool java : {true, false}) {
        const std::vector<QUOR_U8> order = ait::orderOfTags(java);
        for (unsigned selection = 0; selection < 1U << order.size(); ++selection) {
            std::vector<QUOR_U8> tags;
            ByteVector wire;
            for (std::size_t i = 0; i < order.size(); ++i) {
                if ((selection & 1U << i) != 0) {
                    tags.push_back(order[i]);
                    wire = join({ait::kind(order[i]).wire, wire}); // backwards on the wire
                }
            }
            const auto result = parsed(ait::section(wire, {}));
            ASSERT_NE(result.object, nullptr);
            ASSERT_EQ(taken(result->getDescriptorTags()), tags);
        }
    }
}

TEST(TAITTable, LastDescriptorOfAKindWins) {
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        const Lines line = kind.tableLine[0] == '\0' ? Lines{} : Lines{kind.tableLine, kind.tableLine};
        const auto result = parsed(ait::section(join({kind.wire, kind.otherWire}), {}));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result.lines, line);
        EXPECT_EQ(ait::shown(result->getDescriptor(kind.tag)), kind.otherShown);
        const auto swapped = parsed(ait::section(join({kind.otherWire, kind.wire}), {}));
        EXPECT_EQ(ait::shown(swapped->getDescriptor(kind.tag)), kind.shown);
        EXPECT_EQ(taken(swapped->getDescriptorTags()).size(), 1U);
    }
}

TEST(TAITTable, JavaAndNclDisplaceEachOther) {
    struct Pair {
        QUOR_U8 first;
        QUOR_U8 last;
    };
    for (const Pair& pair : {Pair{0x03, 0x06}, Pair{0x06, 0x03}, Pair{0x04, 0x07}, Pair{0x07, 0x04}}) {
        const ait::Kind& first = ait::kind(pair.first);
        const ait::Kind& last = ait::kind(pair.last);
        const auto result = parsed(ait::section(join({first.wire, last.wire}), {}));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result.lines, (Lines{first.tableLine, last.tableLine}));
        EXPECT_EQ(result->getDescriptor(pair.first), nullptr);
        EXPECT_EQ(ait::shown(result->getDescriptor(pair.last)), last.shown);
        EXPECT_EQ(first.ofTable(*result.object), result->getDescriptor(pair.last));
        EXPECT_EQ(taken(result->getDescriptorTags()), std::vector<QUOR_U8>{pair.last});
    }
}

TEST(TAITTable, GingaDescriptorsOfApplicationsNeedNoLine) {
    const auto result =
        parsed(ait::section({}, join({application(1, 1, 1, join({ait::kind(0x03).wire, ait::kind(0x04).wire})),
                                      application(1, 2, 1, join({ait::kind(0x06).wire, ait::kind(0x07).wire}))})));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.lines, Lines{});
    EXPECT_EQ(taken(result->getApplication("000000010001")->getDescriptorTags()), (std::vector<QUOR_U8>{0x03, 0x04}));
    EXPECT_EQ(taken(result->getApplication("000000010002")->getDescriptorTags()), (std::vector<QUOR_U8>{0x06, 0x07}));
}

TEST(TAITTable, UnknownDescriptorsAreLoggedAndSkipped) {
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        if (ait::isKnown(static_cast<QUOR_U8>(tag)) || tag == 0x42) {
            continue;
        }
        const auto result = parsed(ait::section(
            join({descriptor(static_cast<QUOR_U8>(tag), hex("FFFF")), ait::kind(0x11).wire}), application(1, 2, 1)));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result.lines, unknown(tag));
        EXPECT_EQ(taken(result->getDescriptorTags()), std::vector<QUOR_U8>{0x11});
        EXPECT_EQ(result->getApplicationsCount(), 1U);
    }
}

TEST(TAITTable, StuffingIsSkippedSilently) {
    const auto result = parsed(ait::section(join({hex("4200 4203 000000"), ait::kind(0x11).wire, hex("4200")}),
                                            application(1, 2, 1, hex("4201 FF"))));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.lines, Lines{});
    EXPECT_EQ(taken(result->getDescriptorTags()), std::vector<QUOR_U8>{0x11});
    EXPECT_EQ(result->getApplicationsCount(), 1U);
}

TEST(TAITTable, AFailingCommonDescriptorFailsItWithItsOwnCode) {
    for (const ait::Broken& broken : ait::broken()) {
        SCOPED_TRACE(broken.name);
        Lines lines = broken.lines;
        if (ait::kind(broken.tag).tableLine[0] != '\0') {
            lines.insert(lines.begin(), ait::kind(broken.tag).tableLine);
        }
        expectRejected(parsed(ait::section(broken.wire, application(1, 2, 1))), broken.code, lines);
        expectRejected(
            parsed(ait::section(join({ait::kind(0x11).wire, broken.wire, hex("4200")}), application(1, 2, 1))),
            broken.code, lines);
    }
}

TEST(TAITTable, AFailingApplicationIsAnInvalidItem) {
    for (const ait::Broken& broken : ait::broken()) {
        SCOPED_TRACE(broken.name);
        Lines lines = broken.lines;
        lines.emplace_back(INVALID_ITEM);
        expectRejected(
            parsed(ait::section(ait::kind(0x11).wire, join({application(1, 1, 1, ait::kind(0x11).wire),
                                                            application(1, 2, 1, broken.wire), application(1, 3, 1)}))),
            TISDBTTable::ERROR_INVALID_ITEM, lines);
    }
}

TEST(TAITTable, AnApplicationThatIsCutOffIsAnInvalidItem) {
    for (unsigned size = 1; size < 6; ++size) {
        expectRejected(
            parsed(ait::section({}, join({application(1, 2, 1), fill(size, 0x00)}))), TISDBTTable::ERROR_INVALID_ITEM,
            {"ISDBTUtils: TApplication::parse: Item length not valid: " + std::to_string(size) + ". Aborting!",
             INVALID_ITEM});
    }
    expectRejected(parsed(ait::section({}, hex("00000001 0002 01 F003 4200"))), TISDBTTable::ERROR_INVALID_ITEM,
                   {"ISDBTUtils: TApplication::parse: Item length not valid: 3 > 2. Aborting!", INVALID_ITEM});
}

TEST(TAITTable, AnApplicationLoopThatIsOneByteTooLongIsAnInvalidItem) {
    expectRejected(parsed(ait::section({}, join({application(1, 2, 1), hex("00")}))), TISDBTTable::ERROR_INVALID_ITEM,
                   {"ISDBTUtils: TApplication::parse: Item length not valid: 1. Aborting!", INVALID_ITEM});
}

TEST(TAITTable, AnApplicationLoopThatIsTooShortGoesOn) {
    // The loop says 9 bytes, its application has 11: the next one is looked for behind it.
    const ByteVector loops = join({hex("F000 F009"), application(1, 2, 1, hex("4200"))});
    expectRejected(parsed(longSection(0x74, {0x0009}, loops)), TISDBTTable::ERROR_INVALID_ITEM,
                   {"ISDBTUtils: TApplication::parse: Item length not valid: 0. Aborting!", INVALID_ITEM});
}

TEST(TAITTable, BytesBehindTheApplicationLoopAreIgnored) {
    const auto result =
        parsed(longSection(0x74, {0x0009}, join({ait::loops({}, application(1, 2, 1)), hex("FFFFFF")})));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(result->getApplicationsCount(), 1U);
    EXPECT_EQ(result->getApplication("000000010002")->getDataLength(), 12U);
}

TEST(TAITTable, ReservedBitsAreIgnored) {
    for (const char* const flags : {"0", "5", "A", "F"}) {
        const std::string reserved(flags);
        const auto result = parsed(longSection(
            0x74, {0x0009}, hex(reserved + "005 1103010203" + reserved + "009 00000001 0002 01 " + reserved + "000")));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result->getApplicationsCount(), 1U);
        EXPECT_NE(result->getDescriptor(0x11), nullptr);
    }
}

TEST(TAITTable, CommonDescriptorsLongerThanTheSectionFail) {
    expectRejected(parsed(longSection(0x74, {0x0009}, hex("F005 4200 F000"))), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                   exceeds("5 > 4"));
    expectRejected(parsed(longSection(0x74, {0x0009}, hex("FFFF F000"))), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                   exceeds("4095 > 2"));
}

TEST(TAITTable, ACommonDescriptorLongerThanTheSectionFails) {
    // The line shows the loop and what is left less 2, not the length that is wrong.
    expectRejected(parsed(longSection(0x74, {0x0009}, hex("F004 4205 0000 F000"))),
                   TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds("4 > 4"));
    expectRejected(parsed(longSection(0x74, {0x0009}, hex("F006 4200 11FF 0000 F000"))),
                   TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds("4 > 4"));
}

TEST(TAITTable, ACommonLoopThatIsTooShortGoesOn) {
    // One byte of loop, two of descriptor: what follows is read as descriptors until one does not fit.
    expectRejected(parsed(ait::sectionOfLength(15, hex("F001 4200 F000  0000 0000"))),
                   TISDBTTable::ERROR_INVALID_DATA_LENGTH, {unknown(0xF0)[0], exceeds("65533 > 4294967294")[0]});
    expectRejected(parsed(ait::sectionOfLength(14, hex("F001 4200 F0  0000 0000"))),
                   TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds("65535 > 4294967295"));
}

TEST(TAITTable, ApplicationsLongerThanTheSectionFail) {
    expectRejected(parsed(longSection(0x74, {0x0009}, join({hex("F000 F00A"), application(1, 2, 1)}))),
                   TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds("10 > 9"));
    expectRejected(parsed(longSection(0x74, {0x0009}, hex("F000 FFFF"))), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                   exceeds("4095 > 0"));
}

TEST(TAITTable, WithoutRoomForTheLoopLengthsTheCountsWrap) {
    // The loop lengths are taken from the CRC_32.
    const auto both = parsed(ait::sectionOfLength(9, hex("F000 F000")));
    ASSERT_NE(both.object, nullptr);
    EXPECT_EQ(both.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(both.lines, Lines{});

    const auto one = parsed(ait::sectionOfLength(15, hex("F004 4202 0000  F000 0000")));
    ASSERT_NE(one.object, nullptr);

    const auto none = parsed(ait::sectionOfLength(0, hex("F000 F000")));
    ASSERT_NE(none.object, nullptr);
    EXPECT_EQ(none->getApplicationType(), 9);
}

TEST(TAITTable, WithAWrappedCountCommonDescriptorsGoOnToTheEndOfTheData) {
    const ByteVector whole = ait::sectionOfLength(9, join({hex("F007"), ait::kind(0x11).wire, hex("4200  F000")}));
    const auto result = parsed(whole);
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(ait::shown(result->getDescriptor(0x11)), ait::kind(0x11).shown);
    EXPECT_NE(parsed(join({whole, hex("FFFF")})).object, nullptr);
    for (std::size_t missing = 1; whole.size() - missing >= 12; ++missing) {
        SCOPED_TRACE(missing);
        expectLeftItsBytes(parsed(withoutLast(whole, missing)));
    }
}

TEST(TAITTable, WithAWrappedCountADescriptorOfTwoBytesMayEndTheData) {
    const auto result = parsed(ait::sectionOfLength(9, hex("F002 0300")));
    EXPECT_EQ(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    EXPECT_EQ(result.lines, (Lines{"ISDBTUtils: TAITTable::parse: Ginga Java Application Descriptor... WHAT TO DO????",
                                   "ISDBTUtils: TAITTable::parse: Item length not valid: 2 > 0. Aborting!"}));
}

TEST(TAITTable, WithAWrappedCountApplicationsGoOnToTheEndOfTheData) {
    const ByteVector whole = ait::sectionOfLength(
        11, join({hex("F000 F01A"), application(1, 1, 1, hex("4204 00000000")), application(1, 2, 1, hex("4200"))}));
    const auto result = parsed(whole);
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(result->getApplicationsCount(), 2U);
    EXPECT_NE(parsed(join({whole, hex("FFFF")})).object, nullptr);
    for (std::size_t missing = 1; whole.size() - missing >= 14; ++missing) {
        SCOPED_TRACE(missing);
        expectApplicationLeftItsBytes(parsed(withoutLast(whole, missing)));
    }
}

/// Who reads an application's data reads what was given, whatever the count says.
TEST(TAITTable, WithAWrappedCountTheDataOfAnApplicationEndsWithTheBytes) {
    const ByteVector first = application(1, 1, 1, hex("4204 00000000"));
    const ByteVector second = application(1, 2, 1, hex("4200"));
    const ByteVector surplus = hex("FFFF");
    const auto result = parsed(join({ait::sectionOfLength(11, join({hex("F000 F01A"), first, second})), surplus}));
    ASSERT_NE(result.object, nullptr);
    const auto data = [](const TApplication& shown) {
        return ByteVector(shown.getData(), shown.getData() + shown.getDataLength());
    };
    EXPECT_EQ(data(*result->getApplication("000000010001")), join({first, second, surplus}));
    EXPECT_EQ(data(*result->getApplication("000000010002")), join({second, surplus}));
}

TEST(TAITTable, AnApplicationWithSixToEightBytesLeftTakesTheOthersFromTheCrc) {
    // Which leaves a wrapped count behind, and the end of the data too early.
    for (std::size_t left = 6; left < 9; ++left) {
        const ByteVector entry = hex("00000001 0002 01 F000");
        ByteVector loops = join({hex("F000"), u16(static_cast<unsigned>(left), 0xF000), entry});
        const ByteVector section =
            ait::sectionOfLength(static_cast<unsigned>(13 + left), join({loops, fill(left - 5, 0x00)}));
        ASSERT_EQ(section.size(), 16 + left);
        expectApplicationLeftItsBytes(parsed(section));
    }
}

TEST(TAITTable, ALoopCountThatComesBackToNothingEndsTheLoop) {
    // An application that takes its last byte from the CRC_32 leaves 65535 bytes to both counts; they follow.
    ByteVector most;
    for (unsigned i = 0; i < 15; ++i) {
        most = join({most, hex("42 FF"), fill(255, 0x00)});
    }
    ByteVector applications;
    for (unsigned i = 1; i <= 15; ++i) {
        applications = join({applications, application(2, i, 1, join({most, hex("42 EE"), fill(238, 0x00)}))});
    }
    applications = join({applications, application(2, 16, 1, join({most, hex("42 6D"), fill(109, 0x00)}))});
    ASSERT_EQ(applications.size(), 65535U);
    const ByteVector whole =
        ait::sectionOfLength(21, join({hex("F000 F008"), hex("00000001 0002 01 F000"), applications}));
    const auto result = parsed(whole);
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(result.lines, Lines{});
    EXPECT_EQ(result->getApplicationsCount(), 17U);
    EXPECT_EQ(result->getApplication("000000010002")->getDataLength(), 8U);
    EXPECT_EQ(result->getApplication("000000020001")->getDataLength(), 65535U);
    EXPECT_EQ(result->getApplication("000000020010")->getDataLength(), 3975U);
    // The stuffing at its end is skipped unread; only its header must be there.
    EXPECT_NE(parsed(withoutLast(whole, 109)).object, nullptr);
    expectApplicationLeftItsBytes(parsed(withoutLast(whole, 110)));
}

TEST(TAITTable, AnApplicationDoesNotTakeDescriptorsFromTheCrc) {
    // One byte of loop, two of descriptor: the count wraps, and too little is left for another descriptor.
    for (std::size_t left = 0; left < 2; ++left) {
        expectRejected(
            parsed(ait::section({}, join({hex("00000001 0002 01 F001 4200"), fill(left, 0x42)}))),
            TISDBTTable::ERROR_INVALID_ITEM,
            {"ISDBTUtils: TApplication::parse: Item length not valid: 2 > " + std::to_string(left) + ". Aborting!",
             INVALID_ITEM});
    }
}

TEST(TAITTable, SkippedBodiesAreNotNeeded) {
    const auto stuffing =
        parsed(ait::sectionOfLength(11, hex("F000 F019  00000001 0002 01 F010 4206 000000000000 F106")));
    ASSERT_NE(stuffing.object, nullptr);
    EXPECT_EQ(stuffing.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(stuffing.lines, Lines{"ISDBTUtils: TApplication::parse: Unknown descriptor: 0xF1. Ignored!"});

    // Nor is the body of a descriptor whose length alone is wrong.
    expectRejected(parsed(ait::sectionOfLength(9, hex("F004 1102"))), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                   {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 4 < 5. "
                    "Aborting!"});
}

TEST(TAITTable, WithoutItsLoopLengthsItFails) {
    const ByteVector whole = hex("74 B000 0009 C1 00 00 F000 F000");
    for (std::size_t size = 8; size < 12; ++size) {
        SCOPED_TRACE(size);
        expectRejected(parsed(withoutLast(whole, 12 - size)), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                       exceeds("2 > " + std::to_string(size % 2)));
    }
    EXPECT_NE(parsed(whole).object, nullptr);
}

TEST(TAITTable, NeedsNowhereToWriteTheCode) {
    const HeapBytes good(ait::section({}, application(1, 2, 1)));
    const LogCapture log;
    const std::unique_ptr<TAITTable> table(TAITTable::parse(good.data(), good.size(), 1, 1, nullptr, nullptr));
    EXPECT_NE(table, nullptr);
    for (const ByteVector& wire : {hex("74"), ait::section(ait::broken().front().wire, {}), ait::section({}, hex("00")),
                                   longSection(0x74, {}, hex("F005 F000")), longSection(0x74, {}, hex("F000 F005"))}) {
        const HeapBytes bad(wire);
        EXPECT_EQ(TAITTable::parse(bad.data(), bad.size(), 1, 1, nullptr, nullptr), nullptr);
    }
    expectLevelAndTag(log);
}

TEST(TAITTable, DecodedValuesOutliveTheCallersBytes) {
    std::unique_ptr<TAITTable> table;
    {
        auto result = parsed(fullSection());
        table = std::move(result.object);
    }
    ASSERT_NE(table, nullptr);
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        if (kind.tag != 0x03 && kind.tag != 0x04) {
            EXPECT_EQ(ait::shown(table->getDescriptor(kind.tag)), kind.otherShown);
            EXPECT_EQ(ait::shown(table->getApplication("0000ABCD0013")->getDescriptor(kind.tag)), kind.otherShown);
        }
        if (kind.tag != 0x06 && kind.tag != 0x07) {
            EXPECT_EQ(ait::shown(table->getApplication("0000ABCD0012")->getDescriptor(kind.tag)), kind.shown);
        }
    }
    EXPECT_EQ(keys(*table), (std::vector<std::string>{"0000ABCD0012", "0000ABCD0013"}));
}

TEST(TAITTable, AnAddedApplicationHasNoParent) {
    const auto result = parsed(ait::section(ait::kind(0x11).wire, {}));
    ASSERT_NE(result.object, nullptr);
    auto entry = parseEntry<TApplication>(application(1, 2, 1));
    TApplication* const added = entry.object.release();
    result->addApplication(added);
    EXPECT_EQ(ait::kind(0x11).ofApplication(*added, 1, nullptr), nullptr);
    EXPECT_EQ(added->getApplicationType(), 0);
    added->setParentAITTable(result.object.get());
    EXPECT_EQ(ait::kind(0x11).ofApplication(*added, 1, nullptr), result->getDescriptor(0x11));
}

TEST(TAITTable, AnApplicationThatWasNotParsedHasTheEmptyKey) {
    int deleted = 0;
    TAITTable table(nullptr, 0);
    table.addApplication(new Counted<TApplication>(deleted, static_cast<QUOR_U8*>(nullptr), 0U));
    EXPECT_EQ(keys(table), std::vector<std::string>{""});
    EXPECT_NE(table.getApplication(""), nullptr);
    EXPECT_EQ(table.removeApplication(""), 1);
    EXPECT_EQ(deleted, 1);
}

TEST(TAITTable, DamageIsSurvived) {
    ByteVector common;
    ByteVector own;
    for (const ait::Kind& kind : ait::kinds()) {
        common = join({common, kind.otherWire});
        own = join({own, kind.wire});
    }
    const ByteVector section =
        ait::section(join({common, hex("4200 F101 00")}), join({application(1, 1, 1), application(1, 2, 1, own)}));
    expectEveryPrefixSurvives<TAITTable>(section);
    expectEveryByteChangeSurvives<TAITTable>(section);
}
