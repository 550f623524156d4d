#include "descriptors/TCAIdentifierDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | CA_system_id (16) ...

constexpr U8 TCAIdentifierDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TCAIdentifierDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TCAIdentifierDescriptor::TCAIdentifierDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iCASystemIDCount(0) {}

TCAIdentifierDescriptor::~TCAIdentifierDescriptor() = default;

TCAIdentifierDescriptor* TCAIdentifierDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                        QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCAIdentifierDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TCAIdentifierDescriptor& object, detail::Bytes descriptor) {
            const detail::Bytes identifiers = descriptor.from(COMMON_HEADER_LENGTH);
            object.m_pCASystemIDs = detail::copyWords(identifiers, object.m_iCASystemIDCount);
            return detail::Outcome::done(identifiers.size());
        });
}

} // namespace Quor
