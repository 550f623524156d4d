#include "inputs/RtpDatagram.h"
#include "inputs/RtpSequence.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

namespace {

using inspect::RtpDatagram;

/// What is recognised of a datagram that is no byte longer than it says.
std::optional<RtpDatagram> read(const std::string& digits) {
    const HeapBytes bytes(hex(digits));
    return inspect::readRtp(bytes.data(), bytes.size());
}

std::optional<std::uint32_t> take(inspect::RtpSequence& sequence, unsigned number, unsigned source = 1) {
    return sequence.take({static_cast<std::uint16_t>(number), source, nullptr, 0});
}

} // namespace

TEST(RtpDatagram, HasAHeaderOfTwelveBytes) {
    const HeapBytes bytes(hex("80 21 0102 11111111 0A0B0C0D 47 1FFF"));
    const std::optional<RtpDatagram> rtp = inspect::readRtp(bytes.data(), bytes.size());
    ASSERT_TRUE(rtp);
    EXPECT_EQ(rtp->sequenceNumber, 0x0102);
    EXPECT_EQ(rtp->source, 0x0A0B0C0DU);
    EXPECT_EQ(rtp->payload, bytes.data() + 12);
    EXPECT_EQ(rtp->size, 3U);
}

TEST(RtpDatagram, MayHaveContributingSourcesAnExtensionAndPadding) {
    const HeapBytes bytes(hex("B2 A1 FFFE 11111111 0A0B0C0D  00000001 00000002  BEDE 0002 AAAAAAAA BBBBBBBB  "
                              "47 1FFF 10  00 00 03"));
    const std::optional<RtpDatagram> rtp = inspect::readRtp(bytes.data(), bytes.size());
    ASSERT_TRUE(rtp);
    EXPECT_EQ(rtp->sequenceNumber, 0xFFFE);
    EXPECT_EQ(rtp->payload, bytes.data() + 32);
    EXPECT_EQ(rtp->size, 4U);
}

TEST(RtpDatagram, IsNothingElse) {
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("80"));
    EXPECT_FALSE(read("47 1FFF 10 11111111 0A0B0C0D 47 1FFF"));             // packets
    EXPECT_FALSE(read("40 21 0102 11111111 0A0B0C0D 47 1FFF"));             // another version
    EXPECT_FALSE(read("80 21 0102 11111111 0A0B0C0D 00 1FFF"));             // no packets in it
    EXPECT_FALSE(read("80 21 0102 11111111 0A0B0C0D"));                     // nothing in it
    EXPECT_FALSE(read("8F 21 0102 11111111 0A0B0C0D 47 1FFF"));             // sources beyond its end
    EXPECT_FALSE(read("90 21 0102 11111111 0A0B0C0D BEDE FFFF 47"));        // an extension beyond its end
    EXPECT_FALSE(read("90 21 0102 11111111 0A0B0C0D BEDE"));                // one that is cut off
    EXPECT_FALSE(read("A0 21 0102 11111111 0A0B0C0D 47 1FFF 10 00 00 FF")); // padding beyond its beginning
    EXPECT_FALSE(read("A0 21 0102 11111111 0A0B0C0D 47 1FFF 10 00 00 07")); // nothing but padding
}

TEST(RtpSequence, TellsWhatIsMissing) {
    inspect::RtpSequence sequence;
    EXPECT_EQ(take(sequence, 500), 0U);
    EXPECT_EQ(take(sequence, 501), 0U);
    EXPECT_EQ(take(sequence, 505), 3U);
    EXPECT_EQ(take(sequence, 506), 0U);
    EXPECT_EQ(take(sequence, 20506), 19999U);
}

TEST(RtpSequence, BeginsANewRound) {
    inspect::RtpSequence sequence;
    take(sequence, 65534);
    EXPECT_EQ(take(sequence, 65535), 0U);
    EXPECT_EQ(take(sequence, 0), 0U);
    take(sequence, 65535 - 1);
    inspect::RtpSequence other;
    take(other, 65535);
    EXPECT_EQ(take(other, 2), 2U);
}

TEST(RtpSequence, TakesNothingLateOrTwice) {
    inspect::RtpSequence sequence;
    take(sequence, 500);
    EXPECT_EQ(take(sequence, 500), std::nullopt);
    EXPECT_EQ(take(sequence, 502), 1U);
    EXPECT_EQ(take(sequence, 501), std::nullopt);
    EXPECT_EQ(take(sequence, 403), std::nullopt);
    EXPECT_EQ(take(sequence, 503), 0U);
}

TEST(RtpSequence, SenderMayBeginAnew) {
    inspect::RtpSequence sequence;
    take(sequence, 500);
    EXPECT_EQ(take(sequence, 100), 0U);
    EXPECT_EQ(take(sequence, 101), 0U);
    EXPECT_EQ(take(sequence, 7000, 2), 0U);
    EXPECT_EQ(take(sequence, 7002, 2), 1U);
}
