#ifndef QUOR_TDSMCC_SECTION_TABLE_H
#define QUOR_TDSMCC_SECTION_TABLE_H

#include "TISDBTVersionedTable.h"
#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TStreamModeDescriptor.h"
#include "detail/Descriptors.h"

namespace Quor {

/// DSM-CC section with stream descriptors (ISO/IEC 13818-6, table_id 0x3D, PID signalled by the program map table): the
/// time base and the events that interactive applications are synchronised with. Of several descriptors of one kind
/// the last is kept.
class QUOR_ISDBT_API TDSMCCSectionTable : public TISDBTVersionedTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 4;

    /// A table without descriptors over a private copy of the section, all fields 0.
    TDSMCCSectionTable(QUOR_U8* data, QUOR_U32 length);
    ~TDSMCCSectionTable() override;

    /// Parses one section.
    /// @param data             the section, from table_id to CRC_32. The descriptors refer to it.
    /// @param length           number of bytes; those behind the section are ignored.
    /// @param checkCRC32       ignored.
    /// @param parseDescriptors ignored: the descriptors are always parsed.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA, ERROR_INVALID_DATA_LENGTH,
    ///                         ERROR_INVALID_TABLE_ID, ERROR_INVALID_SECTION_LEN_TOO_BIG,
    ///                         ERROR_INCOMPATIBLE_TABLE_TYPE, ERROR_TABLE_NOT_UPDATED or what a descriptor failed with.
    ///                         May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TDSMCCSectionTable* parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int parseDescriptors,
                                     QUOR_U16* errorCode, TDSMCCSectionTable* previous);

    /// data_event_id, 0 to 15: the upper 4 bits of the table_id_extension.
    QUOR_U8 getDataEventID() const { return m_iDataEventID; }

    /// event_msg_group_id, 0 to 4095: the lower 12 bits of the table_id_extension.
    QUOR_U16 getEventMsgGroupID() const { return m_iEventMsgGroupID; }

    /// The NPT reference descriptor, owned by the table; null when there is none.
    TNPTReferenceDescriptor* getNPTReferenceDescriptor() const { return m_descriptors.get<TNPTReferenceDescriptor>(); }

    /// The stream mode descriptor, owned by the table; null when there is none.
    TStreamModeDescriptor* getStreamModeDescriptor() const { return m_descriptors.get<TStreamModeDescriptor>(); }

    /// The stream event descriptor, owned by the table; null when there is none.
    TStreamEventDescriptor* getStreamEventDescriptor() const { return m_descriptors.get<TStreamEventDescriptor>(); }

    /// The descriptor held for tag 1 (NPT reference), 3 (stream mode) or 4 (stream event), or null.
    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const override { return m_descriptors.find(descriptorTag); }

    /// The tags of the descriptors held, in ascending order: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const override;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& section, QUOR_U16 remaining);

    QUOR_U8 m_iDataEventID = 0;
    QUOR_U16 m_iEventMsgGroupID = 0;
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
