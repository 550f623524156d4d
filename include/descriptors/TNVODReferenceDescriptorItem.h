#ifndef QUOR_TNVOD_REFERENCE_DESCRIPTOR_ITEM_H
#define QUOR_TNVOD_REFERENCE_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// One time-shifted service of a near video on demand group.
class QUOR_ISDBT_API TNVODReferenceDescriptorItem : public TISDBTMemory {
public:
    TNVODReferenceDescriptorItem() = default;
    virtual ~TNVODReferenceDescriptorItem();

    /// Parses one item of 6 bytes.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the item took. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TNVODReferenceDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                               QUOR_U16* errorCode);

    /// transport_stream_id of the time-shifted service.
    QUOR_U16 getTransportStreamID() const { return m_iTransportStreamID; }

    /// original_network_id of the time-shifted service.
    QUOR_U16 getOriginalNetworkID() const { return m_iOriginalNetworkID; }

    /// service_id of the time-shifted service.
    QUOR_U16 getServiceID() const { return m_iServiceID; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U16 m_iTransportStreamID = 0;
    QUOR_U16 m_iOriginalNetworkID = 0;
    QUOR_U16 m_iServiceID = 0;
};

} // namespace Quor

#endif
