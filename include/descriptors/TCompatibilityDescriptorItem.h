#ifndef QUOR_TCOMPATIBILITY_DESCRIPTOR_ITEM_H
#define QUOR_TCOMPATIBILITY_DESCRIPTOR_ITEM_H

#include "descriptors/TCompatibilityDescriptorSubItem.h"

#include <list>
#include <memory>

namespace Quor {

/// One item of a compatibility descriptor: a kind of receiver hardware or software that the download is made for.
class QUOR_ISDBT_API TCompatibilityDescriptorItem {
public:
    TCompatibilityDescriptorItem();
    virtual ~TCompatibilityDescriptorItem();

    TCompatibilityDescriptorItem(const TCompatibilityDescriptorItem&) = delete;
    TCompatibilityDescriptorItem& operator=(const TCompatibilityDescriptorItem&) = delete;

    /// Parses one item.
    /// @param sectionData  the item.
    /// @param dataLength   bytes left in the compatibility descriptor.
    /// @param parsedLength receives the bytes that the item took: 11 and its subdescriptors, whatever its
    ///                     descriptorLength says. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH, or ERROR_INVALID_ITEM for a bad subdescriptor. May be
    ///                     null.
    /// @return a new item, which the caller deletes, or null.
    static TCompatibilityDescriptorItem* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
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
    QUOR_U32 getCompatibilityDescriptorSubItemSize() const;

    /// The subdescriptor at a position in wire order, owned by this item; null past the end.
    TCompatibilityDescriptorSubItem* getCompatibilityDescriptorSubItem(QUOR_U8 index) const;

    /// Appends a subdescriptor, which this item owns from now on.
    void addCompatibilityDescriptorSubItem(TCompatibilityDescriptorSubItem* item);

    /// Removes and deletes the subdescriptor at a position. @return whether there was one.
    QUOR_BOOL removeCompatibilityDescriptorSubItem(QUOR_U8 index);

private:
    QUOR_U8 m_iDescriptorType;
    QUOR_U8 m_iSpecifierType;
    QUOR_U32 m_iSpecifierData;
    QUOR_U16 m_iModel;
    QUOR_U16 m_iVersion;
    std::list<std::unique_ptr<TCompatibilityDescriptorSubItem>> m_pItems;
};

} // namespace Quor

#endif
