#pragma once

#include <cstdint>
#include <string_view>

namespace inspect {

/// What carries a descriptor: its tag means something else elsewhere.
struct Carrier {
    static constexpr std::uint16_t GINGA_NCL = 0x0009;

    std::uint8_t tableId;
    std::uint16_t applicationType = GINGA_NCL; ///< of an AIT
};

/// What standards call a descriptor, whether or not the library has a class for it; empty when they do not.
std::string_view descriptorName(const Carrier& carrier, std::uint8_t tag);

} // namespace inspect
