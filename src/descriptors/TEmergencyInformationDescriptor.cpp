#include "descriptors/TEmergencyInformationDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | items ...

TEmergencyInformationDescriptor::~TEmergencyInformationDescriptor() = default;

TEmergencyInformationDescriptor* TEmergencyInformationDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                        QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TEmergencyInformationDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TEmergencyInformationDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::ItemWalk walk = detail::decodeItems(descriptor.from(COMMON_HEADER_LENGTH), m_pItems);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TEmergencyInformationDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(walk.last);
}

void TEmergencyInformationDescriptor::add(TEmergencyInformationDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TEmergencyInformationDescriptor::remove(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
