#ifndef QUOR_TISDBT_TABLE_H
#define QUOR_TISDBT_TABLE_H

#include "TISDBTDataHolder.h"

#include <list>

namespace Quor {

class TISDBTDescriptor;

/// Base of every table: a private copy of one section, and the short section header of ISO/IEC 13818-1
/// (table_id and section_length).
///
/// Every table class has a static `parse` that takes one complete section, from table_id to CRC_32, and returns a new
/// object, which the caller owns and deletes, or null with the reason in an error code (the pointer to it may be
/// null). The CRC_32 is never verified, whatever the `checkCRC32` argument says. Mind that the order of the two `int`
/// arguments is not the same in all tables.
class QUOR_ISDBT_API TISDBTTable : public TISDBTDataHolder {
public:
    /// The parse succeeded.
    static constexpr QUOR_U16 ERROR_OK = 0;
    /// The previous table given to a versioned table's parse is of another type.
    static constexpr QUOR_U16 ERROR_INCOMPATIBLE_TABLE_TYPE = 0x0A00;
    /// The previous table has the same version_number.
    static constexpr QUOR_U16 ERROR_TABLE_NOT_UPDATED = 0x0A01;
    /// The data pointer is null.
    static constexpr QUOR_U16 ERROR_INVALID_DATA = 0x0A02;
    /// The data is shorter than a fixed minimum, or than a length field needs.
    static constexpr QUOR_U16 ERROR_INVALID_DATA_LENGTH = 0x0A03;
    /// The first byte of the section is not the table_id of the class.
    static constexpr QUOR_U16 ERROR_INVALID_TABLE_ID = 0x0A04;
    /// The section_length exceeds the data.
    static constexpr QUOR_U16 ERROR_INVALID_SECTION_LEN_TOO_BIG = 0x0A05;
    /// Never set: the CRC_32 is not verified.
    static constexpr QUOR_U16 ERROR_INVALID_CRC32 = 0x0A06;
    /// The first byte of a descriptor is not the tag of its class.
    static constexpr QUOR_U16 ERROR_INVALID_DESCRIPTOR_TAG = 0x0A07;
    /// A descriptor is shorter than its class's minimum, or than its descriptor_length.
    static constexpr QUOR_U16 ERROR_INVALID_DESCRIPTOR_LENGTH = 0x0A08;
    /// A string field did not fit.
    static constexpr QUOR_U16 ERROR_INVALID_STRING = 0x0A09;
    /// An item in the loop of a descriptor or table is not valid.
    static constexpr QUOR_U16 ERROR_INVALID_ITEM = 0x0A0A;

    /// Bytes from table_id to section_length.
    static constexpr QUOR_U32 COMMON_HEADER_LENGTH = 3;
    /// Bytes of the CRC_32 that ends every section.
    static constexpr QUOR_U32 CRC_LENGTH = 4;

    /// Which table an object is. The upper half is the table's PID, 0xFFFF when the PID is signalled elsewhere; the
    /// lower half a table_id where the PID alone does not tell. Only compared, never decoded.
    enum Type : QUOR_U32 {
        PAT = 0x00000000,
        CAT = 0x00010000,
        NIT = 0x00100000,
        SDT = 0x00110000,
        HEIT = 0x00120000,
        HEIT_PRESENT = 0x0012004E,
        HEIT_FOLLOWING = 0x0012004F,
        TOT = 0x00140000,
        SDTT = 0x00230000,
        BIT = 0x00240000,
        MEIT = 0x00260000,
        DSMCC_SECTION = 0x003D0000,
        PMT = 0xFFFF0002,
        AIT = 0xFFFF0074
    };

    /// Keeps a private copy of the section.
    /// @param type              which table it is.
    /// @param minimumDataLength fewest bytes that parseCommonHeader() accepts.
    /// @param expectedTableId   the table_id that the section must have.
    /// @param data              the section, from table_id to CRC_32.
    /// @param length            number of bytes.
    TISDBTTable(Type type, QUOR_U32 minimumDataLength, QUOR_U16 expectedTableId, QUOR_U8* data, QUOR_U32 length);
    ~TISDBTTable() override;

    TISDBTTable(const TISDBTTable&) = delete;
    TISDBTTable& operator=(const TISDBTTable&) = delete;

    /// The descriptor that the table itself holds for a tag, or null. The table keeps ownership.
    virtual TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const;

    /// The tags of the descriptors that the table itself holds: a new list, which the caller deletes.
    virtual std::list<QUOR_U8>* getDescriptorTags() const;

    /// Checks the section header: null data, length, table_id, section_length, in this order.
    /// @param data          the section, from table_id to CRC_32.
    /// @param length        number of bytes; those behind the section are ignored.
    /// @param checkCRC32    ignored.
    /// @param errorCode     the reason of a failure; not written on success. May be null.
    /// @param sectionLength receives the number of bytes between this header and the CRC_32, modulo 65536. Not null.
    /// @param previous      ignored here; see TISDBTVersionedTable.
    /// @return whether the header is good.
    virtual bool parseCommonHeader(QUOR_U8* data, QUOR_U32 length, int checkCRC32, QUOR_U16* errorCode,
                                   QUOR_U16* sectionLength, TISDBTTable* previous);

    /// Which table this is.
    Type getType() const { return m_eMyType; }

    /// Does nothing; callers may call it.
    static void setDebug(int debug, int recursive);

private:
    friend struct detail::Access;

    void* m_pLastBlock =
        nullptr; ///< of the blocks of memory that the table chained, each of which knows the one before
    Type m_eMyType;
    QUOR_U32 m_iMinimumDataLength;
    QUOR_U16 m_iExpectedTableId;
};

} // namespace Quor

#endif
