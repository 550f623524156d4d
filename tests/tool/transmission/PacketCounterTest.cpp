#include "transmission/PacketCounter.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;
using Step = PacketCounter::Step;

constexpr unsigned LENGTH = 1056;
constexpr FrameLength KNOWN{LENGTH, LENGTH};
constexpr FrameLength UNKNOWN{};

/// A counter that is fed with packets, which are numbered as they come.
class Counting {
public:
    explicit Counting(FrameLength length = KNOWN) : m_length(length) {}

    Step take(unsigned counter, bool frameIndicator = false) {
        return m_counter.take({false, counter == 0, frameIndicator, 0, counter}, {++m_number, 0, {}}, m_length);
    }

    /// Packets one behind the other.
    Counting& run(unsigned begin, unsigned end, bool frameIndicator = false) {
        for (unsigned counter = begin; counter < end; ++counter) {
            take(counter, frameIndicator);
        }
        return *this;
    }

    Counting& skip() {
        ++m_number;
        m_counter.skip(m_length);
        return *this;
    }

    Counting& know(FrameLength length) {
        m_length = length;
        return *this;
    }

    const PacketCounter& finish() {
        m_counter.finish(m_length);
        return m_counter;
    }

    /// "12 in 2 places"; and "3 unmeasured" when there are any
    std::string lost() {
        const LostPackets& lost = finish().lost();
        std::string text = std::to_string(lost.packets) + " in " + std::to_string(lost.gaps.count);
        return lost.unmeasured.count == 0 ? text : text + ", " + std::to_string(lost.unmeasured.count) + " unmeasured";
    }

private:
    PacketCounter m_counter;
    FrameLength m_length;
    std::uint64_t m_number = 0;
};

} // namespace

TEST(PacketCounter, LosesNothingInOrder) {
    Counting counting;
    EXPECT_EQ(counting.take(1053), Step::Jump); // nobody knows what was before
    EXPECT_EQ(counting.take(1054), Step::Next);
    EXPECT_EQ(counting.take(1055), Step::Next);
    EXPECT_EQ(counting.take(0, true), Step::NewFrame);
    EXPECT_EQ(counting.take(1, true), Step::Next);
    EXPECT_EQ(counting.lost(), "0 in 0");
    EXPECT_EQ(counting.finish().wrongFrames().frames.count, 0U);
}

TEST(PacketCounter, MeasuresAGapInAFrame) {
    for (const unsigned gap : {1U, 7U, 900U}) {
        Counting counting;
        counting.run(10, 20);
        EXPECT_EQ(counting.take(20 + gap), Step::Jump);
        counting.run(21 + gap, 30 + gap);
        EXPECT_EQ(counting.lost(), std::to_string(gap) + " in 1");
        EXPECT_EQ(counting.finish().lost().gaps.first->packet, 11U);
    }
}

/// 1050 to 1055 of a frame and 0 to 3 of the next.
TEST(PacketCounter, MeasuresAGapAcrossFrames) {
    EXPECT_EQ(Counting().run(1040, 1050).run(4, 20, true).lost(), "10 in 1");
    EXPECT_EQ(Counting().run(100, 110).run(110, 120, true).lost(), "1056 in 1");
}

TEST(PacketCounter, LossesOfOnePacketOneBehindTheOther) {
    Counting counting;
    counting.run(0, 10);
    for (const unsigned counter : {12U, 15U, 19U, 20U}) {
        counting.take(counter);
    }
    EXPECT_EQ(counting.lost(), "7 in 3"); // 10 and 11, 13 and 14, 16 to 18
}

TEST(PacketCounter, GapBeforeTheLastPacketCounts) {
    Counting counting;
    counting.run(0, 10).take(15);
    EXPECT_EQ(counting.lost(), "5 in 1");
}

/// A bit that flips in a trailer is no loss of thousands.
TEST(PacketCounter, DamagedTrailerIsNoLoss) {
    Counting counting;
    counting.run(0, 10).take(4106);
    EXPECT_EQ(counting.take(11), Step::Jump);
    EXPECT_EQ(counting.run(12, 20).lost(), "0 in 0");
    EXPECT_EQ(Counting().run(1040, 1055).run(9, 10).run(0, 10, true).lost(), "0 in 0");
    EXPECT_EQ(Counting().run(1040, 1056).run(4096, 4097, true).run(1, 10, true).lost(), "0 in 0");
}

