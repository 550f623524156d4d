#include "sdtt/TDownloadContent.h"

#include "detail/Log.h"
#include "detail/Loop.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// group (4) target_version (12) | new_version (12) download_level (2) version_indicator (2) |
// content_description_length (12) reserved (4) | schedule_description_length (12) schedule_time_shift_information (4) |
// schedule | descriptors
constexpr QUOR_U32 FIXED_LENGTH = 8;

// start_time (40) | duration (24)
constexpr QUOR_U32 SCHEDULE_SLOT_LENGTH = 8;

constexpr const detail::Family& FAMILY = detail::FamilyOf<TDownloadContentDescriptor>::FAMILY;

struct Walk {
    detail::Bytes left;
    QUOR_U32 stated; ///< bytes left as the section counts them; it may wrap

    detail::Outcome take(QUOR_U32 bodyLength) {
        return detail::takeStated(*this, bodyLength, TISDBTDescriptor::COMMON_HEADER_LENGTH);
    }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TDownloadContent::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                       needed, left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        QUOR_ISDBT_LOG("%s: TDownloadContent::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                       unsigned{tag});
    }
};

detail::Outcome notValid(QUOR_U32 length) {
    QUOR_ISDBT_LOG("%s: TDownloadContent::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, length);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

} // namespace

TDownloadContent::~TDownloadContent() = default;

TDownloadContent* TDownloadContent::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/,
                                          QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseEntry<TDownloadContent>(data, length, parsedLength, errorCode);
}

/// A table offers what its 16-bit count says is left, which may have wrapped; @p entry ends where the data does.
detail::Outcome TDownloadContent::decode(const detail::Bytes& entry, QUOR_U32 stated) {
    if (stated < FIXED_LENGTH) {
        return notValid(stated);
    }
    if (!entry.has(0, FIXED_LENGTH)) {
        return Walk::tooLong(FIXED_LENGTH, entry.size());
    }
    m_iGroup = entry.u8(0) >> 4;
    m_iTargetVersion = entry.u16(0) & 0x0FFFU;
    m_iNewVersion = entry.u16(2) >> 4;
    m_iDownloadLevel = entry.u8(3) >> 2 & 0x03;
    m_iVersionIndicator = entry.u8(3) & 0x03U;
    const QUOR_U16 contentLength = entry.u16(4) >> 4;
    const QUOR_U16 scheduleLength = entry.u16(6) >> 4;
    m_iScheduleTimeShiftInfo = entry.u8(7) & 0x0FU;

    if (stated - FIXED_LENGTH < contentLength) {
        return Walk::tooLong(contentLength, stated - FIXED_LENGTH);
    }
    const detail::Outcome schedule = decodeSchedule(entry.from(FIXED_LENGTH), scheduleLength);
    if (!schedule.succeeded()) {
        return schedule;
    }
    // A schedule longer than the whole content wraps both counts; the walk goes on with them.
    Walk walk{entry.from(FIXED_LENGTH + scheduleLength), stated - FIXED_LENGTH - scheduleLength};
    const detail::Outcome loop =
        detail::walkLoop(FAMILY, m_descriptors, walk, static_cast<QUOR_U16>(contentLength - scheduleLength));
    return loop.succeeded() ? detail::Outcome::done(stated - walk.stated) : loop;
}

detail::Outcome TDownloadContent::decodeSchedule(const detail::Bytes& left, QUOR_U16 scheduleLength) {
    if (!left.has(0, scheduleLength)) {
        return Walk::tooLong(scheduleLength, left.size());
    }
    if (scheduleLength % SCHEDULE_SLOT_LENGTH != 0) {
        return notValid(scheduleLength);
    }
    if (!detail::decodeItems(left, m_pItems, scheduleLength / SCHEDULE_SLOT_LENGTH).complete) {
        QUOR_ISDBT_LOG("%s: TDownloadContent::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_ITEM);
    }
    return detail::Outcome::done();
}

std::list<QUOR_U8>* TDownloadContent::getDescriptorTags() const {
    return FAMILY.tags(m_descriptors);
}

void TDownloadContent::addScheduleInfo(TScheduleInfo* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TDownloadContent::removeScheduleInfo(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
