#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr unsigned PMT_PID = 0x0100;

ByteVector smallPat() {
    return longSection(0x00, {}, hex("0001 E100"));
}

/// A PAT of 8 + 4 * programs + 4 bytes.
ByteVector largePat(unsigned programs) {
    ByteVector body;
    for (unsigned number = 1; number <= programs; ++number) {
        body = join({body, u16(number), u16(0x0100 + number, 0xE000)});
    }
    return longSection(0x00, {}, body);
}

ByteVector corrupted(ByteVector section, std::size_t at) {
    section.at(at) ^= 0x01U;
    return section;
}

/// The part of the summary that speaks of damage.
std::string damage(const Finished& finished) {
    const std::string marker = " rejected, ";
    return finished.output.substr(finished.output.rfind(marker) + marker.size());
}

} // namespace

TEST(InspectDamage, CrcErrorIsCountedAndTheSectionNotShown) {
    StreamBuilder stream;
    stream.section(PAT_PID, smallPat()).section(PAT_PID, corrupted(smallPat(), 9)).section(PAT_PID, smallPat());
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, EndsWith("\n3 packets of 188 bytes, 3 sections on 1 PID: 1 shown, 0 rejected, "
                                          "1 CRC error (PID 0x0000), 0 discontinuities\n"));
}

