#include "descriptors/TPartialReceptionDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | service_id (16) ...

TPartialReceptionDescriptor::~TPartialReceptionDescriptor() = default;

TPartialReceptionDescriptor* TPartialReceptionDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TPartialReceptionDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TPartialReceptionDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::Bytes services = descriptor.from(COMMON_HEADER_LENGTH);
    m_pServiceIDs = detail::copyWords(services, m_iServiceIDCount);
    return detail::Outcome::done(services.size());
}

} // namespace Quor
