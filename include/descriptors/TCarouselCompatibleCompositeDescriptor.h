#ifndef QUOR_TCAROUSEL_COMPATIBLE_COMPOSITE_DESCRIPTOR_H
#define QUOR_TCAROUSEL_COMPATIBLE_COMPOSITE_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Carousel compatible composite descriptor (tag 0xF7): descriptors of a data carousel, applied to an elementary
/// stream. Its body is not decoded: every parse says so in the log, and the bytes are in getData().
class QUOR_ISDBT_API TCarouselCompatibleCompositeDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xF7;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TCarouselCompatibleCompositeDescriptor(QUOR_U8* data, QUOR_U32 length)
        : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TCarouselCompatibleCompositeDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length, header included. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TCarouselCompatibleCompositeDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                         QUOR_U16* errorCode);

private:
    friend struct detail::Access;

    static detail::Outcome decode(const detail::Bytes& descriptor);
};

} // namespace Quor

#endif
