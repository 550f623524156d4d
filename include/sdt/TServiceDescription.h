#ifndef QUOR_TSERVICE_DESCRIPTION_H
#define QUOR_TSERVICE_DESCRIPTION_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "descriptors/TBouquetNameDescriptor.h"
#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TLogoTransmissionDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNVODReferenceDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TTimeShiftedServiceDescriptor.h"
#include "detail/Descriptors.h"

#include <list>

namespace Quor {

/// One service of the service description table (ABNT NBR 15603) with its descriptors.
class QUOR_ISDBT_API TServiceDescription : public TISDBTMemory {
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
    TServiceDescription() = default;
    virtual ~TServiceDescription();

    /// Parses one entry of the service loop.
    /// @param data             the entry. getData() of the descriptors points into it.
    /// @param length           bytes left in the section.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param parsedLength     receives the bytes that the entry took. May be null.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, or what a descriptor
    ///                         failed with. May be null.
    /// @return a new entry, which the caller deletes, or null.
    static TServiceDescription* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, QUOR_U32* parsedLength,
                                      QUOR_U16* errorCode);

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
    TServiceDescriptor* getServiceDescriptor() const { return m_descriptors.get<TServiceDescriptor>(); }
    TBouquetNameDescriptor* getBouquetNameDescriptor() const { return m_descriptors.get<TBouquetNameDescriptor>(); }
    TCountryAvailabilityDescriptor* getCountryAvailabilityDescriptor() const {
        return m_descriptors.get<TCountryAvailabilityDescriptor>();
    }
    TLinkageDescriptor* getLinkageDescriptor() const { return m_descriptors.get<TLinkageDescriptor>(); }
    TDigitalCopyControlDescriptor* getDigitalCopyControlDescriptor() const {
        return m_descriptors.get<TDigitalCopyControlDescriptor>();
    }
    TLogoTransmissionDescriptor* getLogoTransmissionDescriptor() const {
        return m_descriptors.get<TLogoTransmissionDescriptor>();
    }
    TContentAvailabilityDescriptor* getContentAvailabilityDescriptor() const {
        return m_descriptors.get<TContentAvailabilityDescriptor>();
    }
    TNVODReferenceDescriptor* getNVODReferenceDescriptor() const {
        return m_descriptors.get<TNVODReferenceDescriptor>();
    }
    TTimeShiftedServiceDescriptor* getTimeShiftedServiceDescriptor() const {
        return m_descriptors.get<TTimeShiftedServiceDescriptor>();
    }
    TMosaicDescriptor* getMosaicDescriptor() const { return m_descriptors.get<TMosaicDescriptor>(); }
    TCAIdentifierDescriptor* getCAIdentifierDescriptor() const { return m_descriptors.get<TCAIdentifierDescriptor>(); }
    /// @}

    /// The descriptor for a tag, or null. The entry keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 tag) const { return m_descriptors.find(tag); }

    /// The tags of the descriptors held: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

private:
    friend struct detail::Access;

    /// @param stated the bytes left as the section counts them, which may be more than there are.
    detail::Outcome decode(const detail::Bytes& entry, QUOR_U32 stated);

    QUOR_U16 m_iServiceID = 0;
    QUOR_BOOL m_bEITSchedule = false;
    QUOR_BOOL m_bEITPresentFollowing = false;
    QUOR_U8 m_iRunningStatus = 0;
    QUOR_U8 m_iFreeCAMode = 0;
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
