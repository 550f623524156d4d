#include "descriptors/TGeneralEventDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"
#include "detail/Time.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | event_msg_group_id (12) reserved (4) | time_mode (8) |
// time_mode 1, 5: event_msg_MJD_JST_time (40)
// time_mode 2:    reserved (7) event_msg_NPT (33)
// time_mode 3:    reserved (4) event_msg_relativeTime (36)
// else:           reserved (40) |
// event_msg_type (8) | event_msg_id (16) | private_data_byte (8) ...
constexpr QUOR_U32 TIME_AT = 5;

} // namespace

TGeneralEventDescriptor::~TGeneralEventDescriptor() = default;

TGeneralEventDescriptor* TGeneralEventDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                        QUOR_U16* errorCode) {
    return detail::parseDescriptor<TGeneralEventDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TGeneralEventDescriptor::decode(const detail::Bytes& descriptor) {
    // Quirk: the two parts of event_msg_group_id overlap.
    m_iEventMsgGroupID = static_cast<QUOR_U16>(descriptor.u8(2) << 4 | (descriptor.u8(3) & 0xF0));
    m_iTimeMode = descriptor.u8(4);
    detail::Bytes left = descriptor.from(TIME_AT);
    switch (m_iTimeMode) {
    case TIME_MODE_NPT:
        m_iEventMsgNPTH = left.u8(0) & 1U;
        m_iEventMsgNPTL = left.u32(1);
        break;
    case TIME_MODE_EVENT_RELATIVE:
        m_iEventMsgRelativeTimeH = left.u8(0) & 0x0FU;
        m_iEventMsgRelativeTimeL = left.u32(1);
        break;
    case TIME_MODE_MJD_UTC:
    case TIME_MODE_MJD_UTC_2:
        m_iEventMsgJSTTime = static_cast<QUOR_U32>(detail::unixTime(left));
        // Quirk: the time is skipped here and once more below.
        left = left.from(detail::TIME_LENGTH);
        break;
    default:
        break;
    }
    m_iEventMsgType = left.u8(5);
    m_iEventMsgID = left.u16(6);
    m_pPrivateData = detail::copyBytes(left.from(8), m_iPrivateDataSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
