#include "tool/json/ExampleSections.h"

#include "support/FullSections.h"

namespace {

std::vector<ByteVector> fullSections() {
    return {fullPat(), fullPmt(), fullTot(), fullNit(), fullSdt(), fullAit(), fullSdtt(), fullDsmccSection()};
}

std::vector<ByteVector> emptySections() {
    return {
        longSection(0x00, {}, {}),
        longSection(0x02, {}, hex("E100 F000  1B E111 F000")),
        shortSection(0x73, hex("EDA9 12 34 56 F000")),
        longSection(0x40, {}, hex("F000 F006  0735 0001 F000")),
        longSection(0x42, {}, hex("0001 FF  E6A0 FF 8000")),
        longSection(0x74, {}, hex("F000 F009  0000000A 0001 01 F000")),
        longSection(0xC3, {}, hex("0735 0001 E6A0 01  1001 0027 0080 0080  EDA9 123456 013000")),
        longSection(0x3D, {}, {}),
    };
}

/// A descriptor that no table knows, and one that a later one of its kind displaces.
std::vector<ByteVector> sectionsWithDescriptorsLeftOut() {
    return {
        longSection(0x02, {}, hex("E100 F00B 99 01AA 52 0181 52 0182 8000  1B E111 F00B 99 01AA 52 0181 52 0182 8000")),
        shortSection(0x73, hex("EDA9 12 34 56 F021 99 01AA  58 0D 425241 0D 0300 EE35 030000 0200"
                               "58 0D 425241 0D 0300 EE35 030000 0200")),
        longSection(0x40, {}, hex("F009 99 01AA 40 0141 40 0142  F00F  0735 0001 F009 99 01AA 40 0141 40 0142")),
        longSection(0x42, {}, hex("0001 FF  E6A0 FF 8009 99 01AA 47 0141 47 0142")),
        longSection(0x74, {},
                    hex("F00D 99 01AA 11 03 010203 11 03 010204"
                        "F016  0000000A 0001 01 F00D 99 01AA 11 03 010203 11 03 010204")),
        longSection(0xC3, {},
                    hex("0735 0001 E6A0 01  1001 0027 0330 0080  EDA9 123456 013000  99 01AA"
                        "C9 12 00 00000100 00000001 00000BB8 000190 40 00"
                        "C9 12 00 00000100 00000001 00000BB8 000190 40 00")),
        longSection(0x3D, {}, hex("99 01AA  03 02 02FF  03 02 02FF")),
    };
}

std::vector<ByteVector> sectionsWithVariants() {
    return {
        // without what AAC and digital copy control may leave out
        longSection(0x02, {}, hex("E100 F007  7C 02 2D 00  C1 01 00  1B E111 F000")),
        // transport over IP; Ginga-NCL in the common loop
        longSection(0x74, {9},
                    hex("F00D  02 07 0002 01 00 80 01 61  06 02 01 62 "
                        "F000")),
        // a carousel of data; both kinds of Ginga descriptors; an application that inherits them
        longSection(0x74, {1},
                    hex("F023  02 05 0004 01 00 0B  03 02 01 61  06 02 01 62"
                        "04 09 01 2F 02 6370 4D61696E  07 07 01 2F 00 6D2E6E63"
                        "F009  0000000A 0001 01 F000")),
    };
}

/// Descriptors that the standard reads otherwise than the receiver.
std::vector<ByteVector> sectionsReadInTwoWays() {
    return {
        longSection(0x02, {},
                    hex("E100 F038  0D 05 42524131 AA  51 01 52  C8 01 57"
                        "2A 0F 81 7F 00000002 00000003 00000004 A0"
                        "13 18 0000002A 01 02 0003 0FA2 00000100 01 00000200 3C 02 ABCD EF"
                        "1B E111 F01B  13 04 0000002A  2A 13 01 FF 00000004 A0 000000000000000000000000")),
        shortSection(0x73, hex("EDA9 12 34 56 F00F  58 0D 425241 0D 0A00 FFFFFFFFFF 0A00")),
        longSection(0x02, {},
                    hex("E100 F016  0D 03 425241  13 06 0000002A 01 02  C1 07 10 05 30 E4 20 31 C0  1B E111 F000")),
        longSection(0x40, {}, hex("F000 F00C  0735 0001 F006 41 04 E6A0 01 E6")),
        longSection(0x40, {}, hex("F000 F00E  0735 0001 F008 41 06 E6A0 01 E6B8 C0")),
    };
}

} // namespace

std::vector<ByteVector> exampleSections() {
    std::vector<ByteVector> sections;
    for (const auto& group : {fullSections(), emptySections(), sectionsWithDescriptorsLeftOut(), sectionsWithVariants(),
                              sectionsReadInTwoWays()}) {
        sections.insert(sections.end(), group.begin(), group.end());
    }
    return sections;
}
