#include "descriptors/TStreamEventDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | eventId (16) | reserved (31) eventNPT (33) |
// privateDataByte (8) ...

TStreamEventDescriptor::~TStreamEventDescriptor() = default;

TStreamEventDescriptor* TStreamEventDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TStreamEventDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TStreamEventDescriptor::decode(const detail::Bytes& descriptor) {
    m_iEventID = descriptor.u16(2);
    m_iEventNPTH = descriptor.u8(7) & 1U;
    m_iEventNPTL = descriptor.u32(8);
    m_pPrivateData = detail::copyBytes(descriptor.from(12), m_iPrivateDataSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
