#include "sdtt/TDownloadContent.h"

#include "descriptors/TDownloadContentDescriptor.h"
#include "detail/Family.h"
#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// group (4) target_version (12) | new_version (12) download_level (2) version_indicator (2) |
// content_description_length (12) reserved (4) | schedule_description_length (12) schedule_time_shift_information (4) |
// schedule | descriptors
constexpr QUOR_U32 FIXED_LENGTH = 8;

// start_time (40) | duration (24)
constexpr QUOR_U32 SCHEDULE_SLOT_LENGTH = 8;

detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TDownloadContent::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed,
                   left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

detail::Outcome notValid(QUOR_U32 length) {
    QUOR_ISDBT_LOG("%s: TDownloadContent::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, length);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

void unknown(QUOR_U8 tag) {
    QUOR_ISDBT_LOG("%s: TDownloadContent::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
}

} // namespace

TDownloadContent::TDownloadContent()
    : m_pParentSDTTTable(nullptr), m_iGroup(0), m_iTargetVersion(0), m_iNewVersion(0), m_iDownloadLevel(0),
      m_iVersionIndicator(0), m_iScheduleTimeShiftInfo(0) {}

TDownloadContent::~TDownloadContent() = default;

struct TDownloadContent::Kinds {
    static constexpr detail::Family FAMILY{detail::kind<&TDownloadContent::m_pDownloadContentDesc>()};
};

TDownloadContent* TDownloadContent::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int /*parseDescriptors*/,
                                          QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return parse(detail::Bytes(sectionData, dataLength), dataLength, parsedLength, errorCode);
}

/// A table offers what its 16-bit count says is left, which may have wrapped; @p left ends where the data does.
TDownloadContent* TDownloadContent::parse(detail::Bytes left, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                          QUOR_U16* errorCode) {
    return detail::decodeInto(
        std::make_unique<TDownloadContent>(), parsedLength, errorCode,
        [=](TDownloadContent& content) { return content.parseFields(left, dataLength, errorCode); });
}

detail::Outcome TDownloadContent::parseFields(detail::Bytes left, QUOR_U32 dataLength, QUOR_U16* errorCode) {
    if (dataLength < FIXED_LENGTH) {
        return notValid(dataLength);
    }
    if (!left.has(0, FIXED_LENGTH)) {
        return tooLong(FIXED_LENGTH, left.size());
    }
    m_iGroup = left.u8(0) >> 4;
    m_iTargetVersion = left.u16(0) & 0x0FFFU;
    m_iNewVersion = left.u16(2) >> 4;
    m_iDownloadLevel = left.u8(3) >> 2 & 0x03;
    m_iVersionIndicator = left.u8(3) & 0x03U;
    const QUOR_U16 contentLength = left.u16(4) >> 4;
    const QUOR_U16 scheduleLength = left.u16(6) >> 4;
    m_iScheduleTimeShiftInfo = left.u8(7) & 0x0FU;

    QUOR_U32 remaining = dataLength - FIXED_LENGTH;
    if (remaining < contentLength) {
        return tooLong(contentLength, remaining);
    }
    left = left.from(FIXED_LENGTH);
    detail::Outcome outcome = parseSchedule(left, scheduleLength, errorCode);
    if (outcome.succeeded()) {
        // A schedule longer than the whole content wraps both counts; the walk goes on with them.
        remaining -= scheduleLength;
        outcome = parseLoop(left.from(scheduleLength), remaining, static_cast<QUOR_U16>(contentLength - scheduleLength),
                            errorCode);
    }
    return outcome.succeeded() ? detail::Outcome::done(dataLength - remaining) : outcome;
}

detail::Outcome TDownloadContent::parseSchedule(detail::Bytes left, QUOR_U16 scheduleLength, QUOR_U16* errorCode) {
    if (!left.has(0, scheduleLength)) {
        return tooLong(scheduleLength, left.size());
    }
    if (scheduleLength % SCHEDULE_SLOT_LENGTH != 0) {
        return notValid(scheduleLength);
    }
    if (!detail::parseItems(left, scheduleLength / SCHEDULE_SLOT_LENGTH, errorCode, m_pItems).complete) {
        QUOR_ISDBT_LOG("%s: TDownloadContent::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_ITEM);
    }
    return detail::Outcome::done();
}

/// @param remaining the bytes that the caller says are left; ends up without the descriptors.
detail::Outcome TDownloadContent::parseLoop(detail::Bytes left, QUOR_U32& remaining, QUOR_U16 loopLength,
                                            QUOR_U16* errorCode) {
    return detail::walkLoop(
        Kinds::FAMILY, *this, left, loopLength, errorCode,
        [&](QUOR_U32 bodyLength) {
            return detail::takeStated(remaining, bodyLength, remaining - TISDBTDescriptor::COMMON_HEADER_LENGTH,
                                      tooLong);
        },
        unknown, tooLong);
}

TISDBTDescriptor* TDownloadContent::getDescriptor(QUOR_U8 descriptorTag) const {
    return Kinds::FAMILY.get(*this, descriptorTag);
}

std::list<QUOR_U8>* TDownloadContent::getDescriptorTags() const {
    return Kinds::FAMILY.tags(*this);
}

QUOR_U32 TDownloadContent::getScheduleInfoSize() const {
    return detail::count(m_pItems);
}

TScheduleInfo* TDownloadContent::getScheduleInfo(QUOR_U8 index) const {
    return detail::get(m_pItems, index);
}

void TDownloadContent::addScheduleInfo(TScheduleInfo* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TDownloadContent::removeScheduleInfo(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
