#include "descriptors/THierarchicalTransmissionDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | reserved_future_use (7) quality_level (1) |
// reserved_future_use (3) reference_PID (13)

constexpr U8 THierarchicalTransmissionDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 THierarchicalTransmissionDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

THierarchicalTransmissionDescriptor::THierarchicalTransmissionDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iQualityLevel(0), m_iReferencePID(0) {}

THierarchicalTransmissionDescriptor::~THierarchicalTransmissionDescriptor() = default;

THierarchicalTransmissionDescriptor* THierarchicalTransmissionDescriptor::parse(QUOR_U8* sectionData,
                                                                                QUOR_U32 dataLength,
                                                                                QUOR_U32* parsedLength,
                                                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<THierarchicalTransmissionDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](THierarchicalTransmissionDescriptor& object, detail::Bytes descriptor) {
            object.m_iQualityLevel = descriptor.u8(2) & 1U;
            object.m_iReferencePID = descriptor.pid(3);
            return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
        });
}

} // namespace Quor
