#include "descriptors/TServiceDescriptor.h"

#include "detail/Log.h"
#include "detail/Shapes.h"
#include "utils/ParserUtils.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | service_type (8) |
// service_provider_name_length (8) | char (8) ... | service_name_length (8) | char (8) ...

/// Takes one name behind its length byte. @return the bytes of both, or -1.
QUOR_S32 takeName(detail::Bytes left, std::string& name) {
    constexpr QUOR_U32 BEHIND_LENGTH_BYTE = 0;
    return ParserUtils::parseStr(left.data(), name, BEHIND_LENGTH_BYTE, left.size());
}

} // namespace

constexpr U8 TServiceDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TServiceDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_DIGITAL_TV;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_DIGITAL_AUDIO;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_TELETEXT;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_NVOD_REFERENCE;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_NVOD_TIME_SHIFTED;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_MOSAIC;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_RADIO;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ADVANCED_CODING_MOSAIC;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_DATA_BROADCASTING;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_RESERVED_COMMON_INTERFACE;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_RCS_MAP;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_RCS_FLS;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_DVB_MHP;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_DIGITAL_MPEG2_HD_TELEVISION;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_SD_TV;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_SD_TIME_SHIFTED_TV;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_SD_REFERENCE_TV;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_HD_TV;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_HD_TIME_SHIFTED_TV;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_HD_REFERENCE_TV;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_SPECIAL_VIDEO;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_SPECIAL_AUDIO;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_SPECIAL_DATA;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_ENGINEERING;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_PROMOTIONAL_VIDEO;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_PROMOTIONAL_AUDIO;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_PROMOTIONAL_DATA;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_DATA_SERVICE_FOR_ANTECIPATED_STORAGE;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_EXCLUSIVE_DATA_SERVICE_FOR_STORAGE;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_BOOKMARK_LIST;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_SIMULTANEOUS_SERVER_TYPE;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_INDEPENDENT_FILE_SERVICE;
constexpr QUOR_U8 TServiceDescriptor::SERVICE_DATA;

TServiceDescriptor::TServiceDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iServiceType(0) {}

TServiceDescriptor::~TServiceDescriptor() = default;

TServiceDescriptor* TServiceDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseDescriptor<TServiceDescriptor>(
        data, length, parsedLength, err, [](TServiceDescriptor& object, detail::Bytes descriptor) {
            object.m_iServiceType = descriptor.u8(2);
            const detail::Bytes names = descriptor.from(3);
            const QUOR_S32 provider = takeName(names, object.m_sServiceProviderName);
            if (provider < 0) {
                QUOR_ISDBT_LOG("%s: TServiceDescriptor:: parse: ERROR: parsing Service Provider Name. Aborting!",
                               detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
            }
            const detail::Bytes left = names.from(static_cast<QUOR_U32>(provider));
            if (left.empty()) {
                constexpr QUOR_U32 NEEDED = 1;
                QUOR_ISDBT_LOG("%s: TServiceDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                               detail::LOG_TAG, left.size(), NEEDED);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            const QUOR_S32 service = takeName(left, object.m_sServiceName);
            if (service < 0) {
                QUOR_ISDBT_LOG("%s: TServiceDescriptor:: parse: ERROR: parsing Service Name. Aborting!",
                               detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
            }
            return detail::Outcome::done(static_cast<QUOR_U8>(provider + service));
        });
}

} // namespace Quor
