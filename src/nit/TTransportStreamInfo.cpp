#include "nit/TTransportStreamInfo.h"

#include "detail/Log.h"
#include "detail/Shapes.h"
#include "nit/TNITFamily.h"

namespace Quor {

namespace {

// transport_stream_id (16) | original_network_id (16) | reserved (4) transport_descriptors_length (12) | descriptors
constexpr QUOR_U32 FIXED_LENGTH = 6;

// The lines name the class differently; log filters depend on it.
detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TNITTransportStreamInfo::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                   needed, left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

void unknown(QUOR_U8 tag) {
    if (tag != detail::STUFFING_TAG) {
        QUOR_ISDBT_LOG("%s: TNITTransportStreamInfo::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                       unsigned{tag});
    }
}

} // namespace

TTransportStreamInfo::TTransportStreamInfo() : m_iTransportStreamID(0), m_iOriginalNetworkID(0) {}

TTransportStreamInfo::~TTransportStreamInfo() = default;

TTransportStreamInfo* TTransportStreamInfo::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/,
                                                  QUOR_U32* parsedLength, QUOR_U16* err) {
    return parse(detail::Bytes(data, length), length, parsedLength, err);
}

TTransportStreamInfo* TTransportStreamInfo::parse(detail::Bytes left, QUOR_U32 stated, QUOR_U32* parsedLength,
                                                  QUOR_U16* err) {
    return detail::decodeInto(std::make_unique<TTransportStreamInfo>(), parsedLength, err,
                              [=](TTransportStreamInfo& item) { return item.parseBody(left, stated, err); });
}

detail::Outcome TTransportStreamInfo::parseBody(detail::Bytes left, QUOR_U32 stated, QUOR_U16* err) {
    if (stated < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TNITTransportStreamInfo::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                       stated);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (!left.has(0, FIXED_LENGTH)) {
        return tooLong(FIXED_LENGTH, left.size());
    }
    m_iTransportStreamID = left.u16(0);
    m_iOriginalNetworkID = left.u16(2);
    const QUOR_U16 loopLength = left.length12(4);
    const QUOR_U32 offered = stated;
    stated -= FIXED_LENGTH;
    left = left.from(FIXED_LENGTH);
    if (stated < loopLength) {
        return tooLong(loopLength, stated);
    }

    const detail::Outcome loop = detail::walkLoop(
        NIT_FAMILY, m_descriptors, left, loopLength, err,
        [&](QUOR_U32 bodyLength) { return detail::takeStated(stated, bodyLength, stated, tooLong); }, unknown, tooLong);
    return loop.succeeded() ? detail::Outcome::done(offered - stated) : loop;
}

TISDBTDescriptor* TTransportStreamInfo::getDescriptor(QUOR_U8 tag) const {
    return NIT_FAMILY.get(m_descriptors, tag);
}

std::list<QUOR_U8>* TTransportStreamInfo::getDescriptorTags() const {
    return NIT_FAMILY.tags(m_descriptors);
}

TNetworkNameDescriptor* TTransportStreamInfo::getNetworkNameDescriptor() const {
    return m_descriptors.m_pNetworkNameDesc.get();
}

TSystemManagementDescriptor* TTransportStreamInfo::getSystemManagementDescriptor() const {
    return m_descriptors.m_pSystemMngDesc.get();
}

TServiceListDescriptor* TTransportStreamInfo::getServiceListDescriptor() const {
    return m_descriptors.m_pServiceListDesc.get();
}

TLinkageDescriptor* TTransportStreamInfo::getLinkageDescriptor() const {
    return m_descriptors.m_pLinkageDesc.get();
}

TTerrestrialDeliverySystemDescriptor* TTransportStreamInfo::getTerrestrialDeliverySystemDescriptor() const {
    return m_descriptors.m_pTerDelSysDesc.get();
}

TEmergencyInformationDescriptor* TTransportStreamInfo::getEmergencyInformationDescriptor() const {
    return m_descriptors.m_pEmergencyInfoDesc.get();
}

TPartialReceptionDescriptor* TTransportStreamInfo::getPartialReceptionDescriptor() const {
    return m_descriptors.m_pPartialRecepDesc.get();
}

TTSInformationDescriptor* TTransportStreamInfo::getTSInformationDescriptor() const {
    return m_descriptors.m_pTSInfoDesc.get();
}

} // namespace Quor
