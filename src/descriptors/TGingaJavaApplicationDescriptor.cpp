#include "descriptors/TGingaJavaApplicationDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TGingaJavaApplicationDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TGingaJavaApplicationDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TGingaJavaApplicationDescriptor::TGingaJavaApplicationDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TGingaApplicationDescriptor(DESCRIPTOR_TAG, data, length) {}

TGingaJavaApplicationDescriptor::TGingaJavaApplicationDescriptor(TGingaJavaApplicationDescriptor* source)
    : TGingaApplicationDescriptor(source) {}

TGingaJavaApplicationDescriptor::~TGingaJavaApplicationDescriptor() = default;

TGingaJavaApplicationDescriptor* TGingaJavaApplicationDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                        QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptorData<TGingaJavaApplicationDescriptor>(data, length, parsedLength, errorCode);
}

} // namespace Quor
