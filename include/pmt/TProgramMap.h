#ifndef QUOR_TPROGRAM_MAP_H
#define QUOR_TPROGRAM_MAP_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
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

#include <list>

namespace Quor {

class TPMTTable;

/// One elementary stream of a service (ISO/IEC 13818-1): its stream_type, its PID and its own descriptors. For a kind
/// of descriptor that it does not carry it can fall back to the descriptor of the program.
class QUOR_ISDBT_API TProgramMap : public TISDBTMemory {
public:
    /// @name Values of stream_type, for callers; the library compares nothing with them.
    /// @{
    static constexpr QUOR_U8 STREAM_TYPE_0X01 = 1; ///< MPEG-1 video
    /// Quirk: 3, not 2.
    static constexpr QUOR_U8 STREAM_TYPE_0X02 = 3;
    static constexpr QUOR_U8 STREAM_TYPE_0X03 = 3;        ///< MPEG-1 audio
    static constexpr QUOR_U8 STREAM_TYPE_0X04 = 4;        ///< MPEG-2 audio
    static constexpr QUOR_U8 STREAM_TYPE_SECTION = 5;     ///< private sections, such as those of AITs
    static constexpr QUOR_U8 STREAM_TYPE_PES_PACKAGE = 6; ///< PES packets with private data, such as captions
    static constexpr QUOR_U8 STREAM_TYPE_0X07 = 7;        ///< MHEG
    static constexpr QUOR_U8 STREAM_TYPE_0X08 = 8;        ///< DSM-CC
    static constexpr QUOR_U8 STREAM_TYPE_0X09 = 9;        ///< ITU-T H.222.1
    static constexpr QUOR_U8 STREAM_TYPE_0X0A = 10;       ///< DSM-CC multi-protocol encapsulation
    static constexpr QUOR_U8 STREAM_TYPE_0X0B = 11;       ///< DSM-CC U-N messages: object carousel
    static constexpr QUOR_U8 STREAM_TYPE_0X0C = 12;       ///< DSM-CC stream descriptors
    static constexpr QUOR_U8 STREAM_TYPE_0X0D = 13;       ///< DSM-CC sections of any kind: data carousel
    static constexpr QUOR_U8 STREAM_TYPE_0X0E = 14;       ///< auxiliary data
    static constexpr QUOR_U8 STREAM_TYPE_0X0F = 15;       ///< AAC audio in ADTS
    static constexpr QUOR_U8 STREAM_TYPE_0X10 = 16;       ///< MPEG-4 video
    static constexpr QUOR_U8 STREAM_TYPE_0X11 = 17;       ///< AAC audio in LATM
    static constexpr QUOR_U8 STREAM_TYPE_PKG_STREAM_OR_FLEXMUX_STREAM_PES = 18;    ///< MPEG-4 stream in PES packets
    static constexpr QUOR_U8 STREAM_TYPE_PKG_STREAM_OR_FLEXMUX_STREAM_14496 = 19;  ///< MPEG-4 stream in sections
    static constexpr QUOR_U8 STREAM_TYPE_DOWN_SYNC_PROTOCOL = 20;                  ///< synchronised download protocol
    static constexpr QUOR_U8 STREAM_TYPE_METADATA_TRANSP_BY_PES_PACKAGE = 21;      ///< metadata in PES packets
    static constexpr QUOR_U8 STREAM_TYPE_METADATA_TRANSP_BY_METADATA_SECTION = 22; ///< metadata in sections
    static constexpr QUOR_U8 STREAM_TYPE_METADATA_TRANSP_BY_DATA_CAROUSEL = 23;    ///< metadata in a data carousel
    static constexpr QUOR_U8 STREAM_TYPE_METADATA_TRANSP_BY_OBJECT_CAROUSEL = 24;  ///< metadata in an object carousel
    static constexpr QUOR_U8 STREAM_TYPE_METADATA_TRANSP_DOWNLOAD_SYNC_PROT = 25;  ///< metadata in downloads
    static constexpr QUOR_U8 STREAM_TYPE_IPMP_STREAM = 26;                         ///< rights management (MPEG-2 IPMP)
    static constexpr QUOR_U8 STREAM_TYPE_VIDEO = 27;                               ///< H.264 video
    static constexpr QUOR_U8 STREAM_TYPE_DATA_PIPING = 126;                        ///< data piping
    static constexpr QUOR_U8 STREAM_TYPE_IPMP_STREAM_2 = 127;                      ///< rights management
    static constexpr QUOR_U8 STREAM_TYPE_AC3 = 0x81;                               ///< AC-3 audio
    /// @}

    /// A stream of type 0 on PID 0 without descriptors and without a parent.
    TProgramMap() = default;
    virtual ~TProgramMap();

    TProgramMap(const TProgramMap&) = delete;
    TProgramMap& operator=(const TProgramMap&) = delete;

