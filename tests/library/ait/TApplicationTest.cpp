#include "ait/TApplication.h"

#include "Kinds.h"
#include "Sections.h"
#include "ait/TAITTable.h"
#include "descriptors/TGingaApplicationDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <algorithm>
#include <type_traits>

using ait::application;
using Quor::TAITTable;
using Quor::TApplication;
using Quor::TApplicationIdentifier;
using Quor::TISDBTDataHolder;
using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;

static_assert(std::is_base_of<TISDBTDataHolder, TApplication>::value, "it refers to its bytes");
static_assert(!std::is_base_of<TISDBTTable, TApplication>::value, "it is no table");

#define INHERITING(type, name)                                                                                         \
    static_assert(std::is_same_v<decltype(std::declval<const TApplication&>().name(0, nullptr)), Quor::type*>, #name)

INHERITING(TApplicationDescriptor, getApplicationDescriptor);
INHERITING(TApplicationNameDescriptor, getApplicationNameDescriptor);
INHERITING(TApplicationIconDescriptor, getApplicationIconDescriptor);
INHERITING(TExternalApplicationAuthorizationDescriptor, getExternalApplicationAuthorizationDescriptor);
INHERITING(TTransportProtocolDescriptor, getTransportProtocolDescriptor);
INHERITING(TIPSignalingDescriptor, getIPSignalingDescriptor);
INHERITING(TPrefetchDescriptor, getPrefetchDescriptor);
INHERITING(TDIILocationDescriptor, getDIILocationDescriptor);
INHERITING(TGingaApplicationDescriptor, getGingaApplicationDescriptor);
INHERITING(TGingaApplicationLocationDescriptor, getGingaApplicationLocationDescriptor);

EXPECT_GETTER(std::string, TApplication, getHashID);
EXPECT_GETTER(TApplicationIdentifier*, TApplication, getApplicationIdentifier);
EXPECT_GETTER(QUOR_U8, TApplication, getControlCode);
EXPECT_GETTER(QUOR_U16, TApplication, getApplicationType);
EXPECT_GETTER(std::list<QUOR_U8>*, TApplication, getDescriptorTags);

namespace {

constexpr int PRESET_FLAG = 55;
QUOR_U8* const NO_BYTES = nullptr;

/// Parses an application that a caller measures with @p dataLength, whatever the size of the buffer.
Parsed<TApplication> parseMeasured(const ByteVector& wire, QUOR_U32 dataLength) {
    Parsed<TApplication> result(wire);
    const LogCapture log;
    result.object.reset(TApplication::parse(result.bytes.data(), dataLength, 1, &result.length, &result.error));
    result.lines = log.lines();
    expectLevelAndTag(log);
    return result;
}

Parsed<TApplication> parsed(const ByteVector& wire) {
    return parseMeasured(wire, static_cast<QUOR_U32>(wire.size()));
}

/// An application that must not be accepted.
void expectRejected(const Parsed<TApplication>& result, QUOR_U16 code, const Lines& lines) {
    EXPECT_EQ(result.object, nullptr);
    EXPECT_EQ(result.error, code);
    EXPECT_EQ(result.lines, lines);
    EXPECT_EQ(result.length, PRESET_LENGTH);
}

Lines exceeds(const std::string& numbers) {
    return {"ISDBTUtils: TApplication::parse: Item length not valid: " + numbers + ". Aborting!"};
}

/// An application that needs more bytes for the header of a descriptor than are left.
void expectOutOfBytes(const Parsed<TApplication>& result, unsigned left) {
    expectRejected(result, TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds("2 > " + std::to_string(left)));
}

Lines unknown(const char* tag) {
    return {"ISDBTUtils: TApplication::parse: Unknown descriptor: " + std::string(tag) + ". Ignored!"};
}

/// What the application itself holds, by the kinds of all tags.
std::vector<std::string> ownDescriptors(const TApplication& application) {
    std::vector<std::string> all;
    for (const ait::Kind& kind : ait::kinds()) {
        all.push_back(ait::shown(application.getDescriptor(kind.tag)));
    }
    return all;
}

/// One of each kind, with the Java or the NCL form of the last two.
ByteVector oneOfEach(bool java) {
    ByteVector all;
    for (const ait::Kind& kind : ait::kinds()) {
        const bool ofJava = kind.tag == 0x03 || kind.tag == 0x04;
        const bool ofNcl = kind.tag == 0x06 || kind.tag == 0x07;
        if ((!ofJava && !ofNcl) || ofJava == java) {
            all = join({all, kind.wire});
        }
    }
    return all;
}

} // namespace

TEST(TApplication, Constants) {
    EXPECT_CONSTANT(QUOR_U16, TApplication::TYPE_JAVA, 1);
    EXPECT_CONSTANT(QUOR_U16, TApplication::TYPE_NCL, 9);
    EXPECT_CONSTANT(QUOR_U8, TApplication::CONTROLCODE_AUTOSTART, 1);
    EXPECT_CONSTANT(QUOR_U8, TApplication::CONTROLCODE_PRESENT, 2);
    EXPECT_CONSTANT(QUOR_U8, TApplication::CONTROLCODE_DESTROY, 3);
    EXPECT_CONSTANT(QUOR_U8, TApplication::CONTROLCODE_KILL, 4);
    EXPECT_CONSTANT(QUOR_U8, TApplication::CONTROLCODE_REMOTE, 6);
    EXPECT_CONSTANT(QUOR_U8, TApplication::CONTROLCODE_UNBOUND, 7);
}

TEST(TApplication, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(fill(9, 0xFF));
    const InDirtyMemory<TApplication> memory(bytes.data(), bytes.size());
    const TApplication& empty = *memory;
    EXPECT_EQ(empty.getData(), bytes.data());
    EXPECT_EQ(empty.getDataLength(), 9U);
    EXPECT_EQ(empty.getHashID(), "");
    EXPECT_EQ(empty.getControlCode(), 0);
    EXPECT_EQ(empty.getApplicationType(), 0);
    EXPECT_EQ(empty.getApplicationIdentifier(), nullptr);
    EXPECT_TRUE(taken(empty.getDescriptorTags()).empty());
    for (const ait::Kind& kind : ait::kinds()) {
        int inherited = PRESET_FLAG;
        EXPECT_EQ(kind.ofApplication(empty, 0, &inherited), nullptr) << kind.name;
        EXPECT_EQ(kind.ofApplication(empty, 1, &inherited), nullptr) << kind.name; // there is no table yet
        EXPECT_EQ(inherited, PRESET_FLAG);
    }
}

TEST(TApplication, ShowsItsFields) {
    const auto result = parsed(hex("01020304 0506 07 F000"));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(result.length, 9U);
    EXPECT_EQ(result.lines, Lines{});
    ASSERT_NE(result->getApplicationIdentifier(), nullptr);
    EXPECT_EQ(result->getApplicationIdentifier()->getOrganizationID(), 0x01020304U);
    EXPECT_EQ(result->getApplicationIdentifier()->getApplicationID(), 0x0506);
    EXPECT_EQ(result->getHashID(), "010203040506");
    EXPECT_EQ(result->getControlCode(), 7);
    EXPECT_EQ(result->getApplicationType(), 0); // its table sets it
    EXPECT_EQ(result->getData(), result.bytes.data());
    EXPECT_EQ(result->getDataLength(), 9U);
    EXPECT_TRUE(taken(result->getDescriptorTags()).empty());
}

TEST(TApplication, AnyControlCodeIsKept) {
    for (unsigned code = 0; code <= 0xFF; ++code) {
        const auto result = parsed(application(1, 2, static_cast<QUOR_U8>(code)));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result->getControlCode(), code);
    }
}

