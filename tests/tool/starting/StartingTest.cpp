#include "tool/starting/Station.h"

#include <gtest/gtest.h>

namespace {

using inspect::ApplicationReport;
using inspect::Step;
using Verdict = ApplicationReport::Verdict;

std::string verdictOf(const Station& station) {
    return reportOn(station).text;
}

/// A directory below the root in module 2, and the other files of it.
std::vector<Carried> withGuide(const std::vector<wire::Bound>& names, const std::vector<Carried>& others) {
    std::vector<Carried> files = Station::files();
    std::vector<wire::Bound> all{{"principal.ncl", "fil", 3, hex("03")}};
    all.insert(all.end(), names.begin(), names.end());
    files[1].object = wire::directory("dir", hex("02"), all);
    files.insert(files.end(), others.begin(), others.end());
    return files;
}

ByteVector icons(const std::string& locator) {
    return descriptor(0x0B, join({wire::counted8(text(locator)), hex("0001")}));
}

ByteVector prefetch(const std::string& label) {
    return descriptor(0x0C, join({hex("01"), wire::counted8(text(label)), hex("64")}));
}

/// A stream event object with an event on component 0x50.
ByteVector streamEvents(const ByteVector& key, const std::string& name, unsigned id) {
    return wire::object(
        "ste", key, join({hex("00 00000000 00000000 00 00 01"), u16(1), wire::counted8(join({text(name), hex("00")}))}),
        join({hex("01 0000 000C 0050 00 01"), u16(id)}));
}

ByteVector eventSection(unsigned id) {
    return longSection(0x3D, {}, descriptor(0x04, join({u16(id), hex("FFFFFFFE 00000000")})));
}

} // namespace

TEST(Starting, WhatIsAllThereStarts) {
    const ApplicationReport report = reportOn({});
    EXPECT_EQ(report.text, "starts: all there after 0.1 s");
    EXPECT_EQ(report.verdict, Verdict::Starts);
    EXPECT_EQ(report.organisationId, 0x0735U);
    EXPECT_EQ(report.applicationId, 1U);
    EXPECT_EQ(report.serviceId, 0xE6A0);
    EXPECT_EQ(report.place.pid, 0x0130);
    Lines texts;
    for (const Step& step : report.steps) {
        EXPECT_EQ(step.result, Step::Result::Passed) << step.text;
        EXPECT_FALSE(step.fault) << step.text;
        texts.push_back(std::string(step.name) + ": " + step.text);
    }
    EXPECT_EQ(texts, (Lines{
                         "PAT: the PAT has its service 0xE6A0, whose PMT is on PID 0x0101",
                         "PMT: the PMT has the component of its AIT, PID 0x0130, and says that it is one",
                         "AIT: its AIT on PID 0x0130 came, version 0",
                         "AIT version: no version of its AIT came back",
                         "AIT CRC_32: of 3 sections of its AIT, all are sound",
                         "control code: control code AUTOSTART",
                         "profile: it is bound to its service, and for profile 0x0001 version 1.0.0",
                         "transport protocol: transport protocol label 0x01 is object carousel",
                         "connection: its carousel comes with its service",
                         "component: component tag 0x0B is PID 0x0140",
                         "packets: 21 packets on PID 0x0140",
                         "clear: PID 0x0140 is not scrambled",
                         "sections: 21 sections of a carousel on PID 0x0140",
                         "DSI: a DSI came 3 times, version 0, with the service gateway",
                         "carousel id: it is carousel 0x00000002, as the PMT says",
                         "DII: the DII 0x0001 came 3 times, version 0, with 3 modules",
                         "gateway module: module 0x0001 is complete: version 1, 2 of 2 blocks",
                         "gateway: the service gateway is in module 0x0001, and has 1 name",
                         "base directory: base directory guia is there",
                         "initial class: initial class guia/principal.ncl is there: 21 bytes in module 0x0003",
                         "modules: 2 of 2 modules with its files are complete; 2 whole turns of the carousel came",
                     }));
}

