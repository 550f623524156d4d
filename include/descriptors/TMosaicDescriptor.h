#ifndef QUOR_TMOSAIC_DESCRIPTOR_H
#define QUOR_TMOSAIC_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "descriptors/TMosaicDescriptorCell.h"
#include "detail/Owned.h"

namespace Quor {

/// Mosaic descriptor (ARIB STD-B10, tag 0x51): how the picture of a mosaic service is divided into cells, and what each
/// cell leads to.
class QUOR_ISDBT_API TMosaicDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x51;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// @name Values of number_of_horizontal_elementary_cells and number_of_vertical_elementary_cells
    /// One less than the number.
    /// @{
    static constexpr QUOR_U8 NUMBER_OF_CELLS_1 = 0;
    static constexpr QUOR_U8 NUMBER_OF_CELLS_2 = 1;
    static constexpr QUOR_U8 NUMBER_OF_CELLS_3 = 2;
    static constexpr QUOR_U8 NUMBER_OF_CELLS_4 = 3;
    static constexpr QUOR_U8 NUMBER_OF_CELLS_5 = 4;
    static constexpr QUOR_U8 NUMBER_OF_CELLS_6 = 5;
    static constexpr QUOR_U8 NUMBER_OF_CELLS_7 = 6;
    static constexpr QUOR_U8 NUMBER_OF_CELLS_8 = 7;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TMosaicDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TMosaicDescriptor() override;

    /// Parses one descriptor. Fewer cells than the grid has are accepted; bytes behind as many cells as it has are
    /// ignored.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 1 plus the bytes of the cells. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for a cell that failed. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TMosaicDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The two lower bits of number_of_horizontal_elementary_cells, 0 to 3: grids of more than four columns read as
    /// smaller ones.
    QUOR_U8 getNumberOfHorizontalCells() const { return m_iNumberOfHorizontalCells; }

    /// The two lower bits of number_of_vertical_elementary_cells, 0 to 3: grids of more than four rows read as smaller
    /// ones.
    QUOR_U8 getNumberOfVerticalCells() const { return m_iNumberOfVerticalCells; }

    /// The number of logical cells.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The logical cell at a position, from 0 in wire order, owned by the descriptor; null past the end.
    TMosaicDescriptorCell* getCell(QUOR_U32 index) const { return detail::at(m_pItems, index); }

    /// Appends a logical cell, which the descriptor owns from now on. Null takes a place as well.
    void addCell(TMosaicDescriptorCell* cell);

    /// Removes and deletes the logical cell at a position. @return false when none is there.
    QUOR_BOOL removeCell(QUOR_U32 index);

protected:
    /// mosaic_entry_point is not read from the wire; the place is kept for it.
    QUOR_BOOL m_bMosaicEntryPoint = false;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iNumberOfHorizontalCells = 0;
    QUOR_U8 m_iNumberOfVerticalCells = 0;
    detail::Items<TMosaicDescriptorCell> m_pItems{};
};

} // namespace Quor

#endif
