#ifndef QUOR_TAVC_VIDEO_DESCRIPTOR_H
#define QUOR_TAVC_VIDEO_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// AVC video descriptor (ISO/IEC 13818-1, tag 0x28): profile, level and constraints of an AVC stream.
class QUOR_ISDBT_API TAVCVideoDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x28;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// @name Values of video_encode_format, for callers; the descriptor has no such field
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
    TAVCVideoDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TAVCVideoDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 4, the bytes of the body that are read. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TAVCVideoDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// profile_idc of the stream.
    QUOR_U8 getProfileIDC() const { return m_iProfileIDC; }

    /// constraint_set0_flag.
    QUOR_BOOL getConstraintSet0Flag() const { return m_bConstraintSet0Flag; }

    /// constraint_set1_flag.
    QUOR_BOOL getConstraintSet1Flag() const { return m_bConstraintSet1Flag; }

    /// constraint_set2_flag.
    QUOR_BOOL getConstraintSet2Flag() const { return m_bConstraintSet2Flag; }

    /// AVC_compatible_flags, 0 to 31.
    QUOR_U8 getAVCCompatibleFlags() const { return m_iAVCCompatibleFlags; }

    /// level_idc of the stream.
    QUOR_U8 getLevelIDC() const { return m_iLevelIDC; }

    /// AVC_still_present: whether the stream may contain still pictures.
    QUOR_BOOL isAVCStillPresent() const { return m_bAVCStillPresent; }

    /// AVC_24_hour_picture_flag: whether the stream may contain 24-hour pictures.
    QUOR_BOOL getAVC24HourPictureFlag() const { return m_bAVC24HourPictureFlag; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iProfileIDC = 0;
    QUOR_BOOL m_bConstraintSet0Flag = false;
    QUOR_BOOL m_bConstraintSet1Flag = false;
    QUOR_BOOL m_bConstraintSet2Flag = false;
    QUOR_U8 m_iAVCCompatibleFlags = 0;
    QUOR_U8 m_iLevelIDC = 0;
    QUOR_BOOL m_bAVCStillPresent = false;
    QUOR_BOOL m_bAVC24HourPictureFlag = false;
};

} // namespace Quor

#endif