TEST(Starting, NeedsAProfileOfTheReceiver) {
    const Lines met{"passed: it is bound to its service, and for profile 0x0001 version 1.0.0"};
    EXPECT_EQ(stepsOf(reportOn({}, {{1, {1, 0, 0}}}), "profile"), met);
    EXPECT_EQ(stepsOf(reportOn({}, {{1, {1, 0, 7}}, {2, {0, 0, 0}}}), "profile"), met);
    EXPECT_EQ(stepsOf(reportOn({}, {{1, {2, 0, 0}}}), "profile"), met);
    const ApplicationReport lower = reportOn({}, {{1, {0, 9, 9}}});
    EXPECT_EQ(lower.verdict, Verdict::DoesNotStart);
    EXPECT_EQ(lower.text, "does not start: it is for profile 0x0001 version 1.0.0, and the receiver has profile 0x0001 "
                          "version 0.9.9");
    const ApplicationReport other = reportOn({}, {{2, {9, 0, 0}}, {3, {1, 2, 3}}});
    EXPECT_EQ(stepsOf(other, "profile"), Lines{"failed: it is for profile 0x0001 version 1.0.0, and the receiver has "
                                               "profile 0x0002 version 9.0.0, profile 0x0003 version 1.2.3"});
}

/// Where something stands, and in which bytes.
TEST(Starting, SaysWhereAStepStands) {
    const ApplicationReport report = reportOn({});
    const auto step = [&report](std::string_view name) {
        for (const Step& each : report.steps) {
            if (each.name == name) {
                return each;
            }
        }
        return Step{};
    };
    EXPECT_EQ(step("transport protocol").bytes, Station::transport());
    EXPECT_EQ(step("transport protocol").place.pid, 0x0130);
    EXPECT_EQ(step("transport protocol").position->packet, 5U);
    EXPECT_EQ(step("initial class").bytes, Station::location(0x07, "/guia", "", "principal.ncl"));
    EXPECT_EQ(step("PAT").place.pid, 0x0000);
    EXPECT_EQ(step("PAT").position->packet, 1U);
    EXPECT_EQ(step("DSI").place.pid, 0x0140);
    EXPECT_EQ(step("DSI").position->packet, 7U);
    EXPECT_EQ(step("DSI").bytes, wire::gatewaySection(2, 1, hex("01")));
    EXPECT_EQ(step("DII").position->packet, 9U);
    EXPECT_EQ(step("packets").position->packet, 7U);
}

TEST(Starting, OtherControlCodesLeaveItToOthers) {
    Station station;
    station.controlCode = "02";
    const ApplicationReport present = reportOn(station);
    EXPECT_EQ(present.text, "is not started by itself: control code PRESENT");
    EXPECT_EQ(present.verdict, Verdict::NotByItself);
    EXPECT_EQ(stepsOf(present, "control code"), Lines{"failed: control code PRESENT"});
    station.controlCode = "04";
    EXPECT_EQ(verdictOf(station), "is not started by itself: control code KILL");
    station.controlCode = "5A";
    EXPECT_EQ(verdictOf(station), "is not started by itself: control code 0x5A");
    station.controlCode = "02";
    station.descriptors = join({Station::usual("/guia", "principal.ncl"), icons("icones")});
    EXPECT_EQ(verdictOf(station), "is not started by itself: control code PRESENT; but icon directory icones is not in "
                                  "the carousel");
    station.descriptors = join({Station::application(), hex("02 0C 0002 01 7F FF 06"), text("http:/"),
                                Station::location(0x07, "/guia", "", "principal.ncl")});
    EXPECT_EQ(verdictOf(station), "is not started by itself: control code PRESENT; and not known: it comes by IP, not "
                                  "in this stream: http:/");
    station.descriptors = Station::usual("/guia", "Principal.ncl");
    EXPECT_EQ(verdictOf(station),
              "is not started by itself: control code PRESENT; nor would it start: initial class guia/Principal.ncl is "
              "not in the carousel; the nearest is guia/principal.ncl");
}

TEST(Starting, NeedsItsDescriptors) {
    Station station;
    const ByteVector location = Station::location(0x07, "/guia", "", "principal.ncl");
    station.descriptors = join({Station::transport(), location});
    EXPECT_EQ(verdictOf(station), "does not start: no application_descriptor");
    station.descriptors = join({Station::application(), location});
    EXPECT_EQ(verdictOf(station), "does not start: no transport_protocol_descriptor");
    station.descriptors = join({Station::application(), Station::transport()});
    EXPECT_EQ(verdictOf(station), "does not start: no ginga_application_location_descriptor");
    station.descriptors = Station::usual("/guia", "");
    EXPECT_EQ(verdictOf(station), "does not start: the location names no initial class");
    station.descriptors = join({hex("00 09 05 0001 01 00 00 FF 28 02"), Station::transport(), location});
    EXPECT_EQ(verdictOf(station), "does not start: application_descriptor names transport protocol label 0x02, but the "
                                  "receiver has 0x01");
}

