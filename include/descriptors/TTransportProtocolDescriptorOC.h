#ifndef QUOR_TTRANSPORT_PROTOCOL_DESCRIPTOR_OC_H
#define QUOR_TTRANSPORT_PROTOCOL_DESCRIPTOR_OC_H

#include "descriptors/TTransportProtocolDescriptor.h"

namespace Quor {

/// Transport protocol descriptor of an application whose files arrive in an object carousel (protocol_id 1).
class QUOR_ISDBT_API TTransportProtocolDescriptorOC : public TTransportProtocolDescriptor {
public:
    /// Fewest bytes from protocol_id on.
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH = 5;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TTransportProtocolDescriptorOC(QUOR_U8* data, QUOR_U32 length)
        : TTransportProtocolDescriptor(ObjectCarousel, ObjectCarousel, data, length) {}
    /// A copy of @p source, which must not be null; without data, and with label 0, unlike a copy made by clone().
    explicit TTransportProtocolDescriptorOC(TTransportProtocolDescriptorOC* source);
    ~TTransportProtocolDescriptorOC() override;

    QUOR_BOOL parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode) override;

    /// remote_connection: true when another service carries the carousel, which the three identifiers name.
    QUOR_BOOL isRemoteConnection() const { return m_connection.m_bRemoteConnection; }

    /// original_network_id; 0 unless the connection is remote.
    QUOR_U16 getOriginalNetworkID() const { return m_connection.m_iOriginalNetworkID; }

    /// transport_stream_id; 0 unless the connection is remote.
    QUOR_U16 getTransportStreamID() const { return m_connection.m_iTransportStreamID; }

    /// service_id; 0 unless the connection is remote.
    QUOR_U16 getServiceID() const { return m_connection.m_iServiceID; }

    /// component_tag of the stream that carries the carousel.
    QUOR_U8 getComponentTag() const { return m_iComponentTag; }

private:
    friend struct detail::Access;

    detail::Outcome decodeBody(const detail::Bytes& body);

    Connection m_connection{};
    QUOR_U8 m_iComponentTag = 0;
};

} // namespace Quor

#endif
