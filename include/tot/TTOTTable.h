#ifndef QUOR_TTOT_TABLE_H
#define QUOR_TTOT_TABLE_H

#include "TISDBTTable.h"
#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "detail/Descriptors.h"

namespace Quor {

/// Time offset table (ABNT NBR 15603, table_id 0x73, PID 0x0014): the current date and time in UTC, and the offsets of
/// the local times. It has no version, so that each section is parsed anew.
class QUOR_ISDBT_API TTOTTable : public TISDBTTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 10;

    /// A table at 1970-01-01 without descriptors, over a private copy of the section.
    TTOTTable(QUOR_U8* data, QUOR_U32 length);
    ~TTOTTable() override;

    /// Parses one section.
    /// @param data             the section, from table_id to CRC_32. It may be freed afterwards: unlike other tables,
    ///                         this one's descriptors refer to its private copy.
    /// @param length           number of bytes; those behind the section are ignored.
    /// @param checkCRC32       ignored.
    /// @param parseDescriptors 0: only the time is read, and @p errorCode is left as it was.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA, ERROR_INVALID_DATA_LENGTH,
    ///                         ERROR_INVALID_TABLE_ID, ERROR_INVALID_SECTION_LEN_TOO_BIG or what the descriptor failed
    ///                         with. May be null.
    /// @param previous         ignored.
    /// @return a new table, which the caller deletes, or null.
    static TTOTTable* parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int parseDescriptors, QUOR_U16* errorCode,
                            TTOTTable* previous);

    /// UTC_time in seconds since 1970-01-01 00:00:00 UTC. A date before 1970-01-02 counts as 0, which leaves the time
    /// of day.
    QUOR_S32 getUnixTime() const { return m_iUnixTime; }

    /// The local time offset descriptor, owned by the table; null when there is none.
    TLocalTimeOffsetDescriptor* getLocalTimeOffsetDescriptor() const {
        return m_descriptors.get<TLocalTimeOffsetDescriptor>();
    }

    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const override { return m_descriptors.find(descriptorTag); }
    std::list<QUOR_U8>* getDescriptorTags() const override;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& section, QUOR_U16 remaining, int parseDescriptors);

    QUOR_S32 m_iUnixTime = 0;
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
