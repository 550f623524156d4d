#include "sdtt/TSDTTTable.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TSDTTTable::MINIMUM_DATA_LENGTH;

namespace {

constexpr QUOR_U16 TABLE_ID = 0xC3;

// Behind the section header:
// transport_stream_id (16) | original_network_id (16) | service_id (16) | num_of_contents (8) | contents
constexpr QUOR_U32 FIXED_LENGTH = 7;

} // namespace

TSDTTTable::TSDTTTable(QUOR_U8* sectionData, QUOR_U32 dataLength)
    : TISDBTVersionedTable(SDTT, MINIMUM_DATA_LENGTH, TABLE_ID, sectionData, dataLength), m_iTransportStreamID(0),
      m_iOriginalNetworkID(0), m_iServiceID(0) {}

TSDTTTable::~TSDTTTable() = default;

TSDTTTable* TSDTTTable::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int checkCRC32, int /*parseDescriptors*/,
                              QUOR_U16* errorCode, TSDTTTable* previous) {
    return detail::parseTable<TSDTTTable>(sectionData, dataLength, checkCRC32, errorCode, previous,
                                          [=](TSDTTTable& table, detail::Bytes section, QUOR_U16 remaining) {
                                              return table.parseContents(section.from(COMMON_HEADER_LENGTH), remaining,
                                                                         errorCode);
                                          });
}

/// Each content is offered what the section says is left, a count that wraps in a section too short for its own
/// fields; @p left ends where the data does.
detail::Outcome TSDTTTable::parseContents(detail::Bytes left, QUOR_U16 remaining, QUOR_U16* errorCode) {
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
        QUOR_U32 used = 0;
        std::unique_ptr<TDownloadContent> content(TDownloadContent::parse(left, remaining, &used, errorCode));
        if (content == nullptr) {
            QUOR_ISDBT_LOG("%s: TSDTTTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        m_pItems.push_back(std::move(content));
        left = left.from(used);
        remaining = static_cast<QUOR_U16>(remaining - used);
    }
    return detail::Outcome::done();
}

QUOR_U32 TSDTTTable::getDownloadContentSize() const {
    return detail::count(m_pItems);
}

TDownloadContent* TSDTTTable::getDownloadContent(QUOR_U8 index) const {
    return detail::get(m_pItems, index);
}

void TSDTTTable::addDownloadContent(TDownloadContent* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TSDTTTable::removeDownloadContent(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
