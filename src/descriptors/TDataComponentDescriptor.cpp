#include "descriptors/TDataComponentDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | data_component_id (16) |
// additional_data_component_info (8) ...

TDataComponentDescriptor::~TDataComponentDescriptor() = default;

TDataComponentDescriptor* TDataComponentDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                          QUOR_U16* errorCode) {
    return detail::parseDescriptor<TDataComponentDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TDataComponentDescriptor::decode(const detail::Bytes& descriptor) {
    m_iDataComponentID = descriptor.u16(2);
    m_pAdditionalData = detail::copyBytes(descriptor.from(4), m_iAdditionalDataSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
