#include "ait/TAITTable.h"

#include "ait/TAITFamily.h"
#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TAITTable::MINIMUM_DATA_LENGTH;

namespace {

constexpr QUOR_U16 TABLE_ID = 0x74;

// reserved (4) common_descriptors_length (12) | descriptors |
// reserved (4) application_loop_length (12) | applications
constexpr QUOR_U32 LOOP_LENGTH_LENGTH = 2;

detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TAITTable::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed, left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

void unknown(QUOR_U8 tag) {
    if (tag != detail::STUFFING_TAG) {
        QUOR_ISDBT_LOG("%s: TAITTable::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
    }
}

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

} // namespace

/// The place in the section.
struct TAITTable::Walk {
    detail::Bytes left;  ///< up to the end of the data, which no read passes
    QUOR_U16 remaining;  ///< the stated number of bytes before the CRC_32; it may wrap
    QUOR_U16 loopLength; ///< what is left of the loop; it may wrap

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
};

TAITTable::TAITTable(QUOR_U8* data, QUOR_U32 length)
    : TISDBTVersionedTable(AIT, MINIMUM_DATA_LENGTH, TABLE_ID, data, length) {}

TAITTable::~TAITTable() = default;

TISDBTDescriptor* TAITTable::getDescriptor(QUOR_U8 descriptorTag) const {
    return AIT_FAMILY.get(m_descriptors, descriptorTag);
}

std::list<QUOR_U8>* TAITTable::getDescriptorTags() const {
    return AIT_FAMILY.tags(m_descriptors);
}

TAITTable* TAITTable::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int /*parseDescriptors*/, int checkCRC32,
                            QUOR_U16* errorCode, TAITTable* previous) {
    return detail::parseTable<TAITTable>(
        sectionData, dataLength, checkCRC32, errorCode, previous,
        [=](TAITTable& table, detail::Bytes section, QUOR_U16 remaining) {
            Walk walk{section.from(COMMON_HEADER_LENGTH), remaining, 0};
            const detail::Outcome common = table.parseCommonDescriptors(walk, errorCode);
            return common.succeeded() ? table.parseApplications(walk, errorCode) : common;
        });
}

detail::Outcome TAITTable::parseCommonDescriptors(Walk& walk, QUOR_U16* errorCode) {
    const detail::Outcome entered = walk.enterLoop();
    if (!entered.succeeded()) {
        return entered;
    }
    return detail::walkLoop(
        AIT_FAMILY, m_descriptors, walk.left, walk.loopLength, errorCode,
        [&](QUOR_U32 bodyLength) {
            const QUOR_U32 length = TISDBTDescriptor::COMMON_HEADER_LENGTH + bodyLength;
            if (length > walk.remaining) {
                // The loop's count and not the descriptor's length; readers of the log depend on it.
                return tooLong(walk.loopLength, walk.remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH);
            }
            if (walk.left.has(0, TISDBTDescriptor::COMMON_HEADER_LENGTH)) {
                warnOfGinga(walk.left.u8(0));
            }
            walk.count(length);
            return detail::Outcome::done();
        },
        unknown, tooLong);
}

/// Each application is offered all that remains before the CRC_32, not only the loop; the end of the data travels
/// beside that count, which may have wrapped.
detail::Outcome TAITTable::parseApplications(Walk& walk, QUOR_U16* errorCode) {
    const detail::Outcome entered = walk.enterLoop();
    if (!entered.succeeded()) {
        return entered;
    }
    while (walk.loopLength != 0) {
        QUOR_U32 length = 0;
        std::unique_ptr<TApplication> application(
            TApplication::parseWithin(walk.left, walk.remaining, &length, errorCode));
        if (application == nullptr) {
            QUOR_ISDBT_LOG("%s: TAITTable::parse: Invalid item. Aborting!", detail::LOG_TAG);
            return detail::Outcome::failed(ERROR_INVALID_ITEM);
        }
        application->setParentAITTable(this);
        application->setApplicationType(getApplicationType());
        const std::string id = application->getHashID();
        detail::store(m_pApplications, id, std::move(application));
        walk.left = walk.left.from(length);
        walk.count(length);
    }
    return detail::Outcome::done();
}

QUOR_U32 TAITTable::getApplicationsCount() const {
    return detail::count(m_pApplications);
}

std::list<std::string>& TAITTable::getApplicationsIDs() const {
    return *detail::keys(m_pApplications);
}

TApplication* TAITTable::getApplication(std::string id) const {
    return detail::find(m_pApplications, id);
}

void TAITTable::addApplication(TApplication* application) {
    if (application != nullptr) {
        detail::add(m_pApplications, application->getHashID(), application);
    }
}

BOOL TAITTable::removeApplication(std::string id) {
    return detail::remove(m_pApplications, id);
}

} // namespace Quor