    /// Parses one entry of the elementary stream loop.
    /// @param data             the entry. getData() of the descriptors points into it.
    /// @param length           bytes left in the section.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param parsedLength     receives the bytes that the entry took. May be null.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, or what a descriptor
    ///                         failed with. May be null.
    /// @return a new entry, which the caller deletes, or null.
    static TProgramMap* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, QUOR_U32* parsedLength,
                              QUOR_U16* errorCode);

    /// Sets the table to inherit from. It is not owned, and must outlive the use of the inheriting getters.
    /// TPMTTable::parse() does not set it.
    void setParentPMTTable(TPMTTable* parent);

    /// stream_type, 0 to 255.
    QUOR_U8 getStreamType() const { return m_iStreamType; }

    /// elementary_PID, 13 bits.
    QUOR_U16 getElementaryPID() const { return m_iElementaryPID; }

    /// The stream's own descriptor for a tag, or null. The stream keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const { return m_descriptors.find(descriptorTag); }

    /// The tags of the stream's own descriptors: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

    /// @name The descriptors of the stream or, with @p inherit not 0 and none of its own, of the program.
    /// The owner is the stream or the table; null when absent. When the table's is returned and @p inherited is not
    /// null, 1 is stored through it; 0 never is, so that callers preset it.
    /// @{
    TCAIdentifierDescriptor* getCAIdentifierDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TCAIdentifierDescriptor>(m_pCommon, inherit, inherited);
    }
    TCopyrightDescriptor* getCopyrightDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TCopyrightDescriptor>(m_pCommon, inherit, inherited);
    }
    TCountryAvailabilityDescriptor* getCountryAvailabilityDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TCountryAvailabilityDescriptor>(m_pCommon, inherit, inherited);
    }
    TLinkageDescriptor* getLinkageDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TLinkageDescriptor>(m_pCommon, inherit, inherited);
    }
    TComponentDescriptor* getComponentDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TComponentDescriptor>(m_pCommon, inherit, inherited);
    }
    TMosaicDescriptor* getMosaicDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TMosaicDescriptor>(m_pCommon, inherit, inherited);
    }
    TStreamIdentifierDescriptor* getStreamIdentifierDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TStreamIdentifierDescriptor>(m_pCommon, inherit, inherited);
    }
    TParentalRatingDescriptor* getParentalRatingDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TParentalRatingDescriptor>(m_pCommon, inherit, inherited);
    }
    THierarchicalTransmissionDescriptor* getHierarchicalTransmissionDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<THierarchicalTransmissionDescriptor>(m_pCommon, inherit, inherited);
    }
    TDigitalCopyControlDescriptor* getDigitalCopyControlDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TDigitalCopyControlDescriptor>(m_pCommon, inherit, inherited);
    }
    TEmergencyInformationDescriptor* getEmergencyInformationDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TEmergencyInformationDescriptor>(m_pCommon, inherit, inherited);
    }
    TDataComponentDescriptor* getDataComponentDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TDataComponentDescriptor>(m_pCommon, inherit, inherited);
    }
    TSystemManagementDescriptor* getSystemManagementDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TSystemManagementDescriptor>(m_pCommon, inherit, inherited);
    }
    TTargetRegionDescriptor* getTargetRegionDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TTargetRegionDescriptor>(m_pCommon, inherit, inherited);
    }
    TVideoDecodeControlDescriptor* getVideoDecodeControlDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TVideoDecodeControlDescriptor>(m_pCommon, inherit, inherited);
    }
    TContentAvailabilityDescriptor* getContentAvailabilityDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TContentAvailabilityDescriptor>(m_pCommon, inherit, inherited);
    }
    TCarouselCompatibleCompositeDescriptor* getCarouselCompatibleCompositeDescriptor(int inherit,
                                                                                     int* inherited) const {
        return m_descriptors.get<TCarouselCompatibleCompositeDescriptor>(m_pCommon, inherit, inherited);
    }
    TConditionalPlaybackDescriptor* getConditionalPlaybackDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TConditionalPlaybackDescriptor>(m_pCommon, inherit, inherited);
    }
    TAVCVideoDescriptor* getAVCVideoDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TAVCVideoDescriptor>(m_pCommon, inherit, inherited);
    }
    TAVCTimingAndHRDDescriptor* getAVCTimingAndHRDDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TAVCTimingAndHRDDescriptor>(m_pCommon, inherit, inherited);
    }
    TAACDescriptor* getAACDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TAACDescriptor>(m_pCommon, inherit, inherited);
    }
    TCarouselIdentifierDescriptor* getCarouselIdentifierDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TCarouselIdentifierDescriptor>(m_pCommon, inherit, inherited);
    }
    /// @}

private:
    friend struct detail::Access;

    /// @param stated the bytes left as the section counts them, which may be more than there are.
    detail::Outcome decode(const detail::Bytes& entry, QUOR_U32 stated);

    const detail::Descriptors* m_pCommon = nullptr; ///< the program's, or null
    QUOR_U8 m_iStreamType = 0;
    QUOR_U16 m_iElementaryPID = 0;
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
