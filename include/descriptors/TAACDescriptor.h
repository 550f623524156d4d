#ifndef QUOR_TAAC_DESCRIPTOR_H
#define QUOR_TAAC_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// AAC descriptor (ABNT NBR 15603, tag 0x7C): profile, level and type of an AAC stream.
class QUOR_ISDBT_API TAACDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x7C;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// @name Known values of getProfileAndLevel()
    /// @{
    static constexpr QUOR_U8 PROFILE_ACC_L1 = 40;                 ///< AAC, level 1
    static constexpr QUOR_U8 PROFILE_ACC_L2 = 41;                 ///< AAC, level 2
    static constexpr QUOR_U8 PROFILE_ACC_L4 = 42;                 ///< AAC, level 4
    static constexpr QUOR_U8 PROFILE_ACC_L5 = 43;                 ///< AAC, level 5
    static constexpr QUOR_U8 PROFILE_HIGH_EFFICIENCY_ACC_L2 = 44; ///< HE-AAC, level 2
    static constexpr QUOR_U8 PROFILE_HIGH_EFFICIENCY_ACC_L3 = 45; ///< HE-AAC, level 3
    static constexpr QUOR_U8 PROFILE_HIGH_EFFICIENCY_ACC_L4 = 46; ///< HE-AAC, level 4
    static constexpr QUOR_U8 PROFILE_HIGH_EFFICIENCY_ACC_L5 = 47; ///< HE-AAC, level 5
    static constexpr QUOR_U8 PROFILE_NOT_SPECIFIED = 254;         ///< another profile or level
    static constexpr QUOR_U8 PROFILE_NO_AUDIO_INFO = 255;         ///< nothing is said of the audio
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TAACDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TAACDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2, the bytes of the body. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH when AAC_type is announced and missing. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TAACDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// profile_and_level, 0 to 255.
    QUOR_U8 getProfileAndLevel() const { return m_iProfileAndLevel; }

    /// AAC_type_flag: whether getAACType() comes from the wire.
    QUOR_BOOL hasAACType() const { return m_bAACTypeFlag; }

    /// AAC_type; 0 unless hasAACType().
    QUOR_U8 getAACType() const { return m_iAACType; }

    /// The number of bytes of getAdditionalInfo(), kept in 8 bits.
    QUOR_U8 getAdditionalInfoSize() const { return m_iAdditionalInfoSize; }

    /// additional_info, owned by the descriptor; null when there is none.
    QUOR_U8* getAdditionalInfo() const { return m_pAdditionalInfo.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iProfileAndLevel = 0;
    QUOR_BOOL m_bAACTypeFlag = false;
    QUOR_U8 m_iAACType = 0;
    QUOR_U8 m_iAdditionalInfoSize = 0;
    detail::Array<QUOR_U8> m_pAdditionalInfo{};
};

} // namespace Quor

#endif
