#include "transmission/TransmissionReader.h"

#include "support/RecordedFolder.h"
#include "tool/BroadcastStream.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

using namespace inspect;

// The same parameters under another mode, guard interval 1/32.
const char* const MODE_2 = "7F 88 3D 258B4B3FFF 258B4B3FFF FFFFFF BFF76806";

std::string namesOf(const LayerSet& layers) {
    std::string names;
    for (unsigned indicator = 0; indicator < layers.size(); ++indicator) {
        if (layers[indicator]) {
            names += (names.empty() ? "" : " ") + layerName(indicator);
        }
    }
    return names;
}

/// A reader that packets of 204 bytes went through.
class Reading {
public:
    explicit Reading(const std::vector<ByteVector>& packets) {
        for (const ByteVector& packet : packets) {
            m_reader.take(packet.data(), packet.data() + 188, {++m_number, 0, {}});
        }
        m_transmission = m_reader.finish();
    }

    explicit Reading(const BroadcastStream& stream) : Reading(stream.packets()) {}

    bool isBroadcast() const { return m_transmission && m_transmission->trailers; }
    const Transmission& transmission() const { return m_transmission.value(); }
    const Trailers& trailers() const { return transmission().trailers.value(); }
    std::string layersOf(Pid pid) const { return namesOf(m_reader.layersOfPids()->at(pid)); }

private:
    TransmissionReader m_reader;
    std::uint64_t m_number = 0;
    std::optional<Transmission> m_transmission;
};

/// The first packets of a stream.
std::vector<ByteVector> head(std::size_t count) {
    const BroadcastStream stream(1);
    return {stream.packets().begin(), stream.packets().begin() + static_cast<std::ptrdiff_t>(count)};
}

class RecordedTransmission : public RecordedTest {};

} // namespace

TEST(TransmissionReader, WholeFramesAreInOrder) {
    const Reading reading(BroadcastStream(3));
    EXPECT_EQ(reading.trailers().frames, 3U);
    EXPECT_EQ(reading.trailers().packets, 3168U);
    EXPECT_EQ(reading.trailers().packetsOfLayers, (std::array<std::uint64_t, 3>{48, 1944, 0}));
    EXPECT_EQ(reading.trailers().lost.packets, 0U);
    EXPECT_EQ(reading.trailers().wrongFrames.frames.count, 0U);
    EXPECT_EQ(reading.trailers().framesWithoutInformation.count, 0U);
    EXPECT_EQ(reading.trailers().wrongLayers[0].frames.count, 0U);
    EXPECT_EQ(reading.trailers().wrongLayers[1].frames.count, 0U);
    EXPECT_EQ(reading.transmission().informationPackets, 3U);
    EXPECT_EQ(reading.transmission().parameters->mode, 1U);
    EXPECT_EQ(reading.layersOf(0x0211), "A");
    EXPECT_EQ(reading.layersOf(0x0111), "B");
    EXPECT_EQ(reading.layersOf(0x1FFF), "none");
    EXPECT_EQ(reading.layersOf(0x1FF0), "IIP");
}

TEST(TransmissionReader, SixteenCountersInARowAreABroadcastStream) {
    EXPECT_FALSE(Reading(head(15)).isBroadcast());
    EXPECT_TRUE(Reading(head(16)).isBroadcast());
    EXPECT_EQ(Reading(head(16)).trailers().packets, 16U);
}

TEST(TransmissionReader, OtherIdentifiersAreNone) {
    for (const QUOR_U8 first : hex("00 20 80 E0 FF")) {
        std::vector<ByteVector> packets = head(100);
        for (ByteVector& packet : packets) {
            packet[188] = first;
        }
        EXPECT_FALSE(Reading(packets).isBroadcast());
    }
}

TEST(TransmissionReader, CountersThatDoNotRunAreNone) {
    std::vector<ByteVector> packets = head(1000);
    for (std::size_t at = 0; at < packets.size(); at += 15) {
        packets[at][191] ^= 0x55U;
    }
    EXPECT_FALSE(Reading(packets).isBroadcast());
}

/// What came before it was certain counts, too.
TEST(TransmissionReader, LossAmongTheFirstPackets) {
    const Reading reading(BroadcastStream(2).lose(5, 3));
    EXPECT_EQ(reading.trailers().lost.packets, 3U);
    EXPECT_EQ(reading.trailers().lost.gaps.first->packet, 6U);
    EXPECT_EQ(reading.trailers().packets, 2109U);
}

TEST(TransmissionReader, LossLeavesNoWholeFrame) {
    const Reading reading(BroadcastStream(3).lose(FRAME + 100, 10));
    EXPECT_EQ(reading.trailers().lost.packets, 10U);
    EXPECT_EQ(reading.trailers().frames, 2U);
    EXPECT_EQ(reading.trailers().wrongLayers[1].frames.count, 0U);
}

