#include "descriptors/TTargetRegionDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | region_spec_type (8) | target_region_spec (8) ...

constexpr U8 TTargetRegionDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TTargetRegionDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TTargetRegionDescriptor::TTargetRegionDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iRegionSpecType(0), m_iSpecSize(0) {}

TTargetRegionDescriptor::~TTargetRegionDescriptor() = default;

TTargetRegionDescriptor* TTargetRegionDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                        QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TTargetRegionDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TTargetRegionDescriptor& object, detail::Bytes descriptor) {
            object.m_iRegionSpecType = descriptor.u8(2);
            object.m_pSpec = detail::copyBytes(descriptor.from(3), object.m_iSpecSize);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
