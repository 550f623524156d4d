#include "nit/TNITTable.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"
#include "nit/TNITFamily.h"

namespace Quor {

constexpr QUOR_U32 TNITTable::MINIMUM_DATA_LENGTH;

namespace {

constexpr QUOR_U16 TABLE_ID = 0x40;

// reserved (4) network_descriptors_length (12) | descriptors |
// reserved (4) transport_stream_loop_length (12) | transport streams
constexpr QUOR_U32 LOOP_LENGTH_LENGTH = 2;

detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TNITTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed, left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

void unknown(QUOR_U8 tag) {
    if (tag != detail::STUFFING_TAG) {
        QUOR_ISDBT_LOG("%s: TNITTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
    }
}

} // namespace

TNITTable::TNITTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(NIT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TNITTable::~TNITTable() = default;

TNITTable* TNITTable::parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int /*parseDescriptors*/, QUOR_U16* err,
                            TNITTable* previous) {
    return detail::parseTable<TNITTable>(data, length, checkCRC32, err, previous,
                                         [=](TNITTable& table, detail::Bytes section, QUOR_U16 remaining) {
                                             return table.parseBody(section, remaining, err);
                                         });
}

detail::Outcome TNITTable::parseBody(detail::Bytes section, QUOR_U16 remaining, QUOR_U16* err) {
    detail::Bytes left = section.from(COMMON_HEADER_LENGTH);
    QUOR_U16 loopLength = 0;
    const auto readLoopLength = [&] {
        if (!left.has(0, LOOP_LENGTH_LENGTH)) {
            return tooLong(LOOP_LENGTH_LENGTH, left.size());
        }
        loopLength = left.length12(0);
        remaining = static_cast<QUOR_U16>(remaining - LOOP_LENGTH_LENGTH);
        left = left.from(LOOP_LENGTH_LENGTH);
        return remaining < loopLength ? tooLong(loopLength, remaining) : detail::Outcome::done();
    };

    const detail::Outcome network = readLoopLength();
    if (!network.succeeded()) {
        return network;
    }
    const detail::Outcome descriptors = parseLoop(left, remaining, loopLength, err);
    if (!descriptors.succeeded()) {
        return descriptors;
    }
    const detail::Outcome streams = readLoopLength();
    return streams.succeeded() ? parseStreams(left, remaining, loopLength, err) : streams;
}

detail::Outcome TNITTable::parseLoop(detail::Bytes& left, QUOR_U16& remaining, QUOR_U16 loopLength, QUOR_U16* err) {
    return detail::walkLoop(
        NIT_FAMILY, m_descriptors, left, loopLength, err,
        [&](QUOR_U32 bodyLength) {
            if (TISDBTDescriptor::COMMON_HEADER_LENGTH + bodyLength > remaining) {
                return tooLong(bodyLength, remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH);
            }
            remaining = static_cast<QUOR_U16>(remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH - bodyLength);
            return detail::Outcome::done();
        },
        unknown, tooLong);
}

detail::Outcome TNITTable::parseStreams(detail::Bytes left, QUOR_U16 remaining, QUOR_U16 loopLength, QUOR_U16* err) {
    while (loopLength != 0) {
        QUOR_U32 length = 0;
        std::unique_ptr<TTransportStreamInfo> info(TTransportStreamInfo::parse(left, remaining, &length, err));
        if (info == nullptr) {
            QUOR_ISDBT_LOG("%s: TNITTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        const QUOR_U16 id = info->getTransportStreamID();
        detail::store(m_pItems, id, std::move(info));
        loopLength = static_cast<QUOR_U16>(loopLength - length);
        remaining = static_cast<QUOR_U16>(remaining - length);
        left = left.from(length);
    }
    return detail::Outcome::done();
}

TISDBTDescriptor* TNITTable::getDescriptor(QUOR_U8 tag) const {
    return NIT_FAMILY.get(m_descriptors, tag);
}

std::list<QUOR_U8>* TNITTable::getDescriptorTags() const {
    return NIT_FAMILY.tags(m_descriptors);
}

QUOR_U32 TNITTable::getTransportStreamLoopSize() const {
    return detail::count(m_pItems);
}

std::list<QUOR_U16>* TNITTable::getTransportStreamIDs() const {
    return detail::keys(m_pItems);
}

TTransportStreamInfo* TNITTable::getTransportStreamInfo(QUOR_U16 id) const {
    return detail::find(m_pItems, id);
}

void TNITTable::addTransportStreamInfo(TTransportStreamInfo* info) {
    if (info != nullptr) {
        detail::add(m_pItems, info->getTransportStreamID(), info);
    }
}

bool TNITTable::removeTransportStreamInfo(QUOR_U16 id) {
    return detail::remove(m_pItems, id) != 0;
}

TNetworkNameDescriptor* TNITTable::getNetworkNameDescriptor() const {
    return m_descriptors.m_pNetworkNameDesc.get();
}

TSystemManagementDescriptor* TNITTable::getSystemManagementDescriptor() const {
    return m_descriptors.m_pSystemMngDesc.get();
}

TServiceListDescriptor* TNITTable::getServiceListDescriptor() const {
    return m_descriptors.m_pServiceListDesc.get();
}

TLinkageDescriptor* TNITTable::getLinkageDescriptor() const {
    return m_descriptors.m_pLinkageDesc.get();
}

TTerrestrialDeliverySystemDescriptor* TNITTable::getTerrestrialDeliverySystemDescriptor() const {
    return m_descriptors.m_pTerDelSysDesc.get();
}

TEmergencyInformationDescriptor* TNITTable::getEmergencyInformationDescriptor() const {
    return m_descriptors.m_pEmergencyInfoDesc.get();
}

TPartialReceptionDescriptor* TNITTable::getPartialReceptionDescriptor() const {
    return m_descriptors.m_pPartialRecepDesc.get();
}

TTSInformationDescriptor* TNITTable::getTSInformationDescriptor() const {
    return m_descriptors.m_pTSInfoDesc.get();
}

} // namespace Quor