TEST(TransmissionReader, LossAroundTheHeadOfAFrame) {
    const Reading reading(BroadcastStream(3).lose(2 * FRAME - 4, 9));
    EXPECT_EQ(reading.trailers().lost.packets, 9U);
    EXPECT_EQ(reading.trailers().lost.gaps.count, 1U);
}

/// The IIP is the frame's last packet, and lost with it.
TEST(TransmissionReader, LostInformationIsNotMissing) {
    for (const std::size_t frame : {0U, 1U, 2U}) {
        const Reading reading(BroadcastStream(4).lose(informationOf(frame)));
        EXPECT_EQ(reading.trailers().lost.packets, 1U) << frame;
        EXPECT_EQ(reading.trailers().framesWithoutInformation.count, 0U) << frame;
    }
}

TEST(TransmissionReader, FrameWithoutInformation) {
    const ByteVector nullPacket = BroadcastStream(1).packets()[1000];
    BroadcastStream stream(4);
    stream.carry(informationOf(2), ByteVector(nullPacket.begin(), nullPacket.begin() + 188))
        .patch(informationOf(2), 189, 0x0F);
    const Reading reading(stream);
    EXPECT_EQ(reading.trailers().framesWithoutInformation.count, 1U);
    EXPECT_EQ(reading.trailers().framesWithoutInformation.first->packet, 2 * FRAME + 1);
    EXPECT_EQ(reading.trailers().frames, 4U);
}

TEST(TransmissionReader, StreamWithoutInformation) {
    BroadcastStream stream(3);
    for (const std::size_t frame : {0U, 1U, 2U}) {
        stream.patch(informationOf(frame), 1, 0x1F).patch(informationOf(frame), 2, 0xFF);
    }
    const Reading reading(stream);
    EXPECT_EQ(reading.trailers().frames, 2U); // nobody knows whether the last one is whole
    EXPECT_EQ(reading.trailers().framesWithoutInformation.count, 2U);
    EXPECT_FALSE(reading.transmission().parameters);
}

TEST(TransmissionReader, DamagedInformation) {
    const Reading reading(BroadcastStream(3).patch(informationOf(1), 10, 0xAA));
    EXPECT_EQ(reading.transmission().informationPackets, 2U);
    EXPECT_EQ(reading.transmission().damagedInformation.count, 1U);
    EXPECT_EQ(reading.transmission().damagedInformation.first->packet, 2 * FRAME);
    EXPECT_EQ(reading.trailers().framesWithoutInformation.count, 0U);
}

TEST(TransmissionReader, PacketInAnotherLayer) {
    const Reading reading(BroadcastStream(3).patch(FRAME + 20, 189, 0x1F));
    EXPECT_EQ(reading.trailers().wrongLayers[0].frames.count, 1U);
    EXPECT_EQ(reading.trailers().wrongLayers[0].found, 17U);
    EXPECT_EQ(reading.trailers().wrongLayers[0].expected, 16U);
    EXPECT_EQ(reading.trailers().wrongLayers[1].found, 647U);
    EXPECT_EQ(reading.trailers().wrongLayers[1].frames.first->packet, FRAME + 1);
    EXPECT_EQ(reading.layersOf(0x0111), "A B");
}

TEST(TransmissionReader, LayerThatIsNotInUse) {
    const Reading reading(BroadcastStream(3).patch(FRAME + 700, 189, 0x3F));
    EXPECT_EQ(reading.trailers().wrongLayers[2].found, 1U);
    EXPECT_EQ(reading.trailers().wrongLayers[2].expected, 0U);
}

TEST(TransmissionReader, FramesOfAnotherModeThanTheInformationSays) {
    const Reading reading(BroadcastStream(4).configure(MODE_2));
    EXPECT_EQ(reading.trailers().wrongFrames.frames.count, 3U);
    EXPECT_EQ(reading.trailers().wrongFrames.found, 1056U);
    EXPECT_EQ(reading.trailers().wrongFrames.expected, 2112U);
    EXPECT_EQ(reading.trailers().lost.packets, 0U);
    EXPECT_EQ(reading.trailers().frames, 0U);
}

/// The first frames end before two IIPs have told how long they should be.
TEST(TransmissionReader, FrameThatIsShortBeforeItsLengthIsKnown) {
    EXPECT_EQ(Reading(BroadcastStream(4).lose(1000, 56)).trailers().frames, 3U);
    EXPECT_EQ(Reading(BroadcastStream(2).lose(1000, 56)).trailers().frames, 1U);
}

