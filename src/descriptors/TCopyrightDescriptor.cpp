#include "descriptors/TCopyrightDescriptor.h"

#include "detail/Family.h"

namespace Quor {

// Quirk: read as a hierarchical transmission descriptor.
// descriptor_tag (8) | descriptor_length (8) | reserved (7) quality_level (1) |
// reserved (3) reference_PID (13)

TCopyrightDescriptor::~TCopyrightDescriptor() = default;

TCopyrightDescriptor* TCopyrightDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                  QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCopyrightDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TCopyrightDescriptor::decode(const detail::Bytes& descriptor) {
    m_iHierarchicalLevel = descriptor.u8(2) & 1U;
    m_iReferencePID = descriptor.pid(3);
    return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
}

} // namespace Quor
