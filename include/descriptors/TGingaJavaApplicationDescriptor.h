#ifndef QUOR_TGINGA_JAVA_APPLICATION_DESCRIPTOR_H
#define QUOR_TGINGA_JAVA_APPLICATION_DESCRIPTOR_H

#include "descriptors/TGingaApplicationDescriptor.h"

namespace Quor {

/// Ginga-J application descriptor (ABNT NBR 15606, tag 0x03, in the application information table): the parameters of a
/// Ginga-J application.
class QUOR_ISDBT_API TGingaJavaApplicationDescriptor : public TGingaApplicationDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x03;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 0;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TGingaJavaApplicationDescriptor(QUOR_U8* data, QUOR_U32 length)
        : TGingaApplicationDescriptor(DESCRIPTOR_TAG, data, length) {}
    /// A deep copy of @p source, which must not be null; without data.
    explicit TGingaJavaApplicationDescriptor(TGingaJavaApplicationDescriptor* source);
    ~TGingaJavaApplicationDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength see parseData(). May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader() or of
    ///                     parseData(). May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TGingaJavaApplicationDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                  QUOR_U16* errorCode);
};

} // namespace Quor

#endif
