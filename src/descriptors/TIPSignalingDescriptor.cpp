#include "descriptors/TIPSignalingDescriptor.h"

#include "detail/Family.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | platform_id (24)
constexpr QUOR_U32 PLATFORM_ID_AT = 2;
constexpr QUOR_U32 PLATFORM_ID_LENGTH = 3;

} // namespace

TIPSignalingDescriptor::TIPSignalingDescriptor(TIPSignalingDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_iPlatformID(source->m_iPlatformID) {}

TIPSignalingDescriptor::~TIPSignalingDescriptor() = default;

TIPSignalingDescriptor* TIPSignalingDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TIPSignalingDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TIPSignalingDescriptor::decode(const detail::Bytes& descriptor) {
    m_iPlatformID = descriptor.u24(PLATFORM_ID_AT);
    return detail::Outcome::done(PLATFORM_ID_LENGTH);
}

} // namespace Quor
