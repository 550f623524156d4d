#ifndef QUOR_TMOSAIC_DESCRIPTOR_CELL_H
#define QUOR_TMOSAIC_DESCRIPTOR_CELL_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "detail/Owned.h"

namespace Quor {

/// One logical cell of a mosaic: the elementary cells that it covers, and what it leads to.
class QUOR_ISDBT_API TMosaicDescriptorCell : public TISDBTMemory {
public:
    /// @name Values of logical_cell_presentation_info
    /// @{
    static constexpr QUOR_U8 PRESENTATION_TYPE_UNDEFINED = 0;
    static constexpr QUOR_U8 PRESENTATION_TYPE_VIDEO = 1;
    static constexpr QUOR_U8 PRESENTATION_TYPE_STILL_PICTURE = 2;
    static constexpr QUOR_U8 PRESENTATION_TYPE_GRAPHICS_OR_TEXT = 3;
    /// @}

    /// @name Values of cell_linkage_info
    /// @{
    static constexpr QUOR_U8 LINKAGE_TYPE_UNDEFINED = 0;            ///< leads nowhere
    static constexpr QUOR_U8 LINKAGE_TYPE_BOUQUET_RELATED = 1;      ///< leads to a bouquet
    static constexpr QUOR_U8 LINKAGE_TYPE_SERVICE_RELATED = 2;      ///< leads to a service
    static constexpr QUOR_U8 LINKAGE_TYPE_OTHER_MOSAIC_RELATED = 3; ///< leads to another mosaic
    static constexpr QUOR_U8 LINKAGE_TYPE_EVENT_RELATED = 4;        ///< leads to a programme of a service
    /// @}

    TMosaicDescriptorCell() = default;
    virtual ~TMosaicDescriptorCell();

    /// Parses one cell.
    /// @param data         the cell.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the cell took. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH, also for a cell_linkage_info other than 1 to 4. May
    ///                     be null.
    /// @return a new cell, which the caller deletes, or null.
    static TMosaicDescriptorCell* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// logical_cell_id, 0 to 63.
    QUOR_U8 getLogicalCellID() const { return m_iLogicalCellID; }

    /// logical_cell_presentation_info, 0 to 7.
    QUOR_U8 getLogicalCellPresentationInfo() const { return m_iLogicalCellPresentationInfo; }

    /// elementary_cell_field_length: the number of elementary cells.
    QUOR_U8 getElementaryCellFieldLength() const { return m_iElementaryCellFieldLength; }

    /// The elementary_cell_ids, 0 to 63 each, owned by the cell; null when there are none.
    QUOR_U8* getElementaryCellIDs() const { return m_pElementaryCellIDs.get(); }

    /// cell_linkage_info, 1 to 4; 0 in a new cell.
    QUOR_U8 getCellLinkageInfo() const { return m_iCellLinkageInfo; }

    /// bouquet_id of LINKAGE_TYPE_BOUQUET_RELATED; else 0.
    QUOR_U16 getBouquetID() const { return m_iBouquetID; }

    /// original_network_id of the linked service; 0 for LINKAGE_TYPE_BOUQUET_RELATED.
    QUOR_U16 getOriginalNetworkID() const { return m_iOriginalNetworkID; }

    /// transport_stream_id of the linked service; 0 for LINKAGE_TYPE_BOUQUET_RELATED.
    QUOR_U16 getTransportStreamID() const { return m_iTransportStreamID; }

    /// service_id of the linked service; 0 for LINKAGE_TYPE_BOUQUET_RELATED.
    QUOR_U16 getServiceID() const { return m_iServiceID; }

    /// event_id of LINKAGE_TYPE_EVENT_RELATED; else 0.
    QUOR_U16 getEventID() const { return m_iEventID; }

private:
    friend struct detail::Access;

    detail::Outcome decode(detail::Bytes left);

    QUOR_U8 m_iLogicalCellID = 0;
    QUOR_U8 m_iLogicalCellPresentationInfo = 0;
    QUOR_U8 m_iElementaryCellFieldLength = 0;
    detail::Array<QUOR_U8> m_pElementaryCellIDs{};
    QUOR_U8 m_iCellLinkageInfo = 0;
    QUOR_U16 m_iBouquetID = 0;
    QUOR_U16 m_iOriginalNetworkID = 0;
    QUOR_U16 m_iTransportStreamID = 0;
    QUOR_U16 m_iServiceID = 0;
    QUOR_U16 m_iEventID = 0;
};

} // namespace Quor

#endif