/// As if the hole were filled with the packet before it.
TEST(PacketCounter, PacketInPlaceOfTheNextIsALoss) {
    Counting counting;
    counting.run(0, 10).run(9, 10).run(11, 20);
    EXPECT_EQ(counting.lost(), "1 in 1");
    EXPECT_EQ(counting.finish().lost().gaps.first->packet, 11U);
    EXPECT_EQ(Counting().run(0, 1).run(0, 1).run(2, 20).lost(), "1 in 1");
    EXPECT_EQ(Counting().run(1040, 1055).run(1054, 1055).run(0, 10, true).lost(), "1 in 1");
    EXPECT_EQ(Counting().run(1040, 1056).run(1055, 1056).run(1, 10, true).lost(), "1 in 1");
}

TEST(PacketCounter, UnreadableTrailerIsNoLoss) {
    EXPECT_EQ(Counting().run(0, 10).skip().run(11, 20).lost(), "0 in 0");
    EXPECT_EQ(Counting().run(1040, 1055).skip().run(0, 10, true).lost(), "0 in 0");
    EXPECT_EQ(Counting().run(1040, 1056).skip().run(1, 10, true).lost(), "0 in 0");
    EXPECT_EQ(Counting().skip().run(1, 10, true).lost(), "0 in 0");
}

/// Where a recording begins anew, nobody knows what is missing.
TEST(PacketCounter, CounterThatGoesBackIsNotMeasured) {
    EXPECT_EQ(Counting().run(500, 510).run(20, 30).lost(), "0 in 0, 1 unmeasured");
}

TEST(PacketCounter, EndOfAFrameIsLost) {
    Counting counting;
    counting.run(0, 1050).run(0, LENGTH, true).run(0, 10);
    EXPECT_EQ(counting.lost(), "6 in 1");
    EXPECT_EQ(counting.finish().wrongFrames().frames.count, 0U);
}

TEST(PacketCounter, FramesThatAreShortAgainAndAgainAreWrong) {
    Counting counting;
    counting.run(0, 1050).run(0, 1050, true).run(0, 1050).run(0, 10, true);
    EXPECT_EQ(counting.lost(), "0 in 0");
    const WrongCounts& wrong = counting.finish().wrongFrames();
    EXPECT_EQ(wrong.frames.count, 3U);
    EXPECT_EQ(wrong.found, 1050U);
    EXPECT_EQ(wrong.expected, LENGTH);
}

TEST(PacketCounter, FrameThatIsTooLongIsWrong) {
    Counting counting;
    counting.run(0, 1057).run(0, 10, true);
    EXPECT_EQ(counting.lost(), "0 in 0");
    EXPECT_EQ(counting.finish().wrongFrames().frames.count, 1U);
    EXPECT_EQ(counting.finish().wrongFrames().found, 1057U);
}

/// The IIP that tells the length may be among what is lost.
TEST(PacketCounter, MeasuresEarlierGapsWhenTheLengthIsKnown) {
    EXPECT_EQ(Counting(UNKNOWN).run(1040, 1050).run(4, 20, true).know(KNOWN).run(20, 30, true).lost(), "10 in 1");
    EXPECT_EQ(Counting(UNKNOWN).run(0, 1050).run(0, 20, true).know(KNOWN).run(20, 30, true).lost(), "6 in 1");
    EXPECT_EQ(Counting(UNKNOWN).run(1040, 1050).run(4, 20, true).know({LENGTH, std::nullopt}).lost(), "10 in 1");
}

TEST(PacketCounter, GapAcrossFramesOfUnknownLengthIsNotMeasured) {
    EXPECT_EQ(Counting(UNKNOWN).run(1040, 1050).run(4, 20, true).lost(), "0 in 0, 1 unmeasured");
    EXPECT_EQ(Counting(UNKNOWN).run(0, 1050).run(0, 20, true).lost(), "0 in 0");
}

/// While the mode changes, no frame is wrong.
TEST(PacketCounter, FramesOfUncertainLengthAreNotJudged) {
    Counting counting;
    counting.run(0, 10).know({2112, std::nullopt}).run(10, LENGTH).run(0, 10, true);
    EXPECT_EQ(counting.lost(), "0 in 0");
    EXPECT_EQ(counting.finish().wrongFrames().frames.count, 0U);
}

/// No stream without IIPs fills the memory; what is too much is not measured.
TEST(PacketCounter, RemembersNoMoreQuestionsThanItHasRoomFor) {
    Counting counting(UNKNOWN);
    for (unsigned frame = 0; frame < 100; ++frame) {
        counting.run(0, 10, frame % 2 != 0);
        counting.run(20, 22, frame % 2 != 0);
        counting.run(30, 32, frame % 2 == 0);
        counting.run(40, 42, frame % 2 == 0);
        counting.run(50, 52, frame % 2 != 0);
    }
    EXPECT_EQ(counting.finish().lost().packets, 100U * (10U + 8U));
    EXPECT_EQ(counting.finish().lost().unmeasured.count, 100U * 2U);
}
