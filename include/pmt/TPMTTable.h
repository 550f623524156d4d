#ifndef QUOR_TPMT_TABLE_H
#define QUOR_TPMT_TABLE_H

#include "TISDBTVersionedTable.h"
#include "pmt/TPMTDescriptors.h"
#include "pmt/TProgramMap.h"

namespace Quor {

namespace detail {
class Bytes;
class Outcome;
} // namespace detail

/// Program map table (ISO/IEC 13818-1, table_id 0x02, on the PID that the program association table gives): the
/// elementary streams of one service with their descriptors, the descriptors of the service as a whole, and the PID of
/// its clock reference.
class QUOR_ISDBT_API TPMTTable : public TISDBTVersionedTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 4;

    /// An empty table over a private copy of the section.
    TPMTTable(QUOR_U8* sectionData, QUOR_U32 dataLength);
    ~TPMTTable() override;

    /// Parses one section.
    /// @param sectionData      the section, from table_id to CRC_32. getData() of the descriptors points into it.
    /// @param dataLength       number of bytes; those behind the section are ignored.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param checkCRC32       ignored.
    /// @param errorCode        ERROR_OK or the reason of a failure: those of the section header,
    ///                         ERROR_INVALID_DESCRIPTOR_LENGTH or ERROR_INVALID_DATA_LENGTH for the program's
    ///                         descriptor loop, what a descriptor of the program failed with, or ERROR_INVALID_ITEM for
    ///                         an elementary stream that is not valid. May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TPMTTable* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int parseDescriptors, int checkCRC32,
                            QUOR_U16* errorCode, TPMTTable* previous);

    /// program_number, the service_id of the service.
    QUOR_U16 getProgramNumber() const { return getGenericDataField(); }

    /// PCR_PID, 13 bits: the PID that carries the clock reference; 0x1FFF when there is none.
    QUOR_U16 getPCRPID() const { return m_iPCRPID; }

    /// @name The descriptors of the program, owned by the table; null when absent.
    /// @{
    TCAIdentifierDescriptor* getCAIdentifierDescriptor() const;
    TCopyrightDescriptor* getCopyrightDescriptor() const;
    TCountryAvailabilityDescriptor* getCountryAvailabilityDescriptor() const;
    TLinkageDescriptor* getLinkageDescriptor() const;
    TComponentDescriptor* getComponentDescriptor() const;
    TMosaicDescriptor* getMosaicDescriptor() const;
    TStreamIdentifierDescriptor* getStreamIdentifierDescriptor() const;
    TParentalRatingDescriptor* getParentalRatingDescriptor() const;
    THierarchicalTransmissionDescriptor* getHierarchicalTransmissionDescriptor() const;
    TDigitalCopyControlDescriptor* getDigitalCopyControlDescriptor() const;
    TEmergencyInformationDescriptor* getEmergencyInformationDescriptor() const;
    TDataComponentDescriptor* getDataComponentDescriptor() const;
    TSystemManagementDescriptor* getSystemManagementDescriptor() const;
    TTargetRegionDescriptor* getTargetRegionDescriptor() const;
    TVideoDecodeControlDescriptor* getVideoDecodeControlDescriptor() const;
    TContentAvailabilityDescriptor* getContentAvailabilityDescriptor() const;
    TCarouselCompatibleCompositeDescriptor* getCarouselCompatibleCompositeDescriptor() const;
    TConditionalPlaybackDescriptor* getConditionalPlaybackDescriptor() const;
    TAVCVideoDescriptor* getAVCVideoDescriptor() const;
    TAVCTimingAndHRDDescriptor* getAVCTimingAndHRDDescriptor() const;
    TAACDescriptor* getAACDescriptor() const;
    TCarouselIdentifierDescriptor* getCarouselIdentifierDescriptor() const;
    /// @}

    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const override;
    std::list<QUOR_U8>* getDescriptorTags() const override;

    /// The number of elementary streams.
    QUOR_U32 size() const;

    /// Appends an elementary stream, which the table owns from now on. Its parent is not set.
    void addProgramMap(TProgramMap* item);

    /// The elementary stream at a position in order of arrival, owned by the table; null past the end.
    TProgramMap* getProgramMap(QUOR_U8 index) const;

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
    friend class TProgramMap;

    detail::Outcome parseBody(detail::Bytes section, QUOR_U16 remaining, QUOR_U16* errorCode);
    detail::Outcome parseLoop(detail::Bytes& left, QUOR_U16& remaining, QUOR_U16 loopLength, QUOR_U16* errorCode);
    detail::Outcome parseStreams(detail::Bytes left, QUOR_U16 remaining, QUOR_U16* errorCode);

    QUOR_U16 m_iPCRPID;
    TPMTDescriptors m_descriptors;
    std::list<std::unique_ptr<TProgramMap>> m_pItems;
};

} // namespace Quor

#endif
