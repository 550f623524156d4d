#ifndef QUOR_TPAT_TABLE_H
#define QUOR_TPAT_TABLE_H

#include "TISDBTVersionedTable.h"
#include "detail/Owned.h"
#include "pat/TProgramAssociation.h"

namespace Quor {

/// Program association table (ISO/IEC 13818-1, table_id 0x00, PID 0x0000): the services of the transport stream with
/// the PIDs of their program map tables, and the PID of the network information table.
class QUOR_ISDBT_API TPATTable : public TISDBTVersionedTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 10;

    /// An empty table over a private copy of the section.
    TPATTable(QUOR_U8* data, QUOR_U32 length);
    ~TPATTable() override;

    /// Parses one section.
    /// @param data             the section, from table_id to CRC_32.
    /// @param length           number of bytes; those behind the section are ignored.
    /// @param parseDescriptors ignored: this table has no descriptors.
    /// @param checkCRC32       ignored.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA, ERROR_INVALID_DATA_LENGTH,
    ///                         ERROR_INVALID_TABLE_ID, ERROR_INVALID_SECTION_LEN_TOO_BIG, ERROR_INCOMPATIBLE_TABLE_TYPE
    ///                         or ERROR_TABLE_NOT_UPDATED. May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TPATTable* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, int checkCRC32, QUOR_U16* errorCode,
                            TPATTable* previous);

    /// transport_stream_id, 0 to 65535.
    QUOR_U16 getTransportStreamID() const { return getGenericDataField(); }

    /// network_PID, the entry of program_number 0; 0 when the section has none.
    QUOR_U16 getNetworkPid() const { return m_iNetworkPid; }

    /// The number of services; the entry of program_number 0 is not among them.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The entry of a service, owned by the table; null when there is none.
    TProgramAssociation* get(QUOR_U16 programNumber) const;

    /// The program_numbers in ascending order: a new list, which the caller deletes.
    std::list<QUOR_U16>* getProgramNumbers() const;

    /// Adds an entry, which the table owns from now on. An entry with the same program_number is displaced and not
    /// deleted. Null is ignored.
    void add(TProgramAssociation* item);

    /// Removes and deletes the entry of a service. @return whether there was one.
    QUOR_BOOL remove(QUOR_U16 programNumber);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& section, QUOR_U16 remaining);

    QUOR_U16 m_iNetworkPid = 0;
    detail::Items<TProgramAssociation> m_pItems{};
};

} // namespace Quor

#endif
