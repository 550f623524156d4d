#include "descriptors/TPrefetchDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// label_length (8) | label | prefetch_priority (8)
constexpr QUOR_U32 LABEL_LENGTH_LENGTH = 1;
constexpr QUOR_U32 PRIORITY_LENGTH = 1;

detail::Outcome lengthNotValid(QUOR_U32 length) {
    QUOR_ISDBT_LOG("%s: TPrefetchDescriptorItem::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, length);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

} // namespace

TPrefetchDescriptorItem::TPrefetchDescriptorItem(TPrefetchDescriptorItem* source)
    : m_sLabel(source->m_sLabel), m_iPriority(source->m_iPriority) {}

TPrefetchDescriptorItem::~TPrefetchDescriptorItem() = default;

TPrefetchDescriptorItem* TPrefetchDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                        QUOR_U16* errorCode) {
    return detail::parseItem<TPrefetchDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TPrefetchDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < LABEL_LENGTH_LENGTH + PRIORITY_LENGTH) {
        return lengthNotValid(left.size());
    }
    const QUOR_S32 taken = detail::readPrefixedText(left, m_sLabel);
    if (taken < 0) {
        QUOR_ISDBT_LOG("%s: TPrefetchDescriptorItem:: parse: ERROR: parsing Label. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    const detail::Bytes priority = left.from(LABEL_LENGTH_LENGTH + left.u8(0));
    if (priority.empty()) {
        return lengthNotValid(0);
    }
    m_iPriority = priority.u8(0);
    return detail::Outcome::done(static_cast<QUOR_U32>(taken) + PRIORITY_LENGTH);
}

} // namespace Quor
