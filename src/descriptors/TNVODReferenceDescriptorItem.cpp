#include "descriptors/TNVODReferenceDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// transport_stream_id (16) | original_network_id (16) | service_id (16)
constexpr QUOR_U32 ITEM_LENGTH = 6;

} // namespace

TNVODReferenceDescriptorItem::~TNVODReferenceDescriptorItem() = default;

TNVODReferenceDescriptorItem* TNVODReferenceDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                  QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TNVODReferenceDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TNVODReferenceDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < ITEM_LENGTH) {
        QUOR_ISDBT_LOG("%s: TNVODReferenceDescriptorItem::parse: Descriptor length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iTransportStreamID = left.u16(0);
    m_iOriginalNetworkID = left.u16(2);
    m_iServiceID = left.u16(4);
    return detail::Outcome::done(ITEM_LENGTH);
}

} // namespace Quor
