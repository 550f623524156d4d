#ifndef QUOR_TDII_LOCATION_DESCRIPTOR_H
#define QUOR_TDII_LOCATION_DESCRIPTOR_H

#include "descriptors/TDIILocationDescriptorItem.h"
#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// DII location descriptor (ABNT NBR 15606, tag 0x0D, in the application information table): where the download info
/// indications of an application's carousel are. The copyright descriptor of the program map table has the same tag.
class QUOR_ISDBT_API TDIILocationDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x0D;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TDIILocationDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    /// A deep copy of @p source, which must not be null; without data.
    explicit TDIILocationDescriptor(TDIILocationDescriptor* source);
    ~TDIILocationDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the last item; 0 when there is none. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for an item that is not valid. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TDIILocationDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// transport_protocol_label of the transport protocol descriptor that this one belongs to.
    QUOR_U8 getTransportProtocolLabel() const { return m_iTransportProtocolLabel; }

    /// Appends an item, which the descriptor owns from now on. Null takes a place as well.
    void add(TDIILocationDescriptorItem* item);

    /// The item at a position, from 0 in wire order, owned by the descriptor; null past the end.
    TDIILocationDescriptorItem* get(unsigned int position) const { return detail::at(m_pItems, position); }

    /// Removes and deletes the item at a position. @return 1, or 0 when no item is there.
    QUOR_BOOL remove(unsigned int position);

    /// The number of items.
    QUOR_U32 size() const { return m_pItems.size(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iTransportProtocolLabel = 0;
    detail::Items<TDIILocationDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
