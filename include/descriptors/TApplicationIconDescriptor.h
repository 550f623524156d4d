#ifndef QUOR_TAPPLICATION_ICON_DESCRIPTOR_H
#define QUOR_TAPPLICATION_ICON_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// Application icons descriptor (ABNT NBR 15606, tag 0x0B, in the application information table): where the icons of
/// an application lie, and in which sizes and aspect ratios they exist.
class QUOR_ISDBT_API TApplicationIconDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x0B;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// @name Bits of getIconFlags(): size in pixels and their aspect ratio
    /// @{
    static constexpr QUOR_U16 FLAG_32x32_SQUARE = 1;
    static constexpr QUOR_U16 FLAG_32x32_4x3 = 2;
    static constexpr QUOR_U16 FLAG_32x32_16x9 = 4;
    static constexpr QUOR_U16 FLAG_64x64_SQUARE = 8;
    static constexpr QUOR_U16 FLAG_64x64_4x3 = 16;
    static constexpr QUOR_U16 FLAG_64x64_16x9 = 32;
    static constexpr QUOR_U16 FLAG_128x128_SQUARE = 64;
    static constexpr QUOR_U16 FLAG_128x128_4x3 = 128;
    static constexpr QUOR_U16 FLAG_128x128_16x9 = 256;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TApplicationIconDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    /// A descriptor without data.
    TApplicationIconDescriptor(std::string iconLocator, QUOR_U16 iconFlags);
    /// A copy of @p source, which must not be null; without data.
    explicit TApplicationIconDescriptor(TApplicationIconDescriptor* source);
    ~TApplicationIconDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length, header included, modulo 256. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_STRING. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TApplicationIconDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                             QUOR_U16* errorCode);

    /// icon_locator, the directory of the icon files, as received.
    std::string getIconLocator() const { return m_sIconLocator; }

    /// icon_flags, 16 bits as received; 0 when the descriptor ends before them.
    QUOR_U16 getIconFlags() const { return m_iIconFlags; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Text m_sIconLocator{};
    QUOR_U16 m_iIconFlags = 0;
};

} // namespace Quor

#endif
