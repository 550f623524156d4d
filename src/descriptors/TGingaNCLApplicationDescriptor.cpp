#include "descriptors/TGingaNCLApplicationDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TGingaNCLApplicationDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TGingaNCLApplicationDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TGingaNCLApplicationDescriptor::TGingaNCLApplicationDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TGingaApplicationDescriptor(DESCRIPTOR_TAG, data, length) {}

TGingaNCLApplicationDescriptor::TGingaNCLApplicationDescriptor(TGingaNCLApplicationDescriptor* source)
    : TGingaApplicationDescriptor(source) {}

TGingaNCLApplicationDescriptor::~TGingaNCLApplicationDescriptor() = default;

TGingaNCLApplicationDescriptor* TGingaNCLApplicationDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptorData<TGingaNCLApplicationDescriptor>(data, length, parsedLength, errorCode);
}

} // namespace Quor
