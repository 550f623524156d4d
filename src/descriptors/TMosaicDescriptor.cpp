#include "descriptors/TMosaicDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) |
// mosaic_entry_point (1) number_of_horizontal_elementary_cells (3) reserved_future_use (1)
// number_of_vertical_elementary_cells (3) | cells ...
constexpr QUOR_U32 GRID_LENGTH = 1;

} // namespace

TMosaicDescriptor::~TMosaicDescriptor() = default;

TMosaicDescriptor* TMosaicDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                            QUOR_U16* errorCode) {
    return detail::parseDescriptor<TMosaicDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TMosaicDescriptor::decode(const detail::Bytes& descriptor) {
    // Quirk: two bits of each count, not three.
    m_iNumberOfHorizontalCells = descriptor.u8(2) >> 4 & 3U;
    m_iNumberOfVerticalCells = descriptor.u8(2) & 3U;
    const QUOR_U32 cellCount = (m_iNumberOfHorizontalCells + 1U) * (m_iNumberOfVerticalCells + 1U);
    const detail::Bytes cells = descriptor.from(COMMON_HEADER_LENGTH + GRID_LENGTH);
    detail::ItemWalk walk(cells);
    while (!walk.left.empty() && size() < cellCount && walk.take(m_pItems)) {
    }
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TMosaicDescriptor::parse: Invalid Cell. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    return detail::Outcome::done(GRID_LENGTH + cells.size() - walk.left.size());
}

void TMosaicDescriptor::addCell(TMosaicDescriptorCell* cell) {
    detail::add(m_pItems, cell);
}

QUOR_BOOL TMosaicDescriptor::removeCell(QUOR_U32 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