TEST(TApplication, ReservedBitsAreIgnored) {
    for (const char* const flags : {"0", "5", "A", "F"}) {
        const auto result = parsed(hex("00000001 0002 01 " + std::string(flags) + "002  4200"));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result.length, 11U);
    }
}

TEST(TApplication, TheTableSetsTypeAndParent) {
    TApplication empty(NO_BYTES, 0U);
    empty.setApplicationType(TApplication::TYPE_NCL);
    EXPECT_EQ(empty.getApplicationType(), 9);
    empty.setApplicationType(0xFFFF);
    EXPECT_EQ(empty.getApplicationType(), 0xFFFF);
}

TEST(TApplication, NeedsNowhereToWriteCodeAndLength) {
    const HeapBytes bytes(application(1, 2, 1, hex("4200")));
    const LogCapture log;
    const std::unique_ptr<TApplication> good(TApplication::parse(bytes.data(), bytes.size(), 1, nullptr, nullptr));
    EXPECT_NE(good, nullptr);
    EXPECT_EQ(log.lines(), Lines{});
    EXPECT_EQ(TApplication::parse(bytes.data(), 5, 1, nullptr, nullptr), nullptr);
    EXPECT_EQ(TApplication::parse(bytes.data(), 10, 1, nullptr, nullptr), nullptr);
}

