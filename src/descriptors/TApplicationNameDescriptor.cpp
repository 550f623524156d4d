#include "descriptors/TApplicationNameDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

constexpr auto KEY = &TApplicationNameDescriptorItem::getLanguageCode;

} // namespace

TApplicationNameDescriptor::TApplicationNameDescriptor(TApplicationNameDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_pItems(detail::copy(source->m_pItems)) {}

TApplicationNameDescriptor::~TApplicationNameDescriptor() = default;

TApplicationNameDescriptor* TApplicationNameDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode) {
    return detail::parseDescriptor<TApplicationNameDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TApplicationNameDescriptor::decode(const detail::Bytes& descriptor) {
    // descriptor_tag (8) | descriptor_length (8) | items
    const detail::ItemWalk walk = detail::decodeItemsByKey<KEY>(descriptor.from(COMMON_HEADER_LENGTH), m_pItems);
    if (walk.stuck) {
        // A name of 252 bytes counts as none in 8 bits, and could never be passed.
        QUOR_ISDBT_LOG("%s: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!", detail::LOG_TAG);
    }
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TApplicationNameDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(walk.last);
}

TApplicationNameDescriptorItem* TApplicationNameDescriptor::get(std::string languageCode) const {
    return detail::find<KEY>(m_pItems, languageCode);
}

void TApplicationNameDescriptor::add(TApplicationNameDescriptorItem* item) {
    detail::add<KEY>(m_pItems, item);
}

QUOR_BOOL TApplicationNameDescriptor::remove(std::string languageCode) {
    return detail::remove<KEY>(m_pItems, languageCode);
}

std::list<std::string>* TApplicationNameDescriptor::getLanguageCodes() const {
    return detail::keys<KEY>(m_pItems);
}

} // namespace Quor
