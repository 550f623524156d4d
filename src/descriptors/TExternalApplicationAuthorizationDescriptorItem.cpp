#include "descriptors/TExternalApplicationAuthorizationDescriptorItem.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TExternalApplicationAuthorizationDescriptorItem::MINIMUM_DESCRIPTOR_LENGTH;

namespace {

// organisation_id (32) | application_id (16) | application_priority (8)
constexpr QUOR_U32 ITEM_LENGTH = 7;

} // namespace

TExternalApplicationAuthorizationDescriptorItem::TExternalApplicationAuthorizationDescriptorItem() : m_iPriority(0) {}

TExternalApplicationAuthorizationDescriptorItem::TExternalApplicationAuthorizationDescriptorItem(
    TExternalApplicationAuthorizationDescriptorItem* source)
    : m_pAppIdentifier(detail::copy(source->m_pAppIdentifier.get())), m_iPriority(source->m_iPriority) {}

TExternalApplicationAuthorizationDescriptorItem::~TExternalApplicationAuthorizationDescriptorItem() = default;

TExternalApplicationAuthorizationDescriptorItem*
TExternalApplicationAuthorizationDescriptorItem::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                       QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TExternalApplicationAuthorizationDescriptorItem>(
        sectionData, dataLength, parsedLength, errorCode,
        [=](TExternalApplicationAuthorizationDescriptorItem& item, detail::Bytes left) {
            if (left.size() < ITEM_LENGTH) {
                QUOR_ISDBT_LOG(
                    "%s: TExternalApplicationAuthorizationDescriptorItem::parse: Item length not valid: %u. Aborting!",
                    detail::LOG_TAG, left.size());
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
            }
            QUOR_U32 priorityAt = 0;
            item.m_pAppIdentifier.reset(
                TApplicationIdentifier::parse(left.data(), left.size(), 1, &priorityAt, errorCode));
            if (item.m_pAppIdentifier == nullptr) {
                return detail::Outcome::failedBelow();
            }
            item.m_iPriority = left.u8(priorityAt);
            return detail::Outcome::done(ITEM_LENGTH);
        });
}

} // namespace Quor
