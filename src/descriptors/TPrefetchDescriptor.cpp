#include "descriptors/TPrefetchDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | transport_protocol_label (8) | items
constexpr QUOR_U32 LABEL_AT = 2;
constexpr QUOR_U32 ITEMS_AT = 3;

} // namespace

TPrefetchDescriptor::TPrefetchDescriptor(TPrefetchDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_iTransportProtocolLabel(source->m_iTransportProtocolLabel),
      m_pItems(detail::copy(source->m_pItems)) {}

TPrefetchDescriptor::~TPrefetchDescriptor() = default;

TPrefetchDescriptor* TPrefetchDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TPrefetchDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TPrefetchDescriptor::decode(const detail::Bytes& descriptor) {
    m_iTransportProtocolLabel = descriptor.u8(LABEL_AT);
    const detail::ItemWalk walk = detail::decodeItems(descriptor.from(ITEMS_AT), m_pItems);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TPrefetchDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(walk.last);
}

void TPrefetchDescriptor::add(TPrefetchDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TPrefetchDescriptor::remove(unsigned int position) {
    return detail::remove(m_pItems, position);
}

} // namespace Quor
