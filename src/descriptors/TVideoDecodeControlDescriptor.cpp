#include "descriptors/TVideoDecodeControlDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | still_picture_flag (1) sequence_end_code_flag (1)
// video_encode_format (4) reserved_future_use (2)

constexpr U8 TVideoDecodeControlDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TVideoDecodeControlDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_1080P;
constexpr QUOR_U8 TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_1080I;
constexpr QUOR_U8 TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_720P;
constexpr QUOR_U8 TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_480P;
constexpr QUOR_U8 TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_480I;
constexpr QUOR_U8 TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_240P;
constexpr QUOR_U8 TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_120P;

TVideoDecodeControlDescriptor::TVideoDecodeControlDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_bStillPictureFlag(false), m_bSequenceEndCodeFlag(false),
      m_iVideoEncodeFormat(0) {}

TVideoDecodeControlDescriptor::~TVideoDecodeControlDescriptor() = default;

TVideoDecodeControlDescriptor* TVideoDecodeControlDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TVideoDecodeControlDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TVideoDecodeControlDescriptor& object, detail::Bytes descriptor) {
            object.m_bStillPictureFlag = descriptor.bit(2, 7);
            object.m_bSequenceEndCodeFlag = descriptor.bit(2, 6);
            // The bit of value 4 is left out; callers depend on this value.
            object.m_iVideoEncodeFormat = descriptor.u8(2) >> 2 & 0x0BU;
            return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
        });
}

} // namespace Quor
