// Fuzzes what the tool does with a section: its own walk over the loops, the descriptions, and those of rejected ones.

#include "SectionMutator.h"
#include "describing/Describing.h"
#include "describing/OnWire.h"
#include "parsing/SectionParser.h"
#include "walking/DescriptorLoops.h"

#include <cstdlib>
#include <cstring>

namespace {

/// As the tool gathers it: as many bytes as section_length states, no more and no less.
inspect::Section sectionOf(const ByteVector& wire) {
    auto* const bytes = static_cast<std::uint8_t*>(std::malloc(wire.size()));
    std::memcpy(bytes, wire.data(), wire.size());
    return inspect::Section(0, std::unique_ptr<std::uint8_t[], inspect::FreeMemory>(bytes), {});
}

void walk(const ByteVector& wire) {
    const HeapBytes bytes(wire);
    for (const inspect::DescriptorLoop& loop : inspect::descriptorLoops(bytes.data(), bytes.size())) {
        for (const inspect::RawDescriptor& descriptor : loop.descriptors) {
            inspect::refusal(descriptor);
        }
    }
    inspect::describeDescriptors(bytes.data(), bytes.size());
}

void inspectWhole(const ByteVector& wire) {
    const inspect::Section section = sectionOf(wire);
    const inspect::ParsedSection parsed = inspect::parse(section);
    if (parsed.table != nullptr) {
        inspect::describe(*parsed.table);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t HEADER = 3;
    const ByteVector wire(data, data + size);
    walk(wire);
    if (size >= HEADER && size - HEADER == ((data[1] & 0x0FU) << 8U | data[2])) {
        inspectWhole(wire);
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    Random random(seed);
    ByteVector wire(data, data + size);
    mutateSection(wire, maxSize, random);
    wire.resize(std::min(wire.size(), maxSize));
    std::copy(wire.begin(), wire.end(), data);
    return wire.size();
}
