#include "watching/Announcements.h"

#include "support/Bytes.h"
#include "tool/watching/Watched.h"

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace inspect;
using testing::ElementsAre;
using testing::Pair;

Section sectionOf(Pid pid, const ByteVector& bytes) {
    auto* const memory = static_cast<std::uint8_t*>(std::malloc(bytes.size()));
    std::memcpy(memory, bytes.data(), bytes.size());
    return {pid, Section::Memory(memory), Position{}};
}

/// The parameters that a station in Japan declares, as it sends them.
const char* const JAPAN =
    "D7 35 00 0000 40 01 01  C4 01 01  42 01 02  C3 02 0180  C8 02 0600  "
    "4E 04 01 01 01 22  50 08 4F 08 06 0E 03 03 13 10  58 06 4F 08 06 0D 03 20  4E 04 FF 00 03 0A "
    "46 01 10";

ByteVector bit(const std::string& outer, const std::string& broadcasters) {
    const ByteVector loop = hex(outer);
    return longSection(0xC4, {}, join({u16(static_cast<unsigned>(loop.size()), 0xF000), loop, hex(broadcasters)}));
}

TEST(Announcements, CyclesOfAStation) {
    EXPECT_THAT(cyclesIn(sectionOf(0x0024, bit(JAPAN, ""))),
                ElementsAre(Pair("bit_interval", 1), Pair("cdt_interval", 600), Pair("eit_interval", 1),
                            Pair("eit_mobile_interval", 1), Pair("eit_one_seg_interval", 3),
                            Pair("eit_schedule_extended_interval", 60), Pair("eit_schedule_interval", 60),
                            Pair("nit_interval", 1), Pair("sdt_interval", 2), Pair("sdt_other_interval", 10),
                            Pair("sdtt_interval", 180)));
}

TEST(Announcements, CyclesOfABroadcaster) {
    EXPECT_THAT(cyclesIn(sectionOf(0x0024, bit("D7 06 00 0000 40 01 01", "01 F008 D7 06 00 0000 40 01 05"))),
                ElementsAre(Pair("nit_interval", 5)));
}

TEST(Announcements, CyclesThatAreNone) {
    EXPECT_TRUE(cyclesIn(sectionOf(0x0024, bit("", ""))).empty());
    EXPECT_TRUE(cyclesIn(sectionOf(0x0024, bit("D7 06 00 0000 40 01 00", ""))).empty()); // not given
    EXPECT_TRUE(cyclesIn(sectionOf(0x0024, bit("D7 06 00 0000 40 01 1A", ""))).empty()); // no digits
    EXPECT_TRUE(cyclesIn(sectionOf(0x0024, bit("D7 05 00 0000 40 02", ""))).empty());    // cut off
    EXPECT_TRUE(cyclesIn(sectionOf(0x0024, bit("D7 30 00", ""))).empty());
    EXPECT_TRUE(cyclesIn(sectionOf(0x0024, longSection(0xC4, {}, hex("FF")))).empty());
}

TEST(Announcements, NameWhatAMultiplexCarries) {
    Announcements known;
    EXPECT_TRUE(known.learn(sectionOf(0x0000, pat("0000 E010 E6A0 E101 E6B8 FFC8"))));
    EXPECT_FALSE(known.learn(sectionOf(0x0000, pat("0000 E010 E6A0 E101 E6B8 FFC8"))));
    EXPECT_TRUE(
        known.learn(sectionOf(0x0101, pmt(0xE6A0, "E100", "1B E111 F006 09 04 0005 E901  0F E112 F000 06 E130 F000"))));
    EXPECT_FALSE(known.learn(sectionOf(0x0101, pmt(0xE6A1, "E200", "1B E211 F000")))); // of no program
    for (const Pid pid : std::initializer_list<Pid>{0x0010, 0x0101, 0x1FC8, 0x0100, 0x0111, 0x0112, 0x0130, 0x0901}) {
        EXPECT_TRUE(known.names(pid)) << pid;
    }
    EXPECT_FALSE(known.names(0x0211));
    EXPECT_TRUE(known.isVideoOrAudio(0x0111));
    EXPECT_TRUE(known.isVideoOrAudio(0x0112));
    EXPECT_FALSE(known.isVideoOrAudio(0x0130));
    EXPECT_TRUE(known.learn(sectionOf(0x0000, pat("E6B8 FFC8", 1))));
    EXPECT_FALSE(known.names(0x0111));
    EXPECT_TRUE(known.maps().empty());
}

TEST(Announcements, KnowServicesForDownloads) {
    Announcements known;
    EXPECT_FALSE(known.knowsServices());
    EXPECT_TRUE(known.learn(sectionOf(0x0011, longSection(0x42, {},
                                                          hex("0735 FF  E6A0 FC 8005 48 03 01 00 00  "
                                                              "E6F0 FC 8005 48 03 A4 00 00")))));
    EXPECT_TRUE(known.knowsServices());
    EXPECT_FALSE(known.isEngineering(0xE6A0));
    EXPECT_TRUE(known.isEngineering(0xE6F0));
}

TEST(Announcements, KnowThePidsOfACat) {
    Announcements known;
    EXPECT_FALSE(known.knowsKeys());
    known.learn(sectionOf(0x0001, longSection(0x01, {}, hex("09 04 0005 E902 F6 05 000A E903 00 09 01 00"))));
    EXPECT_TRUE(known.knowsKeys());
    EXPECT_TRUE(known.names(0x0902));
    EXPECT_TRUE(known.names(0x0903));
}

TEST(Announcements, SurviveSectionsThatAreTooShort) {
    Announcements known;
    for (const QUOR_U8 tableId : std::initializer_list<QUOR_U8>{0x00, 0x01, 0x02, 0x42}) {
        for (const char* const body : {"", "E6", "E6A0 E1", "E6A0E101 FF"}) {
            known.learn(sectionOf(0x0000, longSection(tableId, {}, hex(body))));
        }
    }
    EXPECT_FALSE(known.names(0x0111));
}

} // namespace
