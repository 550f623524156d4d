#ifndef QUOR_TAVC_TIMING_AND_HRD_DESCRIPTOR_H
#define QUOR_TAVC_TIMING_AND_HRD_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// AVC timing and HRD descriptor (ISO/IEC 13818-1, tag 0x2A): time base and picture timing of an AVC stream. Mind that
/// N and K are read when 90kHz_flag is 1, not when it is 0, and where the three flags at the end are read from.
class QUOR_ISDBT_API TAVCTimingAndHRDDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x2A;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TAVCTimingAndHRDDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TAVCTimingAndHRDDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 2 without picture and timing information, 3 with it, 11 with N and K. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH when the body is too short for the fields that its flags
    ///                     announce. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TAVCTimingAndHRDDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                             QUOR_U16* errorCode);

    /// hrd_management_valid_flag.
    QUOR_BOOL isHRDManagementValid() const { return m_bHRDManagementValid; }

    /// picture_and_timing_info_present: whether is90kHzFlag(), getN(), getK() and getNumUnitsInTick() come from the
    /// wire.
    QUOR_BOOL isPictureTimingInfoPresent() const { return m_bPictTimingInfoPresent; }

    /// 90kHz_flag; false without picture and timing information.
    QUOR_BOOL is90kHzFlag() const { return m_b90kHzFlag; }

    /// N of the ratio N / K between the time scale and the system clock; 0 unless is90kHzFlag().
    QUOR_U32 getN() const { return m_iN; }

    /// K of the ratio N / K between the time scale and the system clock; 0 unless is90kHzFlag().
    QUOR_U32 getK() const { return m_iK; }

    /// num_units_in_tick; 0 without picture and timing information.
    QUOR_U32 getNumUnitsInTick() const { return m_iNumUnitsInTick; }

    /// fixed_frame_rate_flag: bit 7 of the second byte of the body or, with picture and timing information, of the
    /// first byte of num_units_in_tick.
    QUOR_BOOL isFixedFrameRateFlag() const { return m_bFixedFrameRateFlag; }

    /// temporal_poc_flag: bit 6 of the same byte as isFixedFrameRateFlag().
    QUOR_BOOL isTemporalPOCFlag() const { return m_bTemporalPOCFlag; }

    /// picture_to_display_conversion_flag: bit 5 of the same byte as isFixedFrameRateFlag().
    QUOR_BOOL isPictureToDisplayConversionFlag() const { return m_bPict2DisplayConvFlag; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_BOOL m_bHRDManagementValid = false;
    QUOR_BOOL m_bPictTimingInfoPresent = false;
    QUOR_BOOL m_b90kHzFlag = false;
    QUOR_U32 m_iN = 0;
    QUOR_U32 m_iK = 0;
    QUOR_U32 m_iNumUnitsInTick = 0;
    QUOR_BOOL m_bFixedFrameRateFlag = false;
    QUOR_BOOL m_bTemporalPOCFlag = false;
    QUOR_BOOL m_bPict2DisplayConvFlag = false;
};

} // namespace Quor

#endif
