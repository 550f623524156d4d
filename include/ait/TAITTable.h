#ifndef QUOR_TAIT_TABLE_H
#define QUOR_TAIT_TABLE_H

#include "TISDBTVersionedTable.h"
#include "ait/TAITDescriptors.h"
#include "ait/TApplication.h"

#include <list>
#include <map>
#include <memory>
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

    /// The common descriptor of a tag, or null. The table keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const override;

    /// The tags of the common descriptors, in the order of TApplication::getDescriptorTags(): a new list, which the
    /// caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const override;

    /// Parses one section.
    /// @param sectionData      the section, from table_id to CRC_32; it must outlive the use of getData() of
    ///                         applications and descriptors.
    /// @param dataLength       number of bytes; those behind the section are ignored.
    /// @param parseDescriptors ignored: descriptors and applications are always parsed.
    /// @param checkCRC32       ignored.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA, ERROR_INVALID_DATA_LENGTH,
    ///                         ERROR_INVALID_TABLE_ID, ERROR_INVALID_SECTION_LEN_TOO_BIG,
    ///                         ERROR_INCOMPATIBLE_TABLE_TYPE, ERROR_TABLE_NOT_UPDATED, ERROR_INVALID_ITEM for any
    ///                         application that failed, or what a common descriptor failed with; mind that this is
    ///                         ERROR_OK for a transport protocol that is not supported. May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TAITTable* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int parseDescriptors, int checkCRC32,
                            QUOR_U16* errorCode, TAITTable* previous);

    /// application_type, all 16 bits; see TApplication.
    QUOR_U16 getApplicationType() const { return getGenericDataField(); }

    /// @name The common descriptors
    /// Owned by the table, null when absent.
    /// @{
    TApplicationDescriptor* getApplicationDescriptor() const { return m_descriptors.m_pApplicationDesc.get(); }
    TApplicationNameDescriptor* getApplicationNameDescriptor() const {
        return m_descriptors.m_pApplicationNameDesc.get();
    }
    TApplicationIconDescriptor* getApplicationIconDescriptor() const {
        return m_descriptors.m_pApplicationIconDesc.get();
    }
    TExternalApplicationAuthorizationDescriptor* getExternalApplicationAuthorizationDescriptor() const {
        return m_descriptors.m_pExternalAppAuthDesc.get();
    }
    TTransportProtocolDescriptor* getTransportProtocolDescriptor() const {
        return m_descriptors.m_pTransportProtocolDesc.get();
    }
    TIPSignalingDescriptor* getIPSignalingDescriptor() const { return m_descriptors.m_pIPSignalingDesc.get(); }
    TPrefetchDescriptor* getPrefetchDescriptor() const { return m_descriptors.m_pPrefetchDesc.get(); }
    TDIILocationDescriptor* getDIILocationDescriptor() const { return m_descriptors.m_pDIILocationDesc.get(); }
    TGingaApplicationDescriptor* getGingaApplicationDescriptor() const {
        return m_descriptors.m_pGingaAppParamsDesc.get();
    }
    TGingaApplicationLocationDescriptor* getGingaApplicationLocationDescriptor() const {
        return m_descriptors.m_pGingaAppLocationDesc.get();
    }
    /// @}

    /// The number of applications.
    QUOR_U32 getApplicationsCount() const;

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
    friend class TApplication;

    struct Walk;

    detail::Outcome parseCommonDescriptors(Walk& walk, QUOR_U16* errorCode);
    detail::Outcome parseApplications(Walk& walk, QUOR_U16* errorCode);

    TAITDescriptors m_descriptors;
    std::map<std::string, std::unique_ptr<TApplication>> m_pApplications;
};

} // namespace Quor

#endif
