#include "descriptors/TSystemManagementDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | system_management_id (16) | additional_identification_info (8) ...

TSystemManagementDescriptor::~TSystemManagementDescriptor() = default;

TSystemManagementDescriptor* TSystemManagementDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TSystemManagementDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TSystemManagementDescriptor::decode(const detail::Bytes& descriptor) {
    m_iSystemMngID = descriptor.u16(2);
    m_pAdditionalIdentInfo = detail::copyBytes(descriptor.from(4), m_iAdditionalIdentInfoSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
