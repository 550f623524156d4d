#include "descriptors/TTargetRegionDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | region_spec_type (8) | target_region_spec (8) ...

TTargetRegionDescriptor::~TTargetRegionDescriptor() = default;

TTargetRegionDescriptor* TTargetRegionDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                        QUOR_U16* errorCode) {
    return detail::parseDescriptor<TTargetRegionDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TTargetRegionDescriptor::decode(const detail::Bytes& descriptor) {
    m_iRegionSpecType = descriptor.u8(2);
    m_pSpec = detail::copyBytes(descriptor.from(3), m_iSpecSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
