#ifndef QUOR_TTRANSPORT_PROTOCOL_DESCRIPTOR_IP_H
#define QUOR_TTRANSPORT_PROTOCOL_DESCRIPTOR_IP_H

#include "descriptors/TTransportProtocolDescriptor.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// Transport protocol descriptor of an application whose files arrive over IP (protocol_id 2), with their URLs.
class QUOR_ISDBT_API TTransportProtocolDescriptorIP : public TTransportProtocolDescriptor {
public:
    /// Fewest bytes from protocol_id on.
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH = 5;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TTransportProtocolDescriptorIP(QUOR_U8* data, QUOR_U32 length)
        : TTransportProtocolDescriptor(IP, IP, data, length) {}
    /// A descriptor with one URL, without data.
    explicit TTransportProtocolDescriptorIP(std::string url);
    /// A deep copy of @p source, which must not be null; without data, and with label 0, unlike a copy made by clone().
    explicit TTransportProtocolDescriptorIP(TTransportProtocolDescriptorIP* source);
    ~TTransportProtocolDescriptorIP() override;

    QUOR_BOOL parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode) override;

    /// remote_connection: true when another service carries the files, which the three identifiers name.
    QUOR_BOOL isRemoteConnection() const { return m_connection.m_bRemoteConnection; }

    /// original_network_id; 0 unless the connection is remote.
    QUOR_U16 getOriginalNetworkID() const { return m_connection.m_iOriginalNetworkID; }

    /// transport_stream_id; 0 unless the connection is remote.
    QUOR_U16 getTransportStreamID() const { return m_connection.m_iTransportStreamID; }

    /// service_id; 0 unless the connection is remote.
    QUOR_U16 getServiceID() const { return m_connection.m_iServiceID; }

    /// alignment_indicator.
    QUOR_BOOL isAligned() const { return m_bAlignmentIndicator; }

    /// The number of URLs.
    QUOR_U32 getURLCount() const { return m_pURLs.size(); }

    /// The URL at a position, from 0 in wire order, as received; empty past the end.
    std::string getURL(QUOR_U8 index) const;

    /// Appends a URL.
    void addURL(std::string url);

    /// Removes the URL at a position. @return whether there was one.
    QUOR_BOOL removeURL(QUOR_U8 index);

private:
    friend struct detail::Access;

    detail::Outcome decodeBody(const detail::Bytes& body);

    Connection m_connection{};
    QUOR_BOOL m_bAlignmentIndicator = false;
    detail::Row<detail::Text> m_pURLs{};
};

} // namespace Quor

#endif
