#include "inputs/RtpDatagram.h"

#include <array>
#include <bitstream/ietf/rtp.h>
#include <bitstream/mpeg/ts.h>

namespace inspect {

namespace {

constexpr std::size_t WORD = 4;

std::uint32_t sourceOf(const std::uint8_t* header) {
    std::array<std::uint8_t, WORD> bytes{};
    rtp_get_ssrc(header, bytes.data());
    std::uint32_t source = 0;
    for (const std::uint8_t byte : bytes) {
        source = source << 8U | byte;
    }
    return source;
}

} // namespace

std::optional<RtpDatagram> readRtp(const std::uint8_t* data, std::size_t size) {
    if (size < RTP_HEADER_SIZE || !rtp_check_hdr(data)) {
        return std::nullopt;
    }
    std::size_t header = RTP_HEADER_SIZE + WORD * rtp_get_cc(data);
    if (rtp_check_extension(data) && header + RTP_EXTENSION_SIZE <= size) {
        header += RTP_EXTENSION_SIZE + WORD * rtpx_get_length(data + header);
    }
    const std::size_t padding = rtp_check_padding(data) ? data[size - 1] : 0;
    if (header + padding >= size || !ts_validate(data + header)) {
        return std::nullopt;
    }
    return RtpDatagram{rtp_get_seqnum(data), sourceOf(data), data + header, size - header - padding};
}

} // namespace inspect
