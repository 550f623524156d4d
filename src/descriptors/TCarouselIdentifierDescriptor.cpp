#include "descriptors/TCarouselIdentifierDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | carousel_id (32) | private_data_byte (8) ...

TCarouselIdentifierDescriptor::~TCarouselIdentifierDescriptor() = default;

TCarouselIdentifierDescriptor* TCarouselIdentifierDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCarouselIdentifierDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TCarouselIdentifierDescriptor::decode(const detail::Bytes& descriptor) {
    m_iCarouselID = descriptor.u32(2);
    m_pPrivateData = detail::copyBytes(descriptor.from(6), m_iPrivateDataSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
