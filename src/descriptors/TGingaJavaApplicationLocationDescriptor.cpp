#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

constexpr U8 TGingaJavaApplicationLocationDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TGingaJavaApplicationLocationDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TGingaJavaApplicationLocationDescriptor::TGingaJavaApplicationLocationDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TGingaApplicationLocationDescriptor(DESCRIPTOR_TAG, data, length) {}

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
    return detail::parseDescriptorData<TGingaJavaApplicationLocationDescriptor>(data, length, parsedLength, errorCode);
}

} // namespace Quor
