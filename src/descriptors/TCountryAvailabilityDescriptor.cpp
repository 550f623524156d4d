#include "descriptors/TCountryAvailabilityDescriptor.h"

#include "detail/Family.h"
#include "detail/Items.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | country_availability_flag (1) reserved_future_use (7) |
// country_code (24) ...
constexpr QUOR_U32 COUNTRY_CODES_AT = 3;
constexpr QUOR_U32 COUNTRY_CODE_LENGTH = 3;

} // namespace

TCountryAvailabilityDescriptor::~TCountryAvailabilityDescriptor() = default;

TCountryAvailabilityDescriptor* TCountryAvailabilityDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TCountryAvailabilityDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TCountryAvailabilityDescriptor::decode(const detail::Bytes& descriptor) {
    m_iCountryAvailabilityFlag = descriptor.u8(2) >> 7;
    for (detail::Bytes left = descriptor.from(COUNTRY_CODES_AT); left.has(0, COUNTRY_CODE_LENGTH);
         left = left.from(COUNTRY_CODE_LENGTH)) {
        detail::append(m_pItems, left.u24(0), left.memory());
    }
    // Quirk: no bytes, however many there were.
    return detail::Outcome::done(0);
}

QUOR_U32 TCountryAvailabilityDescriptor::get(QUOR_U32 index) const {
    return detail::get<QUOR_U32>(m_pItems, index);
}

void TCountryAvailabilityDescriptor::add(QUOR_U32 code) {
    detail::add(m_pItems, code);
}

QUOR_BOOL TCountryAvailabilityDescriptor::remove(QUOR_U32 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
