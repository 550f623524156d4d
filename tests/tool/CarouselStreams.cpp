#include "CarouselStreams.h"

using namespace wire;

StreamBuilder serviceWithCarousel() {
    return StreamBuilder()
        .section(PAT_PID, pat("E760 E100"))
        .section(0x0100, longSection(PMT, named(0xE760),
                                     hex("FFFF F000 0B E140 F010 52 01 0C 14 0B 0140 0000 04 80000000 FFFF")));
}

std::vector<ByteVector> carouselOf(const std::vector<Bound>& bindings, const ByteVector& objects, unsigned version) {
    const ByteVector root = directory("srg", hex("01"), bindings);
    const unsigned transaction = 0x80000002 | version << 16U;
    std::vector<ByteVector> sections{
        gatewaySection(2, 1, hex("01"), 0x80000000 | version << 16U),
        objectDii({2, 4066, transaction}, {{1, root.size(), version}, {2, objects.size(), version}})};
    for (const ByteVector& each : blocks({1, 0, version}, 4066, root)) {
        sections.push_back(each);
    }
    for (const ByteVector& each : blocks({2, 0, version}, 4066, objects)) {
        sections.push_back(each);
    }
    return sections;
}

std::vector<ByteVector> incompleteCarousel() {
    const ByteVector root = directory("srg", hex("01"),
                                      {{"main.ncl", "fil", 2, hex("01")},
                                       {"media", "dir", 2, hex("02")},
                                       {"\x1B[2J/a", "fil", 2, hex("01")},
                                       {"events", "ste", 2, hex("05")}});
    const ByteVector typed = object("fil", hex("01"), join({hex("0000000000000005 72 0A"), text("text/plain")}),
                                    join({hex("00000005"), text("<ncl>")}));
    const ByteVector events =
        object("ste", hex("05"), hex("00 00000000 00000000 00 00 01 0001 06 7374617274 00"), hex("00 01 0007"));
    const ByteVector files =
        join({typed, directory("dir", hex("02"), {{"film.ts", "fil", 3, hex("01")}, {"b", "fil", 3, hex("02")}}),
              events, file(hex("06"), text("nobody's"))});
    const ByteVector film = join({file(hex("01"), fill(9000, 0x47)), file(hex("02"), text("end"))});
    const std::vector<ByteVector> blocksOfFilm = blocks({3, 0, 7}, 4066, film);
    return {gatewaySection(2, 1, hex("01")),
            objectDii({2, 4066},
                      {{1, root.size()}, {2, files.size(), 1, join({hex("70 02"), text("ui")})}, {3, film.size(), 7}}),
            block({1}, root),
            block({2}, files),
            blocksOfFilm[0],
            blocksOfFilm[2],
            block({2, 1}, text("no such block"))};
}
