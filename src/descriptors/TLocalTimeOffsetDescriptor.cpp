#include "descriptors/TLocalTimeOffsetDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TLocalTimeOffsetDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TLocalTimeOffsetDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TLocalTimeOffsetDescriptor::TLocalTimeOffsetDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TLocalTimeOffsetDescriptor::~TLocalTimeOffsetDescriptor() = default;

TLocalTimeOffsetDescriptor* TLocalTimeOffsetDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                              QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TLocalTimeOffsetDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [=](TLocalTimeOffsetDescriptor& object, detail::Bytes descriptor) {
            const detail::ItemWalk walk = detail::parseItems<TLocalTimeOffsetDescriptorItem>(
                descriptor.from(COMMON_HEADER_LENGTH), errorCode,
                [&](std::unique_ptr<TLocalTimeOffsetDescriptorItem> item) {
                    const std::string countryCode = item->getCountryCode();
                    detail::store(object.m_pItems, countryCode, std::move(item));
                });
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TLocalTimeOffsetDescriptor::parse: Descriptor length not valid: %u. Aborting!",
                               detail::LOG_TAG, walk.left);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        },
        COMMON_HEADER_LENGTH);
}

TLocalTimeOffsetDescriptorItem* TLocalTimeOffsetDescriptor::get(std::string countryCode) const {
    return detail::find(m_pItems, countryCode);
}

QUOR_BOOL TLocalTimeOffsetDescriptor::remove(std::string key) {
    return detail::remove(m_pItems, key);
}

void TLocalTimeOffsetDescriptor::add(TLocalTimeOffsetDescriptorItem* item) {
    if (item != nullptr) {
        detail::add(m_pItems, std::string(item->getCountryCode()), item);
    }
}

QUOR_U32 TLocalTimeOffsetDescriptor::size() const {
    return detail::count(m_pItems);
}

std::list<std::string>* TLocalTimeOffsetDescriptor::getCountryCodes() const {
    return detail::keys(m_pItems);
}

} // namespace Quor
