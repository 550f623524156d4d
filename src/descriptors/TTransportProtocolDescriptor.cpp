#include "descriptors/TTransportProtocolDescriptor.h"

#include "descriptors/TTransportProtocolDescriptorDC.h"
#include "descriptors/TTransportProtocolDescriptorIP.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TTransportProtocolDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TTransportProtocolDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

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

/// An empty object of the variant that the protocol_id selects; null when there is none.
std::unique_ptr<TTransportProtocolDescriptor> create(QUOR_U16 protocolId, QUOR_U8* data, QUOR_U32 length) {
    switch (protocolId) {
    case TTransportProtocolDescriptor::ObjectCarousel:
        return std::make_unique<TTransportProtocolDescriptorOC>(data, length);
    case TTransportProtocolDescriptor::IP:
        return std::make_unique<TTransportProtocolDescriptorIP>(data, length);
    case TTransportProtocolDescriptor::DataCarousel:
        return std::make_unique<TTransportProtocolDescriptorDC>(data, length);
    case TTransportProtocolDescriptor::DataPiping:
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptor::parse: DataPiping not supported. Aborting!", detail::LOG_TAG);
        return nullptr;
    default:
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptor::parse: Unknown protocol ID: 0x%04X. Aborting!",
                       detail::LOG_TAG, unsigned{protocolId});
        return nullptr;
    }
}

} // namespace

TTransportProtocolDescriptor::TTransportProtocolDescriptor(Type type, QUOR_U16 protocolId, QUOR_U8* data,
                                                           QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_eMyType(type), m_iProtocolID(protocolId),
      m_iTransportProtocolLabel(0) {}

TTransportProtocolDescriptor::~TTransportProtocolDescriptor() = default;

TTransportProtocolDescriptor* TTransportProtocolDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                  QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    constexpr QUOR_U8 minimum{MINIMUM_DESCRIPTOR_LENGTH};
    if (!parseCommonHeader(data, length, errorCode, minimum, DESCRIPTOR_TAG)) {
        return nullptr;
    }
    // The object records two bytes less than it points at; callers depend on this value.
    const detail::Bytes body = detail::Bytes(data, length).from(PROTOCOL_ID_AT);
    std::unique_ptr<TTransportProtocolDescriptor> object = create(body.u16(0), data, body.size());
    if (object == nullptr) {
        // The error code stays ERROR_OK; callers tell an unsupported transport by it.
        return nullptr;
    }
    return detail::decodeInto(std::move(object), parsedLength, errorCode, [=](TTransportProtocolDescriptor& variant) {
        QUOR_U32 used = 0;
        const bool sound = variant.parseData(body.data(), body.size(), &used, errorCode);
        return sound ? detail::Outcome::done(used) : detail::Outcome::failedBelow();
    });
}

TTransportProtocolDescriptor* TTransportProtocolDescriptor::clone(TTransportProtocolDescriptor* source) {
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

QUOR_U32 TTransportProtocolDescriptor::parseConnection(detail::Bytes body, QUOR_U32 minimum, Connection& connection,
                                                       QUOR_U32& left) {
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
