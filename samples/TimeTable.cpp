#include "Station.h"
#include "Tables.h"

namespace sample {

namespace {

constexpr std::uint8_t TOT_TABLE_ID = 0x73;
constexpr std::uint8_t LOCAL_TIME_OFFSET_DESCRIPTOR = 0x58;

constexpr unsigned ON_2025_11_02 = 60981;

Bytes timeZone(unsigned region, unsigned hoursBehindUtc) {
    return Wire()
        .text("BRA")                             // country_code
        .bits(6, region)                         // country_region_id
        .reserved(1)                             //
        .bits(1, 1)                              // local_time_offset_polarity: behind UTC
        .bits(8, bcd(hoursBehindUtc))            // local_time_offset, hours
        .bits(8, 0)                              // and minutes
        .append(utcTime(ON_2025_11_02, 3, 0, 0)) // time_of_change
        .bits(8, bcd(hoursBehindUtc))            // next_time_offset, hours
        .bits(8, 0)                              // and minutes
        .bytes();
}

} // namespace

Bytes tot(unsigned second) {
    // Fernando de Noronha, the west, the Acre, and the station's own zone last: of one country, receivers keep the
    // last.
    const Bytes zones =
        descriptor(LOCAL_TIME_OFFSET_DESCRIPTOR,
                   Wire().append(timeZone(1, 2)).append(timeZone(3, 4)).append(timeZone(4, 5)).append(timeZone(2, 3)));
    return shortSection(TOT_TABLE_ID, Wire().append(utcTime(BROADCAST_DAY, 21, 30, second)).loop(zones));
}

} // namespace sample
