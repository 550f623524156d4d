#include "descriptors/TCountryAvailabilityDescriptor.h"

#include "detail/Items.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | country_availability_flag (1) reserved_future_use (7) |
// country_code (24) ...
constexpr QUOR_U32 COUNTRY_CODES_AT = 3;
constexpr QUOR_U32 COUNTRY_CODE_LENGTH = 3;

} // namespace

constexpr U8 TCountryAvailabilityDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TCountryAvailabilityDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TCountryAvailabilityDescriptor::TCountryAvailabilityDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iCountryAvailabilityFlag(0) {}

TCountryAvailabilityDescriptor::~TCountryAvailabilityDescriptor() = default;

TCountryAvailabilityDescriptor* TCountryAvailabilityDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseDescriptor<TCountryAvailabilityDescriptor>(
        data, length, parsedLength, err, [](TCountryAvailabilityDescriptor& object, detail::Bytes descriptor) {
            object.m_iCountryAvailabilityFlag = descriptor.u8(2) >> 7;
            for (detail::Bytes left = descriptor.from(COUNTRY_CODES_AT); left.has(0, COUNTRY_CODE_LENGTH);
                 left = left.from(COUNTRY_CODE_LENGTH)) {
                object.add(left.u24(0));
            }
            // Callers depend on this value.
            return detail::Outcome::done(0);
        });
}

QUOR_U32 TCountryAvailabilityDescriptor::size() const {
    return detail::count(m_pItems);
}

QUOR_U32 TCountryAvailabilityDescriptor::get(QUOR_U32 index) const {
    return detail::get(m_pItems, index);
}

void TCountryAvailabilityDescriptor::add(QUOR_U32 code) {
    m_pItems.push_back(code);
}

QUOR_BOOL TCountryAvailabilityDescriptor::remove(QUOR_U32 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
