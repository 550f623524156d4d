#include "descriptors/TDIILocationDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// reserved (1) DII_identification (15) | association_tag (16)
constexpr QUOR_U32 ITEM_LENGTH = 4;
constexpr unsigned DII_IDENTIFICATION_MASK = 0x7FFF;

} // namespace

TDIILocationDescriptorItem::TDIILocationDescriptorItem() : m_iDIIIdentification(0), m_iAssociationTag(0) {}

TDIILocationDescriptorItem::TDIILocationDescriptorItem(TDIILocationDescriptorItem* source)
    : m_iDIIIdentification(source->m_iDIIIdentification), m_iAssociationTag(source->m_iAssociationTag) {}

TDIILocationDescriptorItem::~TDIILocationDescriptorItem() = default;

TDIILocationDescriptorItem* TDIILocationDescriptorItem::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                              QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TDIILocationDescriptorItem>(
        sectionData, dataLength, parsedLength, errorCode, [](TDIILocationDescriptorItem& item, detail::Bytes left) {
            if (left.size() < ITEM_LENGTH) {
                QUOR_ISDBT_LOG("%s: TDIILocationDescriptorItem::parse: Item length not valid: %u. Aborting!",
                               detail::LOG_TAG, left.size());
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
            }
            item.m_iDIIIdentification = left.u16(0) & DII_IDENTIFICATION_MASK;
            item.m_iAssociationTag = left.u16(2);
            return detail::Outcome::done(ITEM_LENGTH);
        });
}

} // namespace Quor
