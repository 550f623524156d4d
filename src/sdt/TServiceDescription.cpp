#include "sdt/TServiceDescription.h"

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
#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U16 TServiceDescription::RUNNING_STATUS_NOT_RUNNING;
constexpr QUOR_U16 TServiceDescription::RUNNING_STATUS_STARTS_IN_A_FEW_MINUTES;
constexpr QUOR_U16 TServiceDescription::RUNNING_STATUS_PAUSING;
constexpr QUOR_U16 TServiceDescription::RUNNING_STATUS_RUNNING;
constexpr QUOR_U16 TServiceDescription::FREE_CA_MODE_NOT_SCRAMBLED;
constexpr QUOR_U16 TServiceDescription::FREE_CA_MODE_CA_SYSTEM;

namespace {

// service_id (16) | reserved (6) EIT_schedule_flag (1) EIT_present_following_flag (1) |
// running_status (3) free_CA_mode (1) descriptors_loop_length (12) | descriptors
constexpr QUOR_U32 FIXED_LENGTH = 5;

detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TServiceDescription::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed,
                   left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

void unknown(QUOR_U8 tag) {
    if (tag != detail::STUFFING_TAG) {
        QUOR_ISDBT_LOG("%s: TServiceDescription::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                       unsigned{tag});
    }
}

} // namespace

/// In the order of getDescriptorTags().
struct TServiceDescription::Kinds {
    static constexpr detail::Family FAMILY{detail::kind<&TServiceDescription::m_pServiceDesc>(),
                                           detail::kind<&TServiceDescription::m_pBouquetNameDesc>(),
                                           detail::kind<&TServiceDescription::m_pCountryAvailabilityDesc>(),
                                           detail::kind<&TServiceDescription::m_pLinkageDesc>(),
                                           detail::kind<&TServiceDescription::m_pDigitalCopyControlDesc>(),
                                           detail::kind<&TServiceDescription::m_pLogoTransmissionDesc>(),
                                           detail::kind<&TServiceDescription::m_pContentAvailabilityDesc>(),
                                           detail::kind<&TServiceDescription::m_pNVODReferenceDesc>(),
                                           detail::kind<&TServiceDescription::m_pTimeShiftServiceDesc>(),
                                           detail::kind<&TServiceDescription::m_pMosaicDesc>(),
                                           detail::kind<&TServiceDescription::m_pCAIdentifierDesc>()};
};

TServiceDescription::TServiceDescription()
    : m_iServiceID(0), m_bEITSchedule(false), m_bEITPresentFollowing(false), m_iRunningStatus(0), m_iFreeCAMode(0) {}

TServiceDescription::~TServiceDescription() = default;

TServiceDescription* TServiceDescription::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/,
                                                QUOR_U32* parsedLength, QUOR_U16* err) {
    return parse(detail::Bytes(data, length), length, parsedLength, err);
}

TServiceDescription* TServiceDescription::parse(detail::Bytes left, QUOR_U32 stated, QUOR_U32* parsedLength,
                                                QUOR_U16* err) {
    return detail::decodeInto(std::make_unique<TServiceDescription>(), parsedLength, err,
                              [=](TServiceDescription& item) { return item.parseBody(left, stated, err); });
}

detail::Outcome TServiceDescription::parseBody(detail::Bytes left, QUOR_U32 stated, QUOR_U16* err) {
    if (stated < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TServiceDescription::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, stated);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (!left.has(0, FIXED_LENGTH)) {
        return tooLong(FIXED_LENGTH, left.size());
    }
    m_iServiceID = left.u16(0);
    m_bEITSchedule = left.bit(2, 1);
    m_bEITPresentFollowing = left.bit(2, 0);
    m_iRunningStatus = left.u8(3) >> 5;
    m_iFreeCAMode = left.u8(3) >> 4 & 1U;
    const QUOR_U16 loopLength = left.length12(3);
    const QUOR_U32 offered = stated;
    stated -= FIXED_LENGTH;
    left = left.from(FIXED_LENGTH);
    if (stated < loopLength) {
        return tooLong(loopLength, stated);
    }

    const detail::Outcome loop = detail::walkLoop(
        Kinds::FAMILY, *this, left, loopLength, err,
        [&](QUOR_U32 bodyLength) { return detail::takeStated(stated, bodyLength, stated, tooLong); }, unknown, tooLong);
    return loop.succeeded() ? detail::Outcome::done(offered - stated) : loop;
}

TISDBTDescriptor* TServiceDescription::getDescriptor(QUOR_U8 tag) const {
    return Kinds::FAMILY.get(*this, tag);
}

std::list<QUOR_U8>* TServiceDescription::getDescriptorTags() const {
    return Kinds::FAMILY.tags(*this);
}

TServiceDescriptor* TServiceDescription::getServiceDescriptor() const {
    return m_pServiceDesc.get();
}

TBouquetNameDescriptor* TServiceDescription::getBouquetNameDescriptor() const {
    return m_pBouquetNameDesc.get();
}

TCountryAvailabilityDescriptor* TServiceDescription::getCountryAvailabilityDescriptor() const {
    return m_pCountryAvailabilityDesc.get();
}

TLinkageDescriptor* TServiceDescription::getLinkageDescriptor() const {
    return m_pLinkageDesc.get();
}

TDigitalCopyControlDescriptor* TServiceDescription::getDigitalCopyControlDescriptor() const {
    return m_pDigitalCopyControlDesc.get();
}

TLogoTransmissionDescriptor* TServiceDescription::getLogoTransmissionDescriptor() const {
    return m_pLogoTransmissionDesc.get();
}

TContentAvailabilityDescriptor* TServiceDescription::getContentAvailabilityDescriptor() const {
    return m_pContentAvailabilityDesc.get();
}

TNVODReferenceDescriptor* TServiceDescription::getNVODReferenceDescriptor() const {
    return m_pNVODReferenceDesc.get();
}

TTimeShiftedServiceDescriptor* TServiceDescription::getTimeShiftedServiceDescriptor() const {
    return m_pTimeShiftServiceDesc.get();
}

TMosaicDescriptor* TServiceDescription::getMosaicDescriptor() const {
    return m_pMosaicDesc.get();
}

TCAIdentifierDescriptor* TServiceDescription::getCAIdentifierDescriptor() const {
    return m_pCAIdentifierDesc.get();
}

} // namespace Quor
