#include "descriptors/TLocalTimeOffsetDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"

#include <algorithm>

namespace Quor {

namespace {

// country_code (24) | country_region_id (6) reserved (1) local_time_offset_polarity (1) | local_time_offset (16) |
// time_of_change (40) | next_time_offset (16)
constexpr QUOR_U32 ITEM_LENGTH = 13;
constexpr QUOR_U32 COUNTRY_CODE_LENGTH = 3;

/// Quirk: the tens stay in their nibble's place before they are multiplied, so that each counts 160.
unsigned tensAndOnes(QUOR_U8 digits) {
    return (digits & 0xF0U) * 10U + (digits & 0x0FU);
}

} // namespace

TLocalTimeOffsetDescriptorItem::~TLocalTimeOffsetDescriptorItem() = default;

TLocalTimeOffsetDescriptorItem* TLocalTimeOffsetDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TLocalTimeOffsetDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TLocalTimeOffsetDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < ITEM_LENGTH) {
        QUOR_ISDBT_LOG("%s: TLocalTimeOffsetDescriptorItem::parse: Descriptor length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    std::copy_n(left.data(), COUNTRY_CODE_LENGTH, m_sCountryCode);
    m_iCountryRegionID = left.u8(3) >> 2;
    m_iLocalTimeOffsetPolarity = left.u8(3) & 1U;
    m_iLocalTimeOffset = static_cast<QUOR_U16>(tensAndOnes(left.u8(4)) * 3600U + tensAndOnes(left.u8(5)) * 60U);
    return detail::Outcome::done(ITEM_LENGTH);
}

} // namespace Quor
