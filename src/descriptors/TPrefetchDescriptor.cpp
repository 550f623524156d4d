#include "descriptors/TPrefetchDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TPrefetchDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TPrefetchDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

namespace {

// descriptor_tag (8) | descriptor_length (8) | transport_protocol_label (8) | items
constexpr QUOR_U32 LABEL_AT = 2;
constexpr QUOR_U32 ITEMS_AT = 3;

} // namespace

TPrefetchDescriptor::TPrefetchDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iTransportProtocolLabel(0) {}

TPrefetchDescriptor::TPrefetchDescriptor(TPrefetchDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_iTransportProtocolLabel(source->m_iTransportProtocolLabel),
      m_pItems(detail::copy(source->m_pItems)) {}

TPrefetchDescriptor::~TPrefetchDescriptor() = default;

TPrefetchDescriptor* TPrefetchDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TPrefetchDescriptor>(
        sectionData, dataLength, parsedLength, errorCode, [=](TPrefetchDescriptor& object, detail::Bytes descriptor) {
            object.m_iTransportProtocolLabel = descriptor.u8(LABEL_AT);
            const detail::ItemWalk walk = detail::parseItems<TPrefetchDescriptorItem>(
                descriptor.from(ITEMS_AT), errorCode, detail::appendTo(object.m_pItems));
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TPrefetchDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        });
}

void TPrefetchDescriptor::add(TPrefetchDescriptorItem* item) {
    detail::add(m_pItems, item);
}

TPrefetchDescriptorItem* TPrefetchDescriptor::get(unsigned int position) const {
    return detail::get(m_pItems, position);
}

QUOR_BOOL TPrefetchDescriptor::remove(unsigned int position) {
    return detail::remove(m_pItems, position);
}

QUOR_U32 TPrefetchDescriptor::size() const {
    return detail::count(m_pItems);
}

} // namespace Quor
