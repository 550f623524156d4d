#include "descriptors/TCAIdentifierDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | CA_system_id (16) ...

TCAIdentifierDescriptor::~TCAIdentifierDescriptor() = default;

TCAIdentifierDescriptor* TCAIdentifierDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                        QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCAIdentifierDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TCAIdentifierDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::Bytes identifiers = descriptor.from(COMMON_HEADER_LENGTH);
    m_pCASystemIDs = detail::copyWords(identifiers, m_iCASystemIDCount);
    return detail::Outcome::done(identifiers.size());
}

} // namespace Quor
