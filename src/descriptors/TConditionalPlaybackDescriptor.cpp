#include "descriptors/TConditionalPlaybackDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | CA_system_id (16) | reserved (3) CA_PID (13) |
// private_data_byte (8) ...

constexpr U8 TConditionalPlaybackDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TConditionalPlaybackDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TConditionalPlaybackDescriptor::TConditionalPlaybackDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iCASystemID(0), m_iCAPID(0), m_iPrivateDataSize(0) {}

TConditionalPlaybackDescriptor::~TConditionalPlaybackDescriptor() = default;

TConditionalPlaybackDescriptor* TConditionalPlaybackDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TConditionalPlaybackDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TConditionalPlaybackDescriptor& object, detail::Bytes descriptor) {
            object.m_iCASystemID = descriptor.u16(2);
            object.m_iCAPID = descriptor.pid(4);
            object.m_pPrivateData = detail::copyBytes(descriptor.from(6), object.m_iPrivateDataSize);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
