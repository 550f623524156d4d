#ifndef QUOR_TCOMPATIBILITY_DESCRIPTOR_ITEM_H
#define QUOR_TCOMPATIBILITY_DESCRIPTOR_ITEM_H

#include "descriptors/TCompatibilityDescriptorSubItem.h"
#include "detail/Owned.h"

namespace Quor {

/// One item of a compatibility descriptor: a kind of receiver hardware or software that the download is made for.
class QUOR_ISDBT_API TCompatibilityDescriptorItem : public TISDBTMemory {
public:
    TCompatibilityDescriptorItem() = default;
    virtual ~TCompatibilityDescriptorItem();

    TCompatibilityDescriptorItem(const TCompatibilityDescriptorItem&) = delete;
    TCompatibilityDescriptorItem& operator=(const TCompatibilityDescriptorItem&) = delete;

    /// Parses one item.
    /// @param data         the item.
    /// @param length       bytes left in the compatibility descriptor.
    /// @param parsedLength receives the bytes that the item took: 11 and its subdescriptors, whatever its
    ///                     descriptorLength says. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH, or ERROR_INVALID_ITEM for a bad subdescriptor. May be
    ///                     null.
    /// @return a new item, which the caller deletes, or null.
    static TCompatibilityDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                               QUOR_U16* errorCode);

    /// descriptorType: whether the item speaks of hardware or of software.
    QUOR_U8 getDescriptorType() const { return m_iDescriptorType; }

    /// specifierType: how getSpecifierData() names the organisation.
    QUOR_U8 getSpecifierType() const { return m_iSpecifierType; }

    /// specifierData, 24 bits.
    QUOR_U32 getSpecifierData() const { return m_iSpecifierData; }

    /// Not the model field itself: its first byte shifted left by the lower five bits of its second byte, in 16 bits.
    QUOR_U16 getModel() const { return m_iModel; }

    /// Not the version field itself: its first byte shifted left by the lower five bits of its second byte, in 16 bits.
    QUOR_U16 getVersion() const { return m_iVersion; }

    /// The number of subdescriptors.
    QUOR_U32 getCompatibilityDescriptorSubItemSize() const { return m_pItems.size(); }

    /// The subdescriptor at a position in wire order, owned by this item; null past the end.
    TCompatibilityDescriptorSubItem* getCompatibilityDescriptorSubItem(QUOR_U8 index) const {
        return detail::at(m_pItems, index);
    }

    /// Appends a subdescriptor, which this item owns from now on.
    void addCompatibilityDescriptorSubItem(TCompatibilityDescriptorSubItem* item);

    /// Removes and deletes the subdescriptor at a position. @return whether there was one.
    QUOR_BOOL removeCompatibilityDescriptorSubItem(QUOR_U8 index);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U8 m_iDescriptorType = 0;
    QUOR_U8 m_iSpecifierType = 0;
    QUOR_U32 m_iSpecifierData = 0;
    QUOR_U16 m_iModel = 0;
    QUOR_U16 m_iVersion = 0;
    detail::Items<TCompatibilityDescriptorSubItem> m_pItems{};
};

} // namespace Quor

#endif
