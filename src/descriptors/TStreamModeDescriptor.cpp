#include "descriptors/TStreamModeDescriptor.h"

#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | streamMode (8) | reserved (8)

TStreamModeDescriptor::~TStreamModeDescriptor() = default;

TStreamModeDescriptor* TStreamModeDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode) {
    return detail::parseDescriptor<TStreamModeDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TStreamModeDescriptor::decode(const detail::Bytes& descriptor) {
    m_iStreamMode = descriptor.u8(2);
    return detail::Outcome::done();
}

} // namespace Quor
