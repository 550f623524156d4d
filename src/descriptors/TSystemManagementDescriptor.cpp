#include "descriptors/TSystemManagementDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | system_management_id (16) | additional_identification_info (8) ...

constexpr U8 TSystemManagementDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TSystemManagementDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TSystemManagementDescriptor::FLAG_OPEN;
constexpr QUOR_U8 TSystemManagementDescriptor::FLAG_CLOSE_1;
constexpr QUOR_U8 TSystemManagementDescriptor::FLAG_CLOSE_2;
constexpr QUOR_U8 TSystemManagementDescriptor::FLAG_UNDEFINED;
constexpr QUOR_U8 TSystemManagementDescriptor::IDENTIFIER_ISDB;

TSystemManagementDescriptor::TSystemManagementDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iSystemMngID(0), m_iAdditionalIdentInfoSize(0) {}

TSystemManagementDescriptor::~TSystemManagementDescriptor() = default;

TSystemManagementDescriptor* TSystemManagementDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                                QUOR_U16* err) {
    return detail::parseDescriptor<TSystemManagementDescriptor>(
        data, length, parsedLength, err, [](TSystemManagementDescriptor& object, detail::Bytes descriptor) {
            object.m_iSystemMngID = descriptor.u16(2);
            object.m_pAdditionalIdentInfo = detail::copyBytes(descriptor.from(4), object.m_iAdditionalIdentInfoSize);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
