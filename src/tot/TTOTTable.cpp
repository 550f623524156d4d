#include "tot/TTOTTable.h"

#include "detail/Log.h"
#include "detail/Loop.h"
#include "detail/Parse.h"
#include "detail/Time.h"

namespace Quor {

namespace {

constexpr QUOR_U16 TABLE_ID = 0x73;

// UTC_time (40) | reserved (4) descriptors_loop_length (12) | descriptors
constexpr QUOR_U32 UTC_TIME_AT = 3;
constexpr QUOR_U32 LOOP_LENGTH_AT = 8;
constexpr QUOR_U32 DESCRIPTORS_AT = 10;

constexpr const detail::Family& FAMILY = detail::FamilyOf<TLocalTimeOffsetDescriptor>::FAMILY;

/// Bounded by descriptors_loop_length alone, which may reach beyond the section; the data ends the walk at last.
struct Walk {
    detail::Bytes left;

    static detail::Outcome take(QUOR_U32 /*bodyLength*/) { return detail::Outcome::done(); }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TTOTTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed,
                       left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        QUOR_ISDBT_LOG("%s: TTOTTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
    }
};

} // namespace

TTOTTable::TTOTTable(QUOR_U8* data, QUOR_U32 length) : TISDBTTable(TOT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TTOTTable::~TTOTTable() = default;

TTOTTable* TTOTTable::parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int parseDescriptors, QUOR_U16* errorCode,
                            TTOTTable* previous) {
    return detail::parseTable<TTOTTable, 7>(data, length, checkCRC32, errorCode, previous, parseDescriptors);
}

detail::Outcome TTOTTable::decode(const detail::Bytes& section, QUOR_U16 /*remaining*/, int parseDescriptors) {
    // The table walks its own copy, into which the descriptor's getData() points.
    const detail::Bytes copy(getData(), getDataLength(), section.memory());
    m_iUnixTime = detail::unixTime(copy.from(UTC_TIME_AT));
    if (parseDescriptors == 0) {
        return detail::Outcome::doneSilently();
    }
    Walk walk{copy.from(DESCRIPTORS_AT)};
    return detail::walkLoop(FAMILY, m_descriptors, walk, copy.length12(LOOP_LENGTH_AT));
}

std::list<QUOR_U8>* TTOTTable::getDescriptorTags() const {
    return FAMILY.tags(m_descriptors);
}

} // namespace Quor
