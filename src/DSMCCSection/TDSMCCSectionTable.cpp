#include "DSMCCSection/TDSMCCSectionTable.h"

#include "detail/Log.h"
#include "detail/Loop.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

constexpr QUOR_U16 TABLE_ID = 0x3D;

// In the table_id_extension: data_event_id (4) event_msg_group_id (12)
constexpr unsigned EVENT_MSG_GROUP_ID_BITS = 12;
constexpr unsigned EVENT_MSG_GROUP_ID_MASK = (1U << EVENT_MSG_GROUP_ID_BITS) - 1;

/// In the order of getDescriptorTags().
constexpr const detail::Family& FAMILY =
    detail::FamilyOf<TNPTReferenceDescriptor, TStreamModeDescriptor, TStreamEventDescriptor>::FAMILY;

struct Walk {
    detail::Bytes left;
    QUOR_U16 remaining;   ///< the stated number of bytes before the CRC_32; it may wrap
    QUOR_S32 longest = 0; ///< body of the descriptor; negative when a single byte remains

    detail::Outcome take(QUOR_U32 bodyLength) {
        longest = remaining - static_cast<QUOR_S32>(TISDBTDescriptor::COMMON_HEADER_LENGTH);
        remaining = static_cast<QUOR_U16>(longest - static_cast<QUOR_S32>(bodyLength));
        return static_cast<QUOR_S32>(bodyLength) > longest ? tooLong(bodyLength, left.size()) : detail::Outcome::done();
    }

    detail::Outcome tooLong(QUOR_U32 /*needed*/, QUOR_U32 /*left*/) const {
        // Quirk: the line has the tag where those of other tables have the length.
        QUOR_ISDBT_LOG("%s: TDSMCCSectionTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                       unsigned{left.u8(0)}, static_cast<unsigned>(longest));
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        QUOR_ISDBT_LOG("%s: TDSMCCSectionTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                       unsigned{tag});
    }
};

} // namespace

TDSMCCSectionTable::TDSMCCSectionTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(DSMCC_SECTION, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TDSMCCSectionTable::~TDSMCCSectionTable() = default;

TDSMCCSectionTable* TDSMCCSectionTable::parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int /*parseDescriptors*/,
                                              QUOR_U16* errorCode, TDSMCCSectionTable* previous) {
    return detail::parseTable<TDSMCCSectionTable, 7>(data, length, checkCRC32, errorCode, previous);
}

detail::Outcome TDSMCCSectionTable::decode(const detail::Bytes& section, QUOR_U16 remaining) {
    m_iDataEventID = static_cast<QUOR_U8>(getGenericDataField() >> EVENT_MSG_GROUP_ID_BITS);
    m_iEventMsgGroupID = getGenericDataField() & EVENT_MSG_GROUP_ID_MASK;
    Walk walk{section.from(COMMON_HEADER_LENGTH), remaining};
    return detail::walkLoop(FAMILY, m_descriptors, walk, remaining);
}

std::list<QUOR_U8>* TDSMCCSectionTable::getDescriptorTags() const {
    return FAMILY.tags(m_descriptors);
}

} // namespace Quor
