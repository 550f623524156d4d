#ifndef QUOR_TLINKAGE_DESCRIPTOR_H
#define QUOR_TLINKAGE_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Linkage descriptor (ARIB STD-B10, tag 0x4A): another service that has more on, or stands in for, what the table
/// describes.
class QUOR_ISDBT_API TLinkageDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x4A;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 7;

    /// @name Values of linkage_type
    /// @{
    static constexpr QUOR_U8 SERVICE_INFORMATION = 1;
    static constexpr QUOR_U8 SERVICE_EPG = 2;
    static constexpr QUOR_U8 SERVICE_CA_SUBSTITUTION = 3;
    static constexpr QUOR_U8 SERVICE_TS_NETWORK_OR_BOUQUET = 4;
    static constexpr QUOR_U8 SERVICE_SUBSTITUTION = 5;
    static constexpr QUOR_U8 SERVICE_DATA_BROADCAST = 6;
    static constexpr QUOR_U8 SERVICE_RETRANSMISSION = 0xFE;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TLinkageDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TLinkageDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the body, `length` - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TLinkageDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// transport_stream_id of the linked service.
    QUOR_U16 getTransportStreamID() const { return m_iTransportStreamID; }

    /// original_network_id of the linked service.
    QUOR_U16 getOriginalNetworkID() const { return m_iOriginalNetworkID; }

    /// service_id of the linked service.
    QUOR_U16 getServiceID() const { return m_iServiceID; }

    /// linkage_type, 0 to 255, also values without a name above.
    QUOR_U8 getLinkageType() const { return m_iLinkageType; }

    /// The number of private_data bytes, modulo 256; 0 when there are none.
    QUOR_U8 getPrivateDataSize() const { return m_iPrivateDataSize; }

    /// The private_data bytes, owned by the descriptor; null when there are none.
    QUOR_U8* getPrivateData() const { return m_pPrivateData.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iTransportStreamID = 0;
    QUOR_U16 m_iOriginalNetworkID = 0;
    QUOR_U16 m_iServiceID = 0;
    QUOR_U8 m_iLinkageType = 0;
    QUOR_U8 m_iPrivateDataSize = 0;
    detail::Array<QUOR_U8> m_pPrivateData{};
};

} // namespace Quor

#endif
