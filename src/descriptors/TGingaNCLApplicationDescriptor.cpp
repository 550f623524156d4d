#include "descriptors/TGingaNCLApplicationDescriptor.h"

#include "detail/Family.h"

namespace Quor {

TGingaNCLApplicationDescriptor::TGingaNCLApplicationDescriptor(TGingaNCLApplicationDescriptor* source)
    : TGingaApplicationDescriptor(source) {}

TGingaNCLApplicationDescriptor::~TGingaNCLApplicationDescriptor() = default;

TGingaNCLApplicationDescriptor* TGingaNCLApplicationDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TGingaNCLApplicationDescriptor>(data, length, parsedLength, errorCode);
}

} // namespace Quor