TEST(InspectDamage, CrcErrorIsShownOnDemand) {
    const ByteVector damaged = corrupted(longSection(0x00, {}, hex("0001 E101")), 15);
    StreamBuilder stream;
    stream.section(PAT_PID, damaged).section(PAT_PID, smallPat()).section(PAT_PID, damaged);
    const Finished finished = inspectBytes(stream.bytes(), {"--table", "pat", "--show-damaged"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.output, "PAT  PID 0x0000  version 0  section 0/0  current  packet 1  DAMAGED\n"
                               "  transport_stream_id  0x0001 (1)\n"
                               "  network_pid          0x0000 (0)\n"
                               "  programs (1)\n"
                               "    program_number  program_map_pid\n"
                               "    0x0001 (1)      0x0101 (257)\n"
                               "\n"
                               "PAT  PID 0x0000  version 0  section 0/0  current  packet 2\n"
                               "  transport_stream_id  0x0001 (1)\n"
                               "  network_pid          0x0000 (0)\n"
                               "  programs (1)\n"
                               "    program_number  program_map_pid\n"
                               "    0x0001 (1)      0x0100 (256)\n"
                               "\n"
                               "PAT  PID 0x0000  version 0  section 0/0  current  packet 3  DAMAGED\n"
                               "  transport_stream_id  0x0001 (1)\n"
                               "  network_pid          0x0000 (0)\n"
                               "  programs (1)\n"
                               "    program_number  program_map_pid\n"
                               "    0x0001 (1)      0x0101 (257)\n"
                               "\n"
                               "3 packets of 188 bytes, 3 sections on 1 PID: 3 shown, 0 rejected, 2 CRC errors "
                               "(PID 0x0000), 0 discontinuities\n");
}

TEST(InspectDamage, CrcErrorIsShownWithTheRejected) {
    StreamBuilder stream;
    stream.section(PAT_PID, corrupted(smallPat(), 15)).section(PAT_PID, smallPat());
    const Finished finished = inspectBytes(stream.bytes(), {"--table", "pat", "--rejected", "--show-damaged"});
    EXPECT_THAT(finished.output, HasSubstr("packet 1  DAMAGED\n"));
    EXPECT_THAT(finished.output, HasSubstr(": 1 shown, 0 rejected, 1 not chosen, 1 CRC error"));
}

/// The program map that a damaged PAT names is not looked for: its PID may be wrong.
TEST(InspectDamage, CrcErrorTeachesNothing) {
    StreamBuilder stream;
    stream.section(PAT_PID, corrupted(smallPat(), 15))
        .section(PMT_PID, longSection(0x02, {}, hex("E100 F000 1B E111 F000")))
        .section(PMT_PID, longSection(0x02, {}, hex("E100 F000 1B E111 F000")));
    const Finished finished = inspectBytes(stream.bytes(), {"--table", "pmt", "--show-damaged"});
    EXPECT_THAT(finished.output, HasSubstr("1 section on 1 PID: 0 shown"));
}

/// Whichever bit flips: the section is not shown as if it were good.
TEST(InspectDamage, CrcErrorWhereverTheFault) {
    for (const std::size_t at : {3U, 4U, 5U, 6U, 7U, 8U, 12U, 15U}) {
        const Finished finished = inspectBytes(StreamBuilder().section(PAT_PID, corrupted(smallPat(), at)).bytes());
        EXPECT_EQ(damage(finished), "1 CRC error (PID 0x0000), 0 discontinuities\n") << "byte " << at;
    }
    ByteVector withoutSyntaxIndicator = smallPat();
    withoutSyntaxIndicator[1] &= 0x7FU;
    const Finished finished = inspectBytes(StreamBuilder().section(PAT_PID, withoutSyntaxIndicator).bytes());
    EXPECT_EQ(damage(finished), "1 CRC error (PID 0x0000), 0 discontinuities\n");
}

TEST(InspectDamage, CrcErrorInATot) {
    const ByteVector tot = shortSection(0x73, hex("C079 124500 F000"));
    const Finished finished = inspectOnly("tot", StreamBuilder().section(TOT_PID, corrupted(tot, 4)).bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(damage(finished), "1 CRC error (PID 0x0014), 0 discontinuities\n");
}

TEST(InspectDamage, SectionsTooShortForACrc) {
    for (unsigned length = 0; length < 4; ++length) {
        const Finished finished =
            inspectBytes(StreamBuilder().section(PAT_PID, withSectionLength(smallPat(), length)).bytes());
        EXPECT_EQ(finished.status, 3);
        EXPECT_THAT(damage(finished), HasSubstr("(PID 0x0000)")) << "section_length " << length;
        EXPECT_THAT(finished.output, HasSubstr(": 0 shown, 0 rejected"));
    }
}

TEST(InspectDamage, DamageIsToldPidByPid) {
    StreamBuilder stream;
    stream.section(PAT_PID, smallPat());
    stream.section(PMT_PID, corrupted(longSection(0x02, {}, hex("E100 F000")), 8));
    stream.section(TOT_PID, corrupted(shortSection(0x73, hex("C079 124500 F000")), 4));
    stream.lose(PMT_PID, 3).section(PMT_PID, longSection(0x02, {}, hex("E100 F000")));
    EXPECT_EQ(damage(inspectBytes(stream.bytes())),
              "2 CRC errors (PID 0x0014, 0x0100), 1 discontinuity (PID 0x0100)\n");
}

TEST(InspectDamage, LostPacket) {
    for (const unsigned lost : {1U, 7U, 14U}) {
        StreamBuilder stream;
        stream.section(PAT_PID, smallPat()).lose(PAT_PID, lost).section(PAT_PID, smallPat());
        const Finished finished = inspectOnly("pat", stream.bytes());
        EXPECT_EQ(finished.status, 3);
        EXPECT_EQ(damage(finished), "0 CRC errors, 1 discontinuity (PID 0x0000)\n") << lost << " lost";
    }
}

/// Fifteen lost packets bring the same continuity_counter again; only the bytes tell them from a packet sent twice.
TEST(InspectDamage, FifteenLostPackets) {
    StreamBuilder stream;
    stream.section(PAT_PID, smallPat()).lose(PAT_PID, 15).section(PAT_PID, largePat(2));
    const Finished finished = inspectOnly("tot", stream.bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(damage(finished), "0 CRC errors, 1 discontinuity (PID 0x0000)\n");
}

TEST(InspectDamage, LostPacketOfTheSample) {
    const ByteVector stream = sampleStream();
    const std::size_t second = 25 * PACKET_SIZE; // the second PAT
    const Finished finished =
        inspectBytes(join({slice(stream, 0, second), slice(stream, second + PACKET_SIZE, stream.size())}));
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, EndsWith("479 packets of 188 bytes, 72 sections on 9 PIDs: 11 shown, 0 rejected, "
                                          "0 CRC errors, 1 discontinuity (PID 0x0000)\n"));
}

/// Nobody looks for sections there.
TEST(InspectDamage, LostPacketsOfVideo) {
    const ByteVector stream = sampleStream();
    ByteVector rest;
    unsigned video = 0;
    for (std::size_t at = 0; at < stream.size(); at += PACKET_SIZE) {
        const bool isVideo = (stream[at + 1] & 0x1FU) == 0x01 && stream[at + 2] == 0x11;
        if (!isVideo || ++video % 3 != 0) {
            rest = join({rest, slice(stream, at, at + PACKET_SIZE)});
        }
    }
    const Finished finished = inspectBytes(rest);
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(damage(finished), "0 CRC errors, 26 discontinuities (PID 0x0111)\n");
}

TEST(InspectDamage, LostPacketInsideASection) {
    const ByteVector pat = largePat(100); // 412 bytes: three packets
    StreamBuilder stream;
    stream.begin(PAT_PID, join({hex("00"), slice(pat, 0, 183)}));
    stream.lose(PAT_PID, 1);
    stream.proceed(PAT_PID, slice(pat, 183 + 184, pat.size()));
    const Finished finished = inspectOnly("tot", stream.bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("0 sections on 1 PID: 0 shown"));
    EXPECT_EQ(damage(finished), "0 CRC errors, 1 discontinuity (PID 0x0000)\n");
}

TEST(InspectDamage, PacketSentTwiceIsNoDamage) {
    const ByteVector pat = largePat(60); // 252 bytes: two packets
    StreamBuilder stream;
    stream.begin(PAT_PID, join({hex("00"), slice(pat, 0, 183)})).again();
    stream.proceed(PAT_PID, slice(pat, 183, pat.size())).again();
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("4 packets of 188 bytes, 1 section on 1 PID: 1 shown"));
}

TEST(InspectDamage, PacketSentThreeTimesIsADiscontinuity) {
    const Finished finished = inspectOnly("pat", StreamBuilder().section(PAT_PID, smallPat()).again().again().bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(damage(finished), "0 CRC errors, 1 discontinuity (PID 0x0000)\n");
}

TEST(InspectDamage, AnnouncedDiscontinuityIsNoDamage) {
    StreamBuilder stream;
    stream.section(PAT_PID, smallPat()).lose(PAT_PID, 5);
    // adaptation field of one byte: discontinuity_indicator
    stream.begin(PAT_PID, join({hex("01 80 00"), smallPat()})).patch(3, 0x36);
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("2 sections on 1 PID: 1 shown"));
}

TEST(InspectDamage, PacketsWithoutPayloadDoNotCount) {
    StreamBuilder stream;
    stream.section(PAT_PID, smallPat());
    stream.proceed(PAT_PID, hex("B7 00")).patch(3, 0x20); // adaptation field only, the counter stands still
    stream.lose(PAT_PID, 15).section(PAT_PID, smallPat());
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities\n");
}

TEST(InspectDamage, ScrambledPacketsAreSkipped) {
    const Finished finished = inspectOnly("tot", StreamBuilder().section(PAT_PID, smallPat()).patch(3, 0x90).bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("0 sections on 1 PID: 0 shown"));
}

TEST(InspectDamage, PacketMarkedByTheDemodulator) {
    StreamBuilder stream;
    stream.section(PAT_PID, smallPat()).patch(1, 0xC0).section(PAT_PID, smallPat());
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("1 section on 1 PID: 1 shown"));
    EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities, 1 packet marked as damaged (PID 0x0000)\n");
}

