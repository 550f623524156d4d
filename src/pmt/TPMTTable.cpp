#include "pmt/TPMTTable.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"
#include "pmt/TPMTFamily.h"

namespace Quor {

constexpr QUOR_U32 TPMTTable::MINIMUM_DATA_LENGTH;

namespace {

constexpr QUOR_U16 TABLE_ID = 0x02;

// reserved (3) PCR_PID (13) | reserved (4) program_info_length (12) | descriptors | elementary streams
constexpr QUOR_U32 FIXED_LENGTH = 4;

detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TPMTTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed, left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

/// The program maps for which @p wanted holds; a null one that a caller added is none of them.
template <class Wanted> std::list<TProgramMap*>* select(const detail::ItemList<TProgramMap>& items, Wanted wanted) {
    std::unique_ptr<std::list<TProgramMap*>> selected(new std::list<TProgramMap*>);
    for (const auto& item : items) {
        if (item != nullptr && wanted(*item)) {
            selected->push_back(item.get());
        }
    }
    return selected.release();
}

void unknown(QUOR_U8 tag) {
    QUOR_ISDBT_LOG("%s: TPMTTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
}

} // namespace

TPMTTable::TPMTTable(QUOR_U8* sectionData, QUOR_U32 dataLength)
    : TISDBTVersionedTable(PMT, MINIMUM_DATA_LENGTH, TABLE_ID, sectionData, dataLength), m_iPCRPID(0) {}

TPMTTable::~TPMTTable() = default;

TPMTTable* TPMTTable::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int /*parseDescriptors*/, int checkCRC32,
                            QUOR_U16* errorCode, TPMTTable* previous) {
    return detail::parseTable<TPMTTable>(sectionData, dataLength, checkCRC32, errorCode, previous,
                                         [=](TPMTTable& table, detail::Bytes section, QUOR_U16 remaining) {
                                             return table.parseBody(section, remaining, errorCode);
                                         });
}

detail::Outcome TPMTTable::parseBody(detail::Bytes section, QUOR_U16 remaining, QUOR_U16* errorCode) {
    detail::Bytes left = section.from(COMMON_HEADER_LENGTH);
    if (!left.has(0, FIXED_LENGTH)) {
        return tooLong(FIXED_LENGTH, left.size());
    }
    m_iPCRPID = left.pid(0);
    remaining = static_cast<QUOR_U16>(remaining - FIXED_LENGTH);
    const QUOR_U16 loopLength = left.length12(2);
    if (remaining < loopLength) {
        QUOR_ISDBT_LOG("%s: TPMTTable::parse: Longer data length is required: %u < %u. Aborting!", detail::LOG_TAG,
                       unsigned{remaining}, unsigned{loopLength});
        return detail::Outcome::failed(ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    if (section.size() < loopLength) {
        return tooLong(loopLength, section.size());
    }
    left = left.from(FIXED_LENGTH);
    const detail::Outcome descriptors = parseLoop(left, remaining, loopLength, errorCode);
    return descriptors.succeeded() ? parseStreams(left, remaining, errorCode) : descriptors;
}

detail::Outcome TPMTTable::parseLoop(detail::Bytes& left, QUOR_U16& remaining, QUOR_U16 loopLength,
                                     QUOR_U16* errorCode) {
    // The same bound for every descriptor: the data's length, not what is left of it.
    const QUOR_U32 longest = getDataLength() - TISDBTDescriptor::COMMON_HEADER_LENGTH;
    return detail::walkLoop(
        PMT_FAMILY, m_descriptors, left, loopLength, errorCode,
        [&, longest](QUOR_U32 bodyLength) {
            remaining = static_cast<QUOR_U16>(remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH - bodyLength);
            return bodyLength > longest ? tooLong(bodyLength, longest) : detail::Outcome::done();
        },
        unknown, tooLong);
}

detail::Outcome TPMTTable::parseStreams(detail::Bytes left, QUOR_U16 remaining, QUOR_U16* errorCode) {
    while (remaining != 0) {
        QUOR_U32 length = 0;
        std::unique_ptr<TProgramMap> item(TProgramMap::parse(left, remaining, &length, errorCode));
        if (item == nullptr) {
            QUOR_ISDBT_LOG("%s: TPMTTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        m_pItems.push_back(std::move(item));
        remaining = static_cast<QUOR_U16>(remaining - length);
        left = left.from(length);
    }
    return detail::Outcome::done();
}

TISDBTDescriptor* TPMTTable::getDescriptor(QUOR_U8 descriptorTag) const {
    return PMT_FAMILY.get(m_descriptors, descriptorTag);
}

std::list<QUOR_U8>* TPMTTable::getDescriptorTags() const {
    return PMT_FAMILY.tags(m_descriptors);
}

QUOR_U32 TPMTTable::size() const {
    return detail::count(m_pItems);
}

void TPMTTable::addProgramMap(TProgramMap* item) {
    detail::add(m_pItems, item);
}

TProgramMap* TPMTTable::getProgramMap(QUOR_U8 index) const {
    return detail::get(m_pItems, index);
}

QUOR_BOOL TPMTTable::removeProgramMap(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

std::list<TProgramMap*>* TPMTTable::getProgramMap(QUOR_U8 streamType, QUOR_U8 componentID) const {
    return select(m_pItems, [=](const TProgramMap& item) {
        const TDataComponentDescriptor* const component = item.getDataComponentDescriptor(0, nullptr);
        return item.getStreamType() == streamType && component != nullptr &&
               component->getDataComponentID() == componentID;
    });
}

std::list<TProgramMap*>* TPMTTable::getProgramMapByComponentTag(QUOR_U8 componentTag) const {
    return select(m_pItems, [=](const TProgramMap& item) {
        const TStreamIdentifierDescriptor* const identifier = item.getStreamIdentifierDescriptor(0, nullptr);
        return identifier != nullptr && identifier->getComponentTag() == componentTag;
    });
}

std::list<TProgramMap*>* TPMTTable::getProgramMapsByStreamType(QUOR_U8 streamType) const {
    return select(m_pItems, [=](const TProgramMap& item) { return item.getStreamType() == streamType; });
}

std::list<TProgramMap*>* TPMTTable::getProgramMapByStreamType(QUOR_U8 streamType) const {
    return getProgramMapsByStreamType(streamType);
}

TCAIdentifierDescriptor* TPMTTable::getCAIdentifierDescriptor() const {
    return m_descriptors.m_pCAIdentifierDesc.get();
}

TCopyrightDescriptor* TPMTTable::getCopyrightDescriptor() const {
    return m_descriptors.m_pCopyrightDesc.get();
}

TCountryAvailabilityDescriptor* TPMTTable::getCountryAvailabilityDescriptor() const {
    return m_descriptors.m_pCountryAvailabilityDesc.get();
}

TLinkageDescriptor* TPMTTable::getLinkageDescriptor() const {
    return m_descriptors.m_pLinkageDesc.get();
}

TComponentDescriptor* TPMTTable::getComponentDescriptor() const {
    return m_descriptors.m_pComponentDesc.get();
}

TMosaicDescriptor* TPMTTable::getMosaicDescriptor() const {
    return m_descriptors.m_pMosaicDesc.get();
}

TStreamIdentifierDescriptor* TPMTTable::getStreamIdentifierDescriptor() const {
    return m_descriptors.m_pStreamIdentifierDesc.get();
}

TParentalRatingDescriptor* TPMTTable::getParentalRatingDescriptor() const {
    return m_descriptors.m_pParentalRatingDesc.get();
}

THierarchicalTransmissionDescriptor* TPMTTable::getHierarchicalTransmissionDescriptor() const {
    return m_descriptors.m_pHierarchicalTransmDesc.get();
}

TDigitalCopyControlDescriptor* TPMTTable::getDigitalCopyControlDescriptor() const {
    return m_descriptors.m_pDigitalCopyControlDesc.get();
}

TEmergencyInformationDescriptor* TPMTTable::getEmergencyInformationDescriptor() const {
    return m_descriptors.m_pEmergencyInfoDesc.get();
}

TDataComponentDescriptor* TPMTTable::getDataComponentDescriptor() const {
    return m_descriptors.m_pDataComponentDesc.get();
}

TSystemManagementDescriptor* TPMTTable::getSystemManagementDescriptor() const {
    return m_descriptors.m_pSystemMngDesc.get();
}

TTargetRegionDescriptor* TPMTTable::getTargetRegionDescriptor() const {
    return m_descriptors.m_pTargetRegionDesc.get();
}

TVideoDecodeControlDescriptor* TPMTTable::getVideoDecodeControlDescriptor() const {
    return m_descriptors.m_pVideoDecodeControlDesc.get();
}

TContentAvailabilityDescriptor* TPMTTable::getContentAvailabilityDescriptor() const {
    return m_descriptors.m_pContentAvailabilityDesc.get();
}

TCarouselCompatibleCompositeDescriptor* TPMTTable::getCarouselCompatibleCompositeDescriptor() const {
    return m_descriptors.m_pCarouselCompCompoDesc.get();
}

TConditionalPlaybackDescriptor* TPMTTable::getConditionalPlaybackDescriptor() const {
    return m_descriptors.m_pConditionalPlaybackDesc.get();
}

TAVCVideoDescriptor* TPMTTable::getAVCVideoDescriptor() const {
    return m_descriptors.m_pAVCVideoDescriptor.get();
}

TAVCTimingAndHRDDescriptor* TPMTTable::getAVCTimingAndHRDDescriptor() const {
    return m_descriptors.m_pAVCTimingAndHRDDesc.get();
}

TAACDescriptor* TPMTTable::getAACDescriptor() const {
    return m_descriptors.m_pAACDesc.get();
}

TCarouselIdentifierDescriptor* TPMTTable::getCarouselIdentifierDescriptor() const {
    return m_descriptors.m_pCarouselIdentDesc.get();
}

} // namespace Quor
