#ifndef QUOR_DETAIL_TIME_H
#define QUOR_DETAIL_TIME_H

#include "detail/Bytes.h"
#include "utils/QuorISDBTUtils.h"

namespace Quor::detail {

/// Bytes of a date and time: MJD (16) | BCD hours (8) | BCD minutes (8) | BCD seconds (8)
constexpr QUOR_U32 TIME_LENGTH = 5;

/// Seconds since 1970-01-01 00:00:00 UTC of a date and time, in 32 bits that wrap.
inline QUOR_S32 unixTime(const Bytes& time) {
    const auto day = static_cast<QUOR_U32>(ISDBTUtils::mjd2unix(time.u16(0)));
    const QUOR_U32 seconds =
        ISDBTUtils::bcd2U8(time.u8(2)) * 3600U + ISDBTUtils::bcd2U8(time.u8(3)) * 60U + ISDBTUtils::bcd2U8(time.u8(4));
    return static_cast<QUOR_S32>(day + seconds);
}

} // namespace Quor::detail

#endif
