#include "descriptors/TMosaicDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) |
// mosaic_entry_point (1) number_of_horizontal_elementary_cells (3) reserved_future_use (1)
// number_of_vertical_elementary_cells (3) | cells ...
constexpr QUOR_U32 GRID_LENGTH = 1;

} // namespace

constexpr U8 TMosaicDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TMosaicDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TMosaicDescriptor::NUMBER_OF_CELLS_1;
constexpr QUOR_U8 TMosaicDescriptor::NUMBER_OF_CELLS_2;
constexpr QUOR_U8 TMosaicDescriptor::NUMBER_OF_CELLS_3;
constexpr QUOR_U8 TMosaicDescriptor::NUMBER_OF_CELLS_4;
constexpr QUOR_U8 TMosaicDescriptor::NUMBER_OF_CELLS_5;
constexpr QUOR_U8 TMosaicDescriptor::NUMBER_OF_CELLS_6;
constexpr QUOR_U8 TMosaicDescriptor::NUMBER_OF_CELLS_7;
constexpr QUOR_U8 TMosaicDescriptor::NUMBER_OF_CELLS_8;

TMosaicDescriptor::TMosaicDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_bMosaicEntryPoint(false), m_iNumberOfHorizontalCells(0),
      m_iNumberOfVerticalCells(0) {}

TMosaicDescriptor::~TMosaicDescriptor() = default;

TMosaicDescriptor* TMosaicDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseDescriptor<TMosaicDescriptor>(
        data, length, parsedLength, err, [err](TMosaicDescriptor& object, detail::Bytes descriptor) {
            // Two bits of each count, not three; callers depend on these values.
            object.m_iNumberOfHorizontalCells = descriptor.u8(2) >> 4 & 3U;
            object.m_iNumberOfVerticalCells = descriptor.u8(2) & 3U;
            const QUOR_U32 cellCount =
                (object.m_iNumberOfHorizontalCells + 1U) * (object.m_iNumberOfVerticalCells + 1U);
            const detail::Bytes cells = descriptor.from(COMMON_HEADER_LENGTH + GRID_LENGTH);
            const auto append = detail::appendTo(object.m_pItems);
            detail::ItemWalk walk(cells);
            while (walk.complete && walk.left != 0 && object.size() < cellCount) {
                detail::parseNextItem<TMosaicDescriptorCell>(cells, walk, err, append);
            }
            if (!walk.complete) {
                QUOR_ISDBT_LOG("%s: TMosaicDescriptor::parse: Invalid Cell. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
            }
            return detail::Outcome::done(GRID_LENGTH + cells.size() - walk.left);
        });
}

QUOR_U32 TMosaicDescriptor::size() const {
    return detail::count(m_pItems);
}

TMosaicDescriptorCell* TMosaicDescriptor::getCell(QUOR_U32 index) const {
    return detail::get(m_pItems, index);
}

void TMosaicDescriptor::addCell(TMosaicDescriptorCell* cell) {
    detail::add(m_pItems, cell);
}

QUOR_BOOL TMosaicDescriptor::removeCell(QUOR_U32 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
