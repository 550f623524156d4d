#include "Station.h"
#include "Tables.h"

namespace sample {

namespace {

constexpr std::uint8_t TOT_TABLE_ID = 0x73;
constexpr std::uint8_t LOCAL_TIME_OFFSET_DESCRIPTOR = 0x58;

constexpr unsigned ON_2025_11_02 = 60981;

enum Polarity : unsigned { Ahead = 0, Behind = 1 };

/// A zone by its difference from the station's own.
Bytes timeZone(unsigned region, Polarity polarity, unsigned hours) {
    return Wire()
        .text("BRA")                               // country_code
        .bits(6, region)                           // country_region_id
        .reserved(1)                               //
        .bits(1, polarity)                         // local_time_offset_polarity
        .bits(8, bcd(hours))                       // local_time_offset, hours
        .bits(8, 0)                                // and minutes
        .append(clockTime(ON_2025_11_02, 0, 0, 0)) // time_of_change
        .bits(8, bcd(hours))                       // next_time_offset, hours
        .bits(8, 0)                                // and minutes
        .bytes();
}

} // namespace

Bytes tot(unsigned secondOfDay) {
    // Fernando de Noronha, the west, the Acre, and the station's own zone last: of one country, receivers keep the
    // last.
    const Bytes zones = descriptor(LOCAL_TIME_OFFSET_DESCRIPTOR, Wire()
                                                                     .append(timeZone(1, Ahead, 1))
                                                                     .append(timeZone(3, Behind, 1))
                                                                     .append(timeZone(4, Behind, 2))
                                                                     .append(timeZone(2, Ahead, 0)));
    return shortSection(TOT_TABLE_ID, Wire().append(clockTime(BROADCAST_DAY, secondOfDay)).loop(zones));
}

} // namespace sample