/// As long as the IIPs do not agree, the frames are those of the parameters before or behind.
TEST(TransmissionReader, WholeFramesWhileParametersChange) {
    BroadcastStream stream(5);
    stream.carry(informationOf(2), informationPacket(MODE_2));
    EXPECT_EQ(Reading(stream).trailers().frames, 5U);
    stream.lose(3 * FRAME + 1000, 56);
    EXPECT_EQ(Reading(stream).trailers().frames, 4U);
    EXPECT_EQ(Reading(BroadcastStream(3).carry(informationOf(1), informationPacket(MODE_2))).trailers().frames, 3U);
}

/// An IIP may be about its own frame or the next one.
TEST(TransmissionReader, NoFrameIsWrongWhileParametersChange) {
    BroadcastStream stream(3);
    stream.carry(informationOf(1), informationPacket(MODE_2));
    const Reading reading(stream);
    EXPECT_EQ(reading.transmission().parameterChanges, 2U);
    EXPECT_EQ(reading.trailers().wrongFrames.frames.count, 0U);
    EXPECT_EQ(reading.trailers().lost.packets, 0U);
}

TEST(TransmissionReader, EmergencyFlags) {
    BroadcastStream stream(3);
    EXPECT_EQ(Reading(stream).trailers().emergencies, 3168U);
    EXPECT_EQ(Reading(stream).trailers().emergencyChanges, 0U);
    EXPECT_EQ(Reading(stream).transmission().emergencies, 0U);
    stream.patch(2000, 188, 0xA1).patch(2001, 188, 0xA1);
    stream.carry(informationOf(1), informationPacket("7F 44 3F 258B4B3FFF 258B4B3FFF FFFFFF 25CBAE3F"));
    EXPECT_EQ(Reading(stream).trailers().emergencies, 3166U);
    EXPECT_EQ(Reading(stream).trailers().emergencyChanges, 2U);
    EXPECT_EQ(Reading(stream).transmission().emergencies, 1U);
    EXPECT_EQ(Reading(stream).trailers().lost.packets, 0U);
}

TEST(TransmissionReader, TrailerThatCannotBeRead) {
    const Reading reading(BroadcastStream(3).patch(1500, 188, 0x00));
    EXPECT_EQ(reading.trailers().packets, 3167U);
    EXPECT_EQ(reading.trailers().damaged.count, 1U);
    EXPECT_EQ(reading.trailers().damaged.first->packet, 1501U);
    EXPECT_EQ(reading.trailers().emergencies, 3167U);
    EXPECT_EQ(reading.trailers().lost.packets, 0U);
    EXPECT_EQ(reading.trailers().frames, 2U);
}

TEST(TransmissionReader, CopyWithoutTrailers) {
    TransmissionReader reader;
    const ByteVector information = informationPacket();
    reader.take(information.data(), nullptr, {1, 0, {}});
    reader.take(information.data(), nullptr, {2, 0, {}});
    const std::optional<Transmission> transmission = reader.finish();
    ASSERT_TRUE(transmission);
    EXPECT_FALSE(transmission->trailers);
    EXPECT_EQ(transmission->informationPackets, 2U);
    EXPECT_EQ(transmission->parameters->layers[1].segments, 12U);
    EXPECT_EQ(reader.layersOfPids(), nullptr);
}

/// Its PID is only reserved in broadcast streams.
TEST(TransmissionReader, SomethingElseOnThePidOfTheInformation) {
    TransmissionReader reader;
    ByteVector other = informationPacket();
    other[20] ^= 0x01U;
    reader.take(other.data(), nullptr, {1, 0, {}});
    EXPECT_FALSE(reader.finish());
}

/// 200 packets without a frame's head: 1996 to 2195.
TEST_F(RecordedTransmission, LayersOfPids) {
    std::ifstream file(TEST_DATA "/bts/tsduck-171.1.bts", std::ios::binary);
    const ByteVector stream{std::istreambuf_iterator<char>(file), {}};
    std::vector<ByteVector> packets;
    for (auto at = stream.begin(); at != stream.end(); at += 204) {
        packets.emplace_back(at, at + 204);
    }
    const Reading reading(packets);
    EXPECT_EQ(reading.trailers().packets, 200U);
    EXPECT_EQ(reading.trailers().frames, 0U);
    EXPECT_EQ(reading.trailers().lost.packets, 0U);
    EXPECT_EQ(reading.trailers().lost.unmeasured.count, 0U);
    EXPECT_EQ(reading.trailers().emergencies, 200U);
    EXPECT_EQ(reading.trailers().emergencyChanges, 0U);
    EXPECT_EQ(reading.layersOf(0x0111), "B");
    EXPECT_EQ(reading.layersOf(0x0115), "B");
    EXPECT_EQ(reading.layersOf(0x0211), "A");
    EXPECT_EQ(reading.layersOf(0x1FFF), "none A B"); // layers are filled up with null packets
    EXPECT_FALSE(reading.transmission().parameters);
    packets.erase(packets.begin() + 100, packets.begin() + 107);
    EXPECT_EQ(Reading(packets).trailers().lost.packets, 7U);
}
