#include "descriptors/TCompatibilityDescriptor.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// compatibilityDescriptorLength (16) | descriptorCount (16) | items
constexpr QUOR_U32 FIXED_LENGTH = 4;

/// Quirk: the four bytes before the items count as two.
constexpr QUOR_U32 COUNTED_LENGTH = 2;

} // namespace

TCompatibilityDescriptor::~TCompatibilityDescriptor() = default;

TCompatibilityDescriptor* TCompatibilityDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                          QUOR_U16* errorCode) {
    return detail::parseItem<TCompatibilityDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TCompatibilityDescriptor::decode(const detail::Bytes& descriptor) {
    if (descriptor.size() < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TCompatibilityDescriptor::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                       descriptor.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    const detail::Bytes items = descriptor.from(FIXED_LENGTH);
    const detail::ItemWalk walk = detail::decodeItems(items, m_pItems, descriptor.u16(2));
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TCompatibilityDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_ITEM);
    }
    return detail::Outcome::done(COUNTED_LENGTH + items.size() - walk.left.size());
}

void TCompatibilityDescriptor::addCompatibilityDescriptorItem(TCompatibilityDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TCompatibilityDescriptor::removeCompatibilityDescriptorItem(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
