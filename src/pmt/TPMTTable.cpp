#include "pmt/TPMTTable.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "pmt/TPMTFamily.h"

namespace Quor {

namespace {

constexpr QUOR_U16 TABLE_ID = 0x02;

// reserved (3) PCR_PID (13) | reserved (4) program_info_length (12) | descriptors | elementary streams
constexpr QUOR_U32 FIXED_LENGTH = 4;

struct Walk {
    detail::Bytes left;
    QUOR_U16 remaining; ///< the stated number of bytes before the CRC_32; it may wrap
    QUOR_U32 longest;   ///< body of a descriptor: the same for all, by the data's length, not by what is left of it

    detail::Outcome take(QUOR_U32 bodyLength) {
        remaining = static_cast<QUOR_U16>(remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH - bodyLength);
        return bodyLength > longest ? tooLong(bodyLength, longest) : detail::Outcome::done();
    }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TPMTTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed,
                       left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        QUOR_ISDBT_LOG("%s: TPMTTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
    }
};

/// The program maps for which @p wanted holds; a null one that a caller added is none of them.
template <class Wanted> std::list<TProgramMap*>* select(const detail::Items<TProgramMap>& items, Wanted wanted) {
    std::unique_ptr<std::list<TProgramMap*>> selected(new std::list<TProgramMap*>);
    for (const auto& item : items) {
        if (item != nullptr && wanted(*item)) {
            selected->push_back(item.get());
        }
    }
    return selected.release();
}

} // namespace

TPMTTable::TPMTTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(PMT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TPMTTable::~TPMTTable() = default;

TPMTTable* TPMTTable::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/, int checkCRC32,
                            QUOR_U16* errorCode, TPMTTable* previous) {
    return detail::parseTable<TPMTTable>(data, length, checkCRC32, errorCode, previous);
}

detail::Outcome TPMTTable::decode(const detail::Bytes& section, QUOR_U16 remaining) {
    Walk walk{section.from(COMMON_HEADER_LENGTH), static_cast<QUOR_U16>(remaining - FIXED_LENGTH),
              section.size() - TISDBTDescriptor::COMMON_HEADER_LENGTH};
    if (!walk.left.has(0, FIXED_LENGTH)) {
        return Walk::tooLong(FIXED_LENGTH, walk.left.size());
    }
    m_iPCRPID = walk.left.pid(0);
    const QUOR_U16 loopLength = walk.left.length12(2);
    if (walk.remaining < loopLength) {
        QUOR_ISDBT_LOG("%s: TPMTTable::parse: Longer data length is required: %u < %u. Aborting!", detail::LOG_TAG,
                       unsigned{walk.remaining}, unsigned{loopLength});
        return detail::Outcome::failed(ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    if (section.size() < loopLength) {
        return Walk::tooLong(loopLength, section.size());
    }
    walk.left = walk.left.from(FIXED_LENGTH);
    const detail::Outcome descriptors = detail::walkLoop(PMT_FAMILY, m_descriptors, walk, loopLength);
    if (!descriptors.succeeded()) {
        return descriptors;
    }
    while (walk.remaining != 0) {
        std::unique_ptr<TProgramMap> stream;
        const detail::Outcome decoded = detail::decodeEntry(stream, walk.left, walk.remaining);
        if (!decoded.succeeded()) {
            QUOR_ISDBT_LOG("%s: TPMTTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        detail::append(m_pItems, std::move(stream), section.memory());
        walk.remaining = static_cast<QUOR_U16>(walk.remaining - decoded.length());
        walk.left = walk.left.from(decoded.length());
    }
    return detail::Outcome::done();
}

std::list<QUOR_U8>* TPMTTable::getDescriptorTags() const {
    return PMT_FAMILY.tags(m_descriptors);
}

void TPMTTable::addProgramMap(TProgramMap* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TPMTTable::removeProgramMap(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

std::list<TProgramMap*>* TPMTTable::getProgramMap(QUOR_U8 streamType, QUOR_U8 componentID) const {
    return select(m_pItems, [=](const TProgramMap& item) {
        const TDataComponentDescriptor* const component = item.getDataComponentDescriptor(0, nullptr);
        return item.getStreamType() == streamType && component != nullptr &&
               component->getDataComponentID() == componentID;
    });
}

std::list<TProgramMap*>* TPMTTable::getProgramMapByComponentTag(QUOR_U8 componentTag) const {
    return select(m_pItems, [=](const TProgramMap& item) {
        const TStreamIdentifierDescriptor* const identifier = item.getStreamIdentifierDescriptor(0, nullptr);
        return identifier != nullptr && identifier->getComponentTag() == componentTag;
    });
}

std::list<TProgramMap*>* TPMTTable::getProgramMapsByStreamType(QUOR_U8 streamType) const {
    return select(m_pItems, [=](const TProgramMap& item) { return item.getStreamType() == streamType; });
}

std::list<TProgramMap*>* TPMTTable::getProgramMapByStreamType(QUOR_U8 streamType) const {
    return getProgramMapsByStreamType(streamType);
}

} // namespace Quor
