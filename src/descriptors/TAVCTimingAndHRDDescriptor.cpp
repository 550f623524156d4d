#include "descriptors/TAVCTimingAndHRDDescriptor.h"

#include "detail/Log.h"
#include "detail/Shapes.h"

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

// Callers depend on these values, though more is read with timing information.
constexpr QUOR_U32 BYTES_READ_WITHOUT_TIMING = 2;
constexpr QUOR_U32 BYTES_READ_WITH_TIMING = 3;
constexpr QUOR_U32 BYTES_READ_WITH_N_AND_K = 11;

detail::Outcome tooShort(QUOR_U32 available, QUOR_U32 needed) {
    QUOR_ISDBT_LOG("%s: TAVCTimingAndHRDDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                   detail::LOG_TAG, available, needed);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
}

} // namespace

constexpr U8 TAVCTimingAndHRDDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TAVCTimingAndHRDDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TAVCTimingAndHRDDescriptor::TAVCTimingAndHRDDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_bHRDManagementValid(false), m_bPictTimingInfoPresent(false),
      m_b90kHzFlag(false), m_iN(0), m_iK(0), m_iNumUnitsInTick(0), m_bFixedFrameRateFlag(false),
      m_bTemporalPOCFlag(false), m_bPict2DisplayConvFlag(false) {}

TAVCTimingAndHRDDescriptor::~TAVCTimingAndHRDDescriptor() = default;

TAVCTimingAndHRDDescriptor* TAVCTimingAndHRDDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                              QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TAVCTimingAndHRDDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TAVCTimingAndHRDDescriptor& object, detail::Bytes descriptor) {
            object.m_bHRDManagementValid = descriptor.bit(2, 7);
            object.m_bPictTimingInfoPresent = descriptor.bit(2, 0);
            QUOR_U32 lastFlagsAt = TIMING_AT;
            QUOR_U32 bytesRead = BYTES_READ_WITHOUT_TIMING;
            if (object.m_bPictTimingInfoPresent) {
                const detail::Bytes timing = descriptor.from(TIMING_AT);
                if (timing.size() < TIMING_LENGTH) {
                    return tooShort(timing.size(), TIMING_LENGTH);
                }
                object.m_b90kHzFlag = timing.bit(0, 7);
                lastFlagsAt = AFTER_90KHZ_FLAG_AT;
                bytesRead = BYTES_READ_WITH_TIMING;
                // N and K are taken when the flag is set, not when it is clear; callers depend on it.
                if (object.m_b90kHzFlag) {
                    const detail::Bytes ratio = descriptor.from(AFTER_90KHZ_FLAG_AT);
                    if (ratio.size() < N_TO_LAST_FLAGS_LENGTH) {
                        return tooShort(ratio.size(), N_TO_LAST_FLAGS_LENGTH);
                    }
                    object.m_iN = ratio.u32(0);
                    object.m_iK = ratio.u32(4);
                    lastFlagsAt = AFTER_N_AND_K_AT;
                    bytesRead = BYTES_READ_WITH_N_AND_K;
                }
                // The last flags are the first bits of num_units_in_tick as well; callers depend on these values.
                object.m_iNumUnitsInTick = descriptor.u32(lastFlagsAt);
            }
            object.m_bFixedFrameRateFlag = descriptor.bit(lastFlagsAt, 7);
            object.m_bTemporalPOCFlag = descriptor.bit(lastFlagsAt, 6);
            object.m_bPict2DisplayConvFlag = descriptor.bit(lastFlagsAt, 5);
            return detail::Outcome::done(bytesRead);
        });
}

} // namespace Quor
