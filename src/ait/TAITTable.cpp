#include "ait/TAITTable.h"

#include "ait/TAITFamily.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

constexpr QUOR_U16 TABLE_ID = 0x74;

// reserved (4) common_descriptors_length (12) | descriptors |
// reserved (4) application_loop_length (12) | applications
constexpr QUOR_U32 LOOP_LENGTH_LENGTH = 2;

constexpr auto KEY = &TApplication::getHashID;

/// A warning only: such a descriptor belongs to a single application, but is kept as a common one as well.
void warnOfGinga(QUOR_U8 tag) {
    switch (tag) {
    case TGingaJavaApplicationDescriptor::DESCRIPTOR_TAG:
        QUOR_ISDBT_LOG("%s: TAITTable::parse: Ginga Java Application Descriptor... WHAT TO DO????", detail::LOG_TAG);
        break;
    case TGingaJavaApplicationLocationDescriptor::DESCRIPTOR_TAG:
        QUOR_ISDBT_LOG("%s: TAITTable::parse: Ginga Java Application Location Descriptor... WHAT TO DO????",
                       detail::LOG_TAG);
        break;
    case TGingaNCLApplicationDescriptor::DESCRIPTOR_TAG:
        QUOR_ISDBT_LOG("%s: TAITTable::parse: Ginga NCL Application Descriptor... WHAT TO DO????", detail::LOG_TAG);
        break;
    case TGingaNCLApplicationLocationDescriptor::DESCRIPTOR_TAG:
        QUOR_ISDBT_LOG("%s: TAITTable::parse: Ginga NCL Application Location Descriptor... WHAT TO DO????",
                       detail::LOG_TAG);
        break;
    default:
        break;
    }
}

struct Walk {
    detail::Bytes left;
    QUOR_U16 remaining;      ///< the stated number of bytes before the CRC_32; it may wrap
    QUOR_U16 loopLength = 0; ///< what is left of the loop; it may wrap

    /// Reads the length that each loop begins with.
    detail::Outcome enterLoop() {
        if (!left.has(0, LOOP_LENGTH_LENGTH)) {
            return tooLong(LOOP_LENGTH_LENGTH, left.size());
        }
        loopLength = left.length12(0);
        left = left.from(LOOP_LENGTH_LENGTH);
        remaining = static_cast<QUOR_U16>(remaining - LOOP_LENGTH_LENGTH);
        return remaining < loopLength ? tooLong(loopLength, remaining) : detail::Outcome::done();
    }

    /// Takes one entry off both counts.
    void count(QUOR_U32 length) {
        remaining = static_cast<QUOR_U16>(remaining - length);
        loopLength = static_cast<QUOR_U16>(loopLength - length);
    }

    detail::Outcome take(QUOR_U32 bodyLength) {
        const QUOR_U32 length = TISDBTDescriptor::COMMON_HEADER_LENGTH + bodyLength;
        if (length > remaining) {
            // Quirk: the line has the loop's count in place of the descriptor's length.
            return tooLong(loopLength, remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH);
        }
        if (left.has(0, TISDBTDescriptor::COMMON_HEADER_LENGTH)) {
            warnOfGinga(left.u8(0));
        }
        count(length);
        return detail::Outcome::done();
    }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TAITTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed,
                       left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        if (tag != detail::STUFFING_TAG) {
            QUOR_ISDBT_LOG("%s: TAITTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                           unsigned{tag});
        }
    }
};

} // namespace

TAITTable::TAITTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(AIT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TAITTable::~TAITTable() = default;

TAITTable* TAITTable::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/, int checkCRC32,
                            QUOR_U16* errorCode, TAITTable* previous) {
    return detail::parseTable<TAITTable>(data, length, checkCRC32, errorCode, previous);
}

/// Each application is offered all that remains before the CRC_32, not only the loop; the end of the data travels
/// beside that count, which may have wrapped.
detail::Outcome TAITTable::decode(const detail::Bytes& section, QUOR_U16 remaining) {
    Walk walk{section.from(COMMON_HEADER_LENGTH), remaining};
    detail::Outcome outcome = walk.enterLoop();
    if (outcome.succeeded()) {
        outcome = detail::walkLoop(AITFamily::FAMILY, m_descriptors, walk, walk.loopLength);
    }
    if (outcome.succeeded()) {
        outcome = walk.enterLoop();
    }
    if (!outcome.succeeded()) {
        return outcome;
    }
    while (walk.loopLength != 0) {
        std::unique_ptr<TApplication> application;
        const detail::Outcome decoded = detail::decodeEntry(application, walk.left, walk.remaining);
        if (!decoded.succeeded()) {
            QUOR_ISDBT_LOG("%s: TAITTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        application->setParentAITTable(this);
        application->setApplicationType(getApplicationType());
        detail::store<KEY>(m_pApplications, std::move(application), section.memory());
        walk.left = walk.left.from(decoded.length());
        walk.count(decoded.length());
    }
    return detail::Outcome::done();
}

std::list<QUOR_U8>* TAITTable::getDescriptorTags() const {
    return AITFamily::FAMILY.tags(m_descriptors);
}

std::list<std::string>& TAITTable::getApplicationsIDs() const {
    return *detail::keys<KEY>(m_pApplications);
}

TApplication* TAITTable::getApplication(std::string id) const {
    return detail::find<KEY>(m_pApplications, id);
}

void TAITTable::addApplication(TApplication* application) {
    detail::add<KEY>(m_pApplications, application);
}

BOOL TAITTable::removeApplication(std::string id) {
    return detail::remove<KEY>(m_pApplications, id);
}

} // namespace Quor
