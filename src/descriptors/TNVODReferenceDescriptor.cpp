#include "descriptors/TNVODReferenceDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | items ...

constexpr U8 TNVODReferenceDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TNVODReferenceDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TNVODReferenceDescriptor::TNVODReferenceDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TNVODReferenceDescriptor::~TNVODReferenceDescriptor() = default;

TNVODReferenceDescriptor* TNVODReferenceDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                          QUOR_U16* err) {
    return detail::parseDescriptor<TNVODReferenceDescriptor>(
        data, length, parsedLength, err, [err](TNVODReferenceDescriptor& object, detail::Bytes descriptor) {
            const detail::ItemWalk walk = detail::parseItems<TNVODReferenceDescriptorItem>(
                descriptor.from(COMMON_HEADER_LENGTH), err, detail::appendTo(object.m_pItems));
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TNVODReferenceDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        });
}

QUOR_U32 TNVODReferenceDescriptor::size() const {
    return detail::count(m_pItems);
}

TNVODReferenceDescriptorItem* TNVODReferenceDescriptor::get(QUOR_U8 index) const {
    return detail::get(m_pItems, index);
}

void TNVODReferenceDescriptor::add(TNVODReferenceDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TNVODReferenceDescriptor::remove(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