TEST(TApplication, DescriptorsAreAlwaysParsed) {
    const HeapBytes bytes(application(1, 2, 1, ait::kind(0x11).wire));
    for (const int parseDescriptors : {0, 1, -1}) {
        const std::unique_ptr<TApplication> result(
            TApplication::parse(bytes.data(), bytes.size(), parseDescriptors, nullptr, nullptr));
        ASSERT_NE(result, nullptr);
        EXPECT_NE(result->getDescriptor(0x11), nullptr);
    }
}

TEST(TApplication, LessThanSixBytesFail) {
    for (unsigned size = 0; size < 6; ++size) {
        expectRejected(parsed(fill(size, 0x00)), TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds(std::to_string(size)));
    }
}

TEST(TApplication, MeasuredWithSixToEightBytesItReadsNine) {
    for (QUOR_U32 measured = 6; measured < 9; ++measured) {
        const auto result = parseMeasured(hex("00000001 0002 03 F000"), measured);
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(result.length, 9U);
        EXPECT_EQ(result.lines, Lines{});
        EXPECT_EQ(result->getControlCode(), 3);
        EXPECT_EQ(result->getHashID(), "000000010002");
        EXPECT_EQ(result->getDataLength(), measured);
    }
}

TEST(TApplication, MeasuredWithSixToEightBytesItHasNoRoomForDescriptors) {
    for (QUOR_U32 measured = 6; measured < 9; ++measured) {
        expectOutOfBytes(parseMeasured(hex("00000001 0002 03 F001"), measured), 0);
        expectOutOfBytes(parseMeasured(hex("00000001 0002 03 FFFF"), measured), 0);
        expectOutOfBytes(parseMeasured(hex("00000001 0002 03 F002 4200"), measured), 0); // nor behind the nine
    }
}

