#include "descriptors/TIPSignalingDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TIPSignalingDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TIPSignalingDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

namespace {

// descriptor_tag (8) | descriptor_length (8) | platform_id (24)
constexpr QUOR_U32 PLATFORM_ID_AT = 2;
constexpr QUOR_U32 PLATFORM_ID_LENGTH = 3;

} // namespace

TIPSignalingDescriptor::TIPSignalingDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iPlatformID(0) {}

TIPSignalingDescriptor::TIPSignalingDescriptor(TIPSignalingDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_iPlatformID(source->m_iPlatformID) {}

TIPSignalingDescriptor::~TIPSignalingDescriptor() = default;

TIPSignalingDescriptor* TIPSignalingDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TIPSignalingDescriptor>(
        sectionData, dataLength, parsedLength, errorCode, [](TIPSignalingDescriptor& object, detail::Bytes descriptor) {
            object.m_iPlatformID = descriptor.u24(PLATFORM_ID_AT);
            return detail::Outcome::done(PLATFORM_ID_LENGTH);
        });
}

} // namespace Quor
