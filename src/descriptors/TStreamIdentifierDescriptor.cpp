#include "descriptors/TStreamIdentifierDescriptor.h"

#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | component_tag (8)

TStreamIdentifierDescriptor::~TStreamIdentifierDescriptor() = default;

TStreamIdentifierDescriptor* TStreamIdentifierDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TStreamIdentifierDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TStreamIdentifierDescriptor::decode(const detail::Bytes& descriptor) {
    m_iComponentTag = descriptor.u8(2);
    return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
}

} // namespace Quor