TEST(TApplication, ADescriptorLoopLongerThanTheBytesFails) {
    expectRejected(parsed(hex("00000001 0002 01 F001")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds("1 > 0"));
    expectRejected(parsed(hex("00000001 0002 01 F003 4200")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds("3 > 2"));
    expectRejected(parsed(hex("00000001 0002 01 FFFF 4200")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                   exceeds("4095 > 2"));
}

TEST(TApplication, ADescriptorLongerThanTheBytesFails) {
    expectRejected(parsed(hex("00000001 0002 01 F002 4201")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeds("1 > 0"));
    expectRejected(parsed(hex("00000001 0002 01 F006 4200 11FF 0102")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                   exceeds("255 > 2"));
}

TEST(TApplication, OneByteIsNoDescriptor) {
    expectOutOfBytes(parsed(hex("00000001 0002 01 F001 42")), 1);
    expectOutOfBytes(parsed(hex("00000001 0002 01 F003 4200 11")), 1);
}

TEST(TApplication, DescriptorsAreBoundByTheBytesNotByTheLoop) {
    // The loop says 2 bytes, its descriptor has 4: the count wraps and goes on until the bytes end.
    expectOutOfBytes(parsed(hex("00000001 0002 01 F002 4202 0000")), 0);
    expectRejected(parsed(hex("00000001 0002 01 F003 4200 4200 4203 00")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                   exceeds("3 > 1"));
    const auto result = parsed(hex("00000001 0002 01 F002 4202 0000 F100 4201"));
    expectRejected(result, TISDBTTable::ERROR_INVALID_DATA_LENGTH, {unknown("0xF1")[0], exceeds("1 > 0")[0]});
}

TEST(TApplication, BytesBehindTheLoopAreLeft) {
    const auto result = parsed(hex("00000001 0002 01 F002 4200 11FF"));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.length, 11U);
    EXPECT_EQ(result->getDataLength(), 13U);
}

TEST(TApplication, ALoopCountThatComesBackToNothingEndsTheLoop) {
    // A loop of one byte, and 65537 bytes of descriptors.
    ByteVector descriptors;
    for (unsigned i = 0; i < 255; ++i) {
        descriptors = join({descriptors, hex("42 FF"), fill(255, 0x00)});
    }
    const ByteVector wire = join({hex("00000001 0002 01 F001"), descriptors, hex("4200")});
    const auto result = parsed(join({wire, hex("11FF")}));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(result.length, 9U + 65537U);
    EXPECT_EQ(result.lines, Lines{});
    expectOutOfBytes(parsed(ByteVector(wire.begin(), wire.end() - 1)), 1);
}

TEST(TApplication, HoldsOneDescriptorOfEachKind) {
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        const auto result = parsed(application(1, 2, 1, kind.wire));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(result.length, 9U + kind.wire.size());
        EXPECT_EQ(result.lines, Lines{}); // the Ginga descriptors are at home here
        const TISDBTDescriptor* const descriptor = result->getDescriptor(kind.tag);
        EXPECT_EQ(ait::shown(descriptor), kind.shown);
        EXPECT_EQ(descriptor->getDescriptorTag(), kind.tag);
        EXPECT_EQ(descriptor->getData(), result.bytes.data() + 9);
        EXPECT_EQ(descriptor->getDataLength(), kind.wire.size() - (kind.tag == 0x02 ? 2 : 0));
        int inherited = PRESET_FLAG;
        EXPECT_EQ(kind.ofApplication(*result.object, 0, &inherited), descriptor);
        EXPECT_EQ(kind.ofApplication(*result.object, 1, &inherited), descriptor);
        EXPECT_EQ(kind.ofApplication(*result.object, 1, nullptr), descriptor);
        EXPECT_EQ(inherited, PRESET_FLAG);
        EXPECT_EQ(taken(result->getDescriptorTags()), std::vector<QUOR_U8>{kind.tag});
        for (unsigned tag = 0; tag <= 0xFF; ++tag) {
            EXPECT_EQ(result->getDescriptor(static_cast<QUOR_U8>(tag)), tag == kind.tag ? descriptor : nullptr) << tag;
        }
        for (const ait::Kind& other : ait::kinds()) {
            EXPECT_EQ(other.ofApplication(*result.object, 0, nullptr),
                      ait::sameMember(kind, other) ? descriptor : nullptr)
                << other.name;
        }
    }
}

TEST(TApplication, WithoutDescriptorsNoTagIsHeld) {
    const auto result = parsed(application(1, 2, 1));
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(result->getDescriptor(static_cast<QUOR_U8>(tag)), nullptr) << tag;
    }
}

TEST(TApplication, TagsOfEverySelectionComeInTheirOrder) {
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
            const auto result = parsed(application(1, 2, 1, wire));
            ASSERT_NE(result.object, nullptr);
            ASSERT_EQ(taken(result->getDescriptorTags()), tags);
        }
    }
}

TEST(TApplication, TheTagListIsNewEachTime) {
    const auto result = parsed(application(1, 2, 1, ait::kind(0x11).wire));
    const std::unique_ptr<std::list<QUOR_U8>> first(result->getDescriptorTags());
    first->clear();
    EXPECT_EQ(taken(result->getDescriptorTags()), std::vector<QUOR_U8>{0x11});
}

TEST(TApplication, LastDescriptorOfAKindWins) {
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        const auto result = parsed(application(1, 2, 1, join({kind.wire, kind.otherWire})));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(ait::shown(result->getDescriptor(kind.tag)), kind.otherShown);
        const auto swapped = parsed(application(1, 2, 1, join({kind.otherWire, kind.wire})));
        EXPECT_EQ(ait::shown(swapped->getDescriptor(kind.tag)), kind.shown);
        EXPECT_EQ(taken(swapped->getDescriptorTags()).size(), 1U);
    }
}

