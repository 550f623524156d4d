#ifndef QUOR_TEMERGENCY_INFORMATION_DESCRIPTOR_H
#define QUOR_TEMERGENCY_INFORMATION_DESCRIPTOR_H

#include "descriptors/TEmergencyInformationDescriptorItem.h"
#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Emergency information descriptor (ARIB STD-B10, tag 0xFC): the emergency signals of the services. All items are
/// kept, in wire order, also several of one service.
class QUOR_ISDBT_API TEmergencyInformationDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xFC;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TEmergencyInformationDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TEmergencyInformationDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the last item. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for an incomplete item. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TEmergencyInformationDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                  QUOR_U16* errorCode);

    /// The number of items.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The item at a position, from 0 in wire order, owned by the descriptor; null past the end.
    TEmergencyInformationDescriptorItem* get(QUOR_U8 index) const { return detail::at(m_pItems, index); }

    /// Appends an item, which the descriptor owns from now on. Null takes a place as well.
    void add(TEmergencyInformationDescriptorItem* item);

    /// Removes and deletes the item at a position. @return false when no item is there.
    QUOR_BOOL remove(QUOR_U8 index);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Items<TEmergencyInformationDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
