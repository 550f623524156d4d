#include "descriptors/TNPTReferenceDescriptor.h"

#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | postDiscontinuityIndicator (1) contentId (7) |
// reserved (7) STC_Reference (33) | reserved (31) NPT_Reference (33) | scaleNumerator (16) | scaleDenominator (16)

TNPTReferenceDescriptor::~TNPTReferenceDescriptor() = default;

TNPTReferenceDescriptor* TNPTReferenceDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                        QUOR_U16* errorCode) {
    return detail::parseDescriptor<TNPTReferenceDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TNPTReferenceDescriptor::decode(const detail::Bytes& descriptor) {
    m_bPostDiscontinuity = descriptor.bit(2, 7);
    m_iDSMCCContentID = descriptor.u8(2) & 0x7FU;
    m_iSTCReferenceH = descriptor.u8(3) & 1U;
    m_iSTCReferenceL = descriptor.u32(4);
    m_iNPTReferenceH = descriptor.u8(11) & 1U;
    m_iNPTReferenceL = descriptor.u32(12);
    m_iScaleNumerator = descriptor.u16(16);
    m_iScaleDenominator = descriptor.u16(18);
    return detail::Outcome::done();
}

} // namespace Quor