TEST(Starting, OneOfSeveralLabelsIsEnough) {
    Station station;
    station.descriptors = join({hex("00 0A 05 0001 01 00 00 FF 28 02 01"), Station::transport(),
                                Station::location(0x07, "/guia", "", "principal.ncl")});
    EXPECT_EQ(verdictOf(station), "starts: all there after 0.1 s; but application_descriptor names transport protocol "
                                  "label 0x02, but the receiver has 0x01");
}

TEST(Starting, WhatComesElsewhereIsNotKnown) {
    Station station;
    const ByteVector location = Station::location(0x07, "/guia", "", "principal.ncl");
    station.descriptors = join({Station::application(), hex("02 0B 0001 01 FF 0735 0736 E6A0 0B"), location});
    const ApplicationReport report = reportOn(station);
    EXPECT_EQ(report.text, "not known: its carousel comes with service 0xE6A0 of transport stream 0x0736, not in this "
                           "stream");
    EXPECT_EQ(report.verdict, Verdict::NotKnown);
    EXPECT_EQ(stepsOf(report, "DSI"), Lines{"not seen: DSI: not tried, for want of the connection"});
    station.descriptors = join({Station::application(), hex("02 0B 0001 01 FF 0735 0735 E6A0 0B"), location});
    EXPECT_EQ(verdictOf(station), "starts: all there after 0.1 s"); // it is this one
    station.descriptors = join({Station::application(), hex("02 0B 0001 01 FF 0735 0735 E6A1 0B"), location});
    EXPECT_EQ(verdictOf(station), "does not start: its carousel comes with service 0xE6A1 of transport stream 0x0735, "
                                  "which the PAT does not have");
    station.descriptors = join({Station::application(), hex("02 0C 0002 01 7F FF 06"), text("http:/"), location});
    EXPECT_EQ(verdictOf(station), "not known: it comes by IP, not in this stream: http:/");
}

TEST(Starting, NeedsTheComponent) {
    Station station;
    station.carouselComponent = "0B E140 F003 52010C";
    EXPECT_EQ(verdictOf(station), "does not start: its carousel has component tag 0x0B, which the PMT does not have");
    station.carouselComponent = "1B E140 F003 52010B";
    EXPECT_EQ(verdictOf(station), "starts: all there after 0.1 s; but the component 0x0B of its carousel is no DSM-CC "
                                  "(stream type 0x1B)");
    station.carousel.clear();
    EXPECT_EQ(verdictOf(station), "does not start: the component 0x0B of its carousel is no DSM-CC (stream type 0x1B)");
}

TEST(Starting, MissesPacketsInALongStreamOnly) {
    Station station;
    station.carousel.clear();
    EXPECT_EQ(verdictOf(station), "not known: no packet came on PID 0x0140 of its carousel");
    station.turns = 100;
    const ApplicationReport report = reportOn(station);
    EXPECT_EQ(report.text, "does not start: no packet came on PID 0x0140 of its carousel");
    EXPECT_EQ(stepsOf(report, "sections"), Lines{"not seen: sections: not tried, for want of the packets"});
}

TEST(Starting, NeedsPacketsInTheClear) {
    Station station;
    station.isScrambled = true;
    EXPECT_EQ(verdictOf(station), "does not start: its carousel on PID 0x0140 is scrambled");
}

TEST(Starting, NeedsSections) {
    Station station;
    for (ByteVector& section : station.carousel) {
        section.back() ^= 0x01U;
    }
    EXPECT_EQ(verdictOf(station),
              "not known: no sound section of a carousel came on PID 0x0140, 21 with a wrong CRC_32");
    station.turns = 30;
    EXPECT_EQ(verdictOf(station),
              "does not start: no sound section of a carousel came on PID 0x0140, 210 with a wrong CRC_32");
}

