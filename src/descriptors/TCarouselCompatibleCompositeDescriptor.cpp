#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | descriptors ..., which are not decoded

TCarouselCompatibleCompositeDescriptor::~TCarouselCompatibleCompositeDescriptor() = default;

TCarouselCompatibleCompositeDescriptor* TCarouselCompatibleCompositeDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                                      QUOR_U32* parsedLength,
                                                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCarouselCompatibleCompositeDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TCarouselCompatibleCompositeDescriptor::decode(const detail::Bytes& descriptor) {
    QUOR_ISDBT_LOG(
        "%s: TCarouselCompatibleCompositeDescriptor::parse: TODO: Descriptor not implemented yet. If you really need this descriptor, please contact support.",
        detail::LOG_TAG);
    // Quirk: header included.
    return detail::Outcome::done(descriptor.size());
}

} // namespace Quor
