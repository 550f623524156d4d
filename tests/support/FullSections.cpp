#include "support/FullSections.h"

#include "support/Classes.h"

namespace {

bool holds(const ByteVector& descriptors, QUOR_U8 tag) {
    std::size_t at = 0;
    while (at < descriptors.size() && descriptors[at] != tag) {
        at += 2U + descriptors.at(at + 1);
    }
    return at < descriptors.size();
}

/// A descriptor of each class that a table or an entry hands out and that is not among these.
template <class Holder> ByteVector others(const ByteVector& descriptors) {
    ByteVector added;
    forEachHeld<Holder>(classRows(), [&](const auto& row) {
        if (!holds(descriptors, row.tag)) {
            added = join({added, row.wire});
        }
    });
    return added;
}

template <class Holder> ByteVector withOthers(const ByteVector& descriptors) {
    return join({descriptors, others<Holder>(descriptors)});
}

} // namespace

ByteVector componentDescriptors() {
    return withOthers<Quor::TProgramMap>(join({
        descriptor(0x53, hex("0005 000E")),                                           // CA identifier
        descriptor(0x0D, hex("01 E123")),                                             // copyright
        descriptor(0x49, hex("80 425241")),                                           // country availability
        descriptor(0x4A, hex("0001 0002 0003 01 AABB")),                              // linkage
        descriptor(0x50, hex("F1 B3 81 706F72 54")),                                  // component
        descriptor(0x51, hex("11 04 01 01 02 04 0001 0002 0003 0004")),               // mosaic
        descriptor(0x52, hex("81")),                                                  // stream identifier
        descriptor(0x55, hex("425241 16")),                                           // parental rating
        descriptor(0xC0, hex("01 E123")),                                             // hierarchical transmission
        descriptor(0xC1, hex("75 40 03 25 40 C0")),                                   // digital copy control
        descriptor(0xFC, hex("0001 C0 02 1230")),                                     // emergency information
        descriptor(0xFD, hex("00A3 AABB")),                                           // data component
        descriptor(0xFE, hex("0301 AA")),                                             // system management
        descriptor(0xC6, hex("01 AABB")),                                             // target region
        descriptor(0xC8, hex("C4")),                                                  // video decode control
        descriptor(0xDE, hex("3F")),                                                  // content availability
        descriptor(0xF7, hex("01 02 03 04")),                                         // carousel compatible composite
        descriptor(0xF8, hex("0005 E123 AABB")),                                      // conditional playback
        descriptor(0x28, hex("64 80 28 C0")),                                         // AVC video
        descriptor(0x2A, hex("81 80 00000001 00000002 00000003 00 00000000 000000")), // AVC timing and HRD
        descriptor(0x7C, hex("2C 80 03 AA")),                                         // AAC
        descriptor(0x13, hex("0000002A AABB")),                                       // carousel identifier
    }));
}

ByteVector networkDescriptors() {
    return withOthers<Quor::TTransportStreamInfo>(join({
        descriptor(0x40, text("Rede")),                                         // network name
        descriptor(0xFE, hex("0301 AA")),                                       // system management
        descriptor(0x41, hex("01 01 02 C0")),                                   // service list
        descriptor(0x4A, hex("0001 0002 0003 01 AABB")),                        // linkage
        descriptor(0xFA, hex("1234 0CF0 0D1A")),                                // terrestrial delivery system
        descriptor(0xFC, hex("0001 C0 02 1230")),                               // emergency information
        descriptor(0xFB, hex("E6B8")),                                          // partial reception
        descriptor(0xCD, join({hex("05 0D"), text("TVx"), hex("0F 01 E6A0")})), // TS information
    }));
}

ByteVector serviceDescriptors() {
    return withOthers<Quor::TServiceDescription>(join({
        descriptor(0x48, join({hex("01 02"), text("TV"), hex("03"), text("Um1")})), // service
        descriptor(0x47, text("Pacote")),                                           // bouquet name
        descriptor(0x49, hex("80 425241")),                                         // country availability
        descriptor(0x4A, hex("0001 0002 0003 01 AABB")),                            // linkage
        descriptor(0xC1, hex("75 40 03 25 40 C0")),                                 // digital copy control
        descriptor(0xCF, hex("01 01AA 0123 4567")),                                 // logo transmission
        descriptor(0xDE, hex("3F")),                                                // content availability
        descriptor(0x4B, hex("0001 0002 0003")),                                    // NVOD reference
        descriptor(0x4C, hex("E6A0")),                                              // time shifted service
        descriptor(0x51, hex("11 04 01 01 02 04 0001 0002 0003 0004")),             // mosaic
        descriptor(0x53, hex("0005 000E")),                                         // CA identifier
    }));
}

