#include "sdt/TSDTTable.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TSDTTable::MINIMUM_DATA_LENGTH;

namespace {

constexpr QUOR_U16 TABLE_ID = 0x42;

// original_network_id (16) | reserved_future_use (8) | services, up to the CRC_32
constexpr QUOR_U32 ORIGINAL_NETWORK_ID_LENGTH = 2;
constexpr QUOR_U32 FIXED_LENGTH = 3;

} // namespace

TSDTTable::TSDTTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(SDT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length), m_iOriginalNetworkID(0) {}

TSDTTable::~TSDTTable() = default;

TSDTTable* TSDTTable::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/, int checkCRC32, QUOR_U16* err,
                            TSDTTable* previous) {
    return detail::parseTable<TSDTTable>(data, length, checkCRC32, err, previous,
                                         [=](TSDTTable& table, detail::Bytes section, QUOR_U16 remaining) {
                                             return table.parseBody(section, remaining, err);
                                         });
}

detail::Outcome TSDTTable::parseBody(detail::Bytes section, QUOR_U16 remaining, QUOR_U16* err) {
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
        QUOR_U32 length = 0;
        std::unique_ptr<TServiceDescription> service(TServiceDescription::parse(left, remaining, &length, err));
        if (service == nullptr) {
            QUOR_ISDBT_LOG("%s: TSDTTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        const QUOR_U16 serviceId = service->getServiceID();
        detail::store(m_pItems, serviceId, std::move(service));
        remaining = static_cast<QUOR_U16>(remaining - length);
        left = left.from(length);
    }
    return detail::Outcome::done();
}

QUOR_U32 TSDTTable::size() const {
    return detail::count(m_pItems);
}

TServiceDescription* TSDTTable::getServiceDescription(QUOR_U16 serviceId) const {
    return detail::find(m_pItems, serviceId);
}

std::list<QUOR_U16>* TSDTTable::getServiceIDs() const {
    return detail::keys(m_pItems);
}

void TSDTTable::addServiceDescription(TServiceDescription* service) {
    if (service != nullptr) {
        detail::add(m_pItems, service->getServiceID(), service);
    }
}

bool TSDTTable::removeServiceDescription(QUOR_U16 serviceId) {
    return detail::remove(m_pItems, serviceId) != 0;
}

} // namespace Quor
