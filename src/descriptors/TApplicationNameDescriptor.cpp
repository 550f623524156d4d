#include "descriptors/TApplicationNameDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TApplicationNameDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TApplicationNameDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TApplicationNameDescriptor::TApplicationNameDescriptor() : TApplicationNameDescriptor(nullptr, 0) {}

TApplicationNameDescriptor::TApplicationNameDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TApplicationNameDescriptor::TApplicationNameDescriptor(TApplicationNameDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_pItems(detail::copy(source->m_pItems)) {}

TApplicationNameDescriptor::~TApplicationNameDescriptor() = default;

TApplicationNameDescriptor* TApplicationNameDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode) {
    return detail::parseDescriptor<TApplicationNameDescriptor>(
        data, length, parsedLength, errorCode, [=](TApplicationNameDescriptor& object, detail::Bytes descriptor) {
            // descriptor_tag (8) | descriptor_length (8) | items
            const detail::ItemWalk walk = detail::parseItems<TApplicationNameDescriptorItem>(
                descriptor.from(COMMON_HEADER_LENGTH), errorCode,
                [&](std::unique_ptr<TApplicationNameDescriptorItem> item) {
                    const std::string languageCode = item->getLanguageCode();
                    detail::store(object.m_pItems, languageCode, std::move(item));
                });
            if (walk.stuck) {
                // A name of 252 bytes counts as none in 8 bits, and could never be passed.
                QUOR_ISDBT_LOG("%s: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!",
                               detail::LOG_TAG);
            }
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TApplicationNameDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        });
}

QUOR_U32 TApplicationNameDescriptor::size() const {
    return detail::count(m_pItems);
}

TApplicationNameDescriptorItem* TApplicationNameDescriptor::get(std::string languageCode) const {
    return detail::find(m_pItems, languageCode);
}

void TApplicationNameDescriptor::add(TApplicationNameDescriptorItem* item) {
    if (item != nullptr) {
        detail::add(m_pItems, item->getLanguageCode(), item);
    }
}

QUOR_BOOL TApplicationNameDescriptor::remove(std::string languageCode) {
    return detail::remove(m_pItems, languageCode);
}

std::list<std::string>* TApplicationNameDescriptor::getLanguageCodes() const {
    return detail::keys(m_pItems);
}

} // namespace Quor
