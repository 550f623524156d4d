#include "tot/TTOTTable.h"

#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Shapes.h"
#include "detail/Time.h"

namespace Quor {

constexpr QUOR_U32 TTOTTable::MINIMUM_DATA_LENGTH;

namespace {

constexpr QUOR_U16 TABLE_ID = 0x73;

// UTC_time (40) | reserved (4) descriptors_loop_length (12) | descriptors
constexpr QUOR_U32 UTC_TIME_AT = 3;
constexpr QUOR_U32 LOOP_LENGTH_AT = 8;
constexpr QUOR_U32 DESCRIPTORS_AT = 10;

detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TTOTTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed, left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

void unknown(QUOR_U8 tag) {
    QUOR_ISDBT_LOG("%s: TTOTTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
}

} // namespace

TTOTTable::TTOTTable(QUOR_U8* sectionData, QUOR_U32 dataLength)
    : TISDBTTable(TOT, MINIMUM_DATA_LENGTH, TABLE_ID, sectionData, dataLength), m_iUnixTime(0) {}

TTOTTable::~TTOTTable() = default;

struct TTOTTable::Kinds {
    static constexpr detail::Family FAMILY{detail::kind<&TTOTTable::m_pLocalTimeOffsetDesc>()};
};

TTOTTable* TTOTTable::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int checkCRC32, int parseDescriptors,
                            QUOR_U16* errorCode, TTOTTable* previous) {
    return detail::parseTable<TTOTTable>(sectionData, dataLength, checkCRC32, errorCode, previous,
                                         [=](TTOTTable& table, detail::Bytes /*section*/, QUOR_U16 /*remaining*/) {
                                             const detail::Bytes copy(table.getData(), table.getDataLength());
                                             table.m_iUnixTime = detail::unixTime(copy.from(UTC_TIME_AT));
                                             if (parseDescriptors == 0) {
                                                 return detail::Outcome::doneSilently();
                                             }
                                             return table.parseLoop(copy.from(DESCRIPTORS_AT),
                                                                    copy.length12(LOOP_LENGTH_AT), errorCode);
                                         });
}

/// Bounded by descriptors_loop_length alone, which may reach beyond the section; the data ends the walk at last.
detail::Outcome TTOTTable::parseLoop(detail::Bytes left, QUOR_U16 loopLength, QUOR_U16* errorCode) {
    return detail::walkLoop(
        Kinds::FAMILY, *this, left, loopLength, errorCode,
        [](QUOR_U32 /*bodyLength*/) { return detail::Outcome::done(); }, unknown, tooLong);
}

TLocalTimeOffsetDescriptor* TTOTTable::getLocalTimeOffsetDescriptor() const {
    return m_pLocalTimeOffsetDesc.get();
}

TISDBTDescriptor* TTOTTable::getDescriptor(QUOR_U8 descriptorTag) const {
    return Kinds::FAMILY.get(*this, descriptorTag);
}

std::list<QUOR_U8>* TTOTTable::getDescriptorTags() const {
    return Kinds::FAMILY.tags(*this);
}

} // namespace Quor
