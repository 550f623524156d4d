#ifndef QUOR_TAPPLICATION_DESCRIPTOR_H
#define QUOR_TAPPLICATION_DESCRIPTOR_H

#include "descriptors/TApplicationDescriptorProfile.h"
#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <list>

namespace Quor {

/// Application descriptor (ABNT NBR 15606, tag 0x00, in the application information table): the profiles that an
/// application needs, whether it is bound to its service, who may see it, and which transport protocols carry it.
class QUOR_ISDBT_API TApplicationDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x00;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 3;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TApplicationDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    /// A deep copy of @p source, which must not be null; without data.
    explicit TApplicationDescriptor(TApplicationDescriptor* source);
    ~TApplicationDescriptor() override;

    /// Parses one descriptor. The labels run to the end of @p length.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2, modulo 256. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TApplicationDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The number of profiles.
    QUOR_U32 getProfilesCount() const { return m_pProfiles.size(); }

    /// The profile of a number, owned by the descriptor; null when there is none.
    TApplicationDescriptorProfile* getProfile(QUOR_U16 applicationProfile) const;

    /// The profile numbers in ascending order: a new list, which the caller deletes.
    std::list<QUOR_U16>* getProfiles() const;

    /// Adds a profile, which the descriptor owns from now on. A profile with the same number is displaced and not
    /// deleted. Null is ignored.
    void addProfile(TApplicationDescriptorProfile* profile);

    /// Removes and deletes the profile of a number. @return whether there was one.
    QUOR_BOOL removeProfile(QUOR_U16 applicationProfile);

    /// service_bound_flag: true when the application belongs to this service alone and ends with it.
    QUOR_BOOL isServiceBound() const { return m_bServiceBoundFlag; }

    /// visibility, 0 to 3: bit 1 for users, bit 0 for applications.
    QUOR_U8 getVisibility() const { return m_iVisibility; }

    /// True when the visibility is 2 or 3.
    QUOR_BOOL isVisibileForUsers() const { return m_bVisibilityUsers; }

    /// True when the visibility is 1 or 3.
    QUOR_BOOL isVisibileForApplications() const { return m_bVisibilityApps; }

    /// application_priority among the applications of the service, 0 to 255.
    QUOR_U8 getApplicationPriority() const { return m_iApplicationPriority; }

    /// The number of transport protocol labels, kept in 8 bits.
    QUOR_U8 getTransportProtocolsCount() const { return m_iTransportProtSize; }

    /// A copy of the transport_protocol_label values in wire order: a new array of getTransportProtocolsCount() labels,
    /// never null, which the caller frees with `delete[]`.
    QUOR_U8* getTransportProtocols() const;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Items<TApplicationDescriptorProfile> m_pProfiles{};
    QUOR_BOOL m_bServiceBoundFlag = false;
    QUOR_U8 m_iVisibility = 0;
    QUOR_U8 m_iApplicationPriority = 0;
    QUOR_BOOL m_bVisibilityUsers = false;
    QUOR_BOOL m_bVisibilityApps = false;
    QUOR_U8 m_iTransportProtSize = 0;
    detail::Array<QUOR_U8> m_pTransportProts{};
};

} // namespace Quor

#endif
