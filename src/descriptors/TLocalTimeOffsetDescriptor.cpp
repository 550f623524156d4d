#include "descriptors/TLocalTimeOffsetDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

std::string keyOf(const TLocalTimeOffsetDescriptorItem& item) {
    return item.getCountryCode();
}

} // namespace

TLocalTimeOffsetDescriptor::~TLocalTimeOffsetDescriptor() = default;

TLocalTimeOffsetDescriptor* TLocalTimeOffsetDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode) {
    return detail::parseDescriptor<TLocalTimeOffsetDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TLocalTimeOffsetDescriptor::decode(const detail::Bytes& descriptor) {
    // Quirk: the object records two bytes less than it points at.
    detail::Access::length(*this) -= COMMON_HEADER_LENGTH;
    const detail::ItemWalk walk = detail::decodeItemsByKey<keyOf>(descriptor.from(COMMON_HEADER_LENGTH), m_pItems);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TLocalTimeOffsetDescriptor::parse: Descriptor length not valid: %u. Aborting!",
                       detail::LOG_TAG, walk.left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(walk.last);
}

TLocalTimeOffsetDescriptorItem* TLocalTimeOffsetDescriptor::get(std::string countryCode) const {
    return detail::find<keyOf>(m_pItems, countryCode);
}

QUOR_BOOL TLocalTimeOffsetDescriptor::remove(std::string key) {
    return detail::remove<keyOf>(m_pItems, key);
}

void TLocalTimeOffsetDescriptor::add(TLocalTimeOffsetDescriptorItem* item) {
    detail::add<keyOf>(m_pItems, item);
}

std::list<std::string>* TLocalTimeOffsetDescriptor::getCountryCodes() const {
    return detail::keys<keyOf>(m_pItems);
}

} // namespace Quor
