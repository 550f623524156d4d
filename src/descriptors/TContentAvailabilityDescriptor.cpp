#include "descriptors/TContentAvailabilityDescriptor.h"

#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | reserved_future_use (2) image_constraint_token (1) retention_mode (1)
// retention_state (3) encryption_mode (1)

TContentAvailabilityDescriptor::~TContentAvailabilityDescriptor() = default;

TContentAvailabilityDescriptor* TContentAvailabilityDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TContentAvailabilityDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TContentAvailabilityDescriptor::decode(const detail::Bytes& descriptor) {
    m_bImageConstraintToken = !descriptor.bit(2, 5);
    m_bRetentionMode = !descriptor.bit(2, 4);
    m_iRetentionState = descriptor.u8(2) >> 1 & 7U;
    m_bEncryptionMode = !descriptor.bit(2, 0);
    // Quirk: header included.
    return detail::Outcome::done(descriptor.size());
}

} // namespace Quor
