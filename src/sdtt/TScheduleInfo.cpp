#include "sdtt/TScheduleInfo.h"

#include "detail/Log.h"
#include "detail/Shapes.h"
#include "detail/Time.h"

namespace Quor {

namespace {

// start_time (40) | duration (24)
constexpr QUOR_U32 SLOT_LENGTH = 8;

} // namespace

TScheduleInfo::TScheduleInfo() : m_iStartTime(0), m_iDuration(0) {}

TScheduleInfo::~TScheduleInfo() = default;

TScheduleInfo* TScheduleInfo::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                    QUOR_U16* errorCode) {
    return detail::parseItem<TScheduleInfo>(
        sectionData, dataLength, parsedLength, errorCode, [](TScheduleInfo& slot, detail::Bytes left) {
            if (left.size() < SLOT_LENGTH) {
                QUOR_ISDBT_LOG("%s: TScheduleInfo::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                               left.size());
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
            }
            slot.m_iStartTime = detail::unixTime(left);
            // Kept as BCD digits; callers depend on the raw value.
            slot.m_iDuration = left.u24(detail::TIME_LENGTH);
            return detail::Outcome::done(SLOT_LENGTH);
        });
}

} // namespace Quor
