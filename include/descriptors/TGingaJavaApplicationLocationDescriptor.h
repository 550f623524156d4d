#ifndef QUOR_TGINGA_JAVA_APPLICATION_LOCATION_DESCRIPTOR_H
#define QUOR_TGINGA_JAVA_APPLICATION_LOCATION_DESCRIPTOR_H

#include "descriptors/TGingaApplicationLocationDescriptor.h"

#include <string>

namespace Quor {

/// Ginga-J application location descriptor (ABNT NBR 15606, tag 0x04, in the application information table): where the
/// code of a Ginga-J application lies.
class QUOR_ISDBT_API TGingaJavaApplicationLocationDescriptor : public TGingaApplicationLocationDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x04;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TGingaJavaApplicationLocationDescriptor(QUOR_U8* data, QUOR_U32 length)
        : TGingaApplicationLocationDescriptor(DESCRIPTOR_TAG, data, length) {}
    /// A descriptor without data.
    TGingaJavaApplicationLocationDescriptor(std::string baseDirectory, std::string classpathExtension,
                                            std::string initialClass);
    /// A copy of @p source, which must not be null; without data.
    explicit TGingaJavaApplicationLocationDescriptor(TGingaJavaApplicationLocationDescriptor* source);
    ~TGingaJavaApplicationLocationDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength see parseData(). May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader() or of
    ///                     parseData(). May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TGingaJavaApplicationLocationDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                          QUOR_U16* errorCode);
};

} // namespace Quor

#endif
