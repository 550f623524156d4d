#include "descriptors/TMosaicDescriptorCell.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// logical_cell_id (6) reserved_future_use (7) logical_cell_presentation_info (3) | elementary_cell_field_length (8) |
// reserved_future_use (2) elementary_cell_id (6) ... | cell_linkage_info (8) |
// bouquet_id (16)
//   or original_network_id (16) | transport_stream_id (16) | service_id (16) | event_id (16) when event related
constexpr QUOR_U32 ELEMENTARY_CELLS_AT = 3;
constexpr QUOR_U32 FIXED_LENGTH = 4;
constexpr QUOR_U32 MINIMUM_LENGTH = 5;

/// The bytes behind cell_linkage_info; 0 for a value that is refused, LINKAGE_TYPE_UNDEFINED among them.
QUOR_U32 linkageLength(QUOR_U8 cellLinkageInfo) {
    switch (cellLinkageInfo) {
    case TMosaicDescriptorCell::LINKAGE_TYPE_BOUQUET_RELATED:
        return 2;
    case TMosaicDescriptorCell::LINKAGE_TYPE_SERVICE_RELATED:
    case TMosaicDescriptorCell::LINKAGE_TYPE_OTHER_MOSAIC_RELATED:
        return 6;
    case TMosaicDescriptorCell::LINKAGE_TYPE_EVENT_RELATED:
        return 8;
    default:
        return 0;
    }
}

detail::Outcome tooShort(QUOR_U32 available, QUOR_U32 needed) {
    QUOR_ISDBT_LOG("%s: TMosaicDescriptorCell::parse: Item length not valid: %u < %u. Aborting!", detail::LOG_TAG,
                   available, needed);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

/// What is left of the loop must hold the cell with its linkage.
detail::Outcome checkLengths(detail::Bytes left) {
    if (left.size() < MINIMUM_LENGTH) {
        QUOR_ISDBT_LOG("%s: TMosaicDescriptorCell::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                       left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    const QUOR_U8 cellCount = left.u8(2);
    if (left.size() - FIXED_LENGTH < cellCount) {
        return tooShort(left.size() - FIXED_LENGTH, cellCount);
    }
    const QUOR_U8 info = left.u8(ELEMENTARY_CELLS_AT + cellCount);
    const QUOR_U32 needed = linkageLength(info);
    if (needed == 0) {
        QUOR_ISDBT_LOG("%s: TMosaicDescriptorCell::parse: Unknown Cell Linkage Info: %02X (%d). Aborting!",
                       detail::LOG_TAG, unsigned{info}, int{info});
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    const QUOR_U32 available = left.size() - FIXED_LENGTH - cellCount;
    if (available < needed) {
        // Quirk: the line has the kind of linkage in place of the 2 bytes of a bouquet_id.
        return tooShort(available, info == TMosaicDescriptorCell::LINKAGE_TYPE_BOUQUET_RELATED ? info : needed);
    }
    return detail::Outcome::done(FIXED_LENGTH + cellCount + needed);
}

} // namespace

TMosaicDescriptorCell::~TMosaicDescriptorCell() = default;

TMosaicDescriptorCell* TMosaicDescriptorCell::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode) {
    return detail::parseItem<TMosaicDescriptorCell>(data, length, parsedLength, errorCode);
}

detail::Outcome TMosaicDescriptorCell::decode(detail::Bytes left) {
    const detail::Outcome lengths = checkLengths(left);
    if (!lengths.succeeded()) {
        return lengths;
    }
    m_iLogicalCellID = left.u8(0) >> 2;
    m_iLogicalCellPresentationInfo = left.u8(1) & 7U;
    m_iElementaryCellFieldLength = left.u8(2);
    left = left.from(ELEMENTARY_CELLS_AT);
    m_pElementaryCellIDs = detail::copyBytes(left.first(m_iElementaryCellFieldLength));
    for (QUOR_U32 i = 0; i < m_iElementaryCellFieldLength; ++i) {
        m_pElementaryCellIDs[i] &= 0x3FU;
    }
    left = left.from(m_iElementaryCellFieldLength);
    m_iCellLinkageInfo = left.u8(0);
    if (m_iCellLinkageInfo == LINKAGE_TYPE_BOUQUET_RELATED) {
        m_iBouquetID = left.u16(1);
        return lengths;
    }
    m_iOriginalNetworkID = left.u16(1);
    m_iTransportStreamID = left.u16(3);
    m_iServiceID = left.u16(5);
    if (m_iCellLinkageInfo == LINKAGE_TYPE_EVENT_RELATED) {
        m_iEventID = left.u16(7);
    }
    return lengths;
}

} // namespace Quor