TEST(TApplication, JavaAndNclDisplaceEachOther) {
    struct Pair {
        QUOR_U8 java;
        QUOR_U8 ncl;
    };
    for (const Pair& pair : {Pair{0x03, 0x06}, Pair{0x04, 0x07}}) {
        const ait::Kind& java = ait::kind(pair.java);
        const ait::Kind& ncl = ait::kind(pair.ncl);
        const auto nclLast = parsed(application(1, 2, 1, join({java.wire, ncl.wire})));
        ASSERT_NE(nclLast.object, nullptr);
        EXPECT_EQ(nclLast->getDescriptor(pair.java), nullptr);
        EXPECT_EQ(ait::shown(nclLast->getDescriptor(pair.ncl)), ncl.shown);
        EXPECT_EQ(java.ofApplication(*nclLast.object, 0, nullptr), nclLast->getDescriptor(pair.ncl));
        EXPECT_EQ(taken(nclLast->getDescriptorTags()), std::vector<QUOR_U8>{pair.ncl});

        const auto javaLast = parsed(application(1, 2, 1, join({ncl.wire, java.wire})));
        ASSERT_NE(javaLast.object, nullptr);
        EXPECT_EQ(javaLast->getDescriptor(pair.ncl), nullptr);
        EXPECT_EQ(ait::shown(javaLast->getDescriptor(pair.java)), java.shown);
        EXPECT_EQ(taken(javaLast->getDescriptorTags()), std::vector<QUOR_U8>{pair.java});
    }
}

TEST(TApplication, UnknownDescriptorsAreLoggedAndSkipped) {
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        if (ait::isKnown(static_cast<QUOR_U8>(tag)) || tag == 0x42) {
            continue;
        }
        char shownTag[8];
        std::snprintf(shownTag, sizeof shownTag, "0x%02X", tag);
        const auto result = parsed(
            application(1, 2, 1, join({descriptor(static_cast<QUOR_U8>(tag), hex("FFFF")), ait::kind(0x11).wire})));
        ASSERT_NE(result.object, nullptr);
        EXPECT_EQ(result.lines, unknown(shownTag));
        EXPECT_EQ(result.length, 18U);
        EXPECT_EQ(taken(result->getDescriptorTags()), std::vector<QUOR_U8>{0x11});
    }
}

TEST(TApplication, StuffingIsSkippedSilently) {
    const auto result =
        parsed(application(1, 2, 1, join({hex("4200 4203 000000"), ait::kind(0x11).wire, hex("4200")})));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(result.lines, Lines{});
    EXPECT_EQ(taken(result->getDescriptorTags()), std::vector<QUOR_U8>{0x11});
}

TEST(TApplication, AFailingDescriptorFailsItWithItsOwnCodeAndLines) {
    for (const ait::Broken& broken : ait::broken()) {
        SCOPED_TRACE(broken.name);
        expectRejected(parsed(application(1, 2, 1, broken.wire)), broken.code, broken.lines);
        expectRejected(parsed(application(1, 2, 1, join({oneOfEach(true), broken.wire, hex("4200")}))), broken.code,
                       broken.lines);
    }
}

TEST(TApplication, ADescriptorIsBoundByItsOwnLength) {
    // An icon whose locator fills it, with bytes behind it that could be taken for flags.
    const auto result = parsed(application(1, 2, 1, hex("0B 03 02 6162  4202 0101")));
    ASSERT_NE(result.object, nullptr);
    EXPECT_EQ(ait::shown(result->getDescriptor(0x0B)), "icon: ab 0");
}

