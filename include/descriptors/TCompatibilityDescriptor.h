#ifndef QUOR_TCOMPATIBILITY_DESCRIPTOR_H
#define QUOR_TCOMPATIBILITY_DESCRIPTOR_H

#include "descriptors/TCompatibilityDescriptorItem.h"
#include "detail/Owned.h"

namespace Quor {

/// Compatibility descriptor (ISO/IEC 13818-6, inside the download content descriptor): the receivers that a download is
/// made for. It is no descriptor of a section's loop and has no tag.
class QUOR_ISDBT_API TCompatibilityDescriptor : public TISDBTMemory {
public:
    /// For callers; parse() itself does not consult it.
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// A descriptor without items.
    TCompatibilityDescriptor() = default;
    virtual ~TCompatibilityDescriptor();

    TCompatibilityDescriptor(const TCompatibilityDescriptor&) = delete;
    TCompatibilityDescriptor& operator=(const TCompatibilityDescriptor&) = delete;

    /// Parses one compatibility descriptor.
    /// @param data         the descriptor, from its 16-bit length on, which is not read.
    /// @param length       its bytes, the length field included.
    /// @param parsedLength receives 2 and the bytes of the items, two less than they take on the wire. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH below 4 bytes, or ERROR_INVALID_ITEM for a bad item. May
    ///                     be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TCompatibilityDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The number of items.
    QUOR_U32 getCompatibilityDescriptorItemSize() const { return m_pItems.size(); }

    /// The item at a position in wire order, owned by the descriptor; null past the end.
    TCompatibilityDescriptorItem* getCompatibilityDescriptorItem(QUOR_U8 index) const {
        return detail::at(m_pItems, index);
    }

    /// Appends an item, which the descriptor owns from now on.
    void addCompatibilityDescriptorItem(TCompatibilityDescriptorItem* item);

    /// Removes and deletes the item at a position. @return whether there was one.
    QUOR_BOOL removeCompatibilityDescriptorItem(QUOR_U8 index);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Items<TCompatibilityDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