namespace {

ByteVector gingaJDescriptors() {
    return join({descriptor(0x03, join({hex("01"), text("a")})),
                 descriptor(0x04, join({hex("01"), text("/"), hex("02"), text("cp"), text("Main")}))});
}

ByteVector gingaNclDescriptors() {
    return join({descriptor(0x06, join({hex("01"), text("b")})),
                 descriptor(0x07, join({hex("01"), text("/"), hex("00"), text("main.ncl")}))});
}

ByteVector applicationDescriptors() {
    const ByteVector shared = join({
        descriptor(0x00, hex("05 0001 01 02 03 FF 05 01")),             // application
        descriptor(0x01, join({text("por"), hex("03"), text("App")})),  // application name
        descriptor(0x0B, join({hex("04"), text("icon"), hex("0009")})), // application icon
        descriptor(0x05, hex("0000ABCD 0012 07")),                      // external application authorization
        descriptor(0x02, hex("0001 01 80 0001 0002 0003 0B")),          // transport protocol: object carousel
        descriptor(0x11, hex("010203")),                                // IP signalling
        descriptor(0x0C, join({hex("01 02"), text("aa"), hex("05")})),  // prefetch
        descriptor(0x0D, hex("01 0003 0004")),                          // DII location
    });
    return join({shared, others<Quor::TApplication>(join({shared, gingaJDescriptors(), gingaNclDescriptors()}))});
}

ByteVector application(const ByteVector& identifier, const ByteVector& descriptors) {
    return join({identifier, hex("01"), loopOf(descriptors)});
}

} // namespace

ByteVector fullPat() {
    return longSection(0x00, {}, hex("0000 E010 E6A0 E101"));
}

ByteVector fullPmt() {
    return longSection(
        0x02, {}, join({hex("E100"), loopOf(componentDescriptors()), hex("1B E111"), loopOf(componentDescriptors())}));
}

ByteVector fullTot() {
    return shortSection(
        0x73, join({hex("EDA9 12 34 56"),
                    loopOf(withOthers<Quor::TTOTTable>(descriptor(0x58, hex("425241 0D 0300 EE35 030000 0200"))))}));
}

ByteVector fullNit() {
    return longSection(
        0x40, {}, join({loopOf(networkDescriptors()), loopOf(join({hex("0735 0001"), loopOf(networkDescriptors())}))}));
}

ByteVector fullSdt() {
    const ByteVector descriptors = serviceDescriptors();
    return longSection(
        0x42, {}, join({hex("0001 FF E6A0 FF"), u16(static_cast<unsigned>(descriptors.size()), 0x8000), descriptors}));
}

ByteVector fullAit() {
    const ByteVector java = join({applicationDescriptors(), gingaJDescriptors()});
    const ByteVector applications =
        join({application(hex("0000000A 0001"), java), application(hex("0000000A 0002"), gingaNclDescriptors())});
    return longSection(0x74, {}, join({loopOf(java), loopOf(applications)}));
}

ByteVector fullSdtt() {
    const ByteVector compatibility = hex("000F 0001 01 0D 01 00AABB 0104 0102 01 05 02 AABB");
    const ByteVector download =
        descriptor(0xC9, join({hex("F8 00000100 00000001 00000BB8 000190 40"), // flags to component_tag
                               u16(static_cast<unsigned>(compatibility.size() - 2)),
                               ByteVector(compatibility.begin() + 2, compatibility.end()),
                               hex("0001 1234 00000100 02 AABB"), // modules
                               hex("02 CCDD"),                    // private data
                               text("por"), hex("02"), text("Ol")}));
    const ByteVector descriptors = withOthers<Quor::TDownloadContent>(download);
    const unsigned content = static_cast<unsigned>(8 + descriptors.size());
    return longSection(0xC3, {},
                       join({hex("0735 0001 E6A0 01"), hex("1001 0027"), u16(content << 4), u16(8 << 4),
                             hex("EDA9 123456 013000"), descriptors}));
}

ByteVector fullDsmccSection() {
    return longSection(0x3D, {},
                       withOthers<Quor::TDSMCCSectionTable>(join(
                           {descriptor(0x01, hex("85 FF 00000001 FFFFFF FF 00000002 0001 0001")),
                            descriptor(0x03, hex("02 FF")), descriptor(0x04, hex("0007 FFFFFF FF 00000003 AABB"))})));
}
