#include "Process.h"
#include "support/RecordedFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class InspectRecordedTrees : public RecordedTest {
protected:
    static std::string shown(const std::string& name,
                             std::vector<std::string> arguments = {"--full", "--width", "300"}) {
        arguments.push_back(recordedStream(name));
        const Finished finished = inspect(arguments);
        EXPECT_EQ(finished.errors, "");
        return finished.output;
    }
};

} // namespace

TEST_F(InspectRecordedTrees, OneSegMultiplexWhoseApplicationsAreNotSent) {
    const std::string output = shown("gr-isdbt-tx.ts");
    EXPECT_THAT(output, StartsWith("Transport stream 0x0001 (1)  PAT PID 0x0000 version 5, network PID 0x0010, SDT PID "
                                   "0x0011 version 5, original network 0x0000\n"
                                   "│  ! no NIT came\n"
                                   "├─ Service 0x0110 (272) \"La 1\"  digital television (0x01), running, not "
                                   "scrambled, provider \"RTVE\", EIT present/following and schedule, PMT PID 0x0110\n"
                                   "│     ! no PMT came\n"));
    EXPECT_THAT(
        output,
        HasSubstr(
            "└─ Service 0x0211 (529) \"MTV 1Seg\" (2 control codes left out)  data or one-segment (0xC0), undefined, not "
            "scrambled, EIT present/following, PMT PID 0x0218 version 23, PCR PID 0x021E\n"
            "   ├─ Component PID 0x0219  H.264 video (0x1B), tag 0x81\n"
            "   ├─ Component PID 0x021A  AAC audio in LATM (0x11), tag 0x83\n"));
    EXPECT_THAT(output, HasSubstr("   └─ Component PID 0x021D  private sections (0x05), Ginga application information "
                                  "table (0x00A3)\n"
                                  "         ! no AIT came\n"
                                  "\n"
                                  "4 faults:\n"
                                  "! Transport stream 0x0001 (1): no NIT came\n"
                                  "! Service 0x0110 (272), Service 0x0111 (273): no PMT came\n"
                                  "! Component PID 0x021D: no AIT came\n"
                                  "2128 packets"));
}

TEST_F(InspectRecordedTrees, ItalianMultiplexWithApplications) {
    const std::string output = shown("tsduck-018.ts");
    EXPECT_THAT(
        output,
        StartsWith(
            "Network 0x0110 (272) \"Mediaset\"  NIT PID 0x0010 version 1\n"
            "└─ Transport stream 0x1770 (6000)  original network 0x0110, PAT PID 0x0000 version "
            "2, SDT PID 0x0011 version 3\n"
            "   │  satellite_delivery_system_descriptor (0x43, skipped by the receiver)  bytes 01 19 19 00 01 30 A1 02 99 00 04\n"
            "   ├─ Service 0x0001 (1) \"Italia 1\"  digital television (0x01), running, "
            "controlled by a CA system, provider \"Mediaset\", EIT present/following, PMT PID "
            "0x0100 version 4, PCR PID 0x0654\n"));
    EXPECT_THAT(output, HasSubstr("   │  │  └─ AIT of Ginga-J (0x0001)\n"
                                  "   │  │        ! AIT version 0 (packet 15) rejected with ERROR_INVALID_ITEM: "
                                  "ISDBTUtils: TTransportProtocolDescriptor::parse: DataPiping not supported. "
                                  "Aborting!\n"));
    EXPECT_THAT(output,
                HasSubstr("Application 0x0000000B/0x1AB6 \"Launcher SAT\" [eng]  AUTOSTART, priority 60, visible "
                          "to users and applications, service-bound yes, profile 0x0001 = version 1.0.2, "
                          "carousel PID 0x1E9E\n"));
    EXPECT_THAT(output, HasSubstr("\nTime  2018-02-13 12:35:07 (UTC-3 assumed), TOT PID 0x0014\n"));
}

TEST_F(InspectRecordedTrees, JapaneseNetworkInOneSection) {
    EXPECT_THAT(shown("tsduck-208.1.ts", {"--width", "80"}),
                AllOf(HasSubstr("remote control key 5,\n"
                                "   │      473.142857 MHz, 497.142857 MHz, 515.142857 MHz, 527.142857 MHz,\n"),
                      HasSubstr("   ├─ Service 0x4822 (18466)\n"
                                "   └─ Service 0x49A0 (18848)  partial reception\n"
                                "\n"
                                "2 faults:\n"
                                "! Transport stream 0x7ED4 (32468): no PAT came\n"
                                "! Transport stream 0x7ED4 (32468): no SDT came\n"
                                "1 packet")));
}

TEST_F(InspectRecordedTrees, SatelliteMultiplexWhoseNitIsRejected) {
    EXPECT_THAT(shown("tsduck-101.ts"),
                StartsWith("Network 0x0004 (4)  NIT PID 0x0010\n"
                           "   ! NIT version 10 (packet 566) rejected with ERROR_INVALID_ITEM: "));
}

TEST_F(InspectRecordedTrees, EventsOfAPidGivenByHand) {
    EXPECT_THAT(shown("tsduck-032.1.ts", {"--full", "--pid", "404", "--width", "300"}),
                StartsWith("Transport stream\n"
                           "   ! no PAT came\n"
                           "   ! no NIT came\n"
                           "   ! no SDT came\n"
                           "\n"
                           "PID 0x0194\n"
                           "│  ! no PMT names this PID\n"
                           "└─ DSM-CC stream descriptors  data event 0x0, event message group 0x001, version 2\n"
                           "      ! DSM-CC changed without a new version\n"
                           "      stream_event_descriptor (0x1A, skipped by the receiver)  bytes 00 01 00 00 00 00 00 "
                           "00 00 00 54 65 73 74 20 4D 65 73 73 61 67 65 20 33\n"));
}

TEST_F(InspectRecordedTrees, LastTimeOfAClock) {
    EXPECT_THAT(shown("tsduck-182.1.ts", {"--full", "--table", "tot"}),
                StartsWith("Time  2030-05-01 00:02:00 (UTC-3 assumed), TOT PID 0x0014\n"));
}
