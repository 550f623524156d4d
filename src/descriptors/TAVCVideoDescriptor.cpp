#include "descriptors/TAVCVideoDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | profile_idc (8) |
// constraint_set0_flag (1) constraint_set1_flag (1) constraint_set2_flag (1) AVC_compatible_flags (5) | level_idc (8) |
// AVC_still_present (1) AVC_24_hour_picture_flag (1) reserved (6)

constexpr U8 TAVCVideoDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TAVCVideoDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_1080P;
constexpr QUOR_U8 TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_1080I;
constexpr QUOR_U8 TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_720P;
constexpr QUOR_U8 TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_480P;
constexpr QUOR_U8 TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_480I;
constexpr QUOR_U8 TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_240P;
constexpr QUOR_U8 TAVCVideoDescriptor::VIDEO_ENCODE_FORMAT_120P;

TAVCVideoDescriptor::TAVCVideoDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iProfileIDC(0), m_bConstraintSet0Flag(false),
      m_bConstraintSet1Flag(false), m_bConstraintSet2Flag(false), m_iAVCCompatibleFlags(0), m_iLevelIDC(0),
      m_bAVCStillPresent(false), m_bAVC24HourPictureFlag(false) {}

TAVCVideoDescriptor::~TAVCVideoDescriptor() = default;

TAVCVideoDescriptor* TAVCVideoDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TAVCVideoDescriptor>(sectionData, dataLength, parsedLength, errorCode,
                                                        [](TAVCVideoDescriptor& object, detail::Bytes descriptor) {
                                                            object.m_iProfileIDC = descriptor.u8(2);
                                                            object.m_bConstraintSet0Flag = descriptor.bit(3, 7);
                                                            object.m_bConstraintSet1Flag = descriptor.bit(3, 6);
                                                            object.m_bConstraintSet2Flag = descriptor.bit(3, 5);
                                                            object.m_iAVCCompatibleFlags = descriptor.u8(3) & 0x1FU;
                                                            object.m_iLevelIDC = descriptor.u8(4);
                                                            object.m_bAVCStillPresent = descriptor.bit(5, 7);
                                                            object.m_bAVC24HourPictureFlag = descriptor.bit(5, 6);
                                                            return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
                                                        });
}

} // namespace Quor
