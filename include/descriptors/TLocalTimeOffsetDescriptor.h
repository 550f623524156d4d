#ifndef QUOR_TLOCAL_TIME_OFFSET_DESCRIPTOR_H
#define QUOR_TLOCAL_TIME_OFFSET_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "descriptors/TLocalTimeOffsetDescriptorItem.h"
#include "detail/Owned.h"

#include <list>
#include <string>

namespace Quor {

/// Local time offset descriptor (ARIB STD-B10, tag 0x58, in the time offset table): the offsets of local time from UTC
/// by country code. Of several regions of one country the last is kept.
class QUOR_ISDBT_API TLocalTimeOffsetDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x58;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 11;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TLocalTimeOffsetDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TLocalTimeOffsetDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2. getDataLength() returns two less.
    /// @param parsedLength receives the bytes of the last item, 13. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for an incomplete item. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TLocalTimeOffsetDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                             QUOR_U16* errorCode);

    /// The item of a country, owned by the descriptor; null when there is none.
    TLocalTimeOffsetDescriptorItem* get(std::string countryCode) const;

    /// Removes and deletes the item of a country. @return whether there was one.
    QUOR_BOOL remove(std::string key);

    /// Adds an item, which the descriptor owns from now on. An item with the same country code is displaced and not
    /// deleted. Null is ignored.
    void add(TLocalTimeOffsetDescriptorItem* item);

    /// The number of countries.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The country codes in ascending order: a new list, which the caller deletes.
    std::list<std::string>* getCountryCodes() const;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Items<TLocalTimeOffsetDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
