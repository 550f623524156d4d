#include "transmission/InformationPacket.h"

#include "tool/BroadcastStream.h"

#include <gtest/gtest.h>

using inspect::InformationPacket;
using inspect::LayerParameters;

namespace {

std::optional<InformationPacket> of(const ByteVector& packet) {
    return InformationPacket::of(HeapBytes(packet).data());
}

void expectLayer(const LayerParameters& layer, unsigned modulation, unsigned codeRate, unsigned interleaving,
                 unsigned segments) {
    EXPECT_EQ(layer.modulation, modulation);
    EXPECT_EQ(layer.codeRate, codeRate);
    EXPECT_EQ(layer.interleaving, interleaving);
    EXPECT_EQ(layer.segments, segments);
}

} // namespace

/// The parameters of a recording: mode 3, guard interval 1/16, layer A for handhelds.
TEST(InformationPacket, HasTheParametersOfEachLayer) {
    const std::optional<InformationPacket> information =
        of(informationPacket("7F DD 3D 258B4B3FFF 258B4B3FFF FFFFFF 733ADA83"));
    ASSERT_TRUE(information);
    EXPECT_FALSE(information->emergency);
    EXPECT_EQ(information->current.mode, 3U);
    EXPECT_EQ(information->current.guardInterval, 1U);
    EXPECT_TRUE(information->current.isTelevision);
    EXPECT_TRUE(information->current.partialReception);
    expectLayer(information->current.layers[0], 1, 1, 3, 1);
    expectLayer(information->current.layers[1], 3, 2, 2, 12);
    expectLayer(information->current.layers[2], 7, 7, 7, 15);
}

TEST(InformationPacket, SaysThatThereIsAnAlert) {
    EXPECT_TRUE(of(informationPacket("7F 44 3F 258B4B3FFF 258B4B3FFF FFFFFF 25CBAE3F"))->emergency);
    EXPECT_FALSE(of(informationPacket())->emergency);
}

TEST(InformationPacket, SaysThatTheSignalIsSound) {
    EXPECT_FALSE(of(informationPacket("7F 44 7D 258B4AFFFF 258B4AFFFF FFFFFF 36002699"))->current.isTelevision);
}

TEST(InformationPacket, ReservedValuesAreTakenAsTheyAre) {
    const std::optional<InformationPacket> information =
        of(informationPacket("7F 00 3C 9677FFFFFE 9677FFFFFF FFFFFF 6FD55F85"));
    ASSERT_TRUE(information);
    EXPECT_EQ(information->current.mode, 0U);
    EXPECT_FALSE(information->current.partialReception);
    expectLayer(information->current.layers[0], 4, 5, 4, 14);
}

TEST(InformationPacket, AnyBitThatFlipsIsSeen) {
    for (std::size_t byte = 6; byte < 26; ++byte) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            ByteVector packet = informationPacket();
            packet[byte] ^= static_cast<QUOR_U8>(1U << bit);
            EXPECT_FALSE(of(packet)) << "byte " << byte << ", bit " << bit;
        }
    }
}

TEST(InformationPacket, IsNoneWhenThePacketIsDamagedOrHasAnotherForm) {
    ByteVector damaged = informationPacket();
    damaged[1] |= 0x80U;
    EXPECT_FALSE(of(damaged));
    for (const QUOR_U8 control : hex("90 20 30 00")) {
        ByteVector packet = informationPacket();
        packet[3] = control;
        EXPECT_FALSE(of(packet));
    }
}
