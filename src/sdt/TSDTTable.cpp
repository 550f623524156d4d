#include "sdt/TSDTTable.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

constexpr QUOR_U16 TABLE_ID = 0x42;

// original_network_id (16) | reserved_future_use (8) | services, up to the CRC_32
constexpr QUOR_U32 ORIGINAL_NETWORK_ID_LENGTH = 2;
constexpr QUOR_U32 FIXED_LENGTH = 3;

constexpr auto KEY = &TServiceDescription::getServiceID;

} // namespace

TSDTTable::TSDTTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(SDT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TSDTTable::~TSDTTable() = default;

TSDTTable* TSDTTable::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/, int checkCRC32,
                            QUOR_U16* errorCode, TSDTTable* previous) {
    return detail::parseTable<TSDTTable, 15>(data, length, checkCRC32, errorCode, previous);
}

detail::Outcome TSDTTable::decode(const detail::Bytes& section, QUOR_U16 remaining) {
    detail::Bytes left = section.from(COMMON_HEADER_LENGTH);
    if (!left.has(0, ORIGINAL_NETWORK_ID_LENGTH)) {
        QUOR_ISDBT_LOG("%s: TSDTTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                       ORIGINAL_NETWORK_ID_LENGTH, left.size());
        return detail::Outcome::failed(ERROR_INVALID_DATA_LENGTH);
    }
    m_iOriginalNetworkID = left.u16(0);
    remaining = static_cast<QUOR_U16>(remaining - FIXED_LENGTH);
    left = left.from(FIXED_LENGTH);
    while (remaining != 0) {
        std::unique_ptr<TServiceDescription> service;
        const detail::Outcome decoded = detail::decodeEntry(service, left, remaining);
        if (!decoded.succeeded()) {
            QUOR_ISDBT_LOG("%s: TSDTTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        detail::store<KEY>(m_pItems, std::move(service), section.memory());
        remaining = static_cast<QUOR_U16>(remaining - decoded.length());
        left = left.from(decoded.length());
    }
    return detail::Outcome::done();
}

TServiceDescription* TSDTTable::getServiceDescription(QUOR_U16 serviceId) const {
    return detail::find<KEY>(m_pItems, serviceId);
}

std::list<QUOR_U16>* TSDTTable::getServiceIDs() const {
    return detail::keys<KEY>(m_pItems);
}

void TSDTTable::addServiceDescription(TServiceDescription* service) {
    detail::add<KEY>(m_pItems, service);
}

bool TSDTTable::removeServiceDescription(QUOR_U16 serviceId) {
    return detail::remove<KEY>(m_pItems, serviceId) != 0;
}

} // namespace Quor
