#include "descriptors/TDataComponentDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | data_component_id (16) |
// additional_data_component_info (8) ...

constexpr U8 TDataComponentDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TDataComponentDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U16 TDataComponentDescriptor::COMPONENT_ID_GINGA_XML_BASE_MMEDIA_CODING;
constexpr QUOR_U16 TDataComponentDescriptor::COMPONENT_ID_CAPTION_AND_SUPERIMPOSED;
constexpr QUOR_U16 TDataComponentDescriptor::COMPONENT_ID_DATA_DOWNLOAD_SBTVD;
constexpr QUOR_U16 TDataComponentDescriptor::COMPONENT_ID_OBJECT_CAROUSEL;
constexpr QUOR_U16 TDataComponentDescriptor::COMPONENT_ID_CAPTION_1_SEG;
constexpr QUOR_U16 TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_EXECUTING_ENGINE;
constexpr QUOR_U16 TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE;
constexpr QUOR_U16 TDataComponentDescriptor::COMPONENT_ID_SBTVD_PROGRAM_INDEX_CONFIG;

TDataComponentDescriptor::TDataComponentDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iDataComponentID(0), m_iAdditionalDataSize(0) {}

TDataComponentDescriptor::~TDataComponentDescriptor() = default;

TDataComponentDescriptor* TDataComponentDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                          QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TDataComponentDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TDataComponentDescriptor& object, detail::Bytes descriptor) {
            object.m_iDataComponentID = descriptor.u16(2);
            object.m_pAdditionalData = detail::copyBytes(descriptor.from(4), object.m_iAdditionalDataSize);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
