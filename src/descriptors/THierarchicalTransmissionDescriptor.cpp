#include "descriptors/THierarchicalTransmissionDescriptor.h"

#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | reserved_future_use (7) quality_level (1) |
// reserved_future_use (3) reference_PID (13)

THierarchicalTransmissionDescriptor::~THierarchicalTransmissionDescriptor() = default;

THierarchicalTransmissionDescriptor* THierarchicalTransmissionDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                                QUOR_U32* parsedLength,
                                                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<THierarchicalTransmissionDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome THierarchicalTransmissionDescriptor::decode(const detail::Bytes& descriptor) {
    m_iQualityLevel = descriptor.u8(2) & 1U;
    m_iReferencePID = descriptor.pid(3);
    return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
}

} // namespace Quor
