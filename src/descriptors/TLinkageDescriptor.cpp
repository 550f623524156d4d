#include "descriptors/TLinkageDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | transport_stream_id (16) | original_network_id (16) | service_id (16) |
// linkage_type (8) | private_data_byte (8) ...

TLinkageDescriptor::~TLinkageDescriptor() = default;

TLinkageDescriptor* TLinkageDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                              QUOR_U16* errorCode) {
    return detail::parseDescriptor<TLinkageDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TLinkageDescriptor::decode(const detail::Bytes& descriptor) {
    m_iTransportStreamID = descriptor.u16(2);
    m_iOriginalNetworkID = descriptor.u16(4);
    m_iServiceID = descriptor.u16(6);
    m_iLinkageType = descriptor.u8(8);
    m_pPrivateData = detail::copyBytes(descriptor.from(9), m_iPrivateDataSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
