#include "Reading.h"

#include <algorithm>

namespace reading {

bool Packet::isSame(const Packet& other) const {
    return std::equal(bytes, bytes + PACKET_SIZE, other.bytes);
}

std::optional<std::uint64_t> Packet::pcr() const {
    const bool hasAdaptationField = (bytes[3] & 0x20U) != 0 && bytes[4] != 0;
    if (!hasAdaptationField || (bytes[5] & 0x10U) == 0) {
        return std::nullopt;
    }
    const std::uint64_t base = std::uint64_t{bytes[6]} << 25U | std::uint64_t{bytes[7]} << 17U |
                               std::uint64_t{bytes[8]} << 9U | std::uint64_t{bytes[9]} << 1U | bytes[10] >> 7U;
    return base * 300 + (std::uint64_t{bytes[10] & 1U} << 8U | bytes[11]);
}

std::optional<std::uint64_t> Packet::pts() const {
    const QUOR_U8* const pes = bytes + 4;
    if (!beginsUnit() || pes[0] != 0 || pes[1] != 0 || pes[2] != 1 || (pes[7] & 0x80U) == 0) {
        return std::nullopt;
    }
    return std::uint64_t{pes[9] & 0x0EU} << 29U | std::uint64_t{pes[10]} << 22U |
           std::uint64_t{pes[11] & 0xFEU} << 14U | std::uint64_t{pes[12]} << 7U | pes[13] >> 1U;
}

std::vector<Packet> packets(const ByteVector& stream) {
    std::vector<Packet> all;
    for (std::size_t place = 0; (place + 1) * PACKET_SIZE <= stream.size(); ++place) {
        all.push_back({place, &stream[place * PACKET_SIZE]});
    }
    return all;
}

std::vector<Packet> packets(const ByteVector& stream, unsigned pid) {
    std::vector<Packet> all = packets(stream);
    all.erase(std::remove_if(all.begin(), all.end(), [pid](const Packet& each) { return each.pid() != pid; }),
              all.end());
    return all;
}

std::vector<Section> sections(const ByteVector& stream, unsigned pid) {
    std::vector<Section> all;
    std::size_t size = 0;
    for (const Packet& each : packets(stream, pid)) {
        if (each.beginsUnit()) {
            size = 3 + ((each.bytes[6] & 0x0FU) << 8U | each.bytes[7]);
            all.push_back({each.time(), {}});
        }
        ByteVector& bytes = all.back().bytes;
        bytes.insert(bytes.end(), each.bytes + (each.beginsUnit() ? 5 : 4), each.bytes + PACKET_SIZE);
        bytes.resize(std::min(bytes.size(), size));
    }
    return all;
}

std::size_t continuityErrors(const ByteVector& stream, unsigned pid) {
    std::size_t errors = 0;
    std::optional<Packet> former;
    unsigned times = 0; // that the former packet came
    for (const Packet& each : packets(stream, pid)) {
        const bool isAgain = former && each.hasPayload() && each.isSame(*former);
        times = isAgain ? times + 1 : 1;
        const unsigned step = each.hasPayload() && !isAgain ? 1 : 0;
        const bool isRight = !former || ((former->counter() + step) % 16 == each.counter() && times <= 2);
        errors += isRight ? 0 : 1;
        former = each;
    }
    return errors;
}

} // namespace reading
