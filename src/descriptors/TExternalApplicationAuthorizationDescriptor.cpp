#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

std::string keyOf(const TExternalApplicationAuthorizationDescriptorItem& item) {
    return TApplicationIdentifier::calculateHashID(item.getApplicationIdentifier());
}

} // namespace

TExternalApplicationAuthorizationDescriptor::TExternalApplicationAuthorizationDescriptor(
    TExternalApplicationAuthorizationDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_pItems(detail::copy(source->m_pItems)) {}

TExternalApplicationAuthorizationDescriptor::~TExternalApplicationAuthorizationDescriptor() = default;

TExternalApplicationAuthorizationDescriptor* TExternalApplicationAuthorizationDescriptor::parse(QUOR_U8* data,
                                                                                                QUOR_U32 length,
                                                                                                QUOR_U32* parsedLength,
                                                                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TExternalApplicationAuthorizationDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TExternalApplicationAuthorizationDescriptor::decode(const detail::Bytes& descriptor) {
    // descriptor_tag (8) | descriptor_length (8) | items
    const detail::ItemWalk walk = detail::decodeItemsByKey<keyOf>(descriptor.from(COMMON_HEADER_LENGTH), m_pItems);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TExternalApplicationAuthorizationDescriptor::parse: Invalid item. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(walk.last);
}

void TExternalApplicationAuthorizationDescriptor::add(TExternalApplicationAuthorizationDescriptorItem* item) {
    detail::add<keyOf>(m_pItems, item);
}

TExternalApplicationAuthorizationDescriptorItem*
TExternalApplicationAuthorizationDescriptor::get(std::string hashId) const {
    return detail::find<keyOf>(m_pItems, hashId);
}

QUOR_BOOL TExternalApplicationAuthorizationDescriptor::remove(std::string hashId) {
    return detail::remove<keyOf>(m_pItems, hashId);
}

std::list<std::string>* TExternalApplicationAuthorizationDescriptor::getApplicationIdentifierHashIDs() const {
    return detail::keys<keyOf>(m_pItems);
}

} // namespace Quor
