#include "descriptors/TServiceListDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// service_id (8) | service_type (8)
constexpr QUOR_U32 ITEM_LENGTH = 2;

} // namespace

TServiceListDescriptorItem::~TServiceListDescriptorItem() = default;

TServiceListDescriptorItem* TServiceListDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode) {
    return detail::parseItem<TServiceListDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TServiceListDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < ITEM_LENGTH) {
        QUOR_ISDBT_LOG("%s: TServiceListDescriptorItem::parse: Descriptor length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iServiceID = left.u8(0);
    m_iServiceType = left.u8(1);
    return detail::Outcome::done(ITEM_LENGTH);
}

} // namespace Quor
