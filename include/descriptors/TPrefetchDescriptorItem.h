#ifndef QUOR_TPREFETCH_DESCRIPTOR_ITEM_H
#define QUOR_TPREFETCH_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"

#include <string>

namespace Quor {

/// A label of carousel modules that are worth fetching before the application asks for them.
class QUOR_ISDBT_API TPrefetchDescriptorItem {
public:
    /// An empty label, priority 0.
    TPrefetchDescriptorItem();
    /// A copy of @p source, which must not be null.
    explicit TPrefetchDescriptorItem(TPrefetchDescriptorItem* source);
    virtual ~TPrefetchDescriptorItem();

    /// Parses one item.
    /// @param sectionData  the item.
    /// @param dataLength   bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the item took; 1 for a label of 255 bytes. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH or ERROR_INVALID_STRING. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TPrefetchDescriptorItem* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                          QUOR_U16* errorCode);

    /// label, as received.
    std::string getLabel() const { return m_sLabel; }

    /// prefetch_priority, 0 to 255.
    QUOR_U8 getPriority() const { return m_iPriority; }

private:
    std::string m_sLabel;
    QUOR_U8 m_iPriority;
};

} // namespace Quor

#endif
