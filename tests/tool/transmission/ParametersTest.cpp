#include "transmission/Parameters.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;

constexpr std::uint8_t QPSK = 1;
constexpr std::uint8_t QAM16 = 2;
constexpr std::uint8_t QAM64 = 3;

TransmissionParameters sent(std::uint8_t mode, std::uint8_t guardInterval) {
    return {mode, guardInterval, true, true, {{{QPSK, 1, 3, 1}, {QAM64, 2, 2, 12}, {7, 7, 7, 15}}}};
}

std::optional<unsigned> packetsOfSegment(std::uint8_t modulation, std::uint8_t codeRate) {
    return packetsPerFrame(sent(1, 0), {modulation, codeRate, 0, 1});
}

} // namespace

TEST(TransmissionParameters, PacketsOfFrames) {
    const unsigned expected[3][4] = {
        {1056, 1088, 1152, 1280}, {2112, 2176, 2304, 2560}, {4224, 4352, 4608, 5120}}; // 1/32, 1/16, 1/8, 1/4
    for (std::uint8_t mode = 1; mode <= 3; ++mode) {
        for (std::uint8_t guardInterval = 0; guardInterval < 4; ++guardInterval) {
            EXPECT_EQ(packetsPerFrame(sent(mode, guardInterval)), expected[mode - 1][guardInterval])
                << "mode " << int{mode} << ", guard interval " << int{guardInterval};
        }
    }
    EXPECT_EQ(packetsPerFrame(sent(0, 0)), std::nullopt);
}

TEST(TransmissionParameters, PacketsOfSegments) {
    const unsigned expected[5] = {12, 16, 18, 20, 21}; // 1/2, 2/3, 3/4, 5/6, 7/8
    for (std::uint8_t codeRate = 0; codeRate < 5; ++codeRate) {
        EXPECT_EQ(packetsOfSegment(0, codeRate), expected[codeRate]);
        EXPECT_EQ(packetsOfSegment(QPSK, codeRate), expected[codeRate]);
    }
    EXPECT_EQ(packetsOfSegment(QAM16, 0), 24U);
    EXPECT_EQ(packetsOfSegment(QAM16, 4), 42U);
    EXPECT_EQ(packetsOfSegment(QAM64, 0), 36U);
    EXPECT_EQ(packetsOfSegment(QAM64, 4), 63U);
}

/// As counted in a recording of mode 3 with guard interval 1/16.
TEST(TransmissionParameters, LayersOfARecording) {
    const TransmissionParameters parameters = sent(3, 1);
    EXPECT_EQ(packetsPerFrame(parameters, parameters.layers[0]), 64U);
    EXPECT_EQ(packetsPerFrame(parameters, parameters.layers[1]), 2592U);
    EXPECT_NEAR(bitRate(parameters, parameters.layers[0]).value(), 440563, 0.5);
    EXPECT_NEAR(bitRate(parameters, parameters.layers[1]).value(), 17842808, 0.5);
    EXPECT_EQ(interleavingLength(parameters, parameters.layers[0]), 4U);
    EXPECT_EQ(interleavingLength(parameters, parameters.layers[1]), 2U);
    EXPECT_TRUE(parameters.layers[1].isUsed());
    EXPECT_FALSE(parameters.layers[2].isUsed());
}

TEST(TransmissionParameters, InterleavingDependsOnTheMode) {
    const unsigned expected[3][4] = {{0, 4, 8, 16}, {0, 2, 4, 8}, {0, 1, 2, 4}};
    for (std::uint8_t mode = 1; mode <= 3; ++mode) {
        for (std::uint8_t code = 0; code < 4; ++code) {
            EXPECT_EQ(interleavingLength(sent(mode, 0), {QPSK, 0, code, 1}), expected[mode - 1][code]);
        }
        EXPECT_EQ(interleavingLength(sent(mode, 0), {QPSK, 0, 4, 1}), std::nullopt);
    }
}

TEST(TransmissionParameters, ReservedValuesGiveNothing) {
    for (const LayerParameters& layer : {LayerParameters{4, 0, 0, 1}, LayerParameters{QPSK, 5, 0, 1},
                                         LayerParameters{QPSK, 0, 0, 0}, LayerParameters{QPSK, 0, 0, 14}}) {
        EXPECT_EQ(packetsPerFrame(sent(1, 0), layer), std::nullopt);
        EXPECT_EQ(bitRate(sent(1, 0), layer), std::nullopt);
    }
    EXPECT_EQ(bitRate(sent(0, 0), {QPSK, 0, 0, 1}), std::nullopt);
    EXPECT_EQ(interleavingLength(sent(0, 0), {QPSK, 0, 0, 1}), std::nullopt);
    EXPECT_EQ(modulationName(4), "");
    EXPECT_EQ(codeRateName(5), "");
}

TEST(TransmissionParameters, DifferInAnyValue) {
    const TransmissionParameters one = sent(3, 1);
    EXPECT_TRUE(one == sent(3, 1));
    EXPECT_FALSE(one == sent(2, 1));
    EXPECT_FALSE(one == sent(3, 2));
    TransmissionParameters sound = sent(3, 1);
    sound.isTelevision = false;
    EXPECT_FALSE(one == sound);
    TransmissionParameters other = sent(3, 1);
    other.layers[2].segments = 1;
    EXPECT_FALSE(one == other);
}