TEST(Starting, NeedsADsi) {
    Station station;
    station.carousel.erase(station.carousel.begin());
    EXPECT_EQ(verdictOf(station), "does not start: no DSI with a service gateway came on PID 0x0140");
    station.turns = 1;
    EXPECT_EQ(verdictOf(station), "not known: no DSI with a service gateway came on PID 0x0140");
}

TEST(Starting, NeedsTheDiiThatTheDsiNames) {
    Station station;
    station.carousel.erase(station.carousel.begin() + 1);
    EXPECT_EQ(verdictOf(station), "does not start: the DSI names DII 0x0001, which did not come");
    station.carousel.insert(station.carousel.begin() + 1,
                            wire::objectDii({2, 64, 0x80010004}, {{3, Station::files()[2].object.size()}}));
    EXPECT_EQ(verdictOf(station), "does not start: the DSI names DII 0x0001, which did not come, but 0x0002");
}

TEST(Starting, NeedsTheCarouselOfThePmt) {
    Station station;
    station.carouselComponent = "0B E140 F009 52010B 130400000007";
    EXPECT_EQ(verdictOf(station),
              "does not start: the PMT says carousel 0x00000007, but on PID 0x0140 the DSI is that of 0x00000002");
    station.carouselComponent = "0B E140 F003 52010B";
    EXPECT_EQ(verdictOf(station), "starts: all there after 0.1 s");
}

TEST(Starting, NeedsTheModuleOfTheGateway) {
    Station station;
    std::vector<Carried> files = Station::files();
    files.erase(files.begin());
    station.carousel = Station::sections(files);
    EXPECT_EQ(verdictOf(station), "does not start: no DII announces module 0x0001");

    station.carousel = Station::sections(Station::files());
    station.carousel.erase(station.carousel.begin() + 3);
    EXPECT_EQ(verdictOf(station), "does not start: module 0x0001 has 1 of 2 blocks, missing 1, after 2 whole turns");
    station.turns = 1;
    EXPECT_EQ(verdictOf(station),
              "not known: module 0x0001 has 1 of 2 blocks, missing 1, and the stream no whole turn of it");

    station.turns = 3;
    station.carousel = Station::sections(Station::files(), 2);
    EXPECT_EQ(verdictOf(station),
              "does not start: module 0x0001 is announced with version 1, but its blocks have version 2");
}

TEST(Starting, NeedsAModuleThatCanBeRead) {
    Station station;
    std::vector<Carried> files = Station::files();
    files[0].descriptors = hex("09 05 78 00000100"); // compressed, and it is not
    station.carousel = Station::sections(files);
    EXPECT_EQ(verdictOf(station),
              "does not start: module 0x0001 cannot be read: it does not inflate: incorrect header check");
}

TEST(Starting, NeedsTheGatewayThatTheDsiNames) {
    Station station;
    station.carousel[0] = wire::gatewaySection(2, 1, hex("09"));
    EXPECT_EQ(verdictOf(station),
              "does not start: module 0x0001 has no service gateway with the key 09 that the DSI names");
}

TEST(Starting, NeedsTheBaseDirectory) {
    Station station;
    station.descriptors = Station::usual("/guias/", "principal.ncl");
    EXPECT_EQ(verdictOf(station), "does not start: base directory guias is not in the carousel; the nearest is guia");
    station.descriptors = Station::usual("/jornal", "principal.ncl");
    EXPECT_EQ(verdictOf(station), "does not start: base directory jornal is not in the carousel");
    station.descriptors = Station::usual("/guia/principal.ncl", "principal.ncl");
    EXPECT_EQ(verdictOf(station), "does not start: base directory guia/principal.ncl is no directory");
    station.descriptors = Station::usual("", "guia/principal.ncl");
    EXPECT_EQ(verdictOf(station), "starts: all there after 0.1 s");
}

