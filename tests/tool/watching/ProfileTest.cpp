#include "watching/Profile.h"
#include "watching/Check.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace inspect;
using testing::HasSubstr;
using testing::StartsWith;

/// What is wrong with a profile.
std::string errorOf(const std::string& text) {
    try {
        Profile::read("own.json", text);
        return "none";
    } catch (const ProfileError& error) {
        return error.what();
    }
}

std::string errorOfCheck(const std::string& check) {
    return errorOf(R"({"based_on": "always", "checks": {)" + check + "}}");
}

const Bound& alarmOf(const Profile& profile, const char* check) {
    return profile.of(check)->bounds.front();
}

TEST(Profiles, ComeWithTheTool) {
    EXPECT_THAT(Profile::bundled(), testing::ElementsAre("always", "dvb", "isdbt"));
    for (const std::string& name : Profile::bundled()) {
        const Profile profile = Profile::named(name);
        EXPECT_EQ(profile.hold(), 5) << name;
        EXPECT_EQ(profile.settle(), 0.5) << name;
        EXPECT_TRUE(std::filesystem::exists(LIMITS_FOLDER "/" + name + ".json"));
    }
}

/// The numbers are those of the standard, not of the profile.
TEST(Profiles, DvbIsTheStandardAsItStands) {
    const Profile dvb = Profile::named("dvb");
    const std::pair<const char*, double> limits[] = {
        {"pat_interval", 0.5},      {"pmt_interval", 0.5}, {"pcr_interval", 0.1},      {"pts_interval", 0.7},
        {"nit_interval", 10},       {"sdt_interval", 2},   {"sdt_other_interval", 10}, {"eit_interval", 2},
        {"eit_other_interval", 10}, {"tdt_interval", 30},  {"nit_other_interval", 10}, {"min_gap", 0.025},
        {"unreferenced_pid", 0.5}};
    for (const auto& [check, seconds] : limits) {
        ASSERT_NE(dvb.of(check), nullptr) << check;
        EXPECT_EQ(alarmOf(dvb, check).value, seconds) << check;
        EXPECT_FALSE(alarmOf(dvb, check).isProposal()) << check;
        EXPECT_THAT(alarmOf(dvb, check).source, HasSubstr("TR 101 290")) << check;
        EXPECT_EQ(dvb.of(check)->bounds.size(), 1U) << check;
    }
    for (const char* const check : {"sync_loss", "sync_byte", "continuity", "transport_error", "crc", "pcr_jump",
                                    "wrong_table_id", "scrambled_table", "pcr_accuracy", "buffer"}) {
        EXPECT_NE(dvb.of(check), nullptr) << check;
    }
    EXPECT_EQ(dvb.of("pmt_one_seg_interval"), nullptr);
    EXPECT_EQ(dvb.of("pcr_ceased"), nullptr);
    EXPECT_TRUE(alarmOf(dvb, "video_audio_pid").isProposal());
}

TEST(Profiles, IsdbtHasTheExceptionsOfIsdb) {
    const Profile isdbt = Profile::named("isdbt");
    EXPECT_EQ(isdbt.of("sdt_interval")->text(), "3*, 10*");
    EXPECT_EQ(isdbt.of("pcr_interval")->text(), "0.1");
    EXPECT_EQ(isdbt.of("pcr_one_seg_interval")->text(), "0.25*, 0.4*");
    EXPECT_EQ(isdbt.of("pmt_one_seg_interval")->text(), "0.7*, 1*");
    EXPECT_EQ(isdbt.of("pmt_engineering_interval")->text(), "1.5*, 3*");
    EXPECT_EQ(isdbt.of("tot_interval")->text(), "10*, 30");
    EXPECT_EQ(isdbt.of("tdt_interval"), nullptr);
    EXPECT_EQ(isdbt.of("min_gap"), nullptr);
    EXPECT_EQ(isdbt.of("other_pid"), nullptr);
}

