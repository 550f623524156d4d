#ifndef QUOR_TSERVICE_LIST_DESCRIPTOR_ITEM_H
#define QUOR_TSERVICE_LIST_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// One service of a service list: its identifier in a single byte, and its type.
class QUOR_ISDBT_API TServiceListDescriptorItem : public TISDBTMemory {
public:
    TServiceListDescriptorItem() = default;
    virtual ~TServiceListDescriptorItem();

    /// Parses one item of 2 bytes.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the item took. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TServiceListDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                             QUOR_U16* errorCode);

    /// The service id, 0 to 255: a single byte, not the two of the broadcast standards.
    QUOR_U8 getServiceID() const { return m_iServiceID; }

    /// The service type, 0 to 255; TServiceDescriptor has names for its values.
    QUOR_U8 getServiceType() const { return m_iServiceType; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U8 m_iServiceID = 0;
    QUOR_U8 m_iServiceType = 0;
};

} // namespace Quor

#endif
