#ifndef QUOR_TSERVICE_DESCRIPTION_H
#define QUOR_TSERVICE_DESCRIPTION_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"

#include <list>
#include <memory>

namespace Quor {

class TBouquetNameDescriptor;
class TCAIdentifierDescriptor;
class TContentAvailabilityDescriptor;
class TCountryAvailabilityDescriptor;
class TDigitalCopyControlDescriptor;
class TISDBTDescriptor;
class TLinkageDescriptor;
class TLogoTransmissionDescriptor;
class TMosaicDescriptor;
class TNVODReferenceDescriptor;
class TServiceDescriptor;
class TTimeShiftedServiceDescriptor;

namespace detail {
class Bytes;
class Outcome;
} // namespace detail

/// One service of the service description table (ABNT NBR 15603) with its descriptors.
class QUOR_ISDBT_API TServiceDescription {
public:
    /// @name Values of running_status.
    /// @{
    static constexpr QUOR_U16 RUNNING_STATUS_NOT_RUNNING = 1;             ///< is not on the air
    static constexpr QUOR_U16 RUNNING_STATUS_STARTS_IN_A_FEW_MINUTES = 2; ///< begins soon
    static constexpr QUOR_U16 RUNNING_STATUS_PAUSING = 3;                 ///< is interrupted
    static constexpr QUOR_U16 RUNNING_STATUS_RUNNING = 4;                 ///< is on the air
    /// @}

    /// @name Values of free_CA_mode.
    /// @{
    static constexpr QUOR_U16 FREE_CA_MODE_NOT_SCRAMBLED = 0; ///< no component is scrambled
    static constexpr QUOR_U16 FREE_CA_MODE_CA_SYSTEM = 1;     ///< a conditional access system controls some component
    /// @}

    /// All fields 0, no descriptors.
    TServiceDescription();
    virtual ~TServiceDescription();

    /// Parses one entry of the service loop.
    /// @param data             the entry. getData() of the descriptors points into it.
    /// @param length           bytes left in the section.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param parsedLength     receives the bytes that the entry took. May be null.
    /// @param err              ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, or what a descriptor
    ///                         failed with. May be null.
    /// @return a new entry, which the caller deletes, or null.
    static TServiceDescription* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, QUOR_U32* parsedLength,
                                      QUOR_U16* err);

    /// service_id, the program_number of the service in other tables.
    QUOR_U16 getServiceID() const { return m_iServiceID; }

    /// EIT_schedule_flag: whether the stream carries the service's programme schedule.
    QUOR_BOOL hasEITSchedule() const { return m_bEITSchedule; }

    /// EIT_present_following_flag: whether the stream carries the service's present and following programme.
    QUOR_BOOL hasEITPresentFollowing() const { return m_bEITPresentFollowing; }

    /// running_status, 0 to 7, as received.
    QUOR_U8 getRunningStatus() const { return m_iRunningStatus; }

    /// free_CA_mode: 0 when no component is scrambled, 1 when a conditional access system controls some.
    QUOR_U8 getFreeCAMode() const { return m_iFreeCAMode; }

    /// @name The descriptors of the service, owned by this entry; null when absent.
    /// @{
    TServiceDescriptor* getServiceDescriptor() const;
    TBouquetNameDescriptor* getBouquetNameDescriptor() const;
    TCountryAvailabilityDescriptor* getCountryAvailabilityDescriptor() const;
    TLinkageDescriptor* getLinkageDescriptor() const;
    TDigitalCopyControlDescriptor* getDigitalCopyControlDescriptor() const;
    TLogoTransmissionDescriptor* getLogoTransmissionDescriptor() const;
    TContentAvailabilityDescriptor* getContentAvailabilityDescriptor() const;
    TNVODReferenceDescriptor* getNVODReferenceDescriptor() const;
    TTimeShiftedServiceDescriptor* getTimeShiftedServiceDescriptor() const;
    TMosaicDescriptor* getMosaicDescriptor() const;
    TCAIdentifierDescriptor* getCAIdentifierDescriptor() const;
    /// @}

    /// The descriptor for a tag, or null. The entry keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 tag) const;

    /// The tags of the descriptors held: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

private:
    friend class TSDTTable;
    struct Kinds;

    /// @param stated the bytes left as the section counts them, which may be more than there are.
    static TServiceDescription* parse(detail::Bytes left, QUOR_U32 stated, QUOR_U32* parsedLength, QUOR_U16* err);
    detail::Outcome parseBody(detail::Bytes left, QUOR_U32 stated, QUOR_U16* err);

    QUOR_U16 m_iServiceID;
    QUOR_BOOL m_bEITSchedule;
    QUOR_BOOL m_bEITPresentFollowing;
    QUOR_U8 m_iRunningStatus;
    QUOR_U8 m_iFreeCAMode;
    std::unique_ptr<TServiceDescriptor> m_pServiceDesc;
    std::unique_ptr<TBouquetNameDescriptor> m_pBouquetNameDesc;
    std::unique_ptr<TCountryAvailabilityDescriptor> m_pCountryAvailabilityDesc;
    std::unique_ptr<TLinkageDescriptor> m_pLinkageDesc;
    std::unique_ptr<TDigitalCopyControlDescriptor> m_pDigitalCopyControlDesc;
    std::unique_ptr<TLogoTransmissionDescriptor> m_pLogoTransmissionDesc;
    std::unique_ptr<TContentAvailabilityDescriptor> m_pContentAvailabilityDesc;
    std::unique_ptr<TNVODReferenceDescriptor> m_pNVODReferenceDesc;
    std::unique_ptr<TTimeShiftedServiceDescriptor> m_pTimeShiftServiceDesc;
    std::unique_ptr<TMosaicDescriptor> m_pMosaicDesc;
    std::unique_ptr<TCAIdentifierDescriptor> m_pCAIdentifierDesc;
};

} // namespace Quor

#endif
