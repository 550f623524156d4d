#include "descriptors/TLogoTransmissionDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

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
    // The length of a CDT1 logo, also when a CDT2 logo is too short; readers of the log depend on it.
    QUOR_ISDBT_LOG("%s: TLogoTransmissionDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                   detail::LOG_TAG, available, CDT1_LENGTH);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
}

} // namespace

constexpr U8 TLogoTransmissionDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TLogoTransmissionDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TLogoTransmissionDescriptor::TYPE_CDT1;
constexpr QUOR_U8 TLogoTransmissionDescriptor::TYPE_CDT2;
constexpr QUOR_U8 TLogoTransmissionDescriptor::TYPE_SIMPLE;

TLogoTransmissionDescriptor::TLogoTransmissionDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iLogoTransmType(0), m_iLogoID(0), m_iLogoVersion(0),
      m_iDownloadDataID(0), m_iLogoDataLength(0) {}

TLogoTransmissionDescriptor::~TLogoTransmissionDescriptor() = default;

TLogoTransmissionDescriptor* TLogoTransmissionDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                                QUOR_U16* err) {
    return detail::parseDescriptor<TLogoTransmissionDescriptor>(
        data, length, parsedLength, err, [](TLogoTransmissionDescriptor& object, detail::Bytes descriptor) {
            object.m_iLogoTransmType = descriptor.u8(2);
            const detail::Bytes body = descriptor.from(COMMON_HEADER_LENGTH + TYPE_LENGTH);
            switch (object.m_iLogoTransmType) {
            case TYPE_CDT1:
                if (body.size() < CDT1_LENGTH) {
                    return tooShort(body.size());
                }
                object.m_iLogoID = logoID(descriptor);
                object.m_iLogoVersion = descriptor.u16(5) & 0x0FFFU;
                object.m_iDownloadDataID = descriptor.u16(7);
                return detail::Outcome::done(TYPE_LENGTH + CDT1_LENGTH);
            case TYPE_CDT2:
                if (body.size() < CDT2_LENGTH) {
                    return tooShort(body.size());
                }
                object.m_iLogoID = logoID(descriptor);
                return detail::Outcome::done(TYPE_LENGTH + CDT2_LENGTH);
            case TYPE_SIMPLE:
                object.m_pLogoData = detail::copyBytes(body, object.m_iLogoDataLength);
                return detail::Outcome::done(TYPE_LENGTH + body.size());
            default:
                QUOR_ISDBT_LOG(
                    "%s: TLogoTransmissionDescriptor::parse: Unsupported Logo Transmission Type: 0x%02X (%d)",
                    detail::LOG_TAG, unsigned{object.m_iLogoTransmType}, int{object.m_iLogoTransmType});
                return detail::Outcome::done(TYPE_LENGTH);
            }
        });
}

} // namespace Quor
