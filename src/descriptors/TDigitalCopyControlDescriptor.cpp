#include "descriptors/TDigitalCopyControlDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) |
// digital_recording_control_data (2) maximum_bitrate_flag (1) component_control_flag (1) copy_control_type (2)
// APS_control_data (2) |
// if maximum_bitrate_flag: maximum_bit_rate (8) |
// if component_control_flag: component_control_length (8) | items ...

detail::Outcome tooShort(QUOR_U32 available) {
    // Always one byte needed, also when all of the items are missing; readers of the log depend on it.
    constexpr QUOR_U32 NEEDED = 1;
    QUOR_ISDBT_LOG("%s: TDigitalCopyControlDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                   detail::LOG_TAG, available, NEEDED);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
}

/// Takes items off the front of @p left. Their length is counted down in 8 bits that wrap: an item that overruns it is
/// followed by more while there are bytes.
detail::ItemWalk takeItems(detail::ItemList<TDigitalCopyControlDescriptorItem>& items, detail::Bytes left,
                           QUOR_U8 length, QUOR_U16* errorCode) {
    detail::ItemWalk walk(left);
    const auto append = detail::appendTo(items);
    while (walk.complete && length != 0) {
        detail::parseNextItem<TDigitalCopyControlDescriptorItem>(left, walk, errorCode, append);
        length = static_cast<QUOR_U8>(length - walk.last);
    }
    return walk;
}

} // namespace

constexpr U8 TDigitalCopyControlDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TDigitalCopyControlDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TDigitalCopyControlDescriptor::COPY_CONTROL_FREE;
constexpr QUOR_U8 TDigitalCopyControlDescriptor::COPY_CONTROL_SD_FREE_ORIGINAL_ONCE;
constexpr QUOR_U8 TDigitalCopyControlDescriptor::COPY_CONTROL_SD_FREE;

TDigitalCopyControlDescriptor::TDigitalCopyControlDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iDigitalRecCtrlData(0), m_bMaximumBitrate(false),
      m_bComponentControl(false), m_iCopyControlType(0), m_iAPSControlData(0), m_iMaximumBitrate(0) {}

TDigitalCopyControlDescriptor::~TDigitalCopyControlDescriptor() = default;

TDigitalCopyControlDescriptor* TDigitalCopyControlDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TDigitalCopyControlDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [errorCode](TDigitalCopyControlDescriptor& object, detail::Bytes descriptor) {
            object.m_iDigitalRecCtrlData = descriptor.u8(2) >> 6;
            object.m_bMaximumBitrate = descriptor.bit(2, 5);
            object.m_bComponentControl = descriptor.bit(2, 4);
            object.m_iCopyControlType = descriptor.u8(2) >> 2 & 3U;
            if (object.m_iCopyControlType != COPY_CONTROL_FREE) {
                object.m_iAPSControlData = descriptor.u8(2) & 3U;
            }
            detail::Bytes left = descriptor.from(3);
            if (object.m_bMaximumBitrate) {
                if (left.empty()) {
                    return tooShort(left.size());
                }
                object.m_iMaximumBitrate = left.u8(0);
                left = left.from(1);
            }
            if (object.m_bComponentControl) {
                if (left.empty()) {
                    return tooShort(left.size());
                }
                const QUOR_U8 componentControlLength = left.u8(0);
                left = left.from(1);
                if (left.size() < componentControlLength) {
                    return tooShort(left.size());
                }
                const detail::ItemWalk walk = takeItems(object.m_pItems, left, componentControlLength, errorCode);
                if (!walk.complete) {
                    QUOR_ISDBT_LOG("%s: TDigitalCopyControlDescriptor::parse: Invalid item. Aborting!",
                                   detail::LOG_TAG);
                    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
                }
                left = left.from(left.size() - walk.left);
            }
            return detail::Outcome::done(descriptor.size() - left.size() - COMMON_HEADER_LENGTH);
        });
}

QUOR_U32 TDigitalCopyControlDescriptor::size() const {
    return detail::count(m_pItems);
}

TDigitalCopyControlDescriptorItem* TDigitalCopyControlDescriptor::get(QUOR_U32 index) const {
    return detail::get(m_pItems, index);
}

void TDigitalCopyControlDescriptor::add(TDigitalCopyControlDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TDigitalCopyControlDescriptor::remove(QUOR_U32 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
