#include "SectionMutator.h"

#include "Lengths.h"

#include <algorithm>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

constexpr std::size_t SECTION_HEADER = 3;
constexpr std::size_t CRC = 4;
constexpr std::size_t LONGEST_SECTION = SECTION_HEADER + 0xFFF;

bool oneIn(unsigned count, Random& random) {
    return random() % count == 0;
}

/// What libFuzzer makes of these bytes.
ByteVector mutated(ByteVector bytes, std::size_t maxSize) {
    const std::size_t size = bytes.size();
    bytes.resize(std::max<std::size_t>({size, maxSize, 1}));
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, std::max<std::size_t>(maxSize, 1)));
    return bytes;
}

ByteVector part(const ByteVector& wire, std::size_t begin, std::size_t end) {
    return ByteVector(wire.begin() + static_cast<std::ptrdiff_t>(begin),
                      wire.begin() + static_cast<std::ptrdiff_t>(end));
}

/// Another value, or a close one.
std::size_t falseLength(const Length& length, Random& random) {
    const std::size_t right = length.end - length.begin;
    switch (random() % 4) {
    case 0:
        return right + 1 + random() % 4;
    case 1:
        return right - std::min<std::size_t>(right, 1 + random() % 4);
    case 2:
        return 0xFFF;
    default:
        return random();
    }
}

/// One change that knows the lengths.
void mutateAlong(const std::vector<Length>& lengths, ByteVector& wire, Random& random) {
    const Length& length = lengths[random() % lengths.size()];
    const std::size_t longest = length.field == Length::Field::Byte ? 0xFF : 0xFFF;
    switch (random() % 8) {
    case 0: // twice
        splice(wire, lengths, length.whole, length.end,
               join({part(wire, length.whole, length.end), part(wire, length.whole, length.end)}));
        break;
    case 1: // not at all
        splice(wire, lengths, length.whole, length.end, {});
        break;
    case 2: // another one instead
        if (const Length& other = lengths[random() % lengths.size()]; other.field == length.field) {
            splice(wire, lengths, length.whole, length.end, part(wire, other.whole, other.end));
        }
        break;
    case 3:
        length.write(wire, falseLength(length, random));
        break;
    case 4: // the header of an entry or a descriptor
        if (length.whole < length.at) {
            const ByteVector changed = mutated(part(wire, length.whole, length.at), length.at - length.whole);
            std::copy(changed.begin(), changed.end(), wire.begin() + static_cast<std::ptrdiff_t>(length.whole));
        }
        break;
    default:
        splice(wire, lengths, length.begin, length.end, mutated(part(wire, length.begin, length.end), longest));
        break;
    }
}

/// Makes section_length and CRC_32 right.
void close(ByteVector& wire) {
    if (wire.size() < SECTION_HEADER + CRC || wire.size() > LONGEST_SECTION) {
        return;
    }
    wire = withSectionLength(wire, static_cast<unsigned>(wire.size() - SECTION_HEADER));
    const QUOR_U32 crc = crc32(part(wire, 0, wire.size() - CRC));
    for (unsigned at = 0; at < CRC; ++at) {
        wire[wire.size() - CRC + at] = static_cast<QUOR_U8>(crc >> (24U - 8U * at));
    }
}

void mutateBytes(ByteVector& wire, std::size_t maxSize, Random& random,
                 std::vector<Length> (*lengthsOf)(const ByteVector&)) {
    const std::vector<Length> lengths = lengthsOf(wire);
    if (lengths.empty() || oneIn(8, random)) {
        wire = mutated(wire, maxSize);
    } else {
        mutateAlong(lengths, wire, random);
    }
}

std::vector<Length> none(const ByteVector& /*wire*/) {
    return {};
}

} // namespace

void mutateSection(ByteVector& wire, std::size_t maxSize, Random& random) {
    mutateBytes(wire, maxSize, random, lengthsOfSection);
    if (!oneIn(8, random)) {
        close(wire);
    }
}

std::size_t mutateInput(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed, Target::Group group) {
    Random random(seed);
    if (size <= Input::HEADER || maxSize <= Input::HEADER) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    if (oneIn(16, random)) {
        data[random() % Input::HEADER] = static_cast<std::uint8_t>(random());
    }
    ByteVector wire(data + Input::HEADER, data + size);
    const std::size_t room = maxSize - Input::HEADER;
    if (group == Target::Group::Tables) {
        mutateSection(wire, room, random);
    } else {
        mutateBytes(wire, room, random, group == Target::Group::Descriptors ? lengthsOfDescriptor : none);
    }
    wire.resize(std::min(wire.size(), room));
    std::copy(wire.begin(), wire.end(), data + Input::HEADER);
    return Input::HEADER + wire.size();
}
