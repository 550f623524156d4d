#include "descriptors/TParentalRatingDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | items ...

TParentalRatingDescriptor::~TParentalRatingDescriptor() = default;

TParentalRatingDescriptor* TParentalRatingDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                            QUOR_U16* errorCode) {
    return detail::parseDescriptor<TParentalRatingDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TParentalRatingDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::ItemWalk walk = detail::decodeItems(descriptor.from(COMMON_HEADER_LENGTH), m_pItems);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TParentalRatingDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(walk.last);
}

void TParentalRatingDescriptor::add(TParentalRatingDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TParentalRatingDescriptor::remove(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