TEST(TApplication, InheritsWhatItLacks) {
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        const auto table = parseSection<TAITTable>(ait::section(kind.wire, application(1, 2, 1)));
        ASSERT_NE(table.object, nullptr);
        const TApplication& entry = *table->getApplication("000000010002");
        int inherited = PRESET_FLAG;
        EXPECT_EQ(kind.ofApplication(entry, 0, &inherited), nullptr);
        EXPECT_EQ(inherited, PRESET_FLAG);
        EXPECT_NE(kind.ofTable(*table.object), nullptr);
        EXPECT_EQ(kind.ofApplication(entry, 1, &inherited), kind.ofTable(*table.object));
        EXPECT_EQ(inherited, 1);
        inherited = 0;
        EXPECT_EQ(kind.ofApplication(entry, -1, &inherited), kind.ofTable(*table.object));
        EXPECT_EQ(inherited, 1);
        EXPECT_EQ(kind.ofApplication(entry, 1, nullptr), kind.ofTable(*table.object));
        EXPECT_EQ(entry.getDescriptor(kind.tag), nullptr);
        EXPECT_TRUE(taken(entry.getDescriptorTags()).empty());
    }
}

TEST(TApplication, ItsOwnDescriptorGoesBeforeTheTables) {
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        const auto table = parseSection<TAITTable>(ait::section(kind.wire, application(1, 2, 1, kind.otherWire)));
        ASSERT_NE(table.object, nullptr);
        const TApplication& entry = *table->getApplication("000000010002");
        int inherited = PRESET_FLAG;
        for (const int inherit : {0, 1}) {
            EXPECT_EQ(ait::shown(kind.ofApplication(entry, inherit, &inherited)), kind.otherShown);
            EXPECT_EQ(kind.ofApplication(entry, inherit, &inherited), entry.getDescriptor(kind.tag));
        }
        EXPECT_EQ(inherited, PRESET_FLAG);
    }
}

TEST(TApplication, WhatTheTableLacksIsNotInherited) {
    const auto table = parseSection<TAITTable>(ait::section({}, application(1, 2, 1)));
    ASSERT_NE(table.object, nullptr);
    const TApplication& entry = *table->getApplication("000000010002");
    for (const ait::Kind& kind : ait::kinds()) {
        int inherited = PRESET_FLAG;
        EXPECT_EQ(kind.ofApplication(entry, 1, &inherited), nullptr) << kind.name;
        EXPECT_EQ(inherited, PRESET_FLAG) << kind.name;
    }
}

TEST(TApplication, TheOtherFormOfGingaIsInheritedToo) {
    // Java at the table stands in for an application that could as well be NCL; its own NCL one goes before it.
    const auto table = parseSection<TAITTable>(
        ait::section(ait::kind(0x03).wire, join({application(1, 1, 1), application(1, 2, 1, ait::kind(0x06).wire)})));
    ASSERT_NE(table.object, nullptr);
    EXPECT_EQ(table->getApplication("000000010001")->getGingaApplicationDescriptor(1, nullptr)->getDescriptorTag(), 3);
    EXPECT_EQ(table->getApplication("000000010002")->getGingaApplicationDescriptor(1, nullptr)->getDescriptorTag(), 6);
}

TEST(TApplication, InheritsFromTheTableThatItIsGiven) {
    const auto table = parseSection<TAITTable>(ait::section(ait::kind(0x11).wire, {}));
    const auto entry = parsed(application(1, 2, 1));
    ASSERT_NE(table.object, nullptr);
    int inherited = PRESET_FLAG;
    EXPECT_EQ(entry->getDescriptor(0x11), nullptr);
    const ait::Kind& kind = ait::kind(0x11);
    EXPECT_EQ(kind.ofApplication(*entry.object, 1, &inherited), nullptr); // an application alone
    EXPECT_EQ(inherited, PRESET_FLAG);
    entry->setParentAITTable(table.object.get());
    EXPECT_EQ(kind.ofApplication(*entry.object, 1, &inherited), table->getDescriptor(0x11));
    EXPECT_EQ(inherited, 1);
    entry->setParentAITTable(nullptr);
    EXPECT_EQ(kind.ofApplication(*entry.object, 1, &inherited), nullptr);
}

