#include "CarouselMessages.h"
#include "Process.h"
#include "Streams.h"
#include "support/Bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// The sample with what make-sample does to it.
Finished inspectSample(const std::string& fault, const std::vector<std::string>& arguments) {
    const TemporaryFile file{ByteVector()};
    runBuilt(MAKE_SAMPLE_PROGRAM, {"--seconds", "8", "--fault", fault + "=0", file.path()});
    std::vector<std::string> all{"--view", "applications", "--pid", "0x140"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    all.push_back(file.path());
    return inspect(all);
}

} // namespace

/// Which profiles a receiver has is not broadcast.
TEST(InspectApplications, MayNeedAProfileThatAReceiverDoesNotHave) {
    EXPECT_THAT(inspectSample("app-profile", {}).output, HasSubstr("\n  starts: all there after "));
    const Finished finished = inspectSample(
        "app-profile", {"--width", "400", "--receiver-profile", "1:1.0.0", "--receiver-profile=0x0002:1.2.0"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("\n  failed    it is for profile 0x0001 version 9.0.0, profile 0x0002 "
                                           "version 9.2.0, and the receiver has profile 0x0001 version 1.0.0, "
                                           "profile 0x0002 version 1.2.0"));
    EXPECT_THAT(finished.output, HasSubstr("\n  does not start: it is for profile 0x0001 version 9.0.0"));
    EXPECT_THAT(inspectSample("app-no-icon", {"--receiver-profile", "2:1.2.0"}).output,
                HasSubstr("\n  starts: all there after "));
    for (const char* const wrong : {"1", "1:", "1:1.0", "1:1.0.0.0", "1:1.0.256", "x:1.0.0", "65536:1.0.0", ""}) {
        const Finished refused = inspect({"--receiver-profile", wrong, SAMPLE_FILE});
        EXPECT_EQ(refused.status, 2) << wrong;
        EXPECT_THAT(refused.errors, HasSubstr("is no profile with its version (1:1.0.0, 0x0001:1.2.0)"));
    }
}

TEST(InspectApplications, SaysAStepALineAndTheVerdict) {
    const Finished finished = inspect({"--view", "applications", "--pid", "0x140", "--width", "200", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output,
                StartsWith("Application 0x00000735/0x0002  \"Enquete: voc\xC3\xAA decide\"  AIT of Ginga-J (0x0001)  "
                           "service 0xE6A0 (59040)\n"
                           "  passed    the PAT has its service 0xE6A0, whose PMT is on PID 0x0101  PID 0x0000  packet "
                           "2\n"));
    EXPECT_THAT(finished.output, HasSubstr("\n  failed    control code PRESENT\n"));
    EXPECT_THAT(finished.output, HasSubstr("\n  is not started by itself: control code PRESENT\n\n"
                                           "Application 0x00000735/0x0001  \"Guia da Programa\xC3\xA7\xC3\xA3o\"  "));
    EXPECT_THAT(finished.output, HasSubstr("\n  passed    component tag 0x40 is PID 0x0140\n"));
    EXPECT_THAT(finished.output, HasSubstr("\n            02 05 00 01 01 7F 40\n"));
    EXPECT_THAT(finished.output, HasSubstr("\n  starts: all there after 0.5 s\n\n480 packets"));
}

TEST(InspectApplications, SaysTheSameInTextAndInJson) {
    const char* const verdict =
        "does not start: initial class guia/principal.ncl is not in the carousel; the nearest is "
        "guia/Principal.ncl";
    const Finished text = inspectSample("app-document-case", {"--width", "200"});
    EXPECT_EQ(text.status, 3);
    EXPECT_THAT(text.output,
                HasSubstr(std::string("\n  ") + verdict +
                          "\n\n1 fault:\n"
                          "! Application 0x00000735/0x0001: initial class guia/principal.ncl is not in the "
                          "carousel; the nearest is guia/Principal.ncl\n"));
    const Finished json = inspectSample("app-document-case", {"--json"});
    EXPECT_EQ(json.status, 3);
    EXPECT_THAT(json.output, HasSubstr(std::string(R"("verdict":"does_not_start","text":")") + verdict +
                                       R"(","starts_after":null,"steps":[{"step":"PAT","result":"passed",)"));
    EXPECT_THAT(json.output,
                HasSubstr(R"({"step":"initial class","result":"failed","needed":true,"text":")"
                          "initial class guia/principal.ncl is not in the carousel; the nearest is "
                          R"(guia/Principal.ncl","fault":"initial_class_missing","pid":304,"table":"AIT",)"));
    EXPECT_THAT(json.output, HasSubstr(R"("fault":"initial_class_missing","severity":"error",)"
                                       R"("about":"Application 0x00000735/0x0001","text":"initial class )"));
}

TEST(InspectApplications, FaultsAreThoseOfTheTree) {
    const TemporaryFile file{ByteVector()};
    runBuilt(MAKE_SAMPLE_PROGRAM, {"--seconds", "8", "--fault", "app-no-base=0", file.path()});
    const Finished tree = inspect({"--width", "200", "--pid", "0x140", file.path()});
    EXPECT_EQ(tree.status, 3);
    EXPECT_THAT(tree.output, HasSubstr("! base directory guia is not in the carousel\n"));
    const Finished well = inspect({"--width", "200", "--pid", "0x140", SAMPLE_FILE});
    EXPECT_EQ(well.status, 0);
    EXPECT_THAT(well.output, HasSubstr("carousel PID 0x0140, starts after 0.5 s\n"));
}

/// As many as are looked at.
TEST(InspectApplications, AreNotKnownBesideTooManyCarousels) {
    StreamBuilder crowd;
    for (unsigned pid = 0x0400; pid < 0x0440; ++pid) {
        crowd.section(pid, wire::objectDii({}, {}));
    }
    Start start;
    start.input = join({crowd.bytes(), sampleStream()});
    EXPECT_THAT(inspect({"--view", "applications", "-"}, start).output,
                HasSubstr("\n  not known: the sections of PID 0x0140 were not looked at\n"));
}

TEST(InspectApplications, NoneIsSaidToo) {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("E6A0 E101"));
    Start start;
    start.input = stream.bytes();
    EXPECT_THAT(inspect({"--view", "applications", "-"}, start).output, StartsWith("no AIT came\n"));
}
