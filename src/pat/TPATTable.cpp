#include "pat/TPATTable.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

constexpr QUOR_U16 TABLE_ID = 0x00;

// program_number (16) | reserved (3) network_PID or program_map_PID (13)
constexpr QUOR_U32 ENTRY_LENGTH = 4;

constexpr auto KEY = &TProgramAssociation::getProgramNumber;

} // namespace

TPATTable::TPATTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(PAT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TPATTable::~TPATTable() = default;

TPATTable* TPATTable::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/, int checkCRC32,
                            QUOR_U16* errorCode, TPATTable* previous) {
    return detail::parseTable<TPATTable, 7>(data, length, checkCRC32, errorCode, previous);
}

detail::Outcome TPATTable::decode(const detail::Bytes& section, QUOR_U16 remaining) {
    detail::Bytes left = section.from(COMMON_HEADER_LENGTH);
    m_pItems.makeRoom(section.memory(), std::min<QUOR_U32>(remaining, left.size()) / ENTRY_LENGTH);
    while (remaining != 0) {
        if (!left.has(0, ENTRY_LENGTH)) {
            QUOR_ISDBT_LOG("%s: TPATTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                           ENTRY_LENGTH, left.size());
            return detail::Outcome::failed(ERROR_INVALID_DATA_LENGTH);
        }
        const QUOR_U16 programNumber = left.u16(0);
        if (programNumber == 0) {
            m_iNetworkPid = left.pid(2);
        } else {
            detail::store<KEY>(m_pItems, section.memory().make<TProgramAssociation>(programNumber, left.pid(2)),
                               section.memory());
        }
        left = left.from(ENTRY_LENGTH);
        remaining = static_cast<QUOR_U16>(remaining - ENTRY_LENGTH);
    }
    return detail::Outcome::done();
}

TProgramAssociation* TPATTable::get(QUOR_U16 programNumber) const {
    return detail::find<KEY>(m_pItems, programNumber);
}

std::list<QUOR_U16>* TPATTable::getProgramNumbers() const {
    return detail::keys<KEY>(m_pItems);
}

void TPATTable::add(TProgramAssociation* item) {
    detail::add<KEY>(m_pItems, item);
}

QUOR_BOOL TPATTable::remove(QUOR_U16 programNumber) {
    return detail::remove<KEY>(m_pItems, programNumber);
}

} // namespace Quor
