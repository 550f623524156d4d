#ifndef QUOR_TLOCAL_TIME_OFFSET_DESCRIPTOR_ITEM_H
#define QUOR_TLOCAL_TIME_OFFSET_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// The offset of local time from UTC in one region of a country.
class QUOR_ISDBT_API TLocalTimeOffsetDescriptorItem : public TISDBTMemory {
public:
    TLocalTimeOffsetDescriptorItem() = default;
    virtual ~TLocalTimeOffsetDescriptorItem();

    /// Parses one item of 13 bytes.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the item took. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TLocalTimeOffsetDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                 QUOR_U16* errorCode);

    /// country_code, three letters of ISO 3166-1 and a terminating zero. Owned by the item.
    const char* getCountryCode() const { return m_sCountryCode; }

    /// country_region_id, 0 to 63; 0 when the country has a single time.
    QUOR_U8 getCountryRegionID() const { return m_iCountryRegionID; }

    /// local_time_offset_polarity: 0 when local time is ahead of UTC, 1 when it is behind.
    QUOR_U16 getLocalTimeOffsetPolarity() const { return m_iLocalTimeOffsetPolarity; }

    /// local_time_offset in seconds, exact for offsets below ten hours with less than ten minutes. The tens digits of
    /// hours and minutes count 160 instead of 10 each, and the result is kept to 16 bits.
    QUOR_U16 getLocalTimeOffset() const { return m_iLocalTimeOffset; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    char m_sCountryCode[4] = {};
    QUOR_U8 m_iCountryRegionID = 0;
    QUOR_U16 m_iLocalTimeOffsetPolarity = 1;
    QUOR_U16 m_iLocalTimeOffset = 0;

protected:
    /// next_time_offset is not read from the wire; the place is kept for it.
    QUOR_U16 m_iNextTimeOffset = 0;
};

} // namespace Quor

#endif
