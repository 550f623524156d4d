#include "descriptors/TAVCVideoDescriptor.h"

#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | profile_idc (8) |
// constraint_set0_flag (1) constraint_set1_flag (1) constraint_set2_flag (1) AVC_compatible_flags (5) | level_idc (8) |
// AVC_still_present (1) AVC_24_hour_picture_flag (1) reserved (6)

TAVCVideoDescriptor::~TAVCVideoDescriptor() = default;

TAVCVideoDescriptor* TAVCVideoDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TAVCVideoDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TAVCVideoDescriptor::decode(const detail::Bytes& descriptor) {
    m_iProfileIDC = descriptor.u8(2);
    m_bConstraintSet0Flag = descriptor.bit(3, 7);
    m_bConstraintSet1Flag = descriptor.bit(3, 6);
    m_bConstraintSet2Flag = descriptor.bit(3, 5);
    m_iAVCCompatibleFlags = descriptor.u8(3) & 0x1FU;
    m_iLevelIDC = descriptor.u8(4);
    m_bAVCStillPresent = descriptor.bit(5, 7);
    m_bAVC24HourPictureFlag = descriptor.bit(5, 6);
    return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
}

} // namespace Quor
