#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr const char* NO_PACKETS =
    "isdbt-inspect: FILE: not a transport stream: no packets of 188, 192 or 204 bytes found\n";

std::string golden() {
    return readText(GOLDEN_FOLDER "/sample.txt");
}

/// The output for the sample where the packets are spaced otherwise.
std::string goldenWithSpacing(const std::string& spacing) {
    std::string text = golden();
    const std::string usual = " of 188 bytes";
    return text.replace(text.find(usual), usual.size(), " of " + spacing + " bytes");
}

/// Bytes that look like no packet anywhere.
ByteVector garbage(std::size_t size) {
    ByteVector bytes;
    for (std::size_t at = 0; at < size; ++at) {
        bytes.push_back(static_cast<QUOR_U8>(0x80U | (at * 7U & 0x7FU)));
    }
    return bytes;
}

} // namespace

TEST(InspectInput, SampleAsAPersonReadsIt) {
    const Finished finished = inspectTables({SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, golden());
}

TEST(InspectInput, StandardInput) {
    Start start;
    start.input = sampleStream();
    const Finished finished = inspectTables({"-"}, start);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, golden());
}

TEST(InspectInput, StandardInputInOddChunks) {
    for (const std::size_t chunk : {1U, 187U, 189U, 1000U}) {
        Start start;
        start.input = sampleStream();
        start.chunk = chunk;
        const Finished finished = inspectTables({"-"}, start);
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.output, golden()) << "chunks of " << chunk;
    }
}

TEST(InspectInput, PacketsWithTimeStamps) {
    const Finished finished = inspectBytes(withTimeStamps(sampleStream(), hex("12 34 56 78")));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, goldenWithSpacing("192"));
}

/// The first byte of a time stamp is that of a packet for half a second in forty.
TEST(InspectInput, TimeStampsThatLookLikePackets) {
    const Finished finished = inspectBytes(withTimeStamps(sampleStream(), hex("47 34 56 78")));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, goldenWithSpacing("192"));
}

TEST(InspectInput, PacketsWithParity) {
    const Finished finished = inspectBytes(withParity(sampleStream()));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_EQ(finished.output, goldenWithSpacing("204"));
}

TEST(InspectInput, SinglePacket) {
    const Finished finished = inspectOnly("pat", packetOfSample(1));
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("PAT  PID 0x0000  version 0  section 0/0  current  packet 1\n"));
    EXPECT_THAT(finished.output, HasSubstr("1 packet of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected"));
}

TEST(InspectInput, SinglePacketWithParity) {
    const Finished finished = inspectOnly("pat", withParity(packetOfSample(1)));
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("1 packet of 204 bytes, 1 section on 1 PID"));
}

TEST(InspectInput, GarbageInFront) {
    const Finished finished = inspectBytes(join({garbage(1000), sampleStream()}));
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, EndsWith("480 packets of 188 bytes, 73 sections on 9 PIDs: 11 shown, 0 rejected, "
                                          "0 CRC errors, 0 discontinuities, 1000 bytes between packets skipped\n"));
}

TEST(InspectInput, GarbageInBetween) {
    const ByteVector stream = sampleStream();
    for (const std::size_t size : {1U, 4U, 187U, 188U, 5000U}) {
        const std::size_t middle = 100 * PACKET_SIZE;
        const Finished finished =
            inspectBytes(join({slice(stream, 0, middle), garbage(size), slice(stream, middle, stream.size())}));
        EXPECT_EQ(finished.status, 3);
        EXPECT_EQ(finished.errors, "");
        EXPECT_THAT(finished.output,
                    EndsWith("480 packets of 188 bytes, 73 sections on 9 PIDs: 11 shown, 0 rejected, 0 CRC errors, "
                             "0 discontinuities, " +
                             std::to_string(size) + (size == 1 ? " byte" : " bytes") + " between packets skipped\n"));
    }
}

TEST(InspectInput, GarbageBetweenPacketsWithTimeStamps) {
    const ByteVector stream = withTimeStamps(sampleStream(), hex("12 34 56 78"));
    const std::size_t middle = 100 * 192;
    const Finished finished =
        inspectBytes(join({slice(stream, 0, middle), garbage(50), slice(stream, middle, stream.size())}));
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, EndsWith("480 packets of 192 bytes, 73 sections on 9 PIDs: 11 shown, 0 rejected, "
                                          "0 CRC errors, 0 discontinuities, 50 bytes between packets skipped\n"));
}

