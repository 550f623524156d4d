#include "descriptors/TDIILocationDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TDIILocationDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TDIILocationDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

namespace {

// descriptor_tag (8) | descriptor_length (8) | transport_protocol_label (8) | items
constexpr QUOR_U32 LABEL_AT = 2;
constexpr QUOR_U32 ITEMS_AT = 3;

} // namespace

TDIILocationDescriptor::TDIILocationDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iTransportProtocolLabel(0) {}

TDIILocationDescriptor::TDIILocationDescriptor(TDIILocationDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_iTransportProtocolLabel(source->m_iTransportProtocolLabel),
      m_pItems(detail::copy(source->m_pItems)) {}

TDIILocationDescriptor::~TDIILocationDescriptor() = default;

TDIILocationDescriptor* TDIILocationDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TDIILocationDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [=](TDIILocationDescriptor& object, detail::Bytes descriptor) {
            object.m_iTransportProtocolLabel = descriptor.u8(LABEL_AT);
            const detail::ItemWalk walk = detail::parseItems<TDIILocationDescriptorItem>(
                descriptor.from(ITEMS_AT), errorCode, detail::appendTo(object.m_pItems));
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TDIILocationDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        });
}

void TDIILocationDescriptor::add(TDIILocationDescriptorItem* item) {
    detail::add(m_pItems, item);
}

TDIILocationDescriptorItem* TDIILocationDescriptor::get(unsigned int position) const {
    return detail::get(m_pItems, position);
}

QUOR_BOOL TDIILocationDescriptor::remove(unsigned int position) {
    return detail::remove(m_pItems, position);
}

QUOR_U32 TDIILocationDescriptor::size() const {
    return detail::count(m_pItems);
}

} // namespace Quor
