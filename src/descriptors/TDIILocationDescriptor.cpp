#include "descriptors/TDIILocationDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | transport_protocol_label (8) | items
constexpr QUOR_U32 LABEL_AT = 2;
constexpr QUOR_U32 ITEMS_AT = 3;

} // namespace

TDIILocationDescriptor::TDIILocationDescriptor(TDIILocationDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_iTransportProtocolLabel(source->m_iTransportProtocolLabel),
      m_pItems(detail::copy(source->m_pItems)) {}

TDIILocationDescriptor::~TDIILocationDescriptor() = default;

TDIILocationDescriptor* TDIILocationDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TDIILocationDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TDIILocationDescriptor::decode(const detail::Bytes& descriptor) {
    m_iTransportProtocolLabel = descriptor.u8(LABEL_AT);
    const detail::ItemWalk walk = detail::decodeItems(descriptor.from(ITEMS_AT), m_pItems);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TDIILocationDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(walk.last);
}

void TDIILocationDescriptor::add(TDIILocationDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TDIILocationDescriptor::remove(unsigned int position) {
    return detail::remove(m_pItems, position);
}

} // namespace Quor
