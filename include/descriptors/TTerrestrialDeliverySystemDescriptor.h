#ifndef QUOR_TTERRESTRIAL_DELIVERY_SYSTEM_DESCRIPTOR_H
#define QUOR_TTERRESTRIAL_DELIVERY_SYSTEM_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Terrestrial delivery system descriptor (ARIB STD-B10, tag 0xFA, in the network information table): how and on which
/// frequencies a transport stream is on the air.
class QUOR_ISDBT_API TTerrestrialDeliverySystemDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xFA;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// @name Values of guard_interval
    /// Callers use these names, spelling and all.
    /// @{
    static constexpr QUOR_U8 GUARD_INTERNVAL_1_32 = 0; ///< 1/32 of a symbol
    static constexpr QUOR_U8 GUARD_INTERNVAL_1_16 = 1; ///< 1/16 of a symbol
    static constexpr QUOR_U8 GUARD_INTERNVAL_1_8 = 2;  ///< 1/8 of a symbol
    static constexpr QUOR_U8 GUARD_INTERNVAL_1_4 = 3;  ///< 1/4 of a symbol
    /// @}

    /// @name Values of transmission_mode
    /// @{
    static constexpr QUOR_U8 TRANSMISSION_MODE_1 = 0; ///< 2K carriers
    static constexpr QUOR_U8 TRANSMISSION_MODE_2 = 1; ///< 4K carriers
    static constexpr QUOR_U8 TRANSMISSION_MODE_3 = 2; ///< 8K carriers
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TTerrestrialDeliverySystemDescriptor(QUOR_U8* data, QUOR_U32 length)
        : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TTerrestrialDeliverySystemDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the body, `length` - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TTerrestrialDeliverySystemDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                       QUOR_U16* errorCode);

    /// area_code, 12 bits.
    QUOR_U16 getAreaCode() const { return m_iAreaCode; }

    /// guard_interval, 0 to 3.
    QUOR_U8 getGuardInterval() const { return m_iGuardInterval; }

    /// transmission_mode, 0 to 3.
    QUOR_U8 getTransmissionMode() const { return m_iTransmissionMode; }

    /// The number of frequencies, modulo 256. An odd last byte is no frequency.
    QUOR_U8 getFrequencyCounter() const { return m_iFrequencyCounter; }

    /// The frequencies in units of 1/7 MHz, owned by the descriptor; null when there are none.
    QUOR_U16* getFrequencies() const { return m_pFrequencies.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iAreaCode = 0;
    QUOR_U8 m_iGuardInterval = 0;
    QUOR_U8 m_iTransmissionMode = 0;
    QUOR_U8 m_iFrequencyCounter = 0;
    detail::Array<QUOR_U16> m_pFrequencies{};
};

} // namespace Quor

#endif
