#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"

#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | descriptors ..., which are not decoded

constexpr U8 TCarouselCompatibleCompositeDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TCarouselCompatibleCompositeDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TCarouselCompatibleCompositeDescriptor::TCarouselCompatibleCompositeDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TCarouselCompatibleCompositeDescriptor::~TCarouselCompatibleCompositeDescriptor() = default;

TCarouselCompatibleCompositeDescriptor* TCarouselCompatibleCompositeDescriptor::parse(QUOR_U8* sectionData,
                                                                                      QUOR_U32 dataLength,
                                                                                      QUOR_U32* parsedLength,
                                                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCarouselCompatibleCompositeDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TCarouselCompatibleCompositeDescriptor& /*object*/, detail::Bytes descriptor) {
            QUOR_ISDBT_LOG(
                "%s: TCarouselCompatibleCompositeDescriptor::parse: TODO: Descriptor not implemented yet. If you really need this descriptor, please contact support.",
                detail::LOG_TAG);
            // Header included; callers depend on this value.
            return detail::Outcome::done(descriptor.size());
        });
}

} // namespace Quor
