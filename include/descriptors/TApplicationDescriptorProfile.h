#ifndef QUOR_TAPPLICATION_DESCRIPTOR_PROFILE_H
#define QUOR_TAPPLICATION_DESCRIPTOR_PROFILE_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// A receiver profile that an application needs, with the lowest version of it.
class QUOR_ISDBT_API TApplicationDescriptorProfile : public TISDBTMemory {
public:
    /// Profile 0, version 0.0.0.
    TApplicationDescriptorProfile() = default;
    /// A copy of @p source, which must not be null.
    explicit TApplicationDescriptorProfile(TApplicationDescriptorProfile* source);
    virtual ~TApplicationDescriptorProfile();

    /// Parses one profile of 5 bytes.
    /// @param data         the profile.
    /// @param length       bytes left of the profiles.
    /// @param parsedLength receives 5. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new profile, which the caller deletes, or null.
    static TApplicationDescriptorProfile* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode);

    /// application_profile, 0 to 65535.
    QUOR_U16 getApplicationProfile() const { return m_iApplicationProfile; }

    /// version.major, 0 to 255.
    QUOR_U8 getVersionMajor() const { return m_iVersionMajor; }

    /// version.minor, 0 to 255.
    QUOR_U8 getVersionMinor() const { return m_iVersionMinor; }

    /// version.micro, 0 to 255.
    QUOR_U8 getVersionMicro() const { return m_iVersionMicro; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U16 m_iApplicationProfile = 0;
    QUOR_U8 m_iVersionMajor = 0;
    QUOR_U8 m_iVersionMinor = 0;
    QUOR_U8 m_iVersionMicro = 0;
};

} // namespace Quor

#endif
