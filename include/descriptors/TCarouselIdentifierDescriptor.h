#ifndef QUOR_TCAROUSEL_IDENTIFIER_DESCRIPTOR_H
#define QUOR_TCAROUSEL_IDENTIFIER_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Carousel identifier descriptor (ISO/IEC 13818-6, tag 0x13): the carousel that an elementary stream carries. Of its
/// body only carousel_id is decoded; format_id and the fields of its format are the first bytes of getPrivateData().
class QUOR_ISDBT_API TCarouselIdentifierDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x13;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// @name Values of format_id
    /// @{
    static constexpr QUOR_U8 FORMAT_TYPE_NOT_AVAILABLE = 0;
    static constexpr QUOR_U8 FORMAT_TYPE_SERVIC_GATEWAY = 1;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TCarouselIdentifierDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TCarouselIdentifierDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TCarouselIdentifierDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode);

    /// carousel_id.
    QUOR_U32 getCarouselID() const { return m_iCarouselID; }

    /// Always 0: format_id is not decoded.
    QUOR_U8 getFormatID() const { return m_iFormatID; }

    /// Always 0: module_version is not decoded.
    QUOR_U8 getModuleVersion() const { return m_iModuleVersion; }

    /// Always 0: module_id is not decoded.
    QUOR_U16 getModuleID() const { return m_iModuleID; }

    /// Always 0: block_size is not decoded.
    QUOR_U16 getBlockSize() const { return m_iBlockSize; }

    /// Always 0: module_size is not decoded.
    QUOR_U32 getModuleSize() const { return m_iModuleSize; }

    /// Always 0: compression_method is not decoded.
    QUOR_U8 getCompressionMethod() const { return m_iCompressionMethod; }

    /// Always 0: original_size is not decoded.
    QUOR_U32 getOriginalSize() const { return m_iOriginalSize; }

    /// Always 0: time_out is not decoded.
    QUOR_U8 getTimeOut() const { return m_iTimeOut; }

    /// Always 0: object_key_length is not decoded.
    QUOR_U8 getObjectKeyLength() const { return m_iObjectKeySize; }

    /// Always null: object_key_data is not decoded.
    QUOR_U8* getObjectKeyData() const { return m_pObjectKeyData.get(); }

    /// The number of bytes of getPrivateData(), kept in 8 bits.
    QUOR_U8 getPrivateDataSize() const { return m_iPrivateDataSize; }

    /// All that follows carousel_id, owned by the descriptor; null when there is none.
    QUOR_U8* getPrivateData() const { return m_pPrivateData.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U32 m_iCarouselID = 0;
    QUOR_U8 m_iFormatID = 0;
    QUOR_U8 m_iModuleVersion = 0;
    QUOR_U16 m_iModuleID = 0;
    QUOR_U16 m_iBlockSize = 0;
    QUOR_U32 m_iModuleSize = 0;
    QUOR_U8 m_iCompressionMethod = 0;
    QUOR_U32 m_iOriginalSize = 0;
    QUOR_U8 m_iTimeOut = 0;
    QUOR_U8 m_iObjectKeySize = 0;
    detail::Array<QUOR_U8> m_pObjectKeyData{};
    QUOR_U8 m_iPrivateDataSize = 0;
    detail::Array<QUOR_U8> m_pPrivateData{};
};

} // namespace Quor

#endif
