#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"

#include "detail/Family.h"

namespace Quor {

TGingaJavaApplicationLocationDescriptor::TGingaJavaApplicationLocationDescriptor(std::string baseDirectory,
                                                                                 std::string classpathExtension,
                                                                                 std::string initialClass)
    : TGingaApplicationLocationDescriptor(DESCRIPTOR_TAG, std::move(baseDirectory), std::move(classpathExtension),
                                          std::move(initialClass)) {}

TGingaJavaApplicationLocationDescriptor::TGingaJavaApplicationLocationDescriptor(
    TGingaJavaApplicationLocationDescriptor* source)
    : TGingaApplicationLocationDescriptor(source) {}

TGingaJavaApplicationLocationDescriptor::~TGingaJavaApplicationLocationDescriptor() = default;

TGingaJavaApplicationLocationDescriptor* TGingaJavaApplicationLocationDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                                        QUOR_U32* parsedLength,
                                                                                        QUOR_U16* errorCode) {
    return detail::parseDescriptor<TGingaJavaApplicationLocationDescriptor>(data, length, parsedLength, errorCode);
}

} // namespace Quor
