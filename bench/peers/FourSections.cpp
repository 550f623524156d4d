#include "FourSections.h"

namespace {

constexpr QUOR_U16 NETWORK = 0x05A0;

ByteVector loop(const ByteVector& content) {
    return join({u16(static_cast<unsigned>(content.size()), 0xF000), content});
}

ByteVector named(const char* characters) {
    const ByteVector bytes = text(characters);
    return join({{static_cast<QUOR_U8>(bytes.size())}, bytes});
}

// program_number, PID
ByteVector pat(unsigned version) {
    return longSection(0x00, {NETWORK, version},
                       hex("B400 E100  B401 E101  B402 E102  B403 E103"
                           "B404 E104  B405 E105  B406 E106  B418 FFC8"));
}

ByteVector pmt(unsigned version) {
    const auto componentTag = [](QUOR_U8 tag) { return descriptor(0x52, {tag}); };
    const ByteVector caIdentifier = descriptor(0x53, hex("0005"));
    const auto stream = [](QUOR_U8 type, unsigned pid, const ByteVector& descriptors) {
        return join({{type}, u16(pid, 0xE000), loop(descriptors)});
    };
    const ByteVector program = join({caIdentifier, descriptor(0x55, join({text("BRA"), {0x03}}))});
    const ByteVector video = join({componentTag(0x01), descriptor(0x50, join({hex("F5 B3 01"), text("por")})),
                                   caIdentifier, descriptor(0x55, join({text("BRA"), {0x04}}))});
    const ByteVector audio =
        join({componentTag(0x10), descriptor(0x50, join({hex("F6 03 10"), text("por")})), caIdentifier});
    return longSection(
        0x02, {0xB400, version},
        join({u16(0x0100, 0xE000), loop(program), stream(0x1B, 0x0111, video), stream(0x11, 0x0112, audio),
              stream(0x06, 0x0113, join({componentTag(0x30), caIdentifier})),
              stream(0x05, 0x0114, join({componentTag(0x38), caIdentifier})),
              stream(0x0D, 0x0115, join({componentTag(0x40), caIdentifier}))}));
}

ByteVector sdt(unsigned version) {
    const auto service = [](unsigned id, QUOR_U8 type, const char* serviceName) {
        const ByteVector descriptors = join(
            {descriptor(0x48, join({{type}, named("Exemplo"), named(serviceName)})), descriptor(0x53, hex("0005"))});
        return join({u16(id), {0xE7}, u16(static_cast<unsigned>(descriptors.size()), 0x8000), descriptors});
    };
    return longSection(0x42, {NETWORK, version},
                       join({u16(NETWORK),
                             {0xFF},
                             service(0xB400, 0x01, "Exemplo HD"),
                             service(0xB401, 0x01, "Exemplo 2"),
                             service(0xB402, 0x01, "Exemplo 3"),
                             service(0xB418, 0x0C, "One-Seg")}));
}

ByteVector nit(unsigned version) {
    const ByteVector network =
        join({descriptor(0x40, text("Rede Exemplo 1")), descriptor(0x4A, hex("05A1 05A1 B420 02"))});
    const ByteVector transportStream = join(
        {descriptor(0x41, hex("B400 01 B418 0C")), descriptor(0xFA, hex("7A5E 0CF7")), descriptor(0xFB, hex("B418")),
         descriptor(0xCD, join({hex("06 35"), text("Exemplo do Ar"), hex("0F 03 B400 B401 B402")}))});
    return longSection(0x40, {NETWORK, version},
                       join({loop(network), loop(join({u16(NETWORK), u16(NETWORK), loop(transportStream)}))}));
}

} // namespace

Versions fourServices(Table table) {
    constexpr std::array SECTIONS{pat, pmt, sdt, nit};
    Versions versions;
    for (unsigned version = 0; version < versions.size(); ++version) {
        versions[version] = SECTIONS[static_cast<std::size_t>(table)](version);
    }
    return versions;
}

Versions damaged(Versions versions) {
    for (ByteVector& section : versions) {
        section.back() ^= 0x01U;
    }
    return versions;
}
