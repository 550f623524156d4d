#include "descriptors/TTransportProtocolDescriptor.h"

#include "descriptors/TTransportProtocolDescriptorDC.h"
#include "descriptors/TTransportProtocolDescriptorIP.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"
#include "detail/Family.h"
#include "detail/Log.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | protocol_id (16) | transport_protocol_label (8) |
// remote_connection (1) reserved (7) |
// if remote_connection: original_network_id (16) | transport_stream_id (16) | service_id (16) |
// the variant's own bytes
constexpr QUOR_U32 PROTOCOL_ID_AT = 2;

// from protocol_id on
constexpr QUOR_U32 LABEL_AT = 2;
constexpr QUOR_U32 REMOTE_CONNECTION_AT = 3;
constexpr QUOR_U32 SERVICE_AT = 4;
constexpr QUOR_U32 SERVICE_LENGTH = 6;

/// Quirk: the object records two bytes less than it points at.
template <class Variant> TISDBTDescriptor* parseVariantAs(const detail::Bytes& descriptor, detail::Outcome& outcome) {
    const detail::Bytes body = descriptor.from(PROTOCOL_ID_AT);
    std::unique_ptr<Variant> variant = descriptor.memory().make<Variant>(descriptor.data(), body.size());
    outcome = detail::Access::decodeBody(*variant, body);
    return outcome.succeeded() ? variant.release() : nullptr;
}

} // namespace

TTransportProtocolDescriptor::~TTransportProtocolDescriptor() = default;

TTransportProtocolDescriptor* TTransportProtocolDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                  QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TTransportProtocolDescriptor>(data, length, parsedLength, errorCode);
}

TISDBTDescriptor* TTransportProtocolDescriptor::parseVariant(const detail::Bytes& descriptor,
                                                             detail::Outcome& outcome) {
    const QUOR_U16 protocolId = descriptor.u16(PROTOCOL_ID_AT);
    switch (protocolId) {
    case ObjectCarousel:
        return parseVariantAs<TTransportProtocolDescriptorOC>(descriptor, outcome);
    case IP:
        return parseVariantAs<TTransportProtocolDescriptorIP>(descriptor, outcome);
    case DataCarousel:
        return parseVariantAs<TTransportProtocolDescriptorDC>(descriptor, outcome);
    case DataPiping:
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptor::parse: DataPiping not supported. Aborting!", detail::LOG_TAG);
        break;
    default:
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptor::parse: Unknown protocol ID: 0x%04X. Aborting!",
                       detail::LOG_TAG, unsigned{protocolId});
        break;
    }
    // Quirk: a failure with ERROR_OK, by which callers tell an unsupported transport.
    outcome = detail::Outcome::failed(TISDBTTable::ERROR_OK);
    return nullptr;
}

TTransportProtocolDescriptor* TTransportProtocolDescriptor::clone(TTransportProtocolDescriptor* source) {
    if (source == nullptr) {
        return nullptr;
    }
    TTransportProtocolDescriptor* copy = nullptr;
    switch (source->m_eMyType) {
    case ObjectCarousel:
        copy = new TTransportProtocolDescriptorOC(static_cast<TTransportProtocolDescriptorOC*>(source));
        break;
    case IP:
        copy = new TTransportProtocolDescriptorIP(static_cast<TTransportProtocolDescriptorIP*>(source));
        break;
    case DataCarousel:
        copy = new TTransportProtocolDescriptorDC(static_cast<TTransportProtocolDescriptorDC*>(source));
        break;
    case DataPiping:
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptor::clone: DataPiping not supported. Aborting!", detail::LOG_TAG);
        return nullptr;
    default:
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptor::clone: Unknown protocol ID: 0x%04X. Aborting!",
                       detail::LOG_TAG, unsigned{source->m_eMyType});
        return nullptr;
    }
    copy->m_iTransportProtocolLabel = source->m_iTransportProtocolLabel;
    return copy;
}

QUOR_U32 TTransportProtocolDescriptor::decodeConnection(const detail::Bytes& body, QUOR_U32 minimum,
                                                        Connection& connection, QUOR_U32& left) {
    left = body.size();
    if (left < minimum) {
        return 0;
    }
    m_iTransportProtocolLabel = body.u8(LABEL_AT);
    connection.m_bRemoteConnection = body.bit(REMOTE_CONNECTION_AT, 7);
    if (!connection.m_bRemoteConnection) {
        return SERVICE_AT;
    }
    left -= SERVICE_AT;
    if (left < SERVICE_LENGTH + minimum - SERVICE_AT) {
        return 0;
    }
    connection.m_iOriginalNetworkID = body.u16(SERVICE_AT);
    connection.m_iTransportStreamID = body.u16(SERVICE_AT + 2);
    connection.m_iServiceID = body.u16(SERVICE_AT + 4);
    return SERVICE_AT + SERVICE_LENGTH;
}

} // namespace Quor
