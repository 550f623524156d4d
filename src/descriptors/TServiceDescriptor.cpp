#include "descriptors/TServiceDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Strings.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | service_type (8) |
// service_provider_name_length (8) | char (8) ... | service_name_length (8) | char (8) ...

TServiceDescriptor::~TServiceDescriptor() = default;

TServiceDescriptor* TServiceDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                              QUOR_U16* errorCode) {
    return detail::parseDescriptor<TServiceDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TServiceDescriptor::decode(const detail::Bytes& descriptor) {
    m_iServiceType = descriptor.u8(2);
    const detail::Bytes names = descriptor.from(3);
    const QUOR_S32 provider = detail::readPrefixedText(names, m_sServiceProviderName);
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
    const QUOR_S32 service = detail::readPrefixedText(left, m_sServiceName);
    if (service < 0) {
        QUOR_ISDBT_LOG("%s: TServiceDescriptor:: parse: ERROR: parsing Service Name. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    return detail::Outcome::done(static_cast<QUOR_U8>(provider + service));
}

} // namespace Quor
