#ifndef QUOR_TVIDEO_DECODE_CONTROL_DESCRIPTOR_H
#define QUOR_TVIDEO_DECODE_CONTROL_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Video decode control descriptor (ARIB STD-B10, tag 0xC8): how a receiver keeps still pictures and changes of the
/// encoding format free of disturbance.
class QUOR_ISDBT_API TVideoDecodeControlDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xC8;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// @name Values of video_encode_format
    /// @{
    static constexpr QUOR_U8 VIDEO_ENCODE_FORMAT_1080P = 0;
    static constexpr QUOR_U8 VIDEO_ENCODE_FORMAT_1080I = 1;
    static constexpr QUOR_U8 VIDEO_ENCODE_FORMAT_720P = 2;
    static constexpr QUOR_U8 VIDEO_ENCODE_FORMAT_480P = 3;
    static constexpr QUOR_U8 VIDEO_ENCODE_FORMAT_480I = 4;
    static constexpr QUOR_U8 VIDEO_ENCODE_FORMAT_240P = 5;
    static constexpr QUOR_U8 VIDEO_ENCODE_FORMAT_120P = 6;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TVideoDecodeControlDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TVideoDecodeControlDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 1, the bytes of the body that are read. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TVideoDecodeControlDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode);

    /// still_picture_flag: whether the component is a still picture.
    QUOR_BOOL isStillPicture() const { return m_bStillPictureFlag; }

    /// sequence_end_code_flag: whether a sequence end code stands at the end of the video sequence.
    QUOR_BOOL hasSequenceEndCode() const { return m_bSequenceEndCodeFlag; }

    /// video_encode_format without the bit of value 4: 4 to 7 on the wire are given as 0 to 3, 12 to 15 as 8 to 11.
    QUOR_U8 getVideoEncodeFormat() const { return m_iVideoEncodeFormat; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_BOOL m_bStillPictureFlag = false;
    QUOR_BOOL m_bSequenceEndCodeFlag = false;
    QUOR_U8 m_iVideoEncodeFormat = 0;
};

} // namespace Quor

#endif