TEST(Starting, NeedsTheInitialClass) {
    Station station;
    station.descriptors = Station::usual("/guia", "Principal.ncl");
    const ApplicationReport report = reportOn(station);
    EXPECT_EQ(report.text, "does not start: initial class guia/Principal.ncl is not in the carousel; the nearest is "
                           "guia/principal.ncl");
    EXPECT_EQ(report.steps[19].fault->name, "initial_class_missing");
    station.descriptors = Station::usual("/guia", "prinzipal.nclx");
    EXPECT_EQ(verdictOf(station), "does not start: initial class guia/prinzipal.nclx is not in the carousel; the "
                                  "nearest is guia/principal.ncl");
    station.descriptors = Station::usual("/", "principal.ncl");
    EXPECT_EQ(verdictOf(station), "does not start: initial class principal.ncl is not in the carousel; the nearest is "
                                  "guia/principal.ncl");
    station.descriptors = Station::usual("/guia", "x\xFF.lua");
    EXPECT_EQ(verdictOf(station), "does not start: initial class guia/x\\xFF.lua is not in the carousel");
}

TEST(Starting, NeedsTheModulesOnTheWay) {
    Station station;
    station.carousel.pop_back();
    EXPECT_EQ(verdictOf(station), "does not start: initial class guia/principal.ncl: module 0x0003 has 0 of 1 blocks, "
                                  "missing 0, after 2 whole turns");
    std::vector<Carried> files = Station::files();
    files.erase(files.begin() + 1);
    station.carousel = Station::sections(files);
    EXPECT_EQ(verdictOf(station), "does not start: base directory guia: no DII announces its module 0x0002");
}

TEST(Starting, FindsClassesOnTheClassPath) {
    Station station;
    const std::vector<Carried> classes{
        {4, wire::directory("dir", hex("04"), {{"Principal.class", "fil", 3, hex("03")}})}};
    station.carousel = Station::sections(withGuide({{"tv", "dir", 4, hex("04")}}, classes));
    const auto starting = [&station](const std::string& extension, const std::string& name) {
        station.descriptors =
            join({Station::application(), Station::transport(), Station::location(0x04, "/guia", extension, name)});
        return reportOn(station);
    };
    EXPECT_EQ(starting("", "tv.Principal").text, "starts: all there after 0.2 s");
    EXPECT_EQ(starting("", "Principal").text,
              "does not start: initial class guia/Principal.class is not in the carousel; the nearest is "
              "guia/tv/Principal.class");
    EXPECT_EQ(starting("tv", "Principal").text, "starts: all there after 0.2 s");
    EXPECT_EQ(starting("/guia/tv;radio", "Principal").text,
              "starts: all there after 0.2 s; but class path entry guia/radio is not in the carousel");
    EXPECT_EQ(stepsOf(starting("tv;radio", "Principal"), "class path"),
              (Lines{"passed: class path entry guia/tv is there",
                     "failed: class path entry guia/radio is not in the carousel"}));
}

TEST(Starting, DoesNotOpenArchives) {
    Station station;
    station.carousel = Station::sections(withGuide({{"tv.jar", "fil", 3, hex("03")}}, {}));
    station.descriptors = join(
        {Station::application(), Station::transport(), Station::location(0x04, "/guia", "tv.jar", "tv.Principal")});
    EXPECT_EQ(verdictOf(station), "not known: initial class tv/Principal.class may be in guia/tv.jar, which is not "
                                  "opened");
}

TEST(Starting, UsesIconsAndLabels) {
    Station station;
    station.descriptors = join({station.descriptors, icons("/icones"), prefetch("inicio")});
    EXPECT_EQ(verdictOf(station), "starts: all there after 0.1 s; but no module has the label inicio of the "
                                  "prefetch_descriptor, and 1 more");
    std::vector<Carried> files =
        withGuide({{"icones", "dir", 4, hex("04")}}, {{4, wire::directory("dir", hex("04"), {})}});
    files[2].descriptors = join({hex("70 06"), text("inicio")});
    station.carousel = Station::sections(files);
    const ApplicationReport report = reportOn(station);
    EXPECT_EQ(report.text, "starts: all there after 0.1 s");
    EXPECT_EQ(stepsOf(report, "icons"), Lines{"passed: icon directory guia/icones is there"});
    EXPECT_EQ(stepsOf(report, "prefetch"), Lines{"passed: label inicio is that of module 0x0003"});
}