TEST(InspectInput, GarbageAtTheEnd) {
    const Finished finished = inspectBytes(join({sampleStream(), garbage(100)}));
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, EndsWith("480 packets of 188 bytes, 73 sections on 9 PIDs: 11 shown, 0 rejected, "
                                          "0 CRC errors, 0 discontinuities, 100 bytes between packets skipped\n"));
}

TEST(InspectInput, DamagedSyncByteCostsOnePacket) {
    ByteVector stream = sampleStream();
    stream[PACKET_SIZE * 9] = 0x46; // a video packet
    const Finished finished = inspectBytes(stream);
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output,
                EndsWith("479 packets of 188 bytes, 73 sections on 9 PIDs: 11 shown, 0 rejected, 0 CRC "
                         "errors, 1 discontinuity (PID 0x0111), 188 bytes between packets skipped\n"));
}

TEST(InspectInput, SpacingMayChange) {
    const Finished finished = inspectBytes(join({sampleStream(), withParity(sampleStream())}));
    EXPECT_EQ(finished.status, 3); // the second half begins its continuity_counters anew
    // The one packet of the SDTT comes twice in a row, as if for safety.
    EXPECT_THAT(finished.output, HasSubstr("960 packets of 204 bytes, 145 sections on 9 PIDs: 13 shown"));
}

TEST(InspectInput, NoSuchFile) {
    const Finished finished = inspectTables({"/no-such-folder/stream.ts"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: /no-such-folder/stream.ts: No such file or directory\n");
}

TEST(InspectInput, Folder) {
    const Finished finished = inspectTables({"/tmp"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: /tmp: Is a directory\n");
}

TEST(InspectInput, EmptyFile) {
    const Finished finished = inspectBytes({});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: FILE: is empty\n");
}

TEST(InspectInput, EmptyStandardInput) {
    const Finished finished = inspectTables({"-"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: standard input: is empty\n");
}

TEST(InspectInput, NotATransportStream) {
    for (const std::size_t size : {1U, 188U, 204U, 1019U, 1020U, 1021U, 300000U, 3000000U}) {
        const Finished finished = inspectBytes(garbage(size));
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.output, "");
        EXPECT_EQ(finished.errors, NO_PACKETS) << size << " bytes";
    }
}

TEST(InspectInput, TextIsNoTransportStream) {
    const Finished finished = inspectBytes(
        text("Good morning. Good packets begin with the letter G, which is no accident. " + std::string(500, '.')));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, NO_PACKETS);
}

TEST(InspectInput, CutOffInItsFirstPacket) {
    for (const std::size_t size : {1U, 100U, 187U}) {
        const Finished finished = inspectBytes(slice(sampleStream(), 0, size));
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.output, "");
        EXPECT_EQ(finished.errors, "isdbt-inspect: FILE: cut off in its first packet\n");
    }
}

TEST(InspectInput, CutOffInItsLastPacketIsSaidAfterWhatWasReadable) {
    const std::vector<std::pair<std::size_t, std::string>> cuts{{1, "187"}, {88, "100"}, {187, "1"}};
    for (const auto& [missing, left] : cuts) {
        const ByteVector stream = sampleStream();
        const Finished finished = inspectBytes(slice(stream, 0, stream.size() - missing));
        EXPECT_EQ(finished.status, 1);
        EXPECT_THAT(finished.output, HasSubstr("TOT  PID 0x0014  packet 243  1.008 s\n"));
        EXPECT_THAT(finished.output, EndsWith("479 packets of 188 bytes, 73 sections on 9 PIDs: 11 shown, 0 rejected, "
                                              "0 CRC errors, 0 discontinuities\n"));
        EXPECT_EQ(finished.errors, "isdbt-inspect: FILE: cut off in its last packet (" + left + " of 188 bytes)\n");
    }
}

TEST(InspectInput, CutOffInATimeStamp) {
    const ByteVector stream = withTimeStamps(sampleStream(), hex("12 34 56 78"));
    const Finished finished = inspectBytes(slice(stream, 0, stream.size() - 189));
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.output, HasSubstr("479 packets of 192 bytes"));
    EXPECT_EQ(finished.errors, "isdbt-inspect: FILE: cut off in its last packet (3 of 192 bytes)\n");
}

TEST(InspectInput, CutOffInTheParity) {
    const ByteVector stream = withParity(sampleStream());
    const Finished finished = inspectBytes(slice(stream, 0, stream.size() - 1));
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.output, HasSubstr("480 packets of 204 bytes"));
    EXPECT_EQ(finished.errors, "isdbt-inspect: FILE: cut off in its last packet (15 of 204 bytes)\n");
}
