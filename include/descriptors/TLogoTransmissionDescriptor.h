#ifndef QUOR_TLOGO_TRANSMISSION_DESCRIPTOR_H
#define QUOR_TLOGO_TRANSMISSION_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Logo transmission descriptor (ARIB STD-B10, tag 0xCF, in the service description table): where the logo of a service
/// is broadcast, or a text that stands for it.
class QUOR_ISDBT_API TLogoTransmissionDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xCF;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// @name Values of logo_transmission_type
    /// @{

    /// A logo in the common data table, with its version and its download data.
    static constexpr QUOR_U8 TYPE_CDT1 = 1;
    /// A logo in the common data table, by its identifier alone.
    static constexpr QUOR_U8 TYPE_CDT2 = 2;
    /// A text in place of a logo.
    static constexpr QUOR_U8 TYPE_SIMPLE = 3;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TLogoTransmissionDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TLogoTransmissionDescriptor() override;

    /// Parses one descriptor. One with an unknown type is kept with nothing but its type.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes that were decoded: 7 for TYPE_CDT1, 3 for TYPE_CDT2, `length` - 2 for
    ///                     TYPE_SIMPLE, else 1. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for a body that its type does not fit in. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TLogoTransmissionDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                              QUOR_U16* errorCode);

    /// logo_transmission_type, 0 to 255.
    QUOR_U8 getLogoTransmType() const { return m_iLogoTransmType; }

    /// logo_id, 9 bits, of TYPE_CDT1 and TYPE_CDT2; else 0.
    QUOR_U16 getLogoID() const { return m_iLogoID; }

    /// logo_version, 12 bits, of TYPE_CDT1; else 0.
    QUOR_U16 getLogoVersion() const { return m_iLogoVersion; }

    /// download_data_id of TYPE_CDT1; else 0.
    QUOR_U16 getDownloadDataID() const { return m_iDownloadDataID; }

    /// The number of bytes of the text of TYPE_SIMPLE, modulo 256; else 0.
    QUOR_U8 getLogoDataLength() const { return m_iLogoDataLength; }

    /// The text of TYPE_SIMPLE without a terminating zero, owned by the descriptor; null when there is none.
    QUOR_U8* getLogoData() const { return m_pLogoData.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iLogoTransmType = 0;
    QUOR_U16 m_iLogoID = 0;
    QUOR_U16 m_iLogoVersion = 0;
    QUOR_U16 m_iDownloadDataID = 0;
    QUOR_U8 m_iLogoDataLength = 0;
    detail::Array<QUOR_U8> m_pLogoData{};
};

} // namespace Quor

#endif
