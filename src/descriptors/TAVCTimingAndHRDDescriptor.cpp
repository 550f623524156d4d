#include "descriptors/TAVCTimingAndHRDDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) |
// hrd_management_valid_flag (1) reserved (6) picture_and_timing_info_present (1) |
// if picture_and_timing_info_present: 90kHz_flag (1) reserved (7) |
//                                     if 90kHz_flag: N (32) | K (32) |
//                                     num_units_in_tick (32) |
// fixed_frame_rate_flag (1) temporal_poc_flag (1) picture_to_display_conversion_flag (1) reserved (5)
constexpr QUOR_U32 TIMING_AT = 3;
constexpr QUOR_U32 TIMING_LENGTH = 6; // 90kHz_flag, num_units_in_tick and the last flags
constexpr QUOR_U32 AFTER_90KHZ_FLAG_AT = 4;
constexpr QUOR_U32 N_TO_LAST_FLAGS_LENGTH = 13;
constexpr QUOR_U32 AFTER_N_AND_K_AT = 12;

// Quirk: with timing information more is read than is reported.
constexpr QUOR_U32 BYTES_READ_WITHOUT_TIMING = 2;
constexpr QUOR_U32 BYTES_READ_WITH_TIMING = 3;
constexpr QUOR_U32 BYTES_READ_WITH_N_AND_K = 11;

detail::Outcome tooShort(QUOR_U32 available, QUOR_U32 needed) {
    QUOR_ISDBT_LOG("%s: TAVCTimingAndHRDDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                   detail::LOG_TAG, available, needed);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
}

} // namespace

TAVCTimingAndHRDDescriptor::~TAVCTimingAndHRDDescriptor() = default;

TAVCTimingAndHRDDescriptor* TAVCTimingAndHRDDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode) {
    return detail::parseDescriptor<TAVCTimingAndHRDDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TAVCTimingAndHRDDescriptor::decode(const detail::Bytes& descriptor) {
    m_bHRDManagementValid = descriptor.bit(2, 7);
    m_bPictTimingInfoPresent = descriptor.bit(2, 0);
    QUOR_U32 lastFlagsAt = TIMING_AT;
    QUOR_U32 bytesRead = BYTES_READ_WITHOUT_TIMING;
    if (m_bPictTimingInfoPresent) {
        const detail::Bytes timing = descriptor.from(TIMING_AT);
        if (timing.size() < TIMING_LENGTH) {
            return tooShort(timing.size(), TIMING_LENGTH);
        }
        m_b90kHzFlag = timing.bit(0, 7);
        lastFlagsAt = AFTER_90KHZ_FLAG_AT;
        bytesRead = BYTES_READ_WITH_TIMING;
        // Quirk: N and K are taken when the flag is set, not when it is clear.
        if (m_b90kHzFlag) {
            const detail::Bytes ratio = descriptor.from(AFTER_90KHZ_FLAG_AT);
            if (ratio.size() < N_TO_LAST_FLAGS_LENGTH) {
                return tooShort(ratio.size(), N_TO_LAST_FLAGS_LENGTH);
            }
            m_iN = ratio.u32(0);
            m_iK = ratio.u32(4);
            lastFlagsAt = AFTER_N_AND_K_AT;
            bytesRead = BYTES_READ_WITH_N_AND_K;
        }
        // Quirk: the last flags are taken from the first bits of num_units_in_tick.
        m_iNumUnitsInTick = descriptor.u32(lastFlagsAt);
    }
    m_bFixedFrameRateFlag = descriptor.bit(lastFlagsAt, 7);
    m_bTemporalPOCFlag = descriptor.bit(lastFlagsAt, 6);
    m_bPict2DisplayConvFlag = descriptor.bit(lastFlagsAt, 5);
    return detail::Outcome::done(bytesRead);
}

} // namespace Quor
