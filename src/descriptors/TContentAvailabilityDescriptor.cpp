#include "descriptors/TContentAvailabilityDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | reserved_future_use (2) image_constraint_token (1) retention_mode (1)
// retention_state (3) encryption_mode (1)

constexpr U8 TContentAvailabilityDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TContentAvailabilityDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TContentAvailabilityDescriptor::RETENTION_STATE_NO_LIMIT;
constexpr QUOR_U8 TContentAvailabilityDescriptor::RETENTION_STATE_ONE_WEEK;
constexpr QUOR_U8 TContentAvailabilityDescriptor::RETENTION_STATE_2_DAYS;
constexpr QUOR_U8 TContentAvailabilityDescriptor::RETENTION_STATE_1_DAY;
constexpr QUOR_U8 TContentAvailabilityDescriptor::RETENTION_STATE_12_HOURS;
constexpr QUOR_U8 TContentAvailabilityDescriptor::RETENTION_STATE_6_HOURS;
constexpr QUOR_U8 TContentAvailabilityDescriptor::RETENTION_STATE_3_HOURS;
constexpr QUOR_U8 TContentAvailabilityDescriptor::RETENTION_STATE_1_HALF_HOUR;

TContentAvailabilityDescriptor::TContentAvailabilityDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_bImageConstraintToken(false), m_bRetentionMode(false),
      m_iRetentionState(0), m_bEncryptionMode(false) {}

TContentAvailabilityDescriptor::~TContentAvailabilityDescriptor() = default;

TContentAvailabilityDescriptor* TContentAvailabilityDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TContentAvailabilityDescriptor>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TContentAvailabilityDescriptor& object, detail::Bytes descriptor) {
            object.m_bImageConstraintToken = !descriptor.bit(2, 5);
            object.m_bRetentionMode = !descriptor.bit(2, 4);
            object.m_iRetentionState = descriptor.u8(2) >> 1 & 7U;
            object.m_bEncryptionMode = !descriptor.bit(2, 0);
            // Header included; callers depend on this value.
            return detail::Outcome::done(descriptor.size());
        });
}

} // namespace Quor
