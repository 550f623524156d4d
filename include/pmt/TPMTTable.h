#ifndef QUOR_TPMT_TABLE_H
#define QUOR_TPMT_TABLE_H

#include "TISDBTVersionedTable.h"
#include "descriptors/TAACDescriptor.h"
#include "descriptors/TAVCTimingAndHRDDescriptor.h"
#include "descriptors/TAVCVideoDescriptor.h"
#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"
#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TComponentDescriptor.h"
#include "descriptors/TConditionalPlaybackDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TCopyrightDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/THierarchicalTransmissionDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTargetRegionDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"
#include "detail/Descriptors.h"
#include "detail/Owned.h"
#include "pmt/TProgramMap.h"

namespace Quor {

/// Program map table (ISO/IEC 13818-1, table_id 0x02, on the PID that the program association table gives): the
/// elementary streams of one service with their descriptors, the descriptors of the service as a whole, and the PID of
/// its clock reference.
class QUOR_ISDBT_API TPMTTable : public TISDBTVersionedTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 4;

    /// An empty table over a private copy of the section.
    TPMTTable(QUOR_U8* data, QUOR_U32 length);
    ~TPMTTable() override;

    /// Parses one section.
    /// @param data             the section, from table_id to CRC_32. getData() of the descriptors points into it.
    /// @param length           number of bytes; those behind the section are ignored.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param checkCRC32       ignored.
    /// @param errorCode        ERROR_OK or the reason of a failure: those of the section header,
    ///                         ERROR_INVALID_DESCRIPTOR_LENGTH or ERROR_INVALID_DATA_LENGTH for the program's
    ///                         descriptor loop, what a descriptor of the program failed with, or ERROR_INVALID_ITEM for
    ///                         an elementary stream that is not valid. May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TPMTTable* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, int checkCRC32, QUOR_U16* errorCode,
                            TPMTTable* previous);

    /// program_number, the service_id of the service.
    QUOR_U16 getProgramNumber() const { return getGenericDataField(); }

    /// PCR_PID, 13 bits: the PID that carries the clock reference; 0x1FFF when there is none.
    QUOR_U16 getPCRPID() const { return m_iPCRPID; }

    /// @name The descriptors of the program, owned by the table; null when absent.
    /// @{
    TCAIdentifierDescriptor* getCAIdentifierDescriptor() const { return m_descriptors.get<TCAIdentifierDescriptor>(); }
    TCopyrightDescriptor* getCopyrightDescriptor() const { return m_descriptors.get<TCopyrightDescriptor>(); }
    TCountryAvailabilityDescriptor* getCountryAvailabilityDescriptor() const {
        return m_descriptors.get<TCountryAvailabilityDescriptor>();
    }
    TLinkageDescriptor* getLinkageDescriptor() const { return m_descriptors.get<TLinkageDescriptor>(); }
    TComponentDescriptor* getComponentDescriptor() const { return m_descriptors.get<TComponentDescriptor>(); }
    TMosaicDescriptor* getMosaicDescriptor() const { return m_descriptors.get<TMosaicDescriptor>(); }
    TStreamIdentifierDescriptor* getStreamIdentifierDescriptor() const {
        return m_descriptors.get<TStreamIdentifierDescriptor>();
    }
    TParentalRatingDescriptor* getParentalRatingDescriptor() const {
        return m_descriptors.get<TParentalRatingDescriptor>();
    }
    THierarchicalTransmissionDescriptor* getHierarchicalTransmissionDescriptor() const {
        return m_descriptors.get<THierarchicalTransmissionDescriptor>();
    }
    TDigitalCopyControlDescriptor* getDigitalCopyControlDescriptor() const {
        return m_descriptors.get<TDigitalCopyControlDescriptor>();
    }
    TEmergencyInformationDescriptor* getEmergencyInformationDescriptor() const {
        return m_descriptors.get<TEmergencyInformationDescriptor>();
    }
    TDataComponentDescriptor* getDataComponentDescriptor() const {
        return m_descriptors.get<TDataComponentDescriptor>();
    }
    TSystemManagementDescriptor* getSystemManagementDescriptor() const {
        return m_descriptors.get<TSystemManagementDescriptor>();
    }
    TTargetRegionDescriptor* getTargetRegionDescriptor() const { return m_descriptors.get<TTargetRegionDescriptor>(); }
    TVideoDecodeControlDescriptor* getVideoDecodeControlDescriptor() const {
        return m_descriptors.get<TVideoDecodeControlDescriptor>();
    }
    TContentAvailabilityDescriptor* getContentAvailabilityDescriptor() const {
        return m_descriptors.get<TContentAvailabilityDescriptor>();
    }
    TCarouselCompatibleCompositeDescriptor* getCarouselCompatibleCompositeDescriptor() const {
        return m_descriptors.get<TCarouselCompatibleCompositeDescriptor>();
    }
    TConditionalPlaybackDescriptor* getConditionalPlaybackDescriptor() const {
        return m_descriptors.get<TConditionalPlaybackDescriptor>();
    }
    TAVCVideoDescriptor* getAVCVideoDescriptor() const { return m_descriptors.get<TAVCVideoDescriptor>(); }
    TAVCTimingAndHRDDescriptor* getAVCTimingAndHRDDescriptor() const {
        return m_descriptors.get<TAVCTimingAndHRDDescriptor>();
    }
    TAACDescriptor* getAACDescriptor() const { return m_descriptors.get<TAACDescriptor>(); }
    TCarouselIdentifierDescriptor* getCarouselIdentifierDescriptor() const {
        return m_descriptors.get<TCarouselIdentifierDescriptor>();
    }
    /// @}

    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const override { return m_descriptors.find(descriptorTag); }
    std::list<QUOR_U8>* getDescriptorTags() const override;

    /// The number of elementary streams.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// Appends an elementary stream, which the table owns from now on. Its parent is not set.
    void addProgramMap(TProgramMap* item);

    /// The elementary stream at a position in order of arrival, owned by the table; null past the end.
    TProgramMap* getProgramMap(QUOR_U8 index) const { return detail::at(m_pItems, index); }

    /// Removes and deletes the elementary stream at a position. @return false when there is none.
    QUOR_BOOL removeProgramMap(QUOR_U8 index);

    /// @name Elementary streams by a property, in order of arrival: a new list, which the caller deletes; the streams
    /// stay owned by the table.
    /// @{

    /// Those of a stream_type whose own data component descriptor has the data_component_id @p componentID.
    std::list<TProgramMap*>* getProgramMap(QUOR_U8 streamType, QUOR_U8 componentID) const;

    /// Those whose own stream identifier descriptor has the component_tag @p componentTag.
    std::list<TProgramMap*>* getProgramMapByComponentTag(QUOR_U8 componentTag) const;

    /// Those of a stream_type.
    std::list<TProgramMap*>* getProgramMapsByStreamType(QUOR_U8 streamType) const;

    /// The same as getProgramMapsByStreamType(): all of them, not one.
    std::list<TProgramMap*>* getProgramMapByStreamType(QUOR_U8 streamType) const;
    /// @}

private:
    friend struct detail::Access;
    friend class TProgramMap;

    detail::Outcome decode(const detail::Bytes& section, QUOR_U16 remaining);

    QUOR_U16 m_iPCRPID = 0;
    detail::Descriptors m_descriptors{};
    detail::Items<TProgramMap> m_pItems{};
};

} // namespace Quor

#endif
