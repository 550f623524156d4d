#ifndef QUOR_TAIT_TABLE_H
#define QUOR_TAIT_TABLE_H

#include "TISDBTVersionedTable.h"
#include "ait/TApplication.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "detail/Descriptors.h"
#include "detail/Owned.h"

#include <list>
#include <string>

namespace Quor {

/// Application information table (ABNT NBR 15606, table_id 0x74, on a PID that the program map table signals): the
/// interactive applications of a service, and the descriptors that they have in common.
class QUOR_ISDBT_API TAITTable : public TISDBTVersionedTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 4;

    /// An empty table over a private copy of the section.
    TAITTable(QUOR_U8* data, QUOR_U32 length);
    ~TAITTable() override;

    /// Parses one section.
    /// @param data             the section, from table_id to CRC_32; it must outlive the use of getData() of
    ///                         applications and descriptors.
    /// @param length           number of bytes; those behind the section are ignored.
    /// @param parseDescriptors ignored: descriptors and applications are always parsed.
    /// @param checkCRC32       ignored.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA, ERROR_INVALID_DATA_LENGTH,
    ///                         ERROR_INVALID_TABLE_ID, ERROR_INVALID_SECTION_LEN_TOO_BIG,
    ///                         ERROR_INCOMPATIBLE_TABLE_TYPE, ERROR_TABLE_NOT_UPDATED, ERROR_INVALID_ITEM for any
    ///                         application that failed, or what a common descriptor failed with; mind that this is
    ///                         ERROR_OK for a transport protocol that is not supported. May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TAITTable* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, int checkCRC32, QUOR_U16* errorCode,
                            TAITTable* previous);

    /// application_type, all 16 bits; see TApplication.
    QUOR_U16 getApplicationType() const { return getGenericDataField(); }

    /// @name The common descriptors
    /// Owned by the table, null when absent.
    /// @{
    TApplicationDescriptor* getApplicationDescriptor() const { return m_descriptors.get<TApplicationDescriptor>(); }
    TApplicationNameDescriptor* getApplicationNameDescriptor() const {
        return m_descriptors.get<TApplicationNameDescriptor>();
    }
    TApplicationIconDescriptor* getApplicationIconDescriptor() const {
        return m_descriptors.get<TApplicationIconDescriptor>();
    }
    TExternalApplicationAuthorizationDescriptor* getExternalApplicationAuthorizationDescriptor() const {
        return m_descriptors.get<TExternalApplicationAuthorizationDescriptor>();
    }
    TTransportProtocolDescriptor* getTransportProtocolDescriptor() const {
        return m_descriptors.get<TTransportProtocolDescriptor>();
    }
    TIPSignalingDescriptor* getIPSignalingDescriptor() const { return m_descriptors.get<TIPSignalingDescriptor>(); }
    TPrefetchDescriptor* getPrefetchDescriptor() const { return m_descriptors.get<TPrefetchDescriptor>(); }
    TDIILocationDescriptor* getDIILocationDescriptor() const { return m_descriptors.get<TDIILocationDescriptor>(); }
    TGingaApplicationDescriptor* getGingaApplicationDescriptor() const {
        return m_descriptors
            .get<TGingaJavaApplicationDescriptor, TGingaNCLApplicationDescriptor, TGingaApplicationDescriptor>();
    }
    TGingaApplicationLocationDescriptor* getGingaApplicationLocationDescriptor() const {
        return m_descriptors.get<TGingaJavaApplicationLocationDescriptor, TGingaNCLApplicationLocationDescriptor,
                                 TGingaApplicationLocationDescriptor>();
    }
    /// @}

    /// The common descriptor of a tag, or null. The table keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const override { return m_descriptors.find(descriptorTag); }

    /// The tags of the common descriptors, in the order of TApplication::getDescriptorTags(): a new list, which the
    /// caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const override;

    /// The number of applications.
    QUOR_U32 getApplicationsCount() const { return m_pApplications.size(); }

    /// The keys of the applications in ascending order, that is by organisation_id, then application_id: a new list,
    /// which the caller deletes by its address.
    std::list<std::string>& getApplicationsIDs() const;

    /// The application of a key (see TApplicationIdentifier::calculateHashID()), owned by the table; null when there is
    /// none.
    TApplication* getApplication(std::string id) const;

    /// Adds an application under its key; the table owns it from now on, but is not made its parent. An application
    /// with the same key is displaced and not deleted. Null is ignored.
    void addApplication(TApplication* application);

    /// Removes and deletes the application of a key. @return whether there was one.
    BOOL removeApplication(std::string id);

private:
    friend struct detail::Access;
    friend class TApplication;

    detail::Outcome decode(const detail::Bytes& section, QUOR_U16 remaining);

    detail::Items<TApplication> m_pApplications{};
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
