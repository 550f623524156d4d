#include "DSMCCSection/TDSMCCSectionTable.h"

#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TStreamModeDescriptor.h"
#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TDSMCCSectionTable::MINIMUM_DATA_LENGTH;

namespace {

constexpr QUOR_U16 TABLE_ID = 0x3D;

// In the table_id_extension: data_event_id (4) event_msg_group_id (12)
constexpr unsigned EVENT_MSG_GROUP_ID_BITS = 12;
constexpr unsigned EVENT_MSG_GROUP_ID_MASK = (1U << EVENT_MSG_GROUP_ID_BITS) - 1;

void unknown(QUOR_U8 tag) {
    QUOR_ISDBT_LOG("%s: TDSMCCSectionTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                   unsigned{tag});
}

} // namespace

TDSMCCSectionTable::TDSMCCSectionTable(QUOR_U8* sectionData, QUOR_U32 dataLength)
    : TISDBTVersionedTable(DSMCC_SECTION, MINIMUM_DATA_LENGTH, TABLE_ID, sectionData, dataLength), m_iDataEventID(0),
      m_iEventMsgGroupID(0) {}

TDSMCCSectionTable::~TDSMCCSectionTable() = default;

struct TDSMCCSectionTable::Kinds {
    static constexpr detail::Family FAMILY{detail::kind<&TDSMCCSectionTable::m_pNPTReferenceDesc>(),
                                           detail::kind<&TDSMCCSectionTable::m_pStreamModeDesc>(),
                                           detail::kind<&TDSMCCSectionTable::m_pStreamEventDesc>()};
};

TDSMCCSectionTable* TDSMCCSectionTable::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int checkCRC32,
                                              int /*parseDescriptors*/, QUOR_U16* errorCode,
                                              TDSMCCSectionTable* previous) {
    return detail::parseTable<TDSMCCSectionTable>(
        sectionData, dataLength, checkCRC32, errorCode, previous,
        [=](TDSMCCSectionTable& table, detail::Bytes section, QUOR_U16 remaining) {
            const QUOR_U16 extension = table.getGenericDataField();
            table.m_iDataEventID = static_cast<QUOR_U8>(extension >> EVENT_MSG_GROUP_ID_BITS);
            table.m_iEventMsgGroupID = extension & EVENT_MSG_GROUP_ID_MASK;
            return table.parseLoop(section.from(COMMON_HEADER_LENGTH), remaining, errorCode);
        });
}

/// @param remaining the bytes up to the CRC_32, a count that wraps in a section too short for its own header.
detail::Outcome TDSMCCSectionTable::parseLoop(detail::Bytes left, QUOR_U16 remaining, QUOR_U16* errorCode) {
    QUOR_S32 longest = 0;
    const auto tooLong = [&] {
        // The tag stands where other tables have the length; readers of the log depend on it.
        QUOR_ISDBT_LOG("%s: TDSMCCSectionTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                       unsigned{left.u8(0)}, static_cast<unsigned>(longest));
        return detail::Outcome::failed(ERROR_INVALID_DATA_LENGTH);
    };
    return detail::walkLoop(
        Kinds::FAMILY, *this, left, remaining, errorCode,
        [&](QUOR_U32 bodyLength) {
            // Negative when a single byte is left.
            longest = remaining - static_cast<QUOR_S32>(TISDBTDescriptor::COMMON_HEADER_LENGTH);
            remaining = static_cast<QUOR_U16>(longest - static_cast<QUOR_S32>(bodyLength));
            return static_cast<QUOR_S32>(bodyLength) > longest ? tooLong() : detail::Outcome::done();
        },
        unknown, [&](QUOR_U32 /*needed*/, QUOR_U32 /*left*/) { return tooLong(); });
}

TISDBTDescriptor* TDSMCCSectionTable::getDescriptor(QUOR_U8 descriptorTag) const {
    return Kinds::FAMILY.get(*this, descriptorTag);
}

std::list<QUOR_U8>* TDSMCCSectionTable::getDescriptorTags() const {
    return Kinds::FAMILY.tags(*this);
}

} // namespace Quor
