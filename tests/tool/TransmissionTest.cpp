#include "BroadcastStream.h"
#include "Process.h"
#include "Streams.h"
#include "support/RecordedFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

// As MODE_1_GUARD_1_32, but mode 2, or guard interval 1/16, or no partial reception.
const char* const MODE_2 = "7F 88 3D 258B4B3FFF 258B4B3FFF FFFFFF BFF76806";
const char* const GUARD_1_16 = "7F 55 3D 258B4B3FFF 258B4B3FFF FFFFFF 9618433C";
const char* const NOT_PARTIAL = "7F 44 3C 258B4B3FFE 258B4B3FFF FFFFFF 1FD3571A";

// The same with other segments, for television or sound, and with no layer in use.
const char* const SEGMENTS_1_11 = "7F 44 3D 258B4AFFFF 258B4AFFFF FFFFFF 8323501E";
const char* const SOUND_SEGMENTS_1_11 = "7F 44 7D 258B4AFFFF 258B4AFFFF FFFFFF 36002699";
const char* const SEGMENTS_14_0 = "7F 44 3D 25F3483FFF 25F3483FFF FFFFFF 07F3A2FB";
const char* const NO_LAYERS = "7F 44 3D FFFFFFFFFF FFFFFFFFFF FFFFFF DB3837F6";

const char* const VIEWS[] = {"tree", "tables", "stats", "diff"};

ByteVector tablePacket(unsigned pid, const ByteVector& section) {
    return StreamBuilder().section(pid, section).bytes();
}

LongHeader named(QUOR_U16 extension) {
    LongHeader header;
    header.extension = extension;
    return header;
}

/// A terrestrial_delivery_system_descriptor: area code 0x5A5, guard interval, mode, a frequency.
const char* const MODE_1_IN_NIT = "FA 04 5A50 0D9C";
const char* const PARTIAL = "FB 02 E6A0";

ByteVector nit(const std::string& descriptors) {
    return longSection(0x40, named(0x0735),
                       join({hex("F000"), loopOf(join({hex("0735 0735"), loopOf(hex(descriptors))}))}));
}

/// Three frames with a PAT and an SDT without services, and a NIT.
BroadcastStream withTables(const std::string& descriptors = std::string(MODE_1_IN_NIT) + PARTIAL) {
    BroadcastStream stream(3);
    stream.carry(100, tablePacket(0x0000, longSection(0x00, named(0x0735), hex("0000 E010 E6A0 E101"))))
        .carry(101, tablePacket(0x0010, nit(descriptors)))
        .carry(102, tablePacket(0x0011, longSection(0x42, named(0x0735), hex("0735 FF E6A0 FD 8000"))))
        .carry(103, tablePacket(0x0101, longSection(0x02, named(0xE6A0), hex("E111 F000 1B E111 F000"))));
    return stream;
}

Finished inspectStream(const ByteVector& stream, std::vector<std::string> arguments) {
    Start start;
    start.input = stream;
    arguments.emplace_back("-");
    return inspect(arguments, start);
}

/// The lines of faults, without what stands before and behind them.
std::string faultsIn(const BroadcastStream& stream) {
    const std::string output = inspectStream(stream.bytes(), {"--view", "tables"}).output;
    std::string faults;
    for (std::size_t at = output.find("\n! "); at != std::string::npos; at = output.find("\n! ", at + 1)) {
        faults += output.substr(at + 1, output.find('\n', at + 1) - at);
    }
    return faults;
}

class InspectRecordedTransmission : public RecordedTest {};

} // namespace

