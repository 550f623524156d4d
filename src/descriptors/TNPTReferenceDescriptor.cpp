#include "descriptors/TNPTReferenceDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | postDiscontinuityIndicator (1) contentId (7) |
// reserved (7) STC_Reference (33) | reserved (31) NPT_Reference (33) | scaleNumerator (16) | scaleDenominator (16)

constexpr U8 TNPTReferenceDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TNPTReferenceDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TNPTReferenceDescriptor::TNPTReferenceDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_bPostDiscontinuity(false), m_iDSMCCContentID(0),
      m_iSTCReferenceH(0), m_iSTCReferenceL(0), m_iNPTReferenceH(0), m_iNPTReferenceL(0), m_iScaleNumerator(0),
      m_iScaleDenominator(0) {}

TNPTReferenceDescriptor::~TNPTReferenceDescriptor() = default;

TNPTReferenceDescriptor* TNPTReferenceDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                        QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TNPTReferenceDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TNPTReferenceDescriptor& object, detail::Bytes descriptor) {
            object.m_bPostDiscontinuity = descriptor.bit(2, 7);
            object.m_iDSMCCContentID = descriptor.u8(2) & 0x7FU;
            object.m_iSTCReferenceH = descriptor.u8(3) & 1U;
            object.m_iSTCReferenceL = descriptor.u32(4);
            object.m_iNPTReferenceH = descriptor.u8(11) & 1U;
            object.m_iNPTReferenceL = descriptor.u32(12);
            object.m_iScaleNumerator = descriptor.u16(16);
            object.m_iScaleDenominator = descriptor.u16(18);
            return detail::Outcome::done();
        });
}

} // namespace Quor
