#include "descriptors/TCompatibilityDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TCompatibilityDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

namespace {

// compatibilityDescriptorLength (16) | descriptorCount (16) | items
constexpr QUOR_U32 FIXED_LENGTH = 4;

/// What the four bytes before the items count as; callers depend on this value.
constexpr QUOR_U32 COUNTED_LENGTH = 2;

} // namespace

TCompatibilityDescriptor::TCompatibilityDescriptor() = default;

TCompatibilityDescriptor::~TCompatibilityDescriptor() = default;

TCompatibilityDescriptor* TCompatibilityDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                          QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TCompatibilityDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [=](TCompatibilityDescriptor& object, detail::Bytes descriptor) {
            if (descriptor.size() < FIXED_LENGTH) {
                QUOR_ISDBT_LOG("%s: TCompatibilityDescriptor::parse: Item length not valid: %u. Aborting!",
                               detail::LOG_TAG, descriptor.size());
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
            }
            const detail::Bytes items = descriptor.from(FIXED_LENGTH);
            const detail::ItemWalk walk = detail::parseItems(items, descriptor.u16(2), errorCode, object.m_pItems);
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TCompatibilityDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_ITEM);
            }
            return detail::Outcome::done(COUNTED_LENGTH + items.size() - walk.left);
        });
}

QUOR_U32 TCompatibilityDescriptor::getCompatibilityDescriptorItemSize() const {
    return detail::count(m_pItems);
}

TCompatibilityDescriptorItem* TCompatibilityDescriptor::getCompatibilityDescriptorItem(QUOR_U8 index) const {
    return detail::get(m_pItems, index);
}

void TCompatibilityDescriptor::addCompatibilityDescriptorItem(TCompatibilityDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TCompatibilityDescriptor::removeCompatibilityDescriptorItem(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
