#include "time/Shapes.h"

namespace {

ByteVector u8(unsigned value) {
    return {static_cast<QUOR_U8>(value)};
}

ByteVector pat(unsigned count) {
    return longSection(0x00, {}, repeated(count, [](unsigned at) { return join({u16(at + 1), u16(0xE100 + at)}); }));
}

ByteVector pmtWithDescriptors(const ByteVector& descriptors) {
    return longSection(0x02, {}, join({hex("E100"), loopOf(descriptors)}));
}

ByteVector pmtWithEntries(unsigned count) {
    return longSection(0x02, {},
                       join({hex("E100 F000"), repeated(count, [](unsigned) { return hex("1B E111 F000"); })}));
}

/// Elementary streams with component tag, data component, languages and rights.
ByteVector pmt(unsigned count) {
    const ByteVector stream = loopOf(hex("52 01 10  FD 05 00A0 112233  C8 01 47  28 04 64 00 28 3F"
                                         "C1 06 70 7F 03 25 40 C0  55 04 425241 05"));
    return longSection(0x02, {},
                       join({hex("E100"), loopOf(hex("53 05 0005 8001 02")), repeated(count, [&](unsigned at) {
                                 return join({hex("1B"), u16(0xE100 + at), stream});
                             })}));
}

ByteVector nitWithDescriptors(const ByteVector& descriptors) {
    return longSection(0x40, {}, join({loopOf(descriptors), loopOf({})}));
}

ByteVector nitWithEntries(unsigned count) {
    return longSection(0x40, {}, join({loopOf({}), loopOf(repeated(count, [](unsigned at) {
                                           return join({u16(at), hex("0001 F000")});
                                       }))}));
}

/// Transport streams with services, frequencies, emergency areas and channel name.
ByteVector nit(unsigned count) {
    const ByteVector stream = loopOf(hex("41 06 5C20 01 5C38 C0  FA 06 8916 0F90 0E27  FB 02 5C38"
                                         "CD 0F 07 0E 474C42 AF 01 5C38 0F 02 5C20 5C21"));
    return longSection(0x40, {},
                       join({loopOf(hex("40 05 474C4F424F  FE 04 0301 1122")), loopOf(repeated(count, [&](unsigned at) {
                                 return join({u16(at), hex("0001"), stream});
                             }))}));
}

ByteVector sdtWithDescriptors(const ByteVector& descriptors) {
    return longSection(0x42, {}, join({hex("0001 FF E6A0 FF"), loopOf(descriptors)}));
}

ByteVector sdtWithEntries(unsigned count) {
    return longSection(0x42, {}, join({hex("0001 FF"), repeated(count, [](unsigned at) {
                                           return join({u16(at), hex("FF 0000")});
                                       })}));
}

/// Services with name, copy control and logo.
ByteVector sdt(unsigned count) {
    const ByteVector service =
        loopOf(hex("48 0A 01 03 474C42 04 474C4F42  C1 06 70 7F 03 25 40 C0  CF 07 01 0123 0456 FEDC"));
    return longSection(0x42, {}, join({hex("0001 FF"), repeated(count, [&](unsigned at) {
                                           return join({u16(at), hex("FF"), service});
                                       })}));
}

ByteVector totWithDescriptors(const ByteVector& descriptors) {
    return shortSection(0x73, join({hex("C079 124500"), loopOf(descriptors)}));
}

/// The time zones of a country, again and again.
ByteVector tot(unsigned count) {
    return totWithDescriptors(repeated(count, [](unsigned) {
        return hex(
            "58 27 425241 0C 0300 E35A010000 0200  425241 10 0400 E35A010000 0300  425241 14 0500 E35A010000 0400");
    }));
}

ByteVector aitWithDescriptors(const ByteVector& descriptors) {
    return longSection(0x74, {}, join({loopOf(descriptors), loopOf({})}));
}

ByteVector aitWithEntries(unsigned count) {
    return longSection(0x74, {}, join({loopOf({}), loopOf(repeated(count, [](unsigned at) {
                                           return join({hex("0000000A"), u16(at), hex("01 F000")});
                                       }))}));
}

/// Applications with profile, name, carousel and first document.
ByteVector ait(unsigned count) {
    const ByteVector application =
        loopOf(hex("00 09 05 8001 01 02 03 FF 05 01  01 08 706F72 04 4A6F676F  02 05 0001 01 7F 0B"
                   "06 04 03 616263  07 0B 01 2F 00 6D61696E2E6E636C"));
    return longSection(0x74, {}, join({loopOf({}), loopOf(repeated(count, [&](unsigned at) {
                                           return join({hex("0000000A"), u16(at), hex("01"), application});
                                       }))}));
}

ByteVector sdttContents(unsigned count, const ByteVector& schedules, const ByteVector& descriptors) {
    const auto size = static_cast<unsigned>(schedules.size() + descriptors.size());
    const ByteVector content = join({hex("1001 0027"), u16(size << 4U),
                                     u16(static_cast<unsigned>(schedules.size()) << 4U), schedules, descriptors});
    return longSection(0xC3, {},
                       join({hex("0735 0001 E6A0"), u8(count), repeated(count, [&](unsigned) { return content; })}));
}

ByteVector sdttWithDescriptors(const ByteVector& descriptors) {
    return sdttContents(1, {}, descriptors);
}

ByteVector sdttWithEntries(unsigned count) {
    return sdttContents(1, repeated(count, [](unsigned) { return hex("EDA9 123456 013000"); }), {});
}

/// Contents with schedule, two modules and a text.
ByteVector sdtt(unsigned count) {
    return sdttContents(count, hex("EDA9 123456 013000"),
                        descriptor(0xC9, hex("D8 00001000 00000001 00000064 001F43 40"
                                             "0002 0100 00000800 01 CC 0200 00000800 00  02 DDEE 706F72 03 4E6577")));
}

ByteVector dsmccWithDescriptors(const ByteVector& descriptors) {
    return longSection(0x3D, {}, descriptors);
}

/// Events on a time line.
ByteVector dsmcc(unsigned count) {
    return dsmccWithDescriptors(
        join({hex("01 12 A5 01 89ABCDEF FFFFFF 01 01234567 0001 0002"),
              repeated(count, [](unsigned) { return hex("04 0C 0102 FFFFFFFF 00015F90 1122"); })}));
}

} // namespace

const std::vector<Shape>& shapes() {
    static const std::vector<Shape> all{
        {"PAT", 0x00, nullptr, pat, 4, pat},
        {"PMT", 0x02, pmtWithDescriptors, pmtWithEntries, 5, pmt},
        {"TOT", 0x73, totWithDescriptors, nullptr, 0, tot},
        {"NIT", 0x40, nitWithDescriptors, nitWithEntries, 6, nit},
        {"SDT", 0x42, sdtWithDescriptors, sdtWithEntries, 5, sdt},
        {"AIT", 0x74, aitWithDescriptors, aitWithEntries, 9, ait},
        {"SDTT", 0xC3, sdttWithDescriptors, sdttWithEntries, 8, sdtt},
        {"DSM-CC", 0x3D, dsmccWithDescriptors, nullptr, 0, dsmcc},
    };
    return all;
}
