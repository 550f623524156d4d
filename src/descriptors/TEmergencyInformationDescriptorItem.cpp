#include "descriptors/TEmergencyInformationDescriptorItem.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// service_id (16) | start_end_flag (1) signal_level (1) reserved (6) | area_code_length (8) |
// area_code (12) reserved (4) ...
constexpr QUOR_U32 FIXED_LENGTH = 4;

/// Asked for also of an item without area codes; callers depend on this value.
constexpr QUOR_U32 MINIMUM_LENGTH = 6;

} // namespace

TEmergencyInformationDescriptorItem::TEmergencyInformationDescriptorItem()
    : m_iServiceID(0), m_bStart(false), m_iSignalLevel(0), m_iAreaCodeLength(0) {}

TEmergencyInformationDescriptorItem::~TEmergencyInformationDescriptorItem() = default;

TEmergencyInformationDescriptorItem* TEmergencyInformationDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                                QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseItem<TEmergencyInformationDescriptorItem>(
        data, length, parsedLength, err, [](TEmergencyInformationDescriptorItem& item, detail::Bytes left) {
            // An odd last byte of the area codes is not taken: the next item begins there.
            const QUOR_U32 areaCodeCount = left.u8(3) / 2U;
            if (left.size() < MINIMUM_LENGTH || left.size() < FIXED_LENGTH + 2 * areaCodeCount) {
                QUOR_ISDBT_LOG("%s: TEmergencyInformationDescriptorItem::parse: Item length not valid: %u. Aborting!",
                               detail::LOG_TAG, left.size());
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
            }
            item.m_iServiceID = left.u16(0);
            item.m_bStart = left.bit(2, 7);
            item.m_iSignalLevel = left.u8(2) >> 6 & 1U;
            item.m_iAreaCodeLength = left.u8(3);
            item.m_pAreaCodes = detail::copyWords(left.from(FIXED_LENGTH).first(2 * areaCodeCount));
            for (QUOR_U32 i = 0; i < areaCodeCount; ++i) {
                item.m_pAreaCodes[i] >>= 4;
            }
            return detail::Outcome::done(FIXED_LENGTH + 2 * areaCodeCount);
        });
}

} // namespace Quor