TEST(TApplication, ACopyHasItsFieldsAndItsOwnDescriptors) {
    for (const bool java : {true, false}) {
        for (const int inherit : {0, 1}) {
            std::unique_ptr<TApplication> copy;
            std::vector<std::string> expected;
            QUOR_U8* data = nullptr;
            const LogCapture log;
            {
                const auto source = parsed(application(0xABCD, 0x12, 4, oneOfEach(java)));
                ASSERT_NE(source.object, nullptr);
                source->setApplicationType(9);
                expected = ownDescriptors(*source.object);
                data = source.bytes.data();
                copy = std::make_unique<TApplication>(source.object.get(), inherit);
                EXPECT_NE(copy->getApplicationIdentifier(), source->getApplicationIdentifier());
                EXPECT_EQ(copy->getDataLength(), source->getDataLength());
                for (const ait::Kind& kind : ait::kinds()) {
                    if (source->getDescriptor(kind.tag) != nullptr) {
                        EXPECT_NE(copy->getDescriptor(kind.tag), source->getDescriptor(kind.tag)) << kind.name;
                    }
                }
            }
            EXPECT_EQ(log.lines(), Lines{});
            EXPECT_EQ(copy->getData(), data);
            EXPECT_EQ(copy->getHashID(), "0000ABCD0012");
            EXPECT_EQ(copy->getControlCode(), 4);
            EXPECT_EQ(copy->getApplicationType(), 9);
            EXPECT_EQ(copy->getApplicationIdentifier()->getOrganizationID(), 0xABCDU);
            EXPECT_EQ(copy->getApplicationIdentifier()->getApplicationID(), 0x12);
            EXPECT_EQ(ownDescriptors(*copy), expected);
            EXPECT_EQ(std::count(expected.begin(), expected.end(), "none"), 2); // those of the other form
        }
    }
}

TEST(TApplication, ACopyThatInheritsNeedsNoTable) {
    for (const ait::Kind& kind : ait::kinds()) {
        for (const bool other : {false, true}) {
            SCOPED_TRACE(kind.name + (other ? ", the other" : ""));
            std::unique_ptr<TApplication> copy;
            {
                const auto table =
                    parseSection<TAITTable>(ait::section(other ? kind.otherWire : kind.wire, application(1, 2, 1)));
                ASSERT_NE(table.object, nullptr);
                copy = std::make_unique<TApplication>(table->getApplication("000000010002"), 1);
                EXPECT_NE(copy->getDescriptor(kind.tag), kind.ofTable(*table.object));
            }
            EXPECT_EQ(ait::shown(copy->getDescriptor(kind.tag)), other ? kind.otherShown : kind.shown);
            EXPECT_EQ(taken(copy->getDescriptorTags()), std::vector<QUOR_U8>{kind.tag});
            EXPECT_EQ(copy->getDescriptor(kind.tag)->getData(), nullptr);
            EXPECT_EQ(copy->getDescriptor(kind.tag)->getDataLength(), 0U);
            int inherited = PRESET_FLAG;
            EXPECT_EQ(kind.ofApplication(*copy, 1, &inherited), copy->getDescriptor(kind.tag));
            EXPECT_EQ(inherited, PRESET_FLAG);
            EXPECT_EQ(copy->getApplicationType(), 9);
        }
    }
}

TEST(TApplication, ACopyThatDoesNotInheritHasOnlyItsOwn) {
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        const auto table = parseSection<TAITTable>(ait::section(kind.wire, application(1, 2, 1)));
        ASSERT_NE(table.object, nullptr);
        const TApplication copy(table->getApplication("000000010002"), 0);
        EXPECT_TRUE(taken(copy.getDescriptorTags()).empty());
        int inherited = PRESET_FLAG;
        EXPECT_EQ(kind.ofApplication(copy, 1, &inherited), nullptr); // nor has it a table to ask
        EXPECT_EQ(inherited, PRESET_FLAG);
    }
}

TEST(TApplication, ACopyPrefersItsOwnDescriptorsToTheTables) {
    for (const ait::Kind& kind : ait::kinds()) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<TApplication> copy;
        {
            const auto table = parseSection<TAITTable>(ait::section(kind.wire, application(1, 2, 1, kind.otherWire)));
            ASSERT_NE(table.object, nullptr);
            copy = std::make_unique<TApplication>(table->getApplication("000000010002"), 1);
        }
        EXPECT_EQ(ait::shown(copy->getDescriptor(kind.tag)), kind.otherShown);
    }
}

