#include "hostile/Tables.h"

#include "support/Classes.h"
#include "support/FullSections.h"
#include "support/Survival.h"

#include <gmock/gmock.h>

#include <algorithm>

using Quor::TISDBTTable;

namespace {

template <class Table> Parsed<TISDBTTable> parse(const ByteVector& wire, TISDBTTable* previous) {
    Parsed<TISDBTTable> result(wire);
    const LogCapture log;
    result.object.reset(
        Table::parse(result.bytes.data(), result.bytes.size(), 1, 1, &result.error, static_cast<Table*>(previous)));
    result.lines = log.lines();
    return result;
}

ByteVector section(QUOR_U8 tableId, const ByteVector& body) {
    return longSection(tableId, {}, body);
}

/// A content of the SDTT has its length in the upper 12 bits.
ByteVector upperLength(std::size_t length) {
    return u16(static_cast<unsigned>(length) << 4 & 0xFFF0U);
}

/// The tags of the descriptors that a holder hands out; of those only that may be without a body.
template <class Holder> ByteVector tagsOf(bool bodiless = false) {
    ByteVector tags;
    forEachHeld<Holder>(classRows(), [&](const auto& row) {
        if (!bodiless || row.minimum == 0) {
            tags.push_back(row.tag);
        }
    });
    return tags;
}

template <class Holder, class Table>
DescriptorLoop loopIn(const char* name, bool stuffing, ByteVector (*section)(const ByteVector& descriptors)) {
    return {name, tagsOf<Holder>(), tagsOf<Holder>(true), stuffing, section, parse<Table>};
}

} // namespace

void PrintTo(const TableClass& table, std::ostream* out) {
    *out << table.name;
}

void PrintTo(const DescriptorLoop& loop, std::ostream* out) {
    *out << loop.name;
}

bool DescriptorLoop::knows(QUOR_U8 tag) const {
    return std::find(known.begin(), known.end(), tag) != known.end();
}

std::vector<TableClass> tableClasses() {
    return {
        {"Pat", 10, 8, fullPat(), parse<Quor::TPATTable>},
        {"Pmt", 4, 8, fullPmt(), parse<Quor::TPMTTable>},
        {"Tot", 10, 3, fullTot(), parse<Quor::TTOTTable>},
        {"Nit", 4, 8, fullNit(), parse<Quor::TNITTable>},
        {"Sdt", 3, 8, fullSdt(), parse<Quor::TSDTTable>},
        {"Ait", 4, 8, fullAit(), parse<Quor::TAITTable>},
        {"Sdtt", 4, 8, fullSdtt(), parse<Quor::TSDTTTable>},
        {"DsmccSection", 4, 8, fullDsmccSection(), parse<Quor::TDSMCCSectionTable>},
    };
}

std::vector<DescriptorLoop> descriptorLoops() {
    using Bytes = const ByteVector&;
    return {
        loopIn<Quor::TPMTTable, Quor::TPMTTable>("ProgramOfPmt", false,
                                                 [](Bytes descriptors) {
                                                     return section(0x02, join({hex("E100"), loopOf(descriptors)}));
                                                 }),
        loopIn<Quor::TProgramMap, Quor::TPMTTable>(
            "StreamOfPmt", false,
            [](Bytes descriptors) {
                return section(0x02, join({hex("E100 F000 1B E111"), loopOf(descriptors)}));
            }),
        loopIn<Quor::TTOTTable, Quor::TTOTTable>(
            "Tot", false,
            [](Bytes descriptors) {
                return shortSection(0x73, join({hex("EDA9 123456"), loopOf(descriptors)}));
            }),
        loopIn<Quor::TNITTable, Quor::TNITTable>("NetworkOfNit", true,
                                                 [](Bytes descriptors) {
                                                     return section(0x40, join({loopOf(descriptors), hex("F000")}));
                                                 }),
        loopIn<Quor::TTransportStreamInfo, Quor::TNITTable>(
            "StreamOfNit", true,
            [](Bytes descriptors) {
                return section(0x40, join({hex("F000"), loopOf(join({hex("0735 0001"), loopOf(descriptors)}))}));
            }),
        loopIn<Quor::TServiceDescription, Quor::TSDTTable>(
            "ServiceOfSdt", true,
            [](Bytes descriptors) {
                return section(0x42, join({hex("0001 FF E6A0 FF"), loopOf(descriptors)}));
            }),
        loopIn<Quor::TAITTable, Quor::TAITTable>("CommonOfAit", true,
                                                 [](Bytes descriptors) {
                                                     return section(0x74, join({loopOf(descriptors), hex("F000")}));
                                                 }),
        loopIn<Quor::TApplication, Quor::TAITTable>(
            "ApplicationOfAit", true,
            [](Bytes descriptors) {
                return section(0x74, join({hex("F000"), loopOf(join({hex("0000000A 0001 01"), loopOf(descriptors)}))}));
            }),
        loopIn<Quor::TDownloadContent, Quor::TSDTTTable>(
            "ContentOfSdtt", false,
            [](Bytes descriptors) {
                return section(0xC3, join({hex("0735 0001 E6A0 01"), hex("1001 0027"), upperLength(descriptors.size()),
                                           hex("0000"), descriptors}));
            }),
        loopIn<Quor::TDSMCCSectionTable, Quor::TDSMCCSectionTable>(
            "DsmccSection", false, [](Bytes descriptors) { return section(0x3D, descriptors); }),
    };
}

ByteVector counting(std::size_t count) {
    ByteVector bytes;
    for (std::size_t i = 0; i < count; ++i) {
        bytes.push_back(static_cast<QUOR_U8>(i));
    }
    return bytes;
}

ByteVector cut(const ByteVector& good, std::size_t size) {
    return ByteVector(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
}

void expectTakenOrRefused(const Parsed<TISDBTTable>& parsed) {
    if (parsed.object != nullptr) {
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        survival::expectSound<TISDBTTable>(*parsed.object);
        return;
    }
    if (parsed.error == TISDBTTable::ERROR_OK) { // how callers tell an application over an unsupported transport
        EXPECT_THAT(parsed.lines, testing::Contains(testing::MatchesRegex(
                                      "ISDBTUtils: TTransportProtocolDescriptor::parse: (Unknown protocol ID: "
                                      "0x[0-9A-F]+|DataPiping not supported)\\. Aborting!")));
        return;
    }
    EXPECT_THAT(parsed.error,
                testing::AnyOf(TISDBTTable::ERROR_INVALID_DATA_LENGTH, TISDBTTable::ERROR_INVALID_TABLE_ID,
                               TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG,
                               TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, TISDBTTable::ERROR_INVALID_STRING,
                               TISDBTTable::ERROR_INVALID_ITEM));
    EXPECT_FALSE(parsed.lines.empty());
}

void expectRefused(const Parsed<TISDBTTable>& parsed, QUOR_U16 code) {
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, code);
    EXPECT_FALSE(parsed.lines.empty());
}
