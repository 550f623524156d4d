#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TExternalApplicationAuthorizationDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TExternalApplicationAuthorizationDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

namespace {

std::string keyOf(const TExternalApplicationAuthorizationDescriptorItem& item) {
    return TApplicationIdentifier::calculateHashID(item.getApplicationIdentifier());
}

} // namespace

TExternalApplicationAuthorizationDescriptor::TExternalApplicationAuthorizationDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TExternalApplicationAuthorizationDescriptor::TExternalApplicationAuthorizationDescriptor(
    TExternalApplicationAuthorizationDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_pItems(detail::copy(source->m_pItems)) {}

TExternalApplicationAuthorizationDescriptor::~TExternalApplicationAuthorizationDescriptor() = default;

TExternalApplicationAuthorizationDescriptor* TExternalApplicationAuthorizationDescriptor::parse(QUOR_U8* sectionData,
                                                                                                QUOR_U32 dataLength,
                                                                                                QUOR_U32* parsedLength,
                                                                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TExternalApplicationAuthorizationDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [=](TExternalApplicationAuthorizationDescriptor& object, detail::Bytes descriptor) {
            // descriptor_tag (8) | descriptor_length (8) | items
            const detail::ItemWalk walk = detail::parseItems<TExternalApplicationAuthorizationDescriptorItem>(
                descriptor.from(COMMON_HEADER_LENGTH), errorCode,
                [&](std::unique_ptr<TExternalApplicationAuthorizationDescriptorItem> item) {
                    const std::string key = keyOf(*item);
                    detail::store(object.m_pItems, key, std::move(item));
                });
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TExternalApplicationAuthorizationDescriptor::parse: Invalid item. Aborting!",
                               detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        });
}

void TExternalApplicationAuthorizationDescriptor::add(TExternalApplicationAuthorizationDescriptorItem* item) {
    if (item != nullptr) {
        detail::add(m_pItems, keyOf(*item), item);
    }
}

TExternalApplicationAuthorizationDescriptorItem*
TExternalApplicationAuthorizationDescriptor::get(std::string hashId) const {
    return detail::find(m_pItems, hashId);
}

QUOR_BOOL TExternalApplicationAuthorizationDescriptor::remove(std::string hashId) {
    return detail::remove(m_pItems, hashId);
}

QUOR_U32 TExternalApplicationAuthorizationDescriptor::size() const {
    return detail::count(m_pItems);
}

std::list<std::string>* TExternalApplicationAuthorizationDescriptor::getApplicationIdentifierHashIDs() const {
    return detail::keys(m_pItems);
}

} // namespace Quor
