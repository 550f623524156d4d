#include "pmt/TProgramMap.h"

#include "detail/Log.h"
#include "detail/Shapes.h"
#include "pmt/TPMTFamily.h"
#include "pmt/TPMTTable.h"

namespace Quor {

constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X01;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X02;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X03;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X04;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_SECTION;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_PES_PACKAGE;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X07;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X08;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X09;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X0A;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X0B;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X0C;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X0D;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X0E;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X0F;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X10;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_0X11;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_PKG_STREAM_OR_FLEXMUX_STREAM_PES;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_PKG_STREAM_OR_FLEXMUX_STREAM_14496;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_DOWN_SYNC_PROTOCOL;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_PES_PACKAGE;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_METADATA_SECTION;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_DATA_CAROUSEL;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_OBJECT_CAROUSEL;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_METADATA_TRANSP_DOWNLOAD_SYNC_PROT;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_IPMP_STREAM;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_VIDEO;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_DATA_PIPING;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_IPMP_STREAM_2;
constexpr QUOR_U8 TProgramMap::STREAM_TYPE_AC3;

namespace {

// stream_type (8) | reserved (3) elementary_PID (13) | reserved (4) ES_info_length (12) | descriptors
constexpr QUOR_U32 FIXED_LENGTH = 5;

detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TProgramMap::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed, left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

void unknown(QUOR_U8 tag) {
    QUOR_ISDBT_LOG("%s: TProgramMap::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
}

} // namespace

TProgramMap::TProgramMap() : m_pParentPMTTable(nullptr), m_iStreamType(0), m_iElementaryPID(0) {}

TProgramMap::~TProgramMap() = default;

TProgramMap* TProgramMap::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int /*parseDescriptors*/,
                                QUOR_U32* itemLength, QUOR_U16* errorCode) {
    return parse(detail::Bytes(sectionData, dataLength), dataLength, itemLength, errorCode);
}

TProgramMap* TProgramMap::parse(detail::Bytes left, QUOR_U32 stated, QUOR_U32* itemLength, QUOR_U16* errorCode) {
    return detail::decodeInto(std::make_unique<TProgramMap>(), itemLength, errorCode,
                              [=](TProgramMap& item) { return item.parseBody(left, stated, errorCode); });
}

detail::Outcome TProgramMap::parseBody(detail::Bytes left, QUOR_U32 stated, QUOR_U16* errorCode) {
    if (stated < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TProgramMap::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, stated);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (!left.has(0, FIXED_LENGTH)) {
        return tooLong(FIXED_LENGTH, left.size());
    }
    m_iStreamType = left.u8(0);
    m_iElementaryPID = left.pid(1);
    const QUOR_U16 loopLength = left.length12(3);
    const QUOR_U32 offered = stated;
    stated -= FIXED_LENGTH;
    left = left.from(FIXED_LENGTH);
    if (stated < loopLength) {
        return tooLong(loopLength, stated);
    }

    const detail::Outcome loop = detail::walkLoop(
        PMT_FAMILY, m_descriptors, left, loopLength, errorCode,
        [&](QUOR_U32 bodyLength) {
            return detail::takeStated(stated, bodyLength, stated - TISDBTDescriptor::COMMON_HEADER_LENGTH, tooLong);
        },
        unknown, tooLong);
    return loop.succeeded() ? detail::Outcome::done(offered - stated) : loop;
}

const TPMTDescriptors* TProgramMap::parentDescriptors() const {
    return m_pParentPMTTable == nullptr ? nullptr : &m_pParentPMTTable->m_descriptors;
}

TISDBTDescriptor* TProgramMap::getDescriptor(QUOR_U8 descriptorTag) const {
    return PMT_FAMILY.get(m_descriptors, descriptorTag);
}

std::list<QUOR_U8>* TProgramMap::getDescriptorTags() const {
    return PMT_FAMILY.tags(m_descriptors);
}

TCAIdentifierDescriptor* TProgramMap::getCAIdentifierDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pCAIdentifierDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                  inherited);
}

TCopyrightDescriptor* TProgramMap::getCopyrightDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pCopyrightDesc>(m_descriptors, parentDescriptors(), inherit, inherited);
}

TCountryAvailabilityDescriptor* TProgramMap::getCountryAvailabilityDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pCountryAvailabilityDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                         inherited);
}

TLinkageDescriptor* TProgramMap::getLinkageDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pLinkageDesc>(m_descriptors, parentDescriptors(), inherit, inherited);
}

TComponentDescriptor* TProgramMap::getComponentDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pComponentDesc>(m_descriptors, parentDescriptors(), inherit, inherited);
}

TMosaicDescriptor* TProgramMap::getMosaicDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pMosaicDesc>(m_descriptors, parentDescriptors(), inherit, inherited);
}

TStreamIdentifierDescriptor* TProgramMap::getStreamIdentifierDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pStreamIdentifierDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                      inherited);
}

TParentalRatingDescriptor* TProgramMap::getParentalRatingDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pParentalRatingDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                    inherited);
}

THierarchicalTransmissionDescriptor* TProgramMap::getHierarchicalTransmissionDescriptor(int inherit,
                                                                                        int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pHierarchicalTransmDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                        inherited);
}

TDigitalCopyControlDescriptor* TProgramMap::getDigitalCopyControlDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pDigitalCopyControlDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                        inherited);
}

TEmergencyInformationDescriptor* TProgramMap::getEmergencyInformationDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pEmergencyInfoDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                   inherited);
}

TDataComponentDescriptor* TProgramMap::getDataComponentDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pDataComponentDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                   inherited);
}

TSystemManagementDescriptor* TProgramMap::getSystemManagementDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pSystemMngDesc>(m_descriptors, parentDescriptors(), inherit, inherited);
}

TTargetRegionDescriptor* TProgramMap::getTargetRegionDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pTargetRegionDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                  inherited);
}

TVideoDecodeControlDescriptor* TProgramMap::getVideoDecodeControlDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pVideoDecodeControlDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                        inherited);
}

TContentAvailabilityDescriptor* TProgramMap::getContentAvailabilityDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pContentAvailabilityDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                         inherited);
}

TCarouselCompatibleCompositeDescriptor* TProgramMap::getCarouselCompatibleCompositeDescriptor(int inherit,
                                                                                              int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pCarouselCompCompoDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                       inherited);
}

TConditionalPlaybackDescriptor* TProgramMap::getConditionalPlaybackDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pConditionalPlaybackDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                         inherited);
}

TAVCVideoDescriptor* TProgramMap::getAVCVideoDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pAVCVideoDescriptor>(m_descriptors, parentDescriptors(), inherit,
                                                                    inherited);
}

TAVCTimingAndHRDDescriptor* TProgramMap::getAVCTimingAndHRDDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pAVCTimingAndHRDDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                     inherited);
}

TAACDescriptor* TProgramMap::getAACDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pAACDesc>(m_descriptors, parentDescriptors(), inherit, inherited);
}

TCarouselIdentifierDescriptor* TProgramMap::getCarouselIdentifierDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TPMTDescriptors::m_pCarouselIdentDesc>(m_descriptors, parentDescriptors(), inherit,
                                                                   inherited);
}

} // namespace Quor
