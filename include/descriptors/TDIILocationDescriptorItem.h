#ifndef QUOR_TDII_LOCATION_DESCRIPTOR_ITEM_H
#define QUOR_TDII_LOCATION_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"

namespace Quor {

/// One download info indication of a carousel and the stream that carries it.
class QUOR_ISDBT_API TDIILocationDescriptorItem {
public:
    /// Both fields 0.
    TDIILocationDescriptorItem();
    /// A copy of @p source, which must not be null.
    explicit TDIILocationDescriptorItem(TDIILocationDescriptorItem* source);
    virtual ~TDIILocationDescriptorItem();

    /// Parses one item of 4 bytes.
    /// @param sectionData  the item.
    /// @param dataLength   bytes left in the descriptor.
    /// @param parsedLength receives 4. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TDIILocationDescriptorItem* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                             QUOR_U16* errorCode);

    /// DII_identification, 15 bits.
    QUOR_U16 getDIIIdentification() const { return m_iDIIIdentification; }

    /// association_tag of the stream.
    QUOR_U16 getAssociationTag() const { return m_iAssociationTag; }

private:
    QUOR_U16 m_iDIIIdentification;
    QUOR_U16 m_iAssociationTag;
};

} // namespace Quor

#endif
