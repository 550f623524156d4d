#include "describing/DescriptorKinds.h"

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "nit/TNITTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "support/Parse.h"
#include "tot/TTOTTable.h"

#include <gmock/gmock.h>

namespace {

/// A table with one descriptor in it.
struct Holder {
    QUOR_U8 tableId;
    ByteVector (*section)(const ByteVector& descriptor);
    Lines (*linesOf)(const ByteVector& section); ///< what the library says to it
};

template <class Table> Lines linesOf(const ByteVector& section) {
    return parseSection<Table>(section).lines;
}

ByteVector loop(const ByteVector& content) {
    return join({u16(static_cast<unsigned>(content.size()), 0xF000), content});
}

const Holder HOLDERS[] = {
    {0x02,
     [](const ByteVector& descriptor) {
         return longSection(0x02, {}, join({hex("E100 F000 1B E111"), loop(descriptor)}));
     },
     linesOf<Quor::TPMTTable>},
    {0x3D, [](const ByteVector& descriptor) { return longSection(0x3D, {}, descriptor); },
     linesOf<Quor::TDSMCCSectionTable>},
    {0x40,
     [](const ByteVector& descriptor) {
         return longSection(0x40, {}, join({hex("F000"), loop(join({hex("0735 0001"), loop(descriptor)}))}));
     },
     linesOf<Quor::TNITTable>},
    {0x42,
     [](const ByteVector& descriptor) {
         return longSection(0x42, {}, join({hex("0001 FF E6A0 FF"), loop(descriptor)}));
     },
     linesOf<Quor::TSDTTable>},
    {0x73,
     [](const ByteVector& descriptor) {
         return shortSection(0x73, join({hex("EDA9 123456"), loop(descriptor)}));
     },
     linesOf<Quor::TTOTTable>},
    {0x74,
     [](const ByteVector& descriptor) {
         return longSection(0x74, {}, join({loop(descriptor), hex("F000")}));
     },
     linesOf<Quor::TAITTable>},
    {0xC3,
     [](const ByteVector& descriptor) {
         const auto length = static_cast<unsigned>(descriptor.size() << 4U);
         return longSection(0xC3, {},
                            join({hex("0735 0001 E6A0 01  1001 0020"), u16(length), hex("0000"), descriptor}));
     },
     linesOf<Quor::TSDTTTable>},
};

bool saysUnknown(const Lines& lines) {
    return testing::Matches(testing::Contains(testing::HasSubstr(": Unknown descriptor: 0x")))(lines);
}

TEST(DescriptorKinds, AreThoseThatTheLibraryDoesNotCallUnknown) {
    constexpr unsigned STUFFING = 0x42; // skipped without a word in some tables
    for (const Holder& holder : HOLDERS) {
        for (unsigned tag = 0; tag <= 0xFF; ++tag) {
            const auto* const kind = inspect::knownDescriptor(holder.tableId, static_cast<QUOR_U8>(tag));
            if (tag == STUFFING) {
                EXPECT_EQ(kind, nullptr);
                continue;
            }
            const ByteVector section = holder.section(descriptor(static_cast<QUOR_U8>(tag), hex("00")));
            EXPECT_EQ(kind == nullptr, saysUnknown(holder.linesOf(section)))
                << "table_id " << unsigned{holder.tableId} << " tag " << tag;
        }
    }
}

TEST(DescriptorKinds, AreNoneInTablesWithoutDescriptors) {
    EXPECT_EQ(inspect::knownDescriptor(0x00, 0x52), nullptr);
    EXPECT_EQ(inspect::knownDescriptor(0x4E, 0x50), nullptr);
}

} // namespace
