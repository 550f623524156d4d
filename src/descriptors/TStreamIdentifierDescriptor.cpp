#include "descriptors/TStreamIdentifierDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | component_tag (8)

constexpr U8 TStreamIdentifierDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TStreamIdentifierDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TStreamIdentifierDescriptor::TStreamIdentifierDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iComponentTag(0) {}

TStreamIdentifierDescriptor::~TStreamIdentifierDescriptor() = default;

TStreamIdentifierDescriptor* TStreamIdentifierDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                                QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TStreamIdentifierDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TStreamIdentifierDescriptor& object, detail::Bytes descriptor) {
            object.m_iComponentTag = descriptor.u8(2);
            return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
        });
}

} // namespace Quor
