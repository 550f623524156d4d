#include "descriptors/TDigitalCopyControlDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) |
// digital_recording_control_data (2) maximum_bitrate_flag (1) component_control_flag (1) copy_control_type (2)
// APS_control_data (2) |
// if maximum_bitrate_flag: maximum_bit_rate (8) |
// if component_control_flag: component_control_length (8) | items ...

detail::Outcome tooShort(QUOR_U32 available) {
    // Quirk: the line says that one byte is needed, also when all of the items are missing.
    constexpr QUOR_U32 NEEDED = 1;
    QUOR_ISDBT_LOG("%s: TDigitalCopyControlDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                   detail::LOG_TAG, available, NEEDED);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
}

/// Takes items off the front of @p left. Their length is counted down in 8 bits that wrap: an item that overruns it is
/// followed by more while there are bytes.
bool takeItems(detail::Items<TDigitalCopyControlDescriptorItem>& items, detail::Bytes& left, QUOR_U8 length) {
    detail::ItemWalk walk(left);
    while (length != 0 && walk.take(items)) {
        length = static_cast<QUOR_U8>(length - walk.last);
    }
    left = walk.left;
    return walk.complete;
}

} // namespace

TDigitalCopyControlDescriptor::~TDigitalCopyControlDescriptor() = default;

TDigitalCopyControlDescriptor* TDigitalCopyControlDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TDigitalCopyControlDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TDigitalCopyControlDescriptor::decode(const detail::Bytes& descriptor) {
    m_iDigitalRecCtrlData = descriptor.u8(2) >> 6;
    m_bMaximumBitrate = descriptor.bit(2, 5);
    m_bComponentControl = descriptor.bit(2, 4);
    m_iCopyControlType = descriptor.u8(2) >> 2 & 3U;
    if (m_iCopyControlType != COPY_CONTROL_FREE) {
        m_iAPSControlData = descriptor.u8(2) & 3U;
    }
    detail::Bytes left = descriptor.from(3);
    if (m_bMaximumBitrate) {
        if (left.empty()) {
            return tooShort(left.size());
        }
        m_iMaximumBitrate = left.u8(0);
        left = left.from(1);
    }
    if (m_bComponentControl) {
        if (left.empty()) {
            return tooShort(left.size());
        }
        const QUOR_U8 componentControlLength = left.u8(0);
        left = left.from(1);
        if (left.size() < componentControlLength) {
            return tooShort(left.size());
        }
        if (!takeItems(m_pItems, left, componentControlLength)) {
            QUOR_ISDBT_LOG("%s: TDigitalCopyControlDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
        }
    }
    return detail::Outcome::done(descriptor.size() - left.size() - COMMON_HEADER_LENGTH);
}

void TDigitalCopyControlDescriptor::add(TDigitalCopyControlDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TDigitalCopyControlDescriptor::remove(QUOR_U32 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
