#include "descriptors/TLogoTransmissionDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"
#include "detail/Log.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | logo_transmission_type (8) |
// CDT1:   reserved_future_use (7) logo_id (9) | reserved_future_use (4) logo_version (12) | download_data_id (16)
// CDT2:   reserved_future_use (7) logo_id (9)
// simple: logo_char (8) ...
constexpr QUOR_U32 TYPE_LENGTH = 1;
constexpr QUOR_U32 CDT1_LENGTH = 6;
constexpr QUOR_U32 CDT2_LENGTH = 2;

QUOR_U16 logoID(detail::Bytes descriptor) {
    return descriptor.u16(3) & 0x01FFU;
}

detail::Outcome tooShort(QUOR_U32 available) {
    // Quirk: the line has the length of a CDT1 logo, also when a CDT2 logo is too short.
    QUOR_ISDBT_LOG("%s: TLogoTransmissionDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                   detail::LOG_TAG, available, CDT1_LENGTH);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
}

} // namespace

TLogoTransmissionDescriptor::~TLogoTransmissionDescriptor() = default;

TLogoTransmissionDescriptor* TLogoTransmissionDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                                QUOR_U16* errorCode) {
    return detail::parseDescriptor<TLogoTransmissionDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TLogoTransmissionDescriptor::decode(const detail::Bytes& descriptor) {
    m_iLogoTransmType = descriptor.u8(2);
    const detail::Bytes body = descriptor.from(COMMON_HEADER_LENGTH + TYPE_LENGTH);
    switch (m_iLogoTransmType) {
    case TYPE_CDT1:
        if (body.size() < CDT1_LENGTH) {
            return tooShort(body.size());
        }
        m_iLogoID = logoID(descriptor);
        m_iLogoVersion = descriptor.u16(5) & 0x0FFFU;
        m_iDownloadDataID = descriptor.u16(7);
        return detail::Outcome::done(TYPE_LENGTH + CDT1_LENGTH);
    case TYPE_CDT2:
        if (body.size() < CDT2_LENGTH) {
            return tooShort(body.size());
        }
        m_iLogoID = logoID(descriptor);
        return detail::Outcome::done(TYPE_LENGTH + CDT2_LENGTH);
    case TYPE_SIMPLE:
        m_pLogoData = detail::copyBytes(body, m_iLogoDataLength);
        return detail::Outcome::done(TYPE_LENGTH + body.size());
    default:
        QUOR_ISDBT_LOG("%s: TLogoTransmissionDescriptor::parse: Unsupported Logo Transmission Type: 0x%02X (%d)",
                       detail::LOG_TAG, unsigned{m_iLogoTransmType}, int{m_iLogoTransmType});
        return detail::Outcome::done(TYPE_LENGTH);
    }
}

} // namespace Quor
