#include "ait/TApplicationIdentifier.h"

#include "detail/Log.h"
#include "detail/Parse.h"

#include <cstdint>

namespace Quor {

namespace {

// organisation_id (32) | application_id (16)
constexpr QUOR_U32 ORGANIZATION_ID_AT = 0;
constexpr QUOR_U32 APPLICATION_ID_AT = 4;

constexpr std::size_t HASH_ID_LENGTH = 12;

} // namespace

TApplicationIdentifier::TApplicationIdentifier() : TApplicationIdentifier(0, 0) {}

TApplicationIdentifier::TApplicationIdentifier(QUOR_U32 organizationId, QUOR_U16 applicationId)
    : m_iOrganizationID(organizationId), m_iApplicationID(applicationId) {}

TApplicationIdentifier::TApplicationIdentifier(TApplicationIdentifier* source)
    : TApplicationIdentifier(source->m_iOrganizationID, source->m_iApplicationID) {}

TApplicationIdentifier::~TApplicationIdentifier() = default;

TApplicationIdentifier* TApplicationIdentifier::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/,
                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TApplicationIdentifier>(data, length, parsedLength, errorCode);
}

detail::Outcome TApplicationIdentifier::decode(const detail::Bytes& left) {
    if (left.size() < MINIMUM_DESCRIPTOR_LENGTH) {
        QUOR_ISDBT_LOG("%s: TApplicationIdentifier::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                       left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iOrganizationID = left.u32(ORGANIZATION_ID_AT);
    m_iApplicationID = left.u16(APPLICATION_ID_AT);
    return detail::Outcome::done(MINIMUM_DESCRIPTOR_LENGTH);
}

std::string TApplicationIdentifier::calculateHashID(QUOR_U32 organizationId, QUOR_U16 applicationId) {
    std::string digits(HASH_ID_LENGTH, '0');
    std::uint64_t left = std::uint64_t{organizationId} << 16 | applicationId;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        *digit = "0123456789ABCDEF"[left & 0x0FU];
        left >>= 4;
    }
    return digits;
}

std::string TApplicationIdentifier::calculateHashID(TApplicationIdentifier* identifier) {
    return identifier == nullptr ? std::string()
                                 : calculateHashID(identifier->getOrganizationID(), identifier->getApplicationID());
}

} // namespace Quor
