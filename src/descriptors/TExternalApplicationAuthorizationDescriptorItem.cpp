#include "descriptors/TExternalApplicationAuthorizationDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// organisation_id (32) | application_id (16) | application_priority (8)
constexpr QUOR_U32 ITEM_LENGTH = 7;

} // namespace

TExternalApplicationAuthorizationDescriptorItem::TExternalApplicationAuthorizationDescriptorItem(
    TExternalApplicationAuthorizationDescriptorItem* source)
    : m_pAppIdentifier(detail::copy(source->m_pAppIdentifier.get())), m_iPriority(source->m_iPriority) {}

TExternalApplicationAuthorizationDescriptorItem::~TExternalApplicationAuthorizationDescriptorItem() = default;

TExternalApplicationAuthorizationDescriptorItem*
TExternalApplicationAuthorizationDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                       QUOR_U16* errorCode) {
    return detail::parseItem<TExternalApplicationAuthorizationDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TExternalApplicationAuthorizationDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < ITEM_LENGTH) {
        QUOR_ISDBT_LOG(
            "%s: TExternalApplicationAuthorizationDescriptorItem::parse: Item length not valid: %u. Aborting!",
            detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    detail::ItemWalk walk(left);
    m_pAppIdentifier = walk.next<TApplicationIdentifier>();
    if (m_pAppIdentifier == nullptr) {
        return walk.outcome;
    }
    m_iPriority = walk.left.u8(0);
    return detail::Outcome::done(ITEM_LENGTH);
}

} // namespace Quor
