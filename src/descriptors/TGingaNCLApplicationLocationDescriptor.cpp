#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"

#include "detail/Family.h"

namespace Quor {

TGingaNCLApplicationLocationDescriptor::TGingaNCLApplicationLocationDescriptor(std::string baseDirectory,
                                                                               std::string classpathExtension,
                                                                               std::string initialClass)
    : TGingaApplicationLocationDescriptor(DESCRIPTOR_TAG, std::move(baseDirectory), std::move(classpathExtension),
                                          std::move(initialClass)) {}

TGingaNCLApplicationLocationDescriptor::TGingaNCLApplicationLocationDescriptor(
    TGingaNCLApplicationLocationDescriptor* source)
    : TGingaApplicationLocationDescriptor(source) {}

TGingaNCLApplicationLocationDescriptor::~TGingaNCLApplicationLocationDescriptor() = default;

TGingaNCLApplicationLocationDescriptor* TGingaNCLApplicationLocationDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                                      QUOR_U32* parsedLength,
                                                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TGingaNCLApplicationLocationDescriptor>(data, length, parsedLength, errorCode);
}

} // namespace Quor
