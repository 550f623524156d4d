#include "sdt/TServiceDescription.h"

#include "detail/Log.h"
#include "detail/Loop.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// service_id (16) | reserved (6) EIT_schedule_flag (1) EIT_present_following_flag (1) |
// running_status (3) free_CA_mode (1) descriptors_loop_length (12) | descriptors
constexpr QUOR_U32 FIXED_LENGTH = 5;

/// In the order of getDescriptorTags().
constexpr const detail::Family& FAMILY =
    detail::FamilyOf<TServiceDescriptor, TBouquetNameDescriptor, TCountryAvailabilityDescriptor, TLinkageDescriptor,
                     TDigitalCopyControlDescriptor, TLogoTransmissionDescriptor, TContentAvailabilityDescriptor,
                     TNVODReferenceDescriptor, TTimeShiftedServiceDescriptor, TMosaicDescriptor,
                     TCAIdentifierDescriptor>::FAMILY;

struct Walk {
    detail::Bytes left;
    QUOR_U32 stated; ///< bytes left as the section counts them

    detail::Outcome take(QUOR_U32 bodyLength) { return detail::takeStated(*this, bodyLength, 0); }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TServiceDescription::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                       needed, left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        if (tag != detail::STUFFING_TAG) {
            QUOR_ISDBT_LOG("%s: TServiceDescription::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                           unsigned{tag});
        }
    }
};

} // namespace

TServiceDescription::~TServiceDescription() = default;

TServiceDescription* TServiceDescription::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/,
                                                QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseEntry<TServiceDescription>(data, length, parsedLength, errorCode);
}

detail::Outcome TServiceDescription::decode(const detail::Bytes& entry, QUOR_U32 stated) {
    if (stated < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TServiceDescription::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, stated);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (!entry.has(0, FIXED_LENGTH)) {
        return Walk::tooLong(FIXED_LENGTH, entry.size());
    }
    m_iServiceID = entry.u16(0);
    m_bEITSchedule = entry.bit(2, 1);
    m_bEITPresentFollowing = entry.bit(2, 0);
    m_iRunningStatus = entry.u8(3) >> 5;
    m_iFreeCAMode = entry.u8(3) >> 4 & 1U;
    return detail::walkEntryLoop<Walk>(FAMILY, m_descriptors, entry, stated, FIXED_LENGTH, entry.length12(3));
}

std::list<QUOR_U8>* TServiceDescription::getDescriptorTags() const {
    return FAMILY.tags(m_descriptors);
}

} // namespace Quor
