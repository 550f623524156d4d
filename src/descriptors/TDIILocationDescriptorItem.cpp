#include "descriptors/TDIILocationDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// reserved (1) DII_identification (15) | association_tag (16)
constexpr QUOR_U32 ITEM_LENGTH = 4;
constexpr unsigned DII_IDENTIFICATION_MASK = 0x7FFF;

} // namespace

TDIILocationDescriptorItem::TDIILocationDescriptorItem(TDIILocationDescriptorItem* source)
    : m_iDIIIdentification(source->m_iDIIIdentification), m_iAssociationTag(source->m_iAssociationTag) {}

TDIILocationDescriptorItem::~TDIILocationDescriptorItem() = default;

TDIILocationDescriptorItem* TDIILocationDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode) {
    return detail::parseItem<TDIILocationDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TDIILocationDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < ITEM_LENGTH) {
        QUOR_ISDBT_LOG("%s: TDIILocationDescriptorItem::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                       left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iDIIIdentification = left.u16(0) & DII_IDENTIFICATION_MASK;
    m_iAssociationTag = left.u16(2);
    return detail::Outcome::done(ITEM_LENGTH);
}

} // namespace Quor
