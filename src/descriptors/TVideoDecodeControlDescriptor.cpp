#include "descriptors/TVideoDecodeControlDescriptor.h"

#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | still_picture_flag (1) sequence_end_code_flag (1)
// video_encode_format (4) reserved_future_use (2)

TVideoDecodeControlDescriptor::~TVideoDecodeControlDescriptor() = default;

TVideoDecodeControlDescriptor* TVideoDecodeControlDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TVideoDecodeControlDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TVideoDecodeControlDescriptor::decode(const detail::Bytes& descriptor) {
    m_bStillPictureFlag = descriptor.bit(2, 7);
    m_bSequenceEndCodeFlag = descriptor.bit(2, 6);
    // Quirk: the bit of value 4 is left out.
    m_iVideoEncodeFormat = descriptor.u8(2) >> 2 & 0x0BU;
    return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
}

} // namespace Quor
