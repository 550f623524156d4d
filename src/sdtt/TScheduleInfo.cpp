#include "sdtt/TScheduleInfo.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Time.h"

namespace Quor {

namespace {

// start_time (40) | duration (24)
constexpr QUOR_U32 SLOT_LENGTH = 8;

} // namespace

TScheduleInfo::~TScheduleInfo() = default;

TScheduleInfo* TScheduleInfo::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TScheduleInfo>(data, length, parsedLength, errorCode);
}

detail::Outcome TScheduleInfo::decode(const detail::Bytes& left) {
    if (left.size() < SLOT_LENGTH) {
        QUOR_ISDBT_LOG("%s: TScheduleInfo::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iStartTime = detail::unixTime(left);
    // Quirk: kept as BCD digits, unlike the start time.
    m_iDuration = left.u24(detail::TIME_LENGTH);
    return detail::Outcome::done(SLOT_LENGTH);
}

} // namespace Quor
