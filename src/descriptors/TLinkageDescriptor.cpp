#include "descriptors/TLinkageDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | transport_stream_id (16) | original_network_id (16) | service_id (16) |
// linkage_type (8) | private_data_byte (8) ...

constexpr U8 TLinkageDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TLinkageDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TLinkageDescriptor::SERVICE_INFORMATION;
constexpr QUOR_U8 TLinkageDescriptor::SERVICE_EPG;
constexpr QUOR_U8 TLinkageDescriptor::SERVICE_CA_SUBSTITUTION;
constexpr QUOR_U8 TLinkageDescriptor::SERVICE_TS_NETWORK_OR_BOUQUET;
constexpr QUOR_U8 TLinkageDescriptor::SERVICE_SUBSTITUTION;
constexpr QUOR_U8 TLinkageDescriptor::SERVICE_DATA_BROADCAST;
constexpr QUOR_U8 TLinkageDescriptor::SERVICE_RETRANSMISSION;

TLinkageDescriptor::TLinkageDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iTransportStreamID(0), m_iOriginalNetworkID(0), m_iServiceID(0),
      m_iLinkageType(0), m_iPrivateDataSize(0) {}

TLinkageDescriptor::~TLinkageDescriptor() = default;

TLinkageDescriptor* TLinkageDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseDescriptor<TLinkageDescriptor>(
        data, length, parsedLength, err, [](TLinkageDescriptor& object, detail::Bytes descriptor) {
            object.m_iTransportStreamID = descriptor.u16(2);
            object.m_iOriginalNetworkID = descriptor.u16(4);
            object.m_iServiceID = descriptor.u16(6);
            object.m_iLinkageType = descriptor.u8(8);
            object.m_pPrivateData = detail::copyBytes(descriptor.from(9), object.m_iPrivateDataSize);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
