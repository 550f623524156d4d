#include "describing/Readings.h"

#include "describing/Field.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;

TEST(Readings, OfOffsetsHaveASign) {
    EXPECT_EQ(isoOffset(true, 10800), "-03:00");
    EXPECT_EQ(isoOffset(false, 19800), "+05:30");
}

TEST(Readings, OfHoursAndMinutesAreMinutesOrNothing) {
    EXPECT_EQ(bcdMinutes(0x0330), 210);
    EXPECT_EQ(bcdMinutes(0x0000), 0);
    EXPECT_EQ(bcdMinutes(0x0A00), std::nullopt);
}

TEST(Readings, OfHoursMinutesAndSecondsAreSecondsOrNothing) {
    EXPECT_EQ(bcdSeconds(0x013015), 5415);
    EXPECT_EQ(bcdSeconds(0x000000), 0);
    EXPECT_EQ(bcdSeconds(0x00000A), std::nullopt);
    EXPECT_EQ(bcdSeconds(0x00A000), std::nullopt);
    EXPECT_EQ(bcdSeconds(0xFFFFFF), std::nullopt);
}

TEST(Readings, OfTimesOnTheWireAreAsTheLibraryCountsThem) {
    EXPECT_EQ(wireTime(0x9E8B000000), 0);
    EXPECT_EQ(wireTime(0xEDA9123456), 1749990896);
    EXPECT_EQ(wireTime(0xFFFF000000), -2139460096); // beyond 2038-01-19 they wrap
}

TEST(Readings, OfTimesThatAreUndefinedAreNothing) {
    EXPECT_EQ(wireTime(0xFFFFFFFFFF), std::nullopt);
    EXPECT_EQ(wireTime(0xEDD81A0000), std::nullopt);
    EXPECT_EQ(wireTime(0x9E8A000000), std::nullopt); // the last day of 1969
}

TEST(Readings, OfDurationsAreTheirDigitsOrNothing) {
    EXPECT_EQ(bcdDuration(0x013000), "01:30:00");
    EXPECT_EQ(bcdDuration(0x995959), "99:59:59");
    EXPECT_EQ(bcdDuration(0x01300A), "");
    EXPECT_EQ(bcdDuration(0xFFFFFF), "");
}

TEST(Readings, OfFrequenciesAreInMegahertz) {
    EXPECT_EQ(megahertz(3312), "473.142857 MHz"); // channel 14
    EXPECT_EQ(megahertz(5328), "761.142857 MHz"); // channel 62
    EXPECT_EQ(megahertz(7), "1.000000 MHz");
}

TEST(Readings, OfTicksAreInSeconds) {
    EXPECT_EQ(ticks(0, 0), "0.000000 s");
    EXPECT_EQ(ticks(0, 89999), "0.999988 s");
    EXPECT_EQ(ticks(1, 0xFFFFFFFF), "95443.717677 s");
}

TEST(Readings, OfCountriesAreTheirLetters) {
    EXPECT_EQ(countryCode(0x425241), "BRA");
    EXPECT_EQ(countryCode(0x627261), "bra");
    EXPECT_EQ(countryCode(0x425B81), "B\\x5B\\x81");
}

TEST(Readings, OfSystemManagementAreItsThreeParts) {
    EXPECT_EQ(systemManagement(0x0301), "broadcast, terrestrial television, 0x01");
    EXPECT_EQ(systemManagement(0x4301), "no broadcast, terrestrial television, 0x01");
    EXPECT_EQ(systemManagement(0x8201), "no broadcast, satellite, 34.5 MHz, 11.7 to 12.2 GHz, 0x01");
    EXPECT_EQ(systemManagement(0x8801), "no broadcast, system 8, 0x01");
    EXPECT_EQ(systemManagement(0xFFFF), "undefined, system 63, 0xFF");
}

TEST(Readings, OfRatingsDependOnTheCountry) {
    EXPECT_EQ(parentalRating("BRA", 0x01), "all ages");
    EXPECT_EQ(parentalRating("BRA", 0x12), "10, drugs");
    EXPECT_EQ(parentalRating("BRA", 0x76), "18, drugs, violence, sex");
    EXPECT_EQ(parentalRating("BRA", 0x07), "");
    EXPECT_EQ(parentalRating("BRA", 0x20), "");
    EXPECT_EQ(parentalRating("ARG", 0x01), "from 4 years");
    EXPECT_EQ(parentalRating("ARG", 0x0F), "from 18 years");
    EXPECT_EQ(parentalRating("ARG", 0x00), "");
    EXPECT_EQ(parentalRating("ARG", 0x10), "");
}

TEST(Readings, OfFlagsAreTheNamesOfThoseThatAreSet) {
    constexpr Name ROWS[] = {{1, 1, "one"}, {2, 2, "two"}, {4, 4, "four"}};
    const NameList NAMES(ROWS);
    EXPECT_EQ(setFlags(0, NAMES), "");
    EXPECT_EQ(setFlags(2, NAMES), "two");
    EXPECT_EQ(setFlags(0xF5, NAMES), "one, four");
}

TEST(Field, NamesCodesThatItKnows) {
    constexpr Name ROWS[] = {{1, 1, "one"}, {2, 2, "two"}};
    const NameList NAMES(ROWS);
    EXPECT_EQ(code("field", 2, NAMES).codeName, "two");
    EXPECT_EQ(code("field", 3, NAMES).codeName, "");
    EXPECT_EQ(identifier("field", 1, 2).named(NAMES).codeName, "one");
}

} // namespace
