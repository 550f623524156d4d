#include "descriptors/TApplicationDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

#include <algorithm>

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | application_profiles_length (8) | profiles |
// service_bound_flag (1) visibility (2) reserved (5) | application_priority (8) | transport_protocol_label (8)...
constexpr QUOR_U32 PROFILES_LENGTH_AT = 2;
constexpr QUOR_U32 PROFILES_AT = 3;
constexpr QUOR_U32 FLAGS_AND_PRIORITY_LENGTH = 2;

constexpr auto KEY = &TApplicationDescriptorProfile::getApplicationProfile;

constexpr unsigned VISIBLE_FOR_APPLICATIONS = 1;

} // namespace

TApplicationDescriptor::TApplicationDescriptor(TApplicationDescriptor* source)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_pProfiles(detail::copy(source->m_pProfiles)),
      m_bServiceBoundFlag(source->m_bServiceBoundFlag), m_iVisibility(source->m_iVisibility),
      m_iApplicationPriority(source->m_iApplicationPriority), m_bVisibilityUsers(source->m_bVisibilityUsers),
      m_bVisibilityApps(source->m_bVisibilityApps), m_iTransportProtSize(source->m_iTransportProtSize),
      m_pTransportProts(detail::copyBytes(source->m_pTransportProts, source->m_iTransportProtSize)) {}

TApplicationDescriptor::~TApplicationDescriptor() = default;

TApplicationDescriptor* TApplicationDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TApplicationDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TApplicationDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::Bytes body = descriptor.from(PROFILES_AT);
    const QUOR_U8 profilesLength = descriptor.u8(PROFILES_LENGTH_AT);
    if (body.size() < profilesLength) {
        QUOR_ISDBT_LOG(
            "%s: TApplicationDescriptor:: parse: Application Profiles Length exceeds Descriptor Length: %u > %u. Aborting!",
            detail::LOG_TAG, unsigned{profilesLength}, body.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    const detail::ItemWalk walk = detail::decodeItemsByKey<KEY>(body.first(profilesLength), m_pProfiles);
    if (!walk.complete) {
        return walk.outcome;
    }
    const detail::Bytes rest = body.from(profilesLength);
    if (rest.size() < FLAGS_AND_PRIORITY_LENGTH) {
        QUOR_ISDBT_LOG("%s: TApplicationDescriptor:: parse: Section length exceeded. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_bServiceBoundFlag = rest.bit(0, 7);
    m_iVisibility = rest.u8(0) >> 5 & 3;
    m_iApplicationPriority = rest.u8(1);
    m_bVisibilityUsers = m_iVisibility > VISIBLE_FOR_APPLICATIONS;
    m_bVisibilityApps = (m_iVisibility & VISIBLE_FOR_APPLICATIONS) != 0;
    const detail::Bytes labels = rest.from(FLAGS_AND_PRIORITY_LENGTH);
    m_pTransportProts = detail::copyBytes(labels, m_iTransportProtSize);
    return detail::Outcome::done((descriptor.size() - COMMON_HEADER_LENGTH) & 0xFFU);
}

TApplicationDescriptorProfile* TApplicationDescriptor::getProfile(QUOR_U16 applicationProfile) const {
    return detail::find<KEY>(m_pProfiles, applicationProfile);
}

std::list<QUOR_U16>* TApplicationDescriptor::getProfiles() const {
    return detail::keys<KEY>(m_pProfiles);
}

void TApplicationDescriptor::addProfile(TApplicationDescriptorProfile* profile) {
    detail::add<KEY>(m_pProfiles, profile);
}

QUOR_BOOL TApplicationDescriptor::removeProfile(QUOR_U16 applicationProfile) {
    return detail::remove<KEY>(m_pProfiles, applicationProfile);
}

QUOR_U8* TApplicationDescriptor::getTransportProtocols() const {
    auto* const labels = new QUOR_U8[m_iTransportProtSize];
    std::copy_n(m_pTransportProts.get(), m_iTransportProtSize, labels);
    return labels;
}

} // namespace Quor
