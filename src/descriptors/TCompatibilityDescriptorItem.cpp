#include "descriptors/TCompatibilityDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// descriptorType (8) | descriptorLength (8) | specifierType (8) | specifierData (24) | model (16) | version (16) |
// subDescriptorCount (8) | subdescriptors
constexpr QUOR_U32 FIXED_LENGTH = 11;

/// Quirk: the two bytes of a model or version are shifted into each other instead of joined.
QUOR_U16 firstShiftedBySecond(detail::Bytes field) {
    return static_cast<QUOR_U16>(QUOR_U32{field.u8(0)} << (field.u8(1) & 31U));
}

} // namespace

TCompatibilityDescriptorItem::~TCompatibilityDescriptorItem() = default;

TCompatibilityDescriptorItem* TCompatibilityDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                  QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TCompatibilityDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TCompatibilityDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TCompatibilityDescriptorItem::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                       left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iDescriptorType = left.u8(0);
    m_iSpecifierType = left.u8(2);
    m_iSpecifierData = left.u24(3);
    m_iModel = firstShiftedBySecond(left.from(6));
    m_iVersion = firstShiftedBySecond(left.from(8));
    const detail::ItemWalk walk = detail::decodeItems(left.from(FIXED_LENGTH), m_pItems, left.u8(10));
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TCompatibilityDescriptorItem::parse: Invalid sub item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_ITEM);
    }
    return detail::Outcome::done(left.size() - walk.left.size());
}

void TCompatibilityDescriptorItem::addCompatibilityDescriptorSubItem(TCompatibilityDescriptorSubItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TCompatibilityDescriptorItem::removeCompatibilityDescriptorSubItem(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
