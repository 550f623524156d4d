#ifndef QUOR_TSERVICE_LIST_DESCRIPTOR_H
#define QUOR_TSERVICE_LIST_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "descriptors/TServiceListDescriptorItem.h"
#include "detail/Owned.h"

#include <list>

namespace Quor {

/// Service list descriptor (tag 0x41, in the network information table): the services of a transport stream with their
/// types, by service id. Of several items with one id the last is kept.
///
/// The items are two bytes wide, not three as in the broadcast standards: a list with 16-bit service ids is taken apart
/// at the wrong places.
class QUOR_ISDBT_API TServiceListDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x41;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TServiceListDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TServiceListDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the last item, 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for an incomplete item. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TServiceListDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The item of a service, owned by the descriptor; null when there is none.
    TServiceListDescriptorItem* get(QUOR_U8 serviceId) const;

    /// Removes and deletes the item of a service. @return whether there was one.
    bool remove(QUOR_U8 serviceId);

    /// Adds an item, which the descriptor owns from now on. An item with the same service id is displaced and not
    /// deleted. Null is ignored.
    void add(TServiceListDescriptorItem* item);

    /// The number of services.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The service ids in ascending order: a new list, which the caller deletes.
    std::list<QUOR_U8>* getServiceIDs() const;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Items<TServiceListDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
