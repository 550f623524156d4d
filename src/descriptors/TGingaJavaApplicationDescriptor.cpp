#include "descriptors/TGingaJavaApplicationDescriptor.h"

#include "detail/Family.h"

namespace Quor {

TGingaJavaApplicationDescriptor::TGingaJavaApplicationDescriptor(TGingaJavaApplicationDescriptor* source)
    : TGingaApplicationDescriptor(source) {}

TGingaJavaApplicationDescriptor::~TGingaJavaApplicationDescriptor() = default;

TGingaJavaApplicationDescriptor* TGingaJavaApplicationDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                        QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TGingaJavaApplicationDescriptor>(data, length, parsedLength, errorCode);
}

} // namespace Quor
