#include "descriptors/TEmergencyInformationDescriptorItem.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// service_id (16) | start_end_flag (1) signal_level (1) reserved (6) | area_code_length (8) |
// area_code (12) reserved (4) ...
constexpr QUOR_U32 FIXED_LENGTH = 4;

/// Quirk: asked for also of an item without area codes, which takes four.
constexpr QUOR_U32 MINIMUM_LENGTH = 6;

} // namespace

TEmergencyInformationDescriptorItem::~TEmergencyInformationDescriptorItem() = default;

TEmergencyInformationDescriptorItem* TEmergencyInformationDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                                QUOR_U32* parsedLength,
                                                                                QUOR_U16* errorCode) {
    return detail::parseItem<TEmergencyInformationDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TEmergencyInformationDescriptorItem::decode(const detail::Bytes& left) {
    // An odd last byte of the area codes is not taken: the next item begins there.
    const QUOR_U32 areaCodeCount = left.u8(3) / 2U;
    if (left.size() < MINIMUM_LENGTH || left.size() < FIXED_LENGTH + 2 * areaCodeCount) {
        QUOR_ISDBT_LOG("%s: TEmergencyInformationDescriptorItem::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iServiceID = left.u16(0);
    m_bStart = left.bit(2, 7);
    m_iSignalLevel = left.u8(2) >> 6 & 1U;
    m_iAreaCodeLength = left.u8(3);
    m_pAreaCodes = detail::copyWords(left.from(FIXED_LENGTH).first(2 * areaCodeCount));
    for (QUOR_U32 i = 0; i < areaCodeCount; ++i) {
        m_pAreaCodes[i] >>= 4;
    }
    return detail::Outcome::done(FIXED_LENGTH + 2 * areaCodeCount);
}

} // namespace Quor