TEST(Starting, UsesDiisThatAreLocated) {
    Station station;
    station.descriptors = join({station.descriptors, hex("0D 09 01 8001 000B 8005 000B")});
    const ApplicationReport report = reportOn(station);
    EXPECT_EQ(report.text, "starts: all there after 0.1 s; but DII 0x0005 of the dii_location_descriptor did not come");
    EXPECT_EQ(stepsOf(report, "DII location"),
              (Lines{"passed: DII 0x0001 of the dii_location_descriptor came",
                     "failed: DII 0x0005 of the dii_location_descriptor did not come"}));
}

TEST(Starting, ListensToEvents) {
    Station station;
    station.carousel =
        Station::sections(withGuide({{"eventos", "ste", 4, hex("04")}}, {{4, streamEvents(hex("04"), "gol", 7)}}));
    EXPECT_EQ(stepsOf(reportOn(station), "stream events"),
              Lines{"not seen: stream events of guia/eventos did not come on PID 0x0150: gol (7)"});
    station.events = {eventSection(7)};
    EXPECT_EQ(stepsOf(reportOn(station), "stream events"),
              Lines{"passed: stream events of guia/eventos came on PID 0x0150: gol (7)"});
    EXPECT_EQ(verdictOf(station), "starts: all there after 0.2 s");
}

TEST(Starting, SaysWhichOfItsModulesAreMissing) {
    Station station;
    station.carousel = Station::sections(
        withGuide({{"foto.png", "fil", 4, hex("04")}}, {{4, wire::file(hex("04"), fill(300, 0x5A))}}));
    station.carousel.pop_back();
    EXPECT_EQ(verdictOf(station),
              "starts: all there after 0.2 s; but module 0x0004 has 5 of 6 blocks, missing 5, after "
              "2 whole turns");
}

TEST(Starting, LooksAtSomeOfEachKindOnly) {
    Station station;
    std::string many;
    for (int number = 0; number < 40; ++number) {
        many += "d" + std::to_string(number) + ";";
    }
    station.descriptors =
        join({Station::application(), Station::transport(), Station::location(0x07, "/guia", many, "principal.ncl")});
    const Lines steps = stepsOf(reportOn(station), "class path");
    ASSERT_EQ(steps.size(), 17U);
    EXPECT_EQ(steps[15], "failed: class path entry guia/d15 is not in the carousel");
    EXPECT_EQ(steps[16], "not seen: class path: there are more, which are not looked at");
}

/// Blocks may come on another PID than what announces them.
TEST(Starting, MissesNoModuleOfAnotherStream) {
    Station station;
    std::vector<wire::Announced> announced;
    for (const Carried& each : Station::files()) {
        announced.push_back({each.module, each.object.size()});
    }
    wire::Dii dii{2, 64, 0x80000002};
    dii.associationTag = 0x0041;
    station.carousel = {wire::gatewaySection(2, 1, hex("01")), wire::objectDii(dii, announced)};
    station.turns = 100;
    EXPECT_EQ(verdictOf(station), "not known: module 0x0001 comes in another stream, that of association tag 0x0041");
}

/// The tap's tag is that of another component.
TEST(Starting, FindsTheBlocksOnAnotherPid) {
    Station station;
    std::vector<wire::Announced> announced;
    for (const Carried& each : Station::files()) {
        announced.push_back({each.module, each.object.size()});
        for (const ByteVector& block : wire::blocks({each.module, 0, 1}, 64, each.object)) {
            station.events.push_back(block);
        }
    }
    wire::Dii dii{2, 64, 0x80000002};
    dii.associationTag = 0x0050;
    station.carousel = {wire::gatewaySection(2, 1, hex("01")), wire::objectDii(dii, announced)};
    EXPECT_EQ(reportOn(station).verdict, Verdict::Starts);
}

/// A data carousel has no directories.
TEST(Starting, TakesModulesOfADataCarouselForFiles) {
    Station station;
    station.descriptors =
        join({Station::application(), hex("02 05 0004 01 7F 0B"), Station::location(0x07, "/", "", "principal.ncl")});
    station.carouselComponent = "0D E140 F003 52010B";
    const ByteVector module = text("<ncl/>");
    station.carousel = {
        wire::dataDii({2, 64, 0x80000002}, {{3, module.size(), 1, join({hex("02 0D"), text("principal.ncl")})}}),
        wire::block({3, 0}, module)};
    EXPECT_EQ(verdictOf(station), "starts: all there after 0.0 s");
}
