#ifndef QUOR_TAPPLICATION_IDENTIFIER_H
#define QUOR_TAPPLICATION_IDENTIFIER_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

#include <string>

namespace Quor {

/// The pair of numbers that names an interactive application, and the key by which tables and descriptors find it.
class QUOR_ISDBT_API TApplicationIdentifier : public TISDBTMemory {
public:
    /// Bytes of an identifier.
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 6;

    /// Organisation 0, application 0.
    TApplicationIdentifier();
    /// @param organizationId organisation_id.
    /// @param applicationId  application_id.
    TApplicationIdentifier(QUOR_U32 organizationId, QUOR_U16 applicationId);
    /// A copy of @p source, which must not be null.
    explicit TApplicationIdentifier(TApplicationIdentifier* source);
    virtual ~TApplicationIdentifier();

    /// Parses one identifier.
    /// @param data             the identifier.
    /// @param length           bytes left in the loop that carries it.
    /// @param parseDescriptors ignored.
    /// @param parsedLength     receives 6. May be null.
    /// @param errorCode        ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new identifier, which the caller deletes, or null.
    static TApplicationIdentifier* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, QUOR_U32* parsedLength,
                                         QUOR_U16* errorCode);

    /// organisation_id.
    QUOR_U32 getOrganizationID() const { return m_iOrganizationID; }

    /// application_id, 0 to 65535.
    QUOR_U16 getApplicationID() const { return m_iApplicationID; }

    /// The key of an application: twelve upper-case hexadecimal digits, organisation_id before application_id, so that
    /// keys sort as the pairs do.
    static std::string calculateHashID(QUOR_U32 organizationId, QUOR_U16 applicationId);

    /// The key of an identifier; an empty string for null.
    static std::string calculateHashID(TApplicationIdentifier* identifier);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U32 m_iOrganizationID;
    QUOR_U16 m_iApplicationID;
};

} // namespace Quor

#endif
