#ifndef QUOR_TDII_LOCATION_DESCRIPTOR_ITEM_H
#define QUOR_TDII_LOCATION_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// One download info indication of a carousel and the stream that carries it.
class QUOR_ISDBT_API TDIILocationDescriptorItem : public TISDBTMemory {
public:
    /// Both fields 0.
    TDIILocationDescriptorItem() = default;
    /// A copy of @p source, which must not be null.
    explicit TDIILocationDescriptorItem(TDIILocationDescriptorItem* source);
    virtual ~TDIILocationDescriptorItem();

    /// Parses one item of 4 bytes.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives 4. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TDIILocationDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                             QUOR_U16* errorCode);

    /// DII_identification, 15 bits.
    QUOR_U16 getDIIIdentification() const { return m_iDIIIdentification; }

    /// association_tag of the stream.
    QUOR_U16 getAssociationTag() const { return m_iAssociationTag; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U16 m_iDIIIdentification = 0;
    QUOR_U16 m_iAssociationTag = 0;
};

} // namespace Quor

#endif
