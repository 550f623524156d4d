#ifndef QUOR_TLOCAL_TIME_OFFSET_DESCRIPTOR_ITEM_H
#define QUOR_TLOCAL_TIME_OFFSET_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"

namespace Quor {

/// The offset of local time from UTC in one region of a country.
class QUOR_ISDBT_API TLocalTimeOffsetDescriptorItem {
public:
    TLocalTimeOffsetDescriptorItem();
    virtual ~TLocalTimeOffsetDescriptorItem();

    /// Parses one item of 13 bytes.
    /// @param sectionData the item.
    /// @param dataLength  bytes left in the descriptor.
    /// @param itemLength  receives the bytes that the item took. May be null.
    /// @param errorCode   ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TLocalTimeOffsetDescriptorItem* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* itemLength,
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
    char m_sCountryCode[4];
    QUOR_U8 m_iCountryRegionID;
    QUOR_U16 m_iLocalTimeOffsetPolarity;
    QUOR_U16 m_iLocalTimeOffset;

protected:
    /// next_time_offset is not read from the wire; the place is kept for it.
    QUOR_U16 m_iNextTimeOffset;
};

} // namespace Quor

#endif
