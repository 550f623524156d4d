#include "descriptors/TCarouselIdentifierDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | carousel_id (32) | private_data_byte (8) ...

constexpr U8 TCarouselIdentifierDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TCarouselIdentifierDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TCarouselIdentifierDescriptor::FORMAT_TYPE_NOT_AVAILABLE;
constexpr QUOR_U8 TCarouselIdentifierDescriptor::FORMAT_TYPE_SERVIC_GATEWAY;

TCarouselIdentifierDescriptor::TCarouselIdentifierDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iCarouselID(0), m_iFormatID(0), m_iModuleVersion(0),
      m_iModuleID(0), m_iBlockSize(0), m_iModuleSize(0), m_iCompressionMethod(0), m_iOriginalSize(0), m_iTimeOut(0),
      m_iObjectKeySize(0), m_iPrivateDataSize(0) {}

TCarouselIdentifierDescriptor::~TCarouselIdentifierDescriptor() = default;

TCarouselIdentifierDescriptor* TCarouselIdentifierDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCarouselIdentifierDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TCarouselIdentifierDescriptor& object, detail::Bytes descriptor) {
            object.m_iCarouselID = descriptor.u32(2);
            object.m_pPrivateData = detail::copyBytes(descriptor.from(6), object.m_iPrivateDataSize);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