TEST(InspectDamage, PacketOfVideoMarkedByTheDemodulator) {
    ByteVector stream = sampleStream();
    stream[PACKET_SIZE * 9 + 1] |= 0x80U;
    const Finished finished = inspectBytes(stream);
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities, 1 packet marked as damaged (PID 0x0111)\n");
}

TEST(InspectDamage, AdaptationFieldBeyondThePacket) {
    for (const QUOR_U8 length : {QUOR_U8{183}, QUOR_U8{184}, QUOR_U8{255}}) {
        StreamBuilder stream;
        stream.section(PAT_PID, smallPat()).patch(3, 0x30).patch(4, length);
        const Finished finished = inspectOnly("tot", stream.bytes());
        EXPECT_EQ(finished.status, 3);
        EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities, 1 malformed packet (PID 0x0000)\n");
    }
}

TEST(InspectDamage, PointerBeyondThePacket) {
    for (const QUOR_U8 pointer : {QUOR_U8{184}, QUOR_U8{255}}) {
        const Finished finished =
            inspectOnly("tot", StreamBuilder().section(PAT_PID, smallPat()).patch(4, pointer).bytes());
        EXPECT_EQ(finished.status, 3);
        EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities, 1 malformed packet (PID 0x0000)\n");
    }
    // A section may begin in the next packet: the pointer then leads to the very end.
    const Finished finished = inspectOnly("tot", StreamBuilder().section(PAT_PID, smallPat()).patch(4, 183).bytes());
    EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities\n");
}

TEST(InspectDamage, SectionInterruptedByTheNext) {
    const ByteVector pat = largePat(60);
    StreamBuilder stream;
    stream.begin(PAT_PID, join({hex("00"), slice(pat, 0, 183)})).section(PAT_PID, smallPat());
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("1 section on 1 PID: 1 shown"));
    EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities, 1 section cut short (PID 0x0000)\n");
}

