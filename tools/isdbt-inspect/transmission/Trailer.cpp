#include "transmission/Trailer.h"

namespace inspect {

std::string layerName(unsigned indicator) {
    switch (indicator) {
    case 0:
        return "none";
    case 1:
        return "A";
    case 2:
        return "B";
    case 3:
        return "C";
    case 4:
        return "AC";
    case LAYER_OF_INFORMATION:
        return "IIP";
    default:
        return std::to_string(indicator);
    }
}

std::optional<Trailer> Trailer::of(const std::uint8_t* bytes) {
    constexpr unsigned TELEVISION_AND_RESERVED = 5; // 10 and 1
    if (bytes[0] >> 5U != TELEVISION_AND_RESERVED) {
        return std::nullopt;
    }
    return Trailer{(bytes[0] & 0x08U) != 0, (bytes[0] & 0x02U) != 0, (bytes[0] & 0x01U) != 0,
                   static_cast<unsigned>(bytes[1]) >> 4U, (bytes[2] & 0x1FU) << 8U | bytes[3]};
}

} // namespace inspect
