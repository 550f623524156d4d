#include "descriptors/TCopyrightDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

// Read as a hierarchical transmission descriptor; callers depend on these values.
// descriptor_tag (8) | descriptor_length (8) | reserved (7) quality_level (1) |
// reserved (3) reference_PID (13)

constexpr U8 TCopyrightDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TCopyrightDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TCopyrightDescriptor::TCopyrightDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iHierarchicalLevel(0), m_iReferencePID(0) {}

TCopyrightDescriptor::~TCopyrightDescriptor() = default;

TCopyrightDescriptor* TCopyrightDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                                  QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCopyrightDescriptor>(sectionData, dataLength, parsedLength, errorCode,
                                                         [](TCopyrightDescriptor& object, detail::Bytes descriptor) {
                                                             object.m_iHierarchicalLevel = descriptor.u8(2) & 1U;
                                                             object.m_iReferencePID = descriptor.pid(3);
                                                             return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
                                                         });
}

} // namespace Quor
