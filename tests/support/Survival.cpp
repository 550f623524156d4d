#include "support/Survival.h"

std::vector<Damaged> everyPrefix(const ByteVector& good) {
    std::vector<Damaged> damaged;
    for (std::size_t size = 0; size < good.size(); ++size) {
        const auto end = good.begin() + static_cast<std::ptrdiff_t>(size);
        damaged.push_back({"the first " + std::to_string(size) + " bytes", ByteVector(good.begin(), end)});
    }
    return damaged;
}

std::vector<Damaged> everyByteChange(const ByteVector& good) {
    std::vector<Damaged> damaged;
    for (std::size_t at = 0; at < good.size(); ++at) {
        const auto change = [&](unsigned value) {
            ByteVector wire = good;
            wire[at] = static_cast<QUOR_U8>(value);
            damaged.push_back({"byte " + std::to_string(at) + " = " + std::to_string(value), wire});
        };
        change(0x00);
        change(0xFF);
        for (unsigned bit = 0; bit < 8; ++bit) {
            change(good[at] ^ 1U << bit);
        }
    }
    return damaged;
}

ByteVector repairedSection(ByteVector wire) {
    constexpr std::size_t HEADER = 3;
    if (wire.size() < HEADER) {
        return wire;
    }
    const auto sectionLength = static_cast<unsigned>(wire.size() - HEADER);
    return withSectionLength(std::move(wire), sectionLength);
}

ByteVector repairedDescriptor(ByteVector wire) {
    constexpr std::size_t HEADER = 2;
    if (wire.size() >= HEADER) {
        wire[1] = static_cast<QUOR_U8>(wire.size() - HEADER);
    }
    return wire;
}
