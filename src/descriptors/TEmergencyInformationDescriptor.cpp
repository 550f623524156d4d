#include "descriptors/TEmergencyInformationDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | items ...

constexpr U8 TEmergencyInformationDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TEmergencyInformationDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TEmergencyInformationDescriptor::TEmergencyInformationDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TEmergencyInformationDescriptor::~TEmergencyInformationDescriptor() = default;

TEmergencyInformationDescriptor* TEmergencyInformationDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                        QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseDescriptor<TEmergencyInformationDescriptor>(
        data, length, parsedLength, err, [err](TEmergencyInformationDescriptor& object, detail::Bytes descriptor) {
            const detail::ItemWalk walk = detail::parseItems<TEmergencyInformationDescriptorItem>(
                descriptor.from(COMMON_HEADER_LENGTH), err, detail::appendTo(object.m_pItems));
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TEmergencyInformationDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        });
}

QUOR_U32 TEmergencyInformationDescriptor::size() const {
    return detail::count(m_pItems);
}

TEmergencyInformationDescriptorItem* TEmergencyInformationDescriptor::get(QUOR_U8 index) const {
    return detail::get(m_pItems, index);
}

void TEmergencyInformationDescriptor::add(TEmergencyInformationDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TEmergencyInformationDescriptor::remove(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
