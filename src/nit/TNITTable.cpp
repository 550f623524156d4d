#include "nit/TNITTable.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "nit/TNITFamily.h"

namespace Quor {

namespace {

constexpr QUOR_U16 TABLE_ID = 0x40;

// reserved (4) network_descriptors_length (12) | descriptors |
// reserved (4) transport_stream_loop_length (12) | transport streams
constexpr QUOR_U32 LOOP_LENGTH_LENGTH = 2;

constexpr auto KEY = &TTransportStreamInfo::getTransportStreamID;

struct Walk {
    detail::Bytes left;
    QUOR_U16 remaining; ///< the stated number of bytes before the CRC_32; it may wrap

    /// Reads the length that each loop begins with.
    detail::Outcome enterLoop(QUOR_U16& loopLength) {
        if (!left.has(0, LOOP_LENGTH_LENGTH)) {
            return tooLong(LOOP_LENGTH_LENGTH, left.size());
        }
        loopLength = left.length12(0);
        count(LOOP_LENGTH_LENGTH);
        return remaining < loopLength ? tooLong(loopLength, remaining) : detail::Outcome::done();
    }

    void count(QUOR_U32 length) {
        remaining = static_cast<QUOR_U16>(remaining - length);
        left = left.from(length);
    }

    detail::Outcome take(QUOR_U32 bodyLength) {
        if (TISDBTDescriptor::COMMON_HEADER_LENGTH + bodyLength > remaining) {
            return tooLong(bodyLength, remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH);
        }
        remaining = static_cast<QUOR_U16>(remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH - bodyLength);
        return detail::Outcome::done();
    }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TNITTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed,
                       left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        if (tag != detail::STUFFING_TAG) {
            QUOR_ISDBT_LOG("%s: TNITTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                           unsigned{tag});
        }
    }
};

} // namespace

TNITTable::TNITTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(NIT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TNITTable::~TNITTable() = default;

TNITTable* TNITTable::parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int /*parseDescriptors*/,
                            QUOR_U16* errorCode, TNITTable* previous) {
    return detail::parseTable<TNITTable>(data, length, checkCRC32, errorCode, previous);
}

detail::Outcome TNITTable::decode(const detail::Bytes& section, QUOR_U16 remaining) {
    Walk walk{section.from(COMMON_HEADER_LENGTH), remaining};
    QUOR_U16 loopLength = 0;
    detail::Outcome outcome = walk.enterLoop(loopLength);
    if (outcome.succeeded()) {
        outcome = detail::walkLoop(NIT_FAMILY, m_descriptors, walk, loopLength);
    }
    if (outcome.succeeded()) {
        outcome = walk.enterLoop(loopLength);
    }
    if (!outcome.succeeded()) {
        return outcome;
    }
    while (loopLength != 0) {
        std::unique_ptr<TTransportStreamInfo> stream;
        const detail::Outcome decoded = detail::decodeEntry(stream, walk.left, walk.remaining);
        if (!decoded.succeeded()) {
            QUOR_ISDBT_LOG("%s: TNITTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        detail::store<KEY>(m_pItems, std::move(stream), section.memory());
        loopLength = static_cast<QUOR_U16>(loopLength - decoded.length());
        walk.count(decoded.length());
    }
    return detail::Outcome::done();
}

std::list<QUOR_U8>* TNITTable::getDescriptorTags() const {
    return NIT_FAMILY.tags(m_descriptors);
}

std::list<QUOR_U16>* TNITTable::getTransportStreamIDs() const {
    return detail::keys<KEY>(m_pItems);
}

TTransportStreamInfo* TNITTable::getTransportStreamInfo(QUOR_U16 id) const {
    return detail::find<KEY>(m_pItems, id);
}

void TNITTable::addTransportStreamInfo(TTransportStreamInfo* info) {
    detail::add<KEY>(m_pItems, info);
}

bool TNITTable::removeTransportStreamInfo(QUOR_U16 id) {
    return detail::remove<KEY>(m_pItems, id) != 0;
}

} // namespace Quor