TEST(InspectTransmission, StandsBelowTheStatistics) {
    const Finished finished = inspectStream(withTables().bytes(), {"--view", "stats"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr("PID      packets     share   kbit/s   lowest   highest   layer   content\n"
                                           "0x0000         1    0.03 %     9.46        -         -   B       PAT\n"));
    EXPECT_THAT(finished.output,
                HasSubstr("0x0211        48    1.52 %   453.91        -         -   A       not announced\n"));
    EXPECT_THAT(finished.output,
                HasSubstr("0x1FF0         3    0.09 %    28.37        -         -   IIP     ISDB-T information (IIP)\n"
                          "0x1FFF      1173   37.03 %    11093        -         -   none    "
                          "null packets\n"));
    EXPECT_THAT(finished.output,
                HasSubstr("\n\nTransmission: mode 1, guard interval 1/32, partial reception\n"
                          "3 whole frames of 1056 packets, 3 IIPs, 0 packets lost by TSP_counter\n"
                          "emergency flag 0 in all IIPs, 1 in all packets (no sign of an alert unless it changes)\n"
                          "layer   modulation   code rate   time interleaving   segments      kbit/s   packets\n"
                          "A       QPSK         2/3                    I = 16          1     453.914        48\n"
                          "B       64QAM        3/4                     I = 8         12   18383.499      1944\n"
                          "\n3168 packets of 204 bytes"));
}

TEST(InspectTransmission, FitsIntoNarrowLines) {
    const std::string output = inspectStream(withTables().bytes(), {"--view", "stats", "--width", "60"}).output;
    EXPECT_THAT(output, HasSubstr("                   code          time\n"
                                  "layer  modulation  rate  interleaving  segments     kbit/s\n"));
    EXPECT_THAT(inspectStream(withTables().bytes(), {"--width", "40"}).output,
                HasSubstr("                 code\n"
                          "layer modulation rate segments    kbit/s\n"
                          "A     QPSK       2/3         1   453.914\n"
                          "B     64QAM      3/4        12 18383.499\n"));
}

TEST(InspectTransmission, CopyWithoutTrailersHasTheParameters) {
    const Finished finished = inspectStream(withTables().withoutTrailers(), {"--view", "stats"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, HasSubstr("PID      packets     share   kbit/s   lowest   highest   content\n"));
    EXPECT_THAT(finished.output,
                HasSubstr("\nTransmission: mode 1, guard interval 1/32, partial reception\n"
                          "3 IIPs, no ISDB-T information behind the packets\n"
                          "emergency flag 0 in all IIPs\n"
                          "layer   modulation   code rate   time interleaving   segments      kbit/s   packets\n"
                          "A       QPSK         2/3                    I = 16          1     453.914         -\n"));
}

TEST(InspectTransmission, IsAnObjectInJson) {
    for (const char* const view : VIEWS) {
        const Finished finished = inspectStream(withTables().lose(1200, 3).bytes(), {"--json", "--view", view});
        EXPECT_EQ(finished.status, 3) << view;
        EXPECT_THAT(
            finished.output,
            HasSubstr(
                R"({"type":"transmission","schema_version":1,"source":"standard input","mode":1,"guard_interval":"1/32",)"
                R"("partial_reception":true,"packets_per_frame":1056,"parameter_changes":0,"layers":[)"
                R"({"layer":"A","modulation_scheme":1,"modulation_scheme_name":"QPSK","code_rate":1,)"
                R"("code_rate_name":"2/3","time_interleaving":16,"segments":1,"bit_rate":453914,"packets_per_frame":16},)"
                R"({"layer":"B","modulation_scheme":3,"modulation_scheme_name":"64QAM","code_rate":2,)"
                R"("code_rate_name":"3/4","time_interleaving":8,"segments":12,"bit_rate":18383499,)"
                R"("packets_per_frame":648}],"iips":3,"damaged_iips":0,"emergency_iips":0,)"
                R"("trailers":{"packets":3165,"damaged":0,"whole_frames":2,"packets_of_layers":[48,1941,0],)"
                R"("packets_lost":3,"gaps":1,"unmeasured_gaps":0,"emergency_packets":3165,"emergency_changes":0},)"
                R"("seconds":0.158993,"time":null,"time_source":null})"
                "\n"))
            << view;
        EXPECT_THAT(finished.output,
                    HasSubstr(R"({"type":"fault","schema_version":1,"source":"standard input","id":"952769ca021815a4",)"
                              R"("fault":"packets_lost","severity":"error",)"
                              R"("about":"Transmission","text":"3 packets lost in 1 place by TSP_counter","pid":null,)"
                              R"("table":null,"table_id":null,"table_id_extension":null,"packet":1201,"offset":244800,)"
                              R"("seconds":0.060244,"time":null,"time_source":null})"))
            << view;
    }
}

TEST(InspectTransmission, LayersOfPidsInJson) {
    const std::string output = inspectStream(withTables().bytes(), {"--json", "--view", "stats"}).output;
    EXPECT_THAT(output, HasSubstr(R"("pid":529,"content":null,"announced":false,"layers":["A"],"packets":48,)"));
    EXPECT_THAT(output, HasSubstr(R"("pid":8191,"content":"null packets","announced":true,"layers":["none"],)"
                                  R"("packets":1173,)"));
    EXPECT_THAT(inspectStream(withTables().withoutTrailers(), {"--json", "--view", "stats"}).output,
                AllOf(HasSubstr(R"("pid":529,"content":null,"announced":false,"layers":null,)"),
                      HasSubstr(R"("damaged_iips":0,"emergency_iips":0,"trailers":null,)")));
}

/// Parity that is no ISDB-T information.
TEST(InspectTransmission, OtherStreamsSayNothing) {
    for (const ByteVector& stream : {sampleStream(), withParity(sampleStream())}) {
        for (const char* const view : VIEWS) {
            EXPECT_THAT(inspectStream(stream, {"--json", "--view", view}).output, Not(HasSubstr("transmission\"")))
                << view;
        }
    }
}

TEST(InspectTransmission, FaultsOfPackets) {
    EXPECT_EQ(faultsIn(withTables()), "");
    EXPECT_EQ(faultsIn(withTables().lose(2000, 2).lose(200)),
              "! Transmission: 3 packets lost in 2 places by TSP_counter\n");
    EXPECT_EQ(faultsIn(withTables().patch(FRAME + 20, 189, 0x1F)),
              "! Transmission: 1 frame with 17 packets of layer A, where its parameters give 16\n"
              "! Transmission: 1 frame with 647 packets of layer B, where its parameters give 648\n");
    EXPECT_EQ(faultsIn(withTables().patch(informationOf(1), 10, 0xAA)), "! Transmission: 1 IIP with a wrong CRC_32\n");
    EXPECT_EQ(faultsIn(withTables().patch(informationOf(2), 1, 0x1F).patch(informationOf(2), 2, 0xFF)),
              "! Transmission: no IIP in 1 of 3 whole frames\n");
}

TEST(InspectTransmission, NoInformationIsSound) {
    BroadcastStream stream = withTables();
    for (const std::size_t frame : {0U, 1U, 2U}) {
        stream.patch(informationOf(frame), 10, 0xAA);
    }
    EXPECT_THAT(inspectStream(stream.bytes(), {"--view", "stats"}).output,
                AllOf(HasSubstr("\nTransmission: none of the 3 IIPs is sound, so that its parameters are not known\n"
                                "2 whole frames, 3 IIPs (3 damaged), 0 packets lost by TSP_counter\n"
                                "emergency flag 1 in all packets (no sign of an alert unless it changes)\n"),
                      HasSubstr("\n! Transmission: 3 IIPs with a wrong CRC_32\n")));
    EXPECT_THAT(inspectStream(withTables().patch(informationOf(1), 10, 0xAA).bytes(), {"--view", "stats"}).output,
                HasSubstr("3 whole frames of 1056 packets, 3 IIPs (1 damaged), 0 packets lost by TSP_counter\n"
                          "emergency flag 0 in all sound IIPs, 1 in all packets"));
}

TEST(InspectTransmission, TrailersThatAreNoInformation) {
    BroadcastStream stream = withTables();
    EXPECT_EQ(faultsIn(stream.patch(1500, 188, 0x00)),
              "! Transmission: what stands behind 1 packet is no ISDB-T information\n");
    EXPECT_EQ(faultsIn(stream.patch(1600, 188, 0xFF)),
              "! Transmission: what stands behind 2 packets is no ISDB-T information\n");
    EXPECT_THAT(inspectStream(stream.bytes(), {"--view", "stats"}).output,
                HasSubstr("emergency flag 0 in all IIPs, 1 in all packets (no sign of an alert unless it changes)\n"));
    EXPECT_THAT(inspectStream(stream.bytes(), {"--json"}).output,
                AllOf(HasSubstr(R"("trailers":{"packets":3166,"damaged":2,"whole_frames":2,)"),
                      HasSubstr(R"("fault":"trailers_damaged","severity":"warning","about":"Transmission",)"
                                R"("text":"what stands behind 2 packets is no ISDB-T information","pid":null,)"
                                R"("table":null,"table_id":null,"table_id_extension":null,"packet":1501,)")));
}

TEST(InspectTransmission, SegmentsOfAllLayers) {
    const std::string packets =
        "! Transmission: 2 frames, the first with 648 packets of layer B, where its parameters give 594\n";
    EXPECT_EQ(faultsIn(withTables().configure(SEGMENTS_1_11)),
              packets + "! Transmission: layers with 1 + 11 segments, where television has 13\n");
    EXPECT_EQ(faultsIn(withTables().configure(SOUND_SEGMENTS_1_11)), packets);
    EXPECT_EQ(faultsIn(withTables().configure(SEGMENTS_14_0)),
              "! Transmission: layers with 14 + 0 segments, where television has 13\n");
    EXPECT_THAT(faultsIn(withTables().configure(NO_LAYERS)),
                HasSubstr("! Transmission: layers with 0 segments, where television has 13\n"));
    EXPECT_THAT(inspectStream(withTables().configure(SEGMENTS_14_0).bytes(), {"--json"}).output,
                HasSubstr(R"("fault":"segments","severity":"warning","about":"Transmission",)"
                          R"("text":"layers with 14 + 0 segments, where television has 13","pid":8176,)"));
}

/// As where a recording is joined with another.
TEST(InspectTransmission, CounterThatGoesBack) {
    BroadcastStream first = withTables();
    BroadcastStream second(1);
    first.lose(2 * FRAME + 500, 556);
    second.lose(0, 20);
    EXPECT_THAT(inspectStream(join({first.bytes(), second.bytes()}), {"--view", "tables"}).output,
                HasSubstr("\n! Transmission: TSP_counter goes back in 1 place: how many packets are lost there is not "
                          "known\n"));
}

TEST(InspectTransmission, FramesThatTheInformationContradicts) {
    EXPECT_EQ(faultsIn(withTables().configure(GUARD_1_16)),
              "! Transmission: 2 frames, the first with 1056 packets, where mode and guard interval give 1088\n"
              "! Transport stream 0x0735 (1845): the NIT says guard interval 1/32, the IIP 1/16\n");
}

TEST(InspectTransmission, NitThatTheInformationContradicts) {
    const std::string stream = "! Transport stream 0x0735 (1845): ";
    EXPECT_EQ(faultsIn(withTables("FA 04 5A51 0D9C FB 02 E6A0")),
              stream + "the NIT says transmission mode 2, the IIP 1\n");
    EXPECT_EQ(faultsIn(withTables("FA 04 5A54 0D9C FB 02 E6A0")),
              stream + "the NIT says guard interval 1/16, the IIP 1/32\n");
    EXPECT_EQ(faultsIn(withTables("FA 04 5A50 0D9C")),
              stream + "the IIP says partial reception, but the NIT has no partial_reception_descriptor\n");
    EXPECT_EQ(faultsIn(withTables("FB 02 E6A0")), ""); // it need not say how it is delivered
    EXPECT_EQ(faultsIn(withTables().configure(NOT_PARTIAL)),
              stream + "the NIT has a partial_reception_descriptor, but the IIP says no partial reception\n");
}

TEST(InspectTransmission, NitOfACopyWithoutTrailers) {
    const Finished finished =
        inspectStream(withTables("FA 04 5A52 0D9C FB 02 E6A0").withoutTrailers(), {"--view", "tables"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output,
                HasSubstr("1 fault:\n"
                          "! Transport stream 0x0735 (1845): the NIT says transmission mode 3, the IIP 1\n"));
}

TEST(InspectTransmission, SeveritiesOfFaults) {
    BroadcastStream stream = withTables("FA 04 5A51 0D9C");
    stream.patch(FRAME + 20, 189, 0x1F).patch(informationOf(2), 10, 0xAA).lose(3100, 2);
    const std::string output = inspectStream(stream.bytes(), {"--json", "--view", "stats"}).output;
    EXPECT_THAT(output, AllOf(HasSubstr(R"("fault":"packets_lost","severity":"error")"),
                              HasSubstr(R"("fault":"layer_packets","severity":"warning")"),
                              HasSubstr(R"("fault":"iip_damaged","severity":"error")"),
                              HasSubstr(R"("fault":"nit_contradicts_iip","severity":"warning")")));
    EXPECT_THAT(inspectStream(withTables().configure(MODE_2).bytes(), {"--json"}).output,
                HasSubstr(R"("fault":"frame_length","severity":"warning")"));
    EXPECT_THAT(inspectStream(withTables().patch(informationOf(2), 2, 0xF1).bytes(), {"--json"}).output,
                HasSubstr(R"("fault":"iip_missing","severity":"error","about":"Transmission",)"
                          R"("text":"no IIP in 1 of 3 whole frames","pid":8176,)"));
}

/// Losses are counted where the packets come from a live input, too: in odd pieces.
TEST(InspectTransmission, StandardInputInOddChunks) {
    for (const std::size_t chunk : {188U, 203U, 205U, 5000U}) {
        Start start;
        start.input = BroadcastStream(2).lose(30, 4).bytes();
        start.chunk = chunk;
        EXPECT_THAT(inspect({"--view", "stats", "-"}, start).output,
                    HasSubstr("1 whole frame of 1056 packets, 2 IIPs, 4 packets lost by TSP_counter\n"));
    }
}

TEST(InspectTransmission, LastPacketWithoutItsTrailer) {
    const ByteVector stream = BroadcastStream(2).bytes();
    const Finished finished =
        inspectStream(slice(stream, 0, stream.size() - 16), {"--table", "tot", "--view", "stats"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr("1 whole frame of 1056 packets, 2 IIPs, 0 packets lost by TSP_counter\n"));
    EXPECT_THAT(finished.output, HasSubstr("\n2112 packets of 204 bytes"));
}

/// The PIDs are those of the readings beside the recording.
TEST_F(InspectRecordedTransmission, TwoHundredPackets) {
    const Finished finished = inspect({"--view", "stats", TEST_DATA "/bts/tsduck-171.1.bts"});
    EXPECT_THAT(finished.output,
                StartsWith("PID      packets     share   kbit/s   lowest   highest   layer      content\n"
                           "0x0111        94   47.00 %    14080        -         -   B\n"
                           "0x0114         1    0.50 %   149.79        -         -   B\n"
                           "0x0115         2    1.00 %   299.58        -         -   B\n"
                           "0x0211         2    1.00 %   299.58        -         -   A\n"
                           "0x0384         4    2.00 %   599.17        -         -   B\n"
                           "0x1FFF        97   48.50 %    14530        -         -   none+A+B   null packets\n"));
    EXPECT_THAT(finished.output,
                HasSubstr("\nTransmission: no IIP came, so that its parameters are not known\n"
                          "0 whole frames, 0 IIPs, 0 packets lost by TSP_counter\n"
                          "emergency flag 1 in all packets (no sign of an alert unless it changes)\n"
                          "layer   modulation   code rate   time interleaving   segments   kbit/s   packets\n"
                          "A       -            -                           -          -        -         3\n"
                          "B       -            -                           -          -        -       114\n"));
}
