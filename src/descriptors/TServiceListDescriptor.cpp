#include "descriptors/TServiceListDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

constexpr auto KEY = &TServiceListDescriptorItem::getServiceID;

} // namespace

// descriptor_tag (8) | descriptor_length (8) | items ...

TServiceListDescriptor::~TServiceListDescriptor() = default;

TServiceListDescriptor* TServiceListDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TServiceListDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TServiceListDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::ItemWalk walk = detail::decodeItemsByKey<KEY>(descriptor.from(COMMON_HEADER_LENGTH), m_pItems);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TServiceListDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(walk.last);
}

TServiceListDescriptorItem* TServiceListDescriptor::get(QUOR_U8 serviceId) const {
    return detail::find<KEY>(m_pItems, serviceId);
}

bool TServiceListDescriptor::remove(QUOR_U8 serviceId) {
    return detail::remove<KEY>(m_pItems, serviceId) != 0;
}

void TServiceListDescriptor::add(TServiceListDescriptorItem* item) {
    detail::add<KEY>(m_pItems, item);
}

std::list<QUOR_U8>* TServiceListDescriptor::getServiceIDs() const {
    return detail::keys<KEY>(m_pItems);
}

} // namespace Quor
