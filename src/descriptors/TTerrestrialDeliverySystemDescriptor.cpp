#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | area_code (12) guard_interval (2) transmission_mode (2) |
// frequency (16) ...

TTerrestrialDeliverySystemDescriptor::~TTerrestrialDeliverySystemDescriptor() = default;

TTerrestrialDeliverySystemDescriptor* TTerrestrialDeliverySystemDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                                  QUOR_U32* parsedLength,
                                                                                  QUOR_U16* errorCode) {
    return detail::parseDescriptor<TTerrestrialDeliverySystemDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TTerrestrialDeliverySystemDescriptor::decode(const detail::Bytes& descriptor) {
    m_iAreaCode = descriptor.u16(2) >> 4;
    m_iGuardInterval = descriptor.u8(3) >> 2 & 3U;
    m_iTransmissionMode = descriptor.u8(3) & 3U;
    m_pFrequencies = detail::copyWords(descriptor.from(4), m_iFrequencyCounter);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
