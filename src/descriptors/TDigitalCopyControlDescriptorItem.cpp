#include "descriptors/TDigitalCopyControlDescriptorItem.h"

#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// digital_recording_control_data (2) maximum_bitrate_flag (1) reserved_future_use (1) copy_control_type (2)
// APS_control_data (2) |
// if maximum_bitrate_flag: maximum_bit_rate (8)
constexpr QUOR_U32 FLAGS_LENGTH = 1;
constexpr QUOR_U32 MAXIMUM_BIT_RATE_LENGTH = 1;

} // namespace

TDigitalCopyControlDescriptorItem::~TDigitalCopyControlDescriptorItem() = default;

TDigitalCopyControlDescriptorItem*
TDigitalCopyControlDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TDigitalCopyControlDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TDigitalCopyControlDescriptorItem::decode(const detail::Bytes& left) {
    if (left.empty()) {
        QUOR_ISDBT_LOG("%s: TDigitalCopyControlDescriptorItem::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iDigitalRecCtrlData = left.u8(0) >> 6;
    m_bMaximumBitrate = left.bit(0, 5);
    m_iCopyControlType = left.u8(0) >> 2 & 3U;
    if (m_iCopyControlType != TDigitalCopyControlDescriptor::COPY_CONTROL_FREE) {
        m_iAPSControlData = left.u8(0) & 3U;
    }
    if (!m_bMaximumBitrate) {
        return detail::Outcome::done(FLAGS_LENGTH);
    }
    if (left.size() == FLAGS_LENGTH) {
        QUOR_ISDBT_LOG(
            "%s: TDigitalCopyControlDescriptorItem::parse: Longer data length is required: %u < %u. Aborting!",
            detail::LOG_TAG, left.size() - FLAGS_LENGTH, MAXIMUM_BIT_RATE_LENGTH);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    m_iMaximumBitrate = left.u8(1);
    return detail::Outcome::done(FLAGS_LENGTH + MAXIMUM_BIT_RATE_LENGTH);
}

} // namespace Quor
