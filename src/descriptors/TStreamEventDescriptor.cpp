#include "descriptors/TStreamEventDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | eventId (16) | reserved (31) eventNPT (33) |
// privateDataByte (8) ...

constexpr U8 TStreamEventDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TStreamEventDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TStreamEventDescriptor::TStreamEventDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iEventID(0), m_iEventNPTH(0), m_iEventNPTL(0),
      m_iPrivateDataSize(0) {}

TStreamEventDescriptor::~TStreamEventDescriptor() = default;

TStreamEventDescriptor* TStreamEventDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TStreamEventDescriptor>(
        sectionData, dataLength, parsedLength, errorCode, [](TStreamEventDescriptor& object, detail::Bytes descriptor) {
            object.m_iEventID = descriptor.u16(2);
            object.m_iEventNPTH = descriptor.u8(7) & 1U;
            object.m_iEventNPTL = descriptor.u32(8);
            object.m_pPrivateData = detail::copyBytes(descriptor.from(12), object.m_iPrivateDataSize);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
