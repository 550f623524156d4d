// Writes what fuzzing begins with: the sections of the tests and of the sample, the descriptors in them, items, and the
// start of the sample stream, each for the targets that take it; and a dictionary of the tags.

#include "CarouselMessages.h"
#include "Tables.h"
#include "Target.h"
#include "support/FullSections.h"
#include "walking/DescriptorLoops.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <string>

namespace {

std::vector<ByteVector> sections() {
    return {fullPat(),        fullPmt(),         fullTot(),      fullNit(),
            fullSdt(),        fullAit(),         fullSdtt(),     fullDsmccSection(),
            sample::pat(),    sample::hdPmt(),   sample::nit(),  sample::sdt(),
            sample::nclAit(), sample::javaAit(), sample::sdtt(), sample::streamEvents(),
            sample::tot(0)};
}

std::vector<ByteVector> descriptorsOf(const std::vector<ByteVector>& sections) {
    std::vector<ByteVector> descriptors;
    for (const ByteVector& section : sections) {
        for (const inspect::DescriptorLoop& loop : inspect::descriptorLoops(section.data(), section.size())) {
            for (const inspect::RawDescriptor& each : loop.descriptors) {
                descriptors.push_back(descriptor(each.tag, each.body));
            }
        }
    }
    return descriptors;
}

/// Everything that may be an item: what is left of a descriptor from each of its bytes on.
std::vector<ByteVector> endsOf(const std::vector<ByteVector>& wires) {
    std::vector<ByteVector> ends;
    for (const ByteVector& wire : wires) {
        for (std::size_t at = 2; at < wire.size(); ++at) {
            ends.emplace_back(wire.begin() + static_cast<std::ptrdiff_t>(at), wire.end());
        }
    }
    return ends;
}

class Folder {
public:
    explicit Folder(const std::filesystem::path& path) : m_path(path) { std::filesystem::create_directories(path); }

    void add(const ByteVector& bytes) {
        std::ofstream file(m_path / ("seed-" + std::to_string(m_count++)), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::filesystem::path m_path;
    unsigned m_count = 0;
};

/// Of the wires, the first few that each class of a group takes.
void write(Folder folder, Target::Group group, const std::vector<ByteVector>& wires) {
    constexpr unsigned ENOUGH = 4;
    const std::vector<Target> targets = targetsOf(group);
    for (std::size_t index = 0; index < targets.size(); ++index) {
        unsigned taken = 0;
        for (auto wire = wires.begin(); wire != wires.end() && taken < ENOUGH; ++wire) {
            if (targets[index].use({*wire, 0, 0})) {
                ++taken;
                folder.add(join({{static_cast<QUOR_U8>(index), 0, 0}, *wire}));
            }
        }
        if (taken == 0) {
            std::cerr << "make-seeds: nothing for " << targets[index].name << '\n';
        }
    }
}

void writeStream(Folder folder) {
    constexpr std::size_t START = std::size_t{20} * 188; // packets
    constexpr QUOR_U8 LARGE_PIECES = 0xFF;
    std::ifstream file(SAMPLE_FILE, std::ios::binary);
    ByteVector stream{LARGE_PIECES};
    stream.insert(stream.end(), std::istreambuf_iterator<char>(file), {});
    stream.resize(std::min(stream.size(), 1 + START));
    folder.add(stream);
}

/// A message as fuzz-carousel takes it.
ByteVector carouselMessage(QUOR_U8 kind, unsigned id, const ByteVector& section) {
    constexpr std::ptrdiff_t HEADERS = 20; // of the section and the message
    const ByteVector body(section.begin() + HEADERS, section.end() - 4);
    return join({{kind}, wire::u32(id), wire::counted16(body)});
}

/// A directory with a file and a stream event.
ByteVector carouselModule() {
    return join({wire::directory("srg", hex("01"), {{"a", "fil", 1, hex("02")}, {"b", "ste", 1, hex("03")}}),
                 wire::file(hex("02"), text("Um")),
                 wire::object("ste", hex("03"), hex("00 00000000 00000000 00 00 00 0001 03 696D00"),
                              join({hex("01"), wire::objectTap(0x0C), hex("01 0007")}))});
}

void writeCarousels(Folder folder) {
    const ByteVector module = carouselModule();
    folder.add(join({hex("01"), module}));
    const ByteVector deflated = hex("789C 03 00 00000001");
    const ByteVector dsi = carouselMessage(1, 0x80000000, wire::gatewaySection(2, 1, hex("01")));
    const ByteVector dii = carouselMessage(
        2, 0x80000002,
        wire::objectDii({2, 4066}, {{1, module.size()}, {2, deflated.size(), 1, hex("09 05 78 00000000")}}));
    const ByteVector block = carouselMessage(3, 2, wire::block({}, module));
    const ByteVector compressed = carouselMessage(3, 2, wire::block({2}, deflated));
    folder.add(join({hex("00"), dsi, dii, block, compressed}));
    folder.add(join({hex("00"), block, compressed, dii, dsi}));
    const ByteVector groups = hex("0001 80000002 00000002 0000 0000 0000");
    folder.add(
        join({hex("00"),
              carouselMessage(1, 0x80000000,
                              wire::messageSection(0x1006, 0x80000000,
                                                   join({fill(20, 0xFF), hex("0000"), wire::counted16(groups)}))),
              carouselMessage(2, 0x80000002, wire::dataDii({}, {{1, 2, 1, hex("01 03 612F62 02 01 61")}})),
              carouselMessage(3, 2, wire::block({}, text("Um")))}));
}

/// An entry for the start of each descriptor.
void writeDictionary(const std::filesystem::path& path, const std::vector<ByteVector>& descriptors) {
    std::set<std::string> entries;
    for (const ByteVector& each : descriptors) {
        char entry[16];
        std::snprintf(entry, sizeof entry, R"("\x%02X\x%02X")", unsigned{each[0]}, unsigned{each[1]});
        entries.insert(entry);
    }
    std::ofstream file(path);
    for (const std::string& entry : entries) {
        file << entry << '\n';
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: make-seeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path root = argv[1];
    const std::vector<ByteVector> wholes = sections();
    const std::vector<ByteVector> descriptors = descriptorsOf(wholes);
    write(Folder(root / "tables"), Target::Group::Tables, wholes);
    write(Folder(root / "descriptors"), Target::Group::Descriptors, descriptors);
    write(Folder(root / "items"), Target::Group::Items, endsOf(descriptors));
    Folder walking(root / "walking");
    for (const ByteVector& whole : wholes) {
        walking.add(whole);
    }
    writeStream(Folder(root / "stream"));
    writeCarousels(Folder(root / "carousel"));
    writeDictionary(root / "tags.dict", descriptors);
    return 0;
}
