#ifndef QUOR_TPREFETCH_DESCRIPTOR_ITEM_H
#define QUOR_TPREFETCH_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// A label of carousel modules that are worth fetching before the application asks for them.
class QUOR_ISDBT_API TPrefetchDescriptorItem : public TISDBTMemory {
public:
    /// An empty label, priority 0.
    TPrefetchDescriptorItem() = default;
    /// A copy of @p source, which must not be null.
    explicit TPrefetchDescriptorItem(TPrefetchDescriptorItem* source);
    virtual ~TPrefetchDescriptorItem();

    /// Parses one item.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the item took; 1 for a label of 255 bytes. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH or ERROR_INVALID_STRING. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TPrefetchDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// label, as received.
    std::string getLabel() const { return m_sLabel; }

    /// prefetch_priority, 0 to 255.
    QUOR_U8 getPriority() const { return m_iPriority; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    detail::Text m_sLabel{};
    QUOR_U8 m_iPriority = 0;
};

} // namespace Quor

#endif
