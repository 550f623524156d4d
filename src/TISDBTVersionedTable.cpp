#include "TISDBTVersionedTable.h"

#include "detail/Bytes.h"
#include "detail/Log.h"
#include "detail/Memory.h"
#include "utils/QuorISDBTUtils.h"

namespace Quor {

TISDBTVersionedTable::TISDBTVersionedTable(Type type, QUOR_U32 minimumDataLength, QUOR_U16 expectedTableId,
                                           QUOR_U8* data, QUOR_U32 length)
    : TISDBTTable(type, minimumDataLength, expectedTableId, data, length) {}

TISDBTVersionedTable::~TISDBTVersionedTable() = default;

bool TISDBTVersionedTable::parseCommonHeader(QUOR_U8* data, QUOR_U32 length, int checkCRC32, QUOR_U16* errorCode,
                                             QUOR_U16* sectionLength, TISDBTTable* previous) {
    if (!TISDBTTable::parseCommonHeader(data, length, checkCRC32, errorCode, sectionLength, previous)) {
        return false;
    }
    if (previous != nullptr && previous->getType() != getType()) {
        ISDBTUtils::setErrorCode(errorCode, ERROR_INCOMPATIBLE_TABLE_TYPE);
        return false;
    }
    if (length < COMMON_HEADER_LENGTH) {
        QUOR_ISDBT_LOG("%s: TISDBTVersionedTable::parse: Longer data length is required: %u < %u. Aborting!",
                       detail::LOG_TAG, length, COMMON_HEADER_LENGTH);
        ISDBTUtils::setErrorCode(errorCode, ERROR_INVALID_DATA_LENGTH);
        return false;
    }

    // table_id_extension (16) | reserved (2) version_number (5) current_next_indicator (1) | section_number (8) |
    // last_section_number (8)
    detail::Memory heap;
    const detail::Bytes section(data, length, heap);
    m_iGenericDataField = section.u16(3);
    m_iVersion = section.u8(5) >> 1 & 0x1F;
    m_bCurrentIndicator = section.bit(5, 0);
    m_iSectionNum = section.u8(6);
    m_iLastSectionNum = section.u8(7);
    *sectionLength = static_cast<QUOR_U16>(*sectionLength - (COMMON_HEADER_LENGTH - TISDBTTable::COMMON_HEADER_LENGTH));

    if (previous == nullptr) {
        return true;
    }
    if (m_iSectionNum != 0) {
        // Quirk: the error code stays as the caller preset it, by which callers tell this case.
        QUOR_ISDBT_LOG("%s: TISDBTVersionedTable::parse: Multi-section parsing not supported. TODO!", detail::LOG_TAG);
        return false;
    }
    if (static_cast<const TISDBTVersionedTable*>(previous)->m_iVersion == m_iVersion) {
        ISDBTUtils::setErrorCode(errorCode, ERROR_TABLE_NOT_UPDATED);
        return false;
    }
    return true;
}

} // namespace Quor
