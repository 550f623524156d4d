#ifndef QUOR_TISDBT_VERSIONED_TABLE_H
#define QUOR_TISDBT_VERSIONED_TABLE_H

#include "TISDBTTable.h"

namespace Quor {

/// Base of the tables with the long section header of ISO/IEC 13818-1: table_id_extension, version_number,
/// current_next_indicator, section_number and last_section_number.
///
/// Such a table's `parse` takes the object that an earlier call returned as `previous`, or null. With one given, only
/// section 0 of another version is accepted: the same version gives ERROR_TABLE_NOT_UPDATED, a table of another type
/// ERROR_INCOMPATIBLE_TABLE_TYPE, and a section_number above 0 null with the caller's error code left as it was.
class QUOR_ISDBT_API TISDBTVersionedTable : public TISDBTTable {
public:
    /// Bytes from table_id to last_section_number.
    static constexpr QUOR_U32 COMMON_HEADER_LENGTH = 8;

    /// Keeps a private copy of the section; the header fields are 0 until parseCommonHeader().
    TISDBTVersionedTable(Type type, QUOR_U32 minimumDataLength, QUOR_U16 expectedTableId, QUOR_U8* data,
                         QUOR_U32 length);
    ~TISDBTVersionedTable() override;

    /// Checks the short header as TISDBTTable does, then @p previous, and reads the long header.
    /// @param data          the section, from table_id to CRC_32.
    /// @param length        number of bytes; those behind the section are ignored.
    /// @param checkCRC32    ignored.
    /// @param errorCode     the reason of a failure; not written on success. May be null.
    /// @param sectionLength receives the number of bytes between this header and the CRC_32, modulo 65536. Not null.
    /// @param previous      the table of an earlier version, or null. Not kept.
    /// @return whether the header is good.
    bool parseCommonHeader(QUOR_U8* data, QUOR_U32 length, int checkCRC32, QUOR_U16* errorCode, QUOR_U16* sectionLength,
                           TISDBTTable* previous) override;

    /// The table_id_extension, which every table names differently (transport_stream_id, program_number, ...).
    QUOR_U16 getGenericDataField() const { return m_iGenericDataField; }

    /// version_number, 0 to 31.
    QUOR_U8 getVersion() const { return m_iVersion; }

    /// current_next_indicator: true when the section applies now. It takes part in no decision of the library.
    QUOR_BOOL getCurrentIndicator() const { return m_bCurrentIndicator; }

    /// section_number, 0 to 255: which of the table's sections this is.
    QUOR_U8 getSectionNumber() const { return m_iSectionNum; }

    /// last_section_number, 0 to 255: the section_number of the table's last section.
    QUOR_U8 getLastSectionNumber() const { return m_iLastSectionNum; }

private:
    QUOR_U16 m_iGenericDataField = 0;
    QUOR_U8 m_iVersion = 0;
    QUOR_BOOL m_bCurrentIndicator = false;
    QUOR_U8 m_iSectionNum = 0;
    QUOR_U8 m_iLastSectionNum = 0;
};

} // namespace Quor

#endif
