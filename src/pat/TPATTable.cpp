#include "pat/TPATTable.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TPATTable::MINIMUM_DATA_LENGTH;

namespace {

constexpr QUOR_U16 TABLE_ID = 0x00;

// program_number (16) | reserved (3) network_PID or program_map_PID (13)
constexpr QUOR_U32 ENTRY_LENGTH = 4;

} // namespace

TPATTable::TPATTable(QUOR_U8* sectionData, QUOR_U32 dataLength)
    : TISDBTVersionedTable(PAT, MINIMUM_DATA_LENGTH, TABLE_ID, sectionData, dataLength), m_iNetworkPid(0) {}

TPATTable::~TPATTable() = default;

TPATTable* TPATTable::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int /*parseDescriptors*/, int checkCRC32,
                            QUOR_U16* errorCode, TPATTable* previous) {
    return detail::parseTable<TPATTable>(
        sectionData, dataLength, checkCRC32, errorCode, previous,
        [](TPATTable& table, detail::Bytes section, QUOR_U16 remaining) {
            detail::Bytes left = section.from(COMMON_HEADER_LENGTH);
            while (remaining != 0) {
                if (!left.has(0, ENTRY_LENGTH)) {
                    QUOR_ISDBT_LOG("%s: TPATTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                                   ENTRY_LENGTH, left.size());
                    return detail::Outcome::failed(ERROR_INVALID_DATA_LENGTH);
                }
                const QUOR_U16 programNumber = left.u16(0);
                if (programNumber == 0) {
                    table.m_iNetworkPid = left.pid(2);
                } else {
                    detail::store(table.m_pItems, programNumber,
                                  std::make_unique<TProgramAssociation>(programNumber, left.pid(2)));
                }
                left = left.from(ENTRY_LENGTH);
                remaining = static_cast<QUOR_U16>(remaining - ENTRY_LENGTH);
            }
            return detail::Outcome::done();
        });
}

QUOR_U32 TPATTable::size() const {
    return detail::count(m_pItems);
}

TProgramAssociation* TPATTable::get(QUOR_U16 programNumber) const {
    return detail::find(m_pItems, programNumber);
}

std::list<QUOR_U16>* TPATTable::getProgramNumbers() const {
    return detail::keys(m_pItems);
}

void TPATTable::add(TProgramAssociation* item) {
    if (item != nullptr) {
        detail::add(m_pItems, item->getProgramNumber(), item);
    }
}

QUOR_BOOL TPATTable::remove(QUOR_U16 programNumber) {
    return detail::remove(m_pItems, programNumber);
}

} // namespace Quor
