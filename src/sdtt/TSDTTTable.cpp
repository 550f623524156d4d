#include "sdtt/TSDTTTable.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

constexpr QUOR_U16 TABLE_ID = 0xC3;

// Behind the section header:
// transport_stream_id (16) | original_network_id (16) | service_id (16) | num_of_contents (8) | contents
constexpr QUOR_U32 FIXED_LENGTH = 7;

} // namespace

TSDTTTable::TSDTTTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(SDTT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TSDTTTable::~TSDTTTable() = default;

TSDTTTable* TSDTTTable::parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int /*parseDescriptors*/,
                              QUOR_U16* errorCode, TSDTTTable* previous) {
    return detail::parseTable<TSDTTTable, 10>(data, length, checkCRC32, errorCode, previous);
}

/// Each content is offered what the section says is left, a count that wraps in a section too short for its own
/// fields; @p left ends where the data does.
detail::Outcome TSDTTTable::decode(const detail::Bytes& section, QUOR_U16 remaining) {
    detail::Bytes left = section.from(COMMON_HEADER_LENGTH);
    if (!left.has(0, FIXED_LENGTH)) {
        QUOR_ISDBT_LOG("%s: TSDTTTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                       FIXED_LENGTH, left.size());
        return detail::Outcome::failed(ERROR_INVALID_DATA_LENGTH);
    }
    m_iTransportStreamID = left.u16(0);
    m_iOriginalNetworkID = left.u16(2);
    m_iServiceID = left.u16(4);
    const QUOR_U8 numberOfContents = left.u8(6);
    left = left.from(FIXED_LENGTH);
    remaining = static_cast<QUOR_U16>(remaining - FIXED_LENGTH);

    for (unsigned i = 0; i < numberOfContents; ++i) {
        std::unique_ptr<TDownloadContent> content;
        const detail::Outcome decoded = detail::decodeEntry(content, left, remaining);
        if (!decoded.succeeded()) {
            QUOR_ISDBT_LOG("%s: TSDTTTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        detail::append(m_pItems, std::move(content), section.memory());
        left = left.from(decoded.length());
        remaining = static_cast<QUOR_U16>(remaining - decoded.length());
    }
    return detail::Outcome::done();
}

void TSDTTTable::addDownloadContent(TDownloadContent* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TSDTTTable::removeDownloadContent(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
