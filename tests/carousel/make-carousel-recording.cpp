// Writes a transport stream with an object carousel of three files on PID 2004, of which a block is missing, and a
// damaged section: what docs/carousel.md calls a recording.

#include "CarouselMessages.h"
#include "support/StreamSections.h"

#include <fstream>
#include <iostream>

using namespace wire;

namespace {

constexpr unsigned PID = 2004;

void write(std::ostream& stream, const ByteVector& section, unsigned& continuity) {
    for (const ByteVector& packet : packetsOf(section, PID, continuity)) {
        stream.write(reinterpret_cast<const char*>(packet.data()), static_cast<std::streamsize>(packet.size()));
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: make-carousel-recording FILE\n";
        return 2;
    }
    const ByteVector root =
        directory("srg", hex("01"),
                  {{"main.ncl", "fil", 2, hex("01")}, {"media", "dir", 2, hex("02")}, {"../a", "fil", 2, hex("04")}});
    const ByteVector files =
        join({file(hex("01"), text("<ncl id=\"main\"/>\n")),
              directory("dir", hex("02"), {{"film.ts", "fil", 3, hex("01")}}), file(hex("04"), text("a"))});
    const ByteVector film = file(hex("01"), fill(9000, 0x47));
    std::vector<ByteVector> sections = {gatewaySection(2, 1, hex("01")),
                                        objectDii({2, 4066}, {{1, root.size()}, {2, files.size()}, {3, film.size()}}),
                                        block({1}, root), block({2}, files)};
    const auto blocksOfFilm = blocks({3}, 4066, film);
    sections.push_back(blocksOfFilm[0]);
    sections.push_back(blocksOfFilm[2]);
    sections.push_back(block({2, 1}, text("no such block")));
    std::ofstream stream(argv[1], std::ios::binary);
    unsigned continuity = 0;
    for (int turn = 0; turn < 2; ++turn) {
        for (const ByteVector& each : sections) {
            write(stream, each, continuity);
        }
    }
    return stream.flush() ? 0 : 1;
}