/// Without PCRs nothing is decoded, whatever the station wants.
TEST(Profiles, AlwaysHasNoIntervalButThatOfPcrs) {
    for (const Check& check : checks()) {
        if (check.isSilence) {
            EXPECT_EQ(Profile::always().of(check.name) != nullptr,
                      check.name == "pcr_interval" || check.name == "pcr_one_seg_interval")
                << check.name;
        }
    }
}

TEST(Profiles, CanBeChangedInAFewLines) {
    const Profile own = Profile::read("own.json", R"({
        "based_on": "isdbt",
        "hold": {"seconds": 60, "source": "house rule 7"}, // comments are allowed
        "checks": {
            "pat_interval": {"warn": null, "alarm": {"seconds": 1.5, "source": "house rule 8"}},
            "crc": null
        }
    })");
    EXPECT_EQ(own.hold(), 60);
    EXPECT_EQ(own.of("pat_interval")->text(), "1.5");
    EXPECT_TRUE(own.of("pat_interval")->isRequired);
    EXPECT_EQ(alarmOf(own, "pat_interval").text(), "limit 1.5 s, house rule 8");
    EXPECT_EQ(own.of("crc"), nullptr);
    EXPECT_EQ(own.of("sdt_interval")->text(), "3*, 10*");
}

TEST(Profiles, SayWhereTheyAreWrong) {
    EXPECT_THAT(errorOf("{\n\"checks\": {]\n}"), StartsWith("own.json: parse error at line 2, column 12: "));
    EXPECT_EQ(errorOf("[]"), "own.json: expected an object with based_on, hold, settle, checks");
    EXPECT_EQ(errorOf("{}"), "own.json: expected \"hold\"");
    EXPECT_EQ(errorOf(R"({"cheks": {}})"), "own.json: \"cheks\" is none of based_on, hold, settle, checks");
    EXPECT_EQ(errorOf(R"({"based_on": "atsc"})"), "own.json: based_on: expected one of always, dvb, isdbt");
    EXPECT_EQ(errorOf(R"({"based_on": "dvb", "checks": 5})"), "own.json: checks: expected an object with checks");
    EXPECT_EQ(errorOf(R"({"based_on": "dvb", "hold": {"seconds": 0, "source": "me"}})"),
              "own.json: hold: seconds: expected a number above 0");
    EXPECT_EQ(errorOfCheck(R"("pats": {})"), "own.json: checks: there is no check \"pats\"");
    EXPECT_EQ(errorOfCheck(R"("crc": {})"), "own.json: checks: crc: expected \"alarm\", \"warn\" or \"remark\"");
    EXPECT_EQ(errorOfCheck(R"("crc": {"alarm": {}})"), "own.json: checks: crc: alarm: expected \"source\"");
    EXPECT_EQ(errorOfCheck(R"("crc": {"alarm": {"seconds": 1, "source": "me"}})"),
              "own.json: checks: crc: alarm: \"seconds\" is none of source");
    EXPECT_EQ(errorOfCheck(R"("pat_interval": {"alarm": {"source": "me"}})"),
              "own.json: checks: pat_interval: alarm: expected \"seconds\"");
    EXPECT_EQ(errorOfCheck(R"("pat_interval": {"alarm": {"seconds": "1", "source": "me"}})"),
              "own.json: checks: pat_interval: alarm: seconds: expected a number above 0");
    EXPECT_EQ(errorOfCheck(R"("pat_interval": {"alarm": {"seconds": 1, "source": ""}})"),
              "own.json: checks: pat_interval: alarm: source: expected the standard that sets it, or \"proposal\"");
    EXPECT_EQ(errorOfCheck(R"("pat_interval": {"warn": {"seconds": 1, "source": "me"}, "required": 1})"),
              "own.json: checks: pat_interval: required: expected true or false");
    EXPECT_EQ(errorOfCheck(R"("declared_cycle": {"warn": {"seconds": 1, "source": "me"}})"),
              "own.json: checks: declared_cycle: warn: \"seconds\" is none of times, source");
}

TEST(Profiles, ThatAreNotThere) {
    EXPECT_THROW(Profile::named("/nowhere/own.json"), ProfileError);
}

} // namespace
