#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

using testing::HasSubstr;

TEST(Sample, IsWhatItsProgramWrites) {
    const TemporaryFile made;
    const Finished finished = runBuilt(MAKE_SAMPLE_PROGRAM, {made.path()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_TRUE(readFile(made.path()) == sampleStream()) << "run make-sample and commit what it writes";
}

TEST(Sample, IsSmallAndWhole) {
    const std::size_t size = sampleStream().size();
    EXPECT_LT(size, 300U * 1024U);
    EXPECT_EQ(size % PACKET_SIZE, 0U);
}

/// A constant rate of 240 packets a second: each clock says where it stands.
TEST(Sample, ClocksAgreeWithTheRate) {
    const ByteVector stream = sampleStream();
    std::size_t clocks = 0;
    for (std::size_t at = 0; at < stream.size(); at += PACKET_SIZE) {
        const QUOR_U8* const packet = &stream[at];
        const bool hasClock = (packet[3] & 0x20U) != 0 && packet[4] > 0 && (packet[5] & 0x10U) != 0;
        if (!hasClock) {
            continue;
        }
        ++clocks;
        const std::uint64_t base = std::uint64_t{packet[6]} << 25U | std::uint64_t{packet[7]} << 17U |
                                   std::uint64_t{packet[8]} << 9U | std::uint64_t{packet[9]} << 1U | packet[10] >> 7U;
        const std::uint64_t extension = std::uint64_t{packet[10] & 1U} << 8U | packet[11];
        const std::uint64_t slot = at / PACKET_SIZE;
        EXPECT_EQ(base * 300 + extension, 270000000 + slot * 112500) << "packet " << slot;
    }
    EXPECT_EQ(clocks, 80U);
}

/// The more a receiver waits for a table, the more often it comes.
TEST(Sample, TablesComeAtTheirOwnRates) {
    const ByteVector stream = sampleStream();
    std::map<unsigned, unsigned> sections; // of two seconds; no packet begins more than one
    for (std::size_t at = 0; at < stream.size(); at += PACKET_SIZE) {
        const bool beginsSection = (stream[at + 1] & 0x40U) != 0 && stream[at + 4] == 0 && stream[at + 5] != 0xFF;
        sections[(stream[at + 1] & 0x1FU) << 8U | stream[at + 2]] += beginsSection ? 1 : 0;
    }
    EXPECT_EQ(sections[0x0000], 20U); // PAT
    EXPECT_EQ(sections[0x0101], 20U); // PMT
    EXPECT_EQ(sections[0x1FC8], 10U); // PMT of the one-seg service
    EXPECT_EQ(sections[0x0130], 8U);  // two AITs
    EXPECT_EQ(sections[0x0150], 8U);  // DSM-CC stream descriptors
    EXPECT_EQ(sections[0x0010], 2U);  // NIT
    EXPECT_EQ(sections[0x0011], 2U);  // SDT
    EXPECT_EQ(sections[0x0014], 2U);  // TOT
    EXPECT_EQ(sections[0x0023], 1U);  // SDTT
}

TEST(Sample, ProgramWritesALongerStreamToAPipe) {
    const Finished finished = runBuilt(MAKE_SAMPLE_PROGRAM, {"--seconds", "2", "--bit-rate", "1504000", "-"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output.size(), 2000 * PACKET_SIZE);
}

TEST(Sample, ProgramInjectsFaultsAtTheirTimes) {
    const auto sizeWith = [](const std::string& fault) {
        return runBuilt(MAKE_SAMPLE_PROGRAM, {"--seconds", "4", "--bit-rate", "1504000", "--fault", fault, "-"})
                   .output.size() /
               PACKET_SIZE;
    };
    EXPECT_EQ(sizeWith("loss=1..1.5"), 3500U);
    EXPECT_EQ(sizeWith("loss=0.5"), 1000U);
    EXPECT_EQ(sizeWith("loss"), 4000U); // it would begin in second 20
}

TEST(Sample, ProgramListsItsFaults) {
    const Finished listed = runBuilt(MAKE_SAMPLE_PROGRAM, {"--list-faults"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_THAT(listed.output, HasSubstr("\npat-stops\t1.3.a PAT_error_2\t60\tyes\tno PAT comes\n"));
    EXPECT_THAT(listed.output, HasSubstr("\npause\t\t0\tlive\tthe sender pauses for 30 s, its PCR with it\n"));
    const Finished helped = runBuilt(MAKE_SAMPLE_PROGRAM, {"--help"});
    EXPECT_EQ(helped.status, 0);
    EXPECT_THAT(helped.output, HasSubstr("\n  pat-stops               60 s  no PAT comes (1.3.a PAT_error_2)\n"));
}

TEST(Sample, ProgramSaysWhatItDoesNotUnderstand) {
    const auto errorsOf = [](const std::vector<std::string>& arguments) {
        const Finished finished = runBuilt(MAKE_SAMPLE_PROGRAM, arguments);
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.output, "");
        return finished.errors.substr(0, finished.errors.find('\n'));
    };
    EXPECT_EQ(errorsOf({}), "FILE is required");
    EXPECT_EQ(errorsOf({"--fault", "loss", "-"}), "--fault requires --seconds");
    EXPECT_EQ(errorsOf({"--seconds", "2", "--turn", "3", "-"}), "--turn requires --files");
    EXPECT_EQ(errorsOf({"--seconds", "2", "--uncompressed", "-"}), "--uncompressed requires --files");
    EXPECT_EQ(errorsOf({"--seconds", "2", "--fault", "lost", "-"}), "--fault lost: there is no fault lost");
    EXPECT_EQ(errorsOf({"--seconds", "2", "--fault", "loss=1..x", "-"}), "--fault loss=1..x: x is no time");
    EXPECT_EQ(errorsOf({"--seconds", "2", "--bit-rate", "500000", "-"}),
              "--bit-rate: Value 500000 not in range 600000 to 1000000000");
}

TEST(Sample, ProgramSaysWhereItCannotWrite) {
    const Finished finished = runBuilt(MAKE_SAMPLE_PROGRAM, {"/no-such-folder/sample.ts"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, "make-sample: /no-such-folder/sample.ts: cannot be written\n");
}
