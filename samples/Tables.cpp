#include "Tables.h"

#include "Station.h"

namespace sample {

namespace {

constexpr std::uint8_t PAT_TABLE_ID = 0x00;
constexpr std::uint8_t TOT_TABLE_ID = 0x73;

constexpr std::uint8_t LOCAL_TIME_OFFSET_DESCRIPTOR = 0x58;

Bytes program(std::uint16_t programNumber, std::uint16_t pid) {
    return Wire().bits(16, programNumber).reserved(3).bits(13, pid).bytes();
}

std::uint64_t bcd(unsigned number) {
    return number / 10 << 4U | number % 10;
}

/// UTC_time: Modified Julian Date, then hours, minutes and seconds in BCD.
Bytes utcTime(unsigned day, unsigned hour, unsigned minute, unsigned second) {
    return Wire().bits(16, day).bits(8, bcd(hour)).bits(8, bcd(minute)).bits(8, bcd(second)).bytes();
}

// Modified Julian Dates
constexpr unsigned ON_2025_06_15 = 60841;
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

Bytes pat() {
    return longSection(PAT_TABLE_ID, TRANSPORT_STREAM_ID,
                       Wire()
                           .append(program(0, NIT_PID))
                           .append(program(HD_SERVICE_ID, HD_PMT_PID))
                           .append(program(ONE_SEG_SERVICE_ID, ONE_SEG_PMT_PID))
                           .bytes());
}

Bytes tot(unsigned second) {
    // Fernando de Noronha, the west, the Acre, and the station's own zone last: of one country, receivers keep the
    // last.
    const Bytes zones =
        Wire().append(timeZone(1, 2)).append(timeZone(3, 4)).append(timeZone(4, 5)).append(timeZone(2, 3)).bytes();
    const Bytes descriptors = descriptor(LOCAL_TIME_OFFSET_DESCRIPTOR, zones);
    return shortSection(TOT_TABLE_ID, Wire()
                                          .append(utcTime(ON_2025_06_15, 21, 30, second))
                                          .reserved(4)
                                          .bits(12, descriptors.size()) // descriptors_loop_length
                                          .append(descriptors)
                                          .bytes());
}

} // namespace sample