TEST(TApplication, ACopyMixesItsOwnAndTheTables) {
    std::unique_ptr<TApplication> copy;
    {
        const auto table = parseSection<TAITTable>(ait::section(
            oneOfEach(true), application(1, 2, 1, join({ait::kind(0x11).otherWire, ait::kind(0x06).wire}))));
        ASSERT_NE(table.object, nullptr);
        copy = std::make_unique<TApplication>(table->getApplication("000000010002"), 1);
    }
    std::vector<QUOR_U8> tags = ait::orderOfTags(false);
    std::replace(tags.begin(), tags.end(), QUOR_U8{0x07}, QUOR_U8{0x04});
    EXPECT_EQ(taken(copy->getDescriptorTags()), tags);
    EXPECT_EQ(ait::shown(copy->getDescriptor(0x11)), ait::kind(0x11).otherShown);
    EXPECT_EQ(ait::shown(copy->getDescriptor(0x06)), ait::kind(0x06).shown);
    EXPECT_EQ(ait::shown(copy->getDescriptor(0x04)), ait::kind(0x04).shown);
    EXPECT_EQ(ait::shown(copy->getDescriptor(0x01)), ait::kind(0x01).shown);
}

TEST(TApplication, EveryTransportIsCopiedWithItsLabel) {
    struct Case {
        const char* wire;
        const char* shown;
    };
    for (const Case& each : {Case{"02 05 0001 07 00 33", "object carousel, protocol 1, label 7, component 51"},
                             Case{"02 0A 0002 08 00 80 01 61 02 6263", "IP, protocol 2, label 8, aligned, a, bc"},
                             Case{"02 0B 0002 08 80 0001 0002 0003 00", "IP, protocol 2, label 8, service 1.2.3"},
                             Case{"02 0B 0004 09 80 0001 0002 0003 33",
                                  "data carousel, protocol 4, label 9, service 1.2.3, component 51"}}) {
        std::unique_ptr<TApplication> own;
        std::unique_ptr<TApplication> fromTable;
        {
            const auto table = parseSection<TAITTable>(
                ait::section(hex(each.wire), join({application(1, 1, 1, hex(each.wire)), application(1, 2, 1)})));
            ASSERT_NE(table.object, nullptr);
            own = std::make_unique<TApplication>(table->getApplication("000000010001"), 0);
            fromTable = std::make_unique<TApplication>(table->getApplication("000000010002"), 1);
        }
        EXPECT_EQ(ait::shown(own->getDescriptor(0x02)), each.shown);
        EXPECT_EQ(ait::shown(fromTable->getDescriptor(0x02)), each.shown);
    }
}

TEST(TApplication, ACopyOfACopyIsTheSame) {
    std::unique_ptr<TApplication> second;
    std::vector<std::string> expected;
    {
        const auto source = parsed(application(1, 2, 3, oneOfEach(false)));
        ASSERT_NE(source.object, nullptr);
        expected = ownDescriptors(*source.object);
        TApplication first(source.object.get(), 0);
        second = std::make_unique<TApplication>(&first, 1);
    }
    EXPECT_EQ(ownDescriptors(*second), expected);
    EXPECT_EQ(second->getHashID(), "000000010002");
    EXPECT_EQ(second->getApplicationIdentifier()->getApplicationID(), 2);
}

TEST(TApplication, ACopyOfAnEmptyOneIsEmpty) {
    TApplication empty(NO_BYTES, 0U);
    empty.setApplicationType(1);
    for (const int inherit : {0, 1}) {
        const TApplication copy(&empty, inherit);
        EXPECT_EQ(copy.getData(), nullptr);
        EXPECT_EQ(copy.getDataLength(), 0U);
        EXPECT_EQ(copy.getHashID(), "");
        EXPECT_EQ(copy.getControlCode(), 0);
        EXPECT_EQ(copy.getApplicationType(), 1);
        EXPECT_EQ(copy.getApplicationIdentifier(), nullptr);
        EXPECT_TRUE(taken(copy.getDescriptorTags()).empty());
    }
}
