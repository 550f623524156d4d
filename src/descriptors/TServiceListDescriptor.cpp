#include "descriptors/TServiceListDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | items ...

constexpr U8 TServiceListDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TServiceListDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TServiceListDescriptor::TServiceListDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TServiceListDescriptor::~TServiceListDescriptor() = default;

TServiceListDescriptor* TServiceListDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* err) {
    return detail::parseDescriptor<TServiceListDescriptor>(
        data, length, parsedLength, err, [err](TServiceListDescriptor& object, detail::Bytes descriptor) {
            const detail::ItemWalk walk = detail::parseItems<TServiceListDescriptorItem>(
                descriptor.from(COMMON_HEADER_LENGTH), err, [&](std::unique_ptr<TServiceListDescriptorItem> item) {
                    const QUOR_U8 serviceId = item->getServiceID();
                    detail::store(object.m_pItems, serviceId, std::move(item));
                });
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TServiceListDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        });
}

TServiceListDescriptorItem* TServiceListDescriptor::get(QUOR_U8 serviceId) const {
    return detail::find(m_pItems, serviceId);
}

bool TServiceListDescriptor::remove(QUOR_U8 serviceId) {
    return detail::remove(m_pItems, serviceId) != 0;
}

void TServiceListDescriptor::add(TServiceListDescriptorItem* item) {
    if (item != nullptr) {
        detail::add(m_pItems, item->getServiceID(), item);
    }
}

QUOR_U32 TServiceListDescriptor::size() const {
    return detail::count(m_pItems);
}

std::list<QUOR_U8>* TServiceListDescriptor::getServiceIDs() const {
    return detail::keys(m_pItems);
}

} // namespace Quor
