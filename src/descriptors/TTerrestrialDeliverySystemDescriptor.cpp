#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | area_code (12) guard_interval (2) transmission_mode (2) |
// frequency (16) ...

constexpr U8 TTerrestrialDeliverySystemDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TTerrestrialDeliverySystemDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_32;
constexpr QUOR_U8 TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_16;
constexpr QUOR_U8 TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_8;
constexpr QUOR_U8 TTerrestrialDeliverySystemDescriptor::GUARD_INTERNVAL_1_4;
constexpr QUOR_U8 TTerrestrialDeliverySystemDescriptor::TRANSMISSION_MODE_1;
constexpr QUOR_U8 TTerrestrialDeliverySystemDescriptor::TRANSMISSION_MODE_2;
constexpr QUOR_U8 TTerrestrialDeliverySystemDescriptor::TRANSMISSION_MODE_3;

TTerrestrialDeliverySystemDescriptor::TTerrestrialDeliverySystemDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iAreaCode(0), m_iGuardInterval(0), m_iTransmissionMode(0),
      m_iFrequencyCounter(0) {}

TTerrestrialDeliverySystemDescriptor::~TTerrestrialDeliverySystemDescriptor() = default;

TTerrestrialDeliverySystemDescriptor*
TTerrestrialDeliverySystemDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseDescriptor<TTerrestrialDeliverySystemDescriptor>(
        data, length, parsedLength, err, [](TTerrestrialDeliverySystemDescriptor& object, detail::Bytes descriptor) {
            object.m_iAreaCode = descriptor.u16(2) >> 4;
            object.m_iGuardInterval = descriptor.u8(3) >> 2 & 3U;
            object.m_iTransmissionMode = descriptor.u8(3) & 3U;
            object.m_pFrequencies = detail::copyWords(descriptor.from(4), object.m_iFrequencyCounter);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
