#include "descriptors/TConditionalPlaybackDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | CA_system_id (16) | reserved (3) CA_PID (13) |
// private_data_byte (8) ...

TConditionalPlaybackDescriptor::~TConditionalPlaybackDescriptor() = default;

TConditionalPlaybackDescriptor* TConditionalPlaybackDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TConditionalPlaybackDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TConditionalPlaybackDescriptor::decode(const detail::Bytes& descriptor) {
    m_iCASystemID = descriptor.u16(2);
    m_iCAPID = descriptor.pid(4);
    m_pPrivateData = detail::copyBytes(descriptor.from(6), m_iPrivateDataSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
