#include "TISDBTTable.h"

#include "detail/Bytes.h"
#include "detail/Log.h"
#include "detail/Memory.h"
#include "utils/QuorISDBTUtils.h"

namespace Quor {

TISDBTTable::TISDBTTable(Type type, QUOR_U32 minimumDataLength, QUOR_U16 expectedTableId, QUOR_U8* data,
                         QUOR_U32 length)
    : TISDBTDataHolder(data, length, 1), m_eMyType(type), m_iMinimumDataLength(minimumDataLength),
      m_iExpectedTableId(expectedTableId) {}

TISDBTTable::~TISDBTTable() {
    detail::Memory::release(m_pLastBlock);
}

TISDBTDescriptor* TISDBTTable::getDescriptor(QUOR_U8 /*descriptorTag*/) const {
    return nullptr;
}

std::list<QUOR_U8>* TISDBTTable::getDescriptorTags() const {
    return new std::list<QUOR_U8>;
}

bool TISDBTTable::parseCommonHeader(QUOR_U8* data, QUOR_U32 length, int /*checkCRC32*/, QUOR_U16* errorCode,
                                    QUOR_U16* sectionLength, TISDBTTable* /*previous*/) {
    if (data == nullptr) {
        QUOR_ISDBT_LOG("%s: TISDBTTable::parse: Invalid data. Aborting!", detail::LOG_TAG);
        ISDBTUtils::setErrorCode(errorCode, ERROR_INVALID_DATA);
        return false;
    }
    if (length < m_iMinimumDataLength) {
        QUOR_ISDBT_LOG("%s: TISDBTTable::parse: Longer data length is required: %u < %u. Aborting!", detail::LOG_TAG,
                       length, m_iMinimumDataLength);
        ISDBTUtils::setErrorCode(errorCode, ERROR_INVALID_DATA_LENGTH);
        return false;
    }
    detail::Memory heap;
    const detail::Bytes section(data, length, heap);
    if (section.u8(0) != m_iExpectedTableId) {
        QUOR_ISDBT_LOG("%s: TISDBTTable::parse: Unexpected table ID. Got 0x%02X, instead of 0x%02X. Aborting!",
                       detail::LOG_TAG, unsigned{section.u8(0)}, unsigned{m_iExpectedTableId});
        ISDBTUtils::setErrorCode(errorCode, ERROR_INVALID_TABLE_ID);
        return false;
    }
    // table_id (8) | section_syntax_indicator (1) reserved (3) section_length (12)
    const QUOR_U16 stated = section.length12(1);
    if (!section.has(COMMON_HEADER_LENGTH, stated)) {
        QUOR_ISDBT_LOG("%s: TISDBTTable::parse: Section length exceeds data length. Aborting!", detail::LOG_TAG);
        ISDBTUtils::setErrorCode(errorCode, ERROR_INVALID_SECTION_LEN_TOO_BIG);
        return false;
    }
    // A section shorter than its CRC_32 wraps; the walks behind the header are bounded by the data itself.
    *sectionLength = static_cast<QUOR_U16>(stated - CRC_LENGTH);
    return true;
}

void TISDBTTable::setDebug(int /*debug*/, int /*recursive*/) {}

} // namespace Quor
