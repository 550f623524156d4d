#ifndef QUOR_TSYSTEM_MANAGEMENT_DESCRIPTOR_H
#define QUOR_TSYSTEM_MANAGEMENT_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// System management descriptor (ARIB STD-B10, tag 0xFE): whether this is a broadcast, and of which standard.
class QUOR_ISDBT_API TSystemManagementDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xFE;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// @name Values of broadcasting_flag, the two upper bits of system_management_id
    /// @{
    static constexpr QUOR_U8 FLAG_OPEN = 0;
    static constexpr QUOR_U8 FLAG_CLOSE_1 = 1;
    static constexpr QUOR_U8 FLAG_CLOSE_2 = 2;
    static constexpr QUOR_U8 FLAG_UNDEFINED = 3;
    /// @}

    /// The value of broadcasting_identifier, the six bits below it, for terrestrial television.
    static constexpr QUOR_U8 IDENTIFIER_ISDB = 3;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TSystemManagementDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TSystemManagementDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the body, `length` - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TSystemManagementDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                              QUOR_U16* errorCode);

    /// system_management_id, all 16 bits.
    QUOR_U16 getSystemManagementID() const { return m_iSystemMngID; }

    /// The number of bytes of additional_identification_info, modulo 256; 0 when there is none.
    QUOR_U8 getAdditionalIdentificationInfoSize() const { return m_iAdditionalIdentInfoSize; }

    /// additional_identification_info, owned by the descriptor; null when there is none.
    QUOR_U8* getAdditionalIdentificationInfo() const { return m_pAdditionalIdentInfo.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iSystemMngID = 0;
    QUOR_U8 m_iAdditionalIdentInfoSize = 0;
    detail::Array<QUOR_U8> m_pAdditionalIdentInfo{};
};

} // namespace Quor

#endif
