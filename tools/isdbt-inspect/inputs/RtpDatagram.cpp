#include "inputs/RtpDatagram.h"

#include <bitstream/mpeg/ts.h>

namespace inspect {

namespace {

constexpr std::size_t HEADER_SIZE = 12;
constexpr std::size_t WORD = 4;
constexpr unsigned VERSION = 2;

unsigned u16(const std::uint8_t* at) {
    return static_cast<unsigned>(at[0]) << 8U | at[1];
}

} // namespace

std::optional<RtpDatagram> readRtp(const std::uint8_t* data, std::size_t size) {
    if (size < HEADER_SIZE || data[0] >> 6U != VERSION) {
        return std::nullopt;
    }
    const bool padded = (data[0] & 0x20U) != 0;
    const bool extended = (data[0] & 0x10U) != 0;
    std::size_t header = HEADER_SIZE + WORD * (data[0] & 0x0FU);
    if (extended && header + WORD <= size) {
        header += WORD + WORD * u16(data + header + 2);
    }
    const std::size_t padding = padded ? data[size - 1] : 0;
    if (header + padding >= size || !ts_validate(data + header)) {
        return std::nullopt;
    }
    return RtpDatagram{static_cast<std::uint16_t>(u16(data + 2)),
                       static_cast<std::uint32_t>(u16(data + 8)) << 16U | u16(data + 10), data + header,
                       size - header - padding};
}

} // namespace inspect
