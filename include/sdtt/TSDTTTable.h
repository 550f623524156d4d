#ifndef QUOR_TSDTT_TABLE_H
#define QUOR_TSDTT_TABLE_H

#include "TISDBTVersionedTable.h"
#include "detail/Owned.h"
#include "sdtt/TDownloadContent.h"

namespace Quor {

/// Software download trigger table (ARIB STD-B21, table_id 0xC3, PID 0x0023 or 0x0028): the software updates that are
/// broadcast for the receivers of one maker and model.
class QUOR_ISDBT_API TSDTTTable : public TISDBTVersionedTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 4;

    /// A table without contents over a private copy of the section, all fields 0.
    TSDTTTable(QUOR_U8* data, QUOR_U32 length);
    ~TSDTTTable() override;

    /// Parses one section.
    /// @param data             the section, from table_id to CRC_32. The descriptors refer to it.
    /// @param length           number of bytes; those behind the section are ignored.
    /// @param checkCRC32       ignored.
    /// @param parseDescriptors ignored: the descriptors are always parsed.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA, ERROR_INVALID_DATA_LENGTH,
    ///                         ERROR_INVALID_TABLE_ID, ERROR_INVALID_SECTION_LEN_TOO_BIG,
    ///                         ERROR_INCOMPATIBLE_TABLE_TYPE, ERROR_TABLE_NOT_UPDATED, or ERROR_INVALID_ITEM for a bad
    ///                         content. May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TSDTTTable* parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int parseDescriptors, QUOR_U16* errorCode,
                             TSDTTTable* previous);

    /// maker_id and model_id as one number.
    QUOR_U16 getTableIDExtension() const { return getGenericDataField(); }

    /// maker_id, the high byte of the table_id_extension.
    QUOR_U8 getMakerID() const { return static_cast<QUOR_U8>(getGenericDataField() >> 8); }

    /// model_id, the low byte of the table_id_extension.
    QUOR_U8 getModelID() const { return static_cast<QUOR_U8>(getGenericDataField() & 0xFF); }

    /// transport_stream_id of the stream that carries the software.
    QUOR_U16 getTransportStreamID() const { return m_iTransportStreamID; }

    /// original_network_id of the stream that carries the software.
    QUOR_U16 getOriginalNetworkID() const { return m_iOriginalNetworkID; }

    /// service_id of the service that carries the software.
    QUOR_U16 getServiceID() const { return m_iServiceID; }

    /// The number of contents.
    QUOR_U32 getDownloadContentSize() const { return m_pItems.size(); }

    /// The content at a position in wire order, owned by the table; null past the end.
    TDownloadContent* getDownloadContent(QUOR_U8 index) const { return detail::at(m_pItems, index); }

    /// Appends a content, which the table owns from now on. The content's parent link is left as it is.
    void addDownloadContent(TDownloadContent* item);

    /// Removes and deletes the content at a position. @return whether there was one.
    QUOR_BOOL removeDownloadContent(QUOR_U8 index);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& section, QUOR_U16 remaining);

    QUOR_U16 m_iTransportStreamID = 0;
    QUOR_U16 m_iOriginalNetworkID = 0;
    QUOR_U16 m_iServiceID = 0;
    detail::Items<TDownloadContent> m_pItems{};
};

} // namespace Quor

#endif
