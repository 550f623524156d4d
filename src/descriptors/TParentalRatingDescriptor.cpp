#include "descriptors/TParentalRatingDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | items ...

constexpr U8 TParentalRatingDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TParentalRatingDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TParentalRatingDescriptor::TParentalRatingDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TParentalRatingDescriptor::~TParentalRatingDescriptor() = default;

TParentalRatingDescriptor* TParentalRatingDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                            QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TParentalRatingDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [errorCode](TParentalRatingDescriptor& object, detail::Bytes descriptor) {
            const detail::ItemWalk walk = detail::parseItems<TParentalRatingDescriptorItem>(
                descriptor.from(COMMON_HEADER_LENGTH), errorCode, detail::appendTo(object.m_pItems));
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TParentalRatingDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(walk.last);
        });
}

QUOR_U32 TParentalRatingDescriptor::size() const {
    return detail::count(m_pItems);
}

TParentalRatingDescriptorItem* TParentalRatingDescriptor::get(QUOR_U8 index) const {
    return detail::get(m_pItems, index);
}

void TParentalRatingDescriptor::add(TParentalRatingDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TParentalRatingDescriptor::remove(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
