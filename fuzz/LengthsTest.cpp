#include "Lengths.h"

#include "Target.h"
#include "support/Classes.h"
#include "support/FullSections.h"

#include <gtest/gtest.h>

namespace {

struct Whole {
    const char* name;
    ByteVector section;
    std::size_t others;      ///< lengths that are no descriptor's
    std::size_t descriptors; ///< how many there are
};

/// The number of classes of descriptors that a table or an entry hands out.
template <class Holder> std::size_t kindsOf() {
    std::size_t count = 0;
    forEachHeld<Holder>(classRows(), [&count](const auto& /*row*/) { ++count; });
    return count;
}

std::vector<Whole> wholes() {
    using namespace Quor;
    return {{"TPATTable", fullPat(), 1, 0},
            {"TPMTTable", fullPmt(), 3, 2 * kindsOf<TProgramMap>()},
            {"TTOTTable", fullTot(), 2, kindsOf<TTOTTable>()},
            {"TNITTable", fullNit(), 4, 2 * kindsOf<TTransportStreamInfo>()},
            {"TSDTTable", fullSdt(), 2, kindsOf<TServiceDescription>()},
            // Two loops with all but those of Ginga-NCL, which are in a third.
            {"TAITTable", fullAit(), 5, 2 * kindsOf<TApplication>() - 2},
            {"TSDTTTable", fullSdtt(), 3, kindsOf<TDownloadContent>()},
            {"TDSMCCSectionTable", fullDsmccSection(), 1, kindsOf<TDSMCCSectionTable>()}};
}

bool accepted(const std::string& name, const ByteVector& section) {
    for (const Target& target : targetsOf(Target::Group::Tables)) {
        if (target.name == name) {
            return target.use({section, 0, 0});
        }
    }
    return false;
}

/// The section once for each of its descriptors, with these bytes in front of it.
std::vector<ByteVector> withBeforeEachDescriptor(const ByteVector& section, const ByteVector& inserted) {
    std::vector<ByteVector> all;
    const std::vector<Length> lengths = lengthsOfSection(section);
    for (const Length& length : lengths) {
        if (length.field == Length::Field::Byte) {
            ByteVector changed = section;
            const ByteVector own(section.begin() + static_cast<std::ptrdiff_t>(length.whole),
                                 section.begin() + static_cast<std::ptrdiff_t>(length.end));
            splice(changed, lengths, length.whole, length.end, join({inserted, own}));
            all.push_back(changed);
        }
    }
    return all;
}

TEST(Lengths, OfEverySectionAreFound) {
    for (const Whole& whole : wholes()) {
        EXPECT_EQ(lengthsOfSection(whole.section).size(), whole.others + whole.descriptors) << whole.name;
        EXPECT_EQ(withBeforeEachDescriptor(whole.section, {}).size(), whole.descriptors) << whole.name;
    }
}

TEST(Lengths, AllMeasureOneByteMoreWhenOneIsInserted) {
    // program_info_length, ES_info_length, descriptor_length
    const ByteVector section = longSection(0x02, {}, hex("E100 F000 1B E111 F003 52 01 07"));
    ByteVector changed = section;
    splice(changed, lengthsOfSection(section), 19, 20, hex("08 09"));
    EXPECT_EQ(ByteVector(changed.begin(), changed.end() - 4),
              hex("02 B016 0001 C1 00 00 E100 F000 1B E111 F004 52 02 08 09"));
}

TEST(Lengths, StayRightWhenDescriptorsAreInserted) {
    for (const Whole& whole : wholes()) {
        EXPECT_TRUE(accepted(whole.name, whole.section));
        for (const ByteVector& changed : withBeforeEachDescriptor(whole.section, hex("9A 03 010203"))) {
            EXPECT_TRUE(accepted(whole.name, changed)) << whole.name << testing::PrintToString(changed);
        }
    }
}

TEST(Lengths, OfDownloadContentsAreTwelveUpperBits) {
    const ByteVector section =
        longSection(0xC3, {}, hex("0735 0001 E6A0 01 1001 0027 00AF 008F EDA9 123456 013000 9A 00"));
    ByteVector changed = section;
    splice(changed, lengthsOfSection(section), 31, 33, hex("9A 01 00"));
    EXPECT_EQ(changed[19], 0x00);
    EXPECT_EQ(changed[20], 0xBF);
    EXPECT_EQ(changed[22], 0x8F);
}

} // namespace