TEST(InspectDamage, SectionLongerThanAnyMayBe) {
    const Finished finished =
        inspectOnly("tot", StreamBuilder().section(PAT_PID, withSectionLength(smallPat(), 4095)).bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities, 1 section cut short (PID 0x0000)\n");
}

TEST(InspectDamage, EndInsideASectionIsNoDamage) {
    const ByteVector pat = largePat(60);
    const Finished finished =
        inspectOnly("tot", StreamBuilder().begin(PAT_PID, join({hex("00"), slice(pat, 0, 183)})).bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities\n");
}

TEST(InspectSections, SeveralInOnePacket) {
    const ByteVector tots =
        join({shortSection(0x73, hex("C079 124500 F000")), shortSection(0x73, hex("C079 124501 F000"))});
    const Finished finished = inspectOnly("tot", StreamBuilder().section(TOT_PID, tots).bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("1 packet of 188 bytes, 2 sections on 1 PID: 2 shown"));
}

TEST(InspectSections, OverSeveralPackets) {
    const ByteVector pat = largePat(100);
    StreamBuilder stream;
    stream.begin(PAT_PID, join({hex("00"), slice(pat, 0, 183)}));
    stream.proceed(PAT_PID, slice(pat, 183, 183 + 184));
    stream.proceed(PAT_PID, slice(pat, 183 + 184, pat.size()));
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("PAT  PID 0x0000  version 0  section 0/0  current  packet 3\n"));
    EXPECT_THAT(finished.output, HasSubstr("  programs (100)\n"));
}

/// The second section begins behind the end of the first, its header spread over two packets.
TEST(InspectSections, BeginInTheLastBytesOfAPacket) {
    const ByteVector first = largePat(58); // 244 bytes: 61 in the second packet
    const ByteVector second = longSection(0x00, {}, hex("0001 E100 0002 E200"));
    for (const std::size_t inSecondPacket : {1U, 2U, 3U, 5U}) {
        const std::size_t padding = 183 - 61 - inSecondPacket;
        StreamBuilder stream;
        stream.begin(PAT_PID, join({hex("00"), slice(first, 0, 183)}));
        // an adaptation field takes up the room
        stream
            .begin(PAT_PID, join({{static_cast<QUOR_U8>(padding - 1)},
                                  hex("00"),
                                  fill(padding - 2, 0xFF),
                                  {61},
                                  slice(first, 183, first.size()),
                                  slice(second, 0, inSecondPacket)}))
            .patch(3, 0x31);
        stream.proceed(PAT_PID, slice(second, inSecondPacket, second.size()));
        const Finished finished = inspectBytes(stream.bytes());
        EXPECT_EQ(damage(finished), "0 CRC errors, 0 discontinuities\n");
        EXPECT_THAT(finished.output, HasSubstr("3 packets of 188 bytes, 2 sections on 1 PID: 2 shown"))
            << inSecondPacket << " bytes";
    }
}

TEST(InspectSections, TheLongestThereAre) {
    const ByteVector pat = largePat((1024 - 12) / 4);
    StreamBuilder stream;
    stream.begin(PAT_PID, join({hex("00"), slice(pat, 0, 183)}));
    for (std::size_t at = 183; at < pat.size(); at += 184) {
        stream.proceed(PAT_PID, slice(pat, at, std::min(at + 184, pat.size())));
    }
    const Finished finished = inspectOnly("pat", stream.bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("  programs (253)\n"));
}

/// With the first packet that shows it.
TEST(InspectDamage, IsAFaultWithItsPlaceInJson) {
    StreamBuilder stream;
    stream.section(PAT_PID, smallPat()).section(PAT_PID, smallPat()).lose(PAT_PID, 1).section(PAT_PID, smallPat());
    stream.section(PAT_PID, corrupted(smallPat(), 8)).section(PAT_PID, smallPat()).patch(1, 0xC0);
    stream.lose(PAT_PID, 2).section(PAT_PID, smallPat()).section(PAT_PID, corrupted(smallPat(), 8));
    const TemporaryFile file(stream.bytes());
    const std::string lines = inspect({"--json", "--table", "pat", file.path()}).output;
    EXPECT_THAT(lines, testing::ContainsRegex(R"("fault":"discontinuities",.*"packet":3,"offset":376,"seconds":)"));
    EXPECT_THAT(lines, testing::ContainsRegex(R"("fault":"crc_errors",.*"packet":4,"offset":564,"seconds":)"));
    EXPECT_THAT(lines, testing::ContainsRegex(R"("fault":"transport_errors",.*"packet":5,"offset":752,"seconds":)"));
}

/// The tables count it each time that it comes.
TEST(InspectDamage, SaysHowOftenWhatIsRejectedCame) {
    const ByteVector rejected = hex("02 B0 14 E6 A0 C1 00 00 E1 00 F0 00 1B E1 11 F0 02 52 00 4D 74 93 47");
    StreamBuilder stream;
    stream.section(PAT_PID, pat("E6A0 E100"));
    for (unsigned times = 0; times < 3; ++times) {
        stream.section(PMT_PID, rejected);
    }
    const TemporaryFile file(stream.bytes());
    EXPECT_THAT(inspect({"--view", "stats", file.path()}).output, HasSubstr(": 1 shown, 1 rejected (3 times), 0 CRC"));
}
