#include "descriptors/TApplicationDescriptorProfile.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// application_profile (16) | version.major (8) | version.minor (8) | version.micro (8)
constexpr QUOR_U32 PROFILE_LENGTH = 5;

} // namespace

TApplicationDescriptorProfile::TApplicationDescriptorProfile(TApplicationDescriptorProfile* source)
    : m_iApplicationProfile(source->m_iApplicationProfile), m_iVersionMajor(source->m_iVersionMajor),
      m_iVersionMinor(source->m_iVersionMinor), m_iVersionMicro(source->m_iVersionMicro) {}

TApplicationDescriptorProfile::~TApplicationDescriptorProfile() = default;

TApplicationDescriptorProfile* TApplicationDescriptorProfile::parse(QUOR_U8* data, QUOR_U32 length,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TApplicationDescriptorProfile>(data, length, parsedLength, errorCode);
}

detail::Outcome TApplicationDescriptorProfile::decode(const detail::Bytes& left) {
    if (left.size() < PROFILE_LENGTH) {
        QUOR_ISDBT_LOG("%s: TApplicationDescriptorProfile::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iApplicationProfile = left.u16(0);
    m_iVersionMajor = left.u8(2);
    m_iVersionMinor = left.u8(3);
    m_iVersionMicro = left.u8(4);
    return detail::Outcome::done(PROFILE_LENGTH);
}

} // namespace Quor
