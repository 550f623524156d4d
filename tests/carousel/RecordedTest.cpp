// Recorded and made streams, against what is known of them.

#include "Given.h"
#include "Sha256.h"
#include "support/RecordedFolder.h"
#include "support/StreamSections.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>

using dsmcc::EntryState;
using dsmcc::ModuleState;
using dsmcc::Naming;
using nlohmann::json;

namespace {

const std::string FOLDER = TEST_DATA "/carousel/";

Given read(const std::string& name, unsigned pid) {
    Given given;
    std::ifstream file(FOLDER + name + ".ts", std::ios::binary);
    const ByteVector stream(std::istreambuf_iterator<char>(file), {});
    for (const ByteVector& section : sectionsOf(stream, pid)) {
        if (section[0] == 0x3B || section[0] == 0x3C) {
            EXPECT_FALSE(given.takeAt(0, section));
        }
    }
    return given;
}

/// Latin-1, unless it is UTF-8 already.
std::string utf8(const std::string& name) {
    if (json::parse("\"" + name + "\"", nullptr, false).is_string()) {
        return name;
    }
    std::string text;
    for (const char letter : name) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte < 0x80) {
            text += letter;
        } else {
            text += {static_cast<char>(0xC0U | byte >> 6U), static_cast<char>(0x80U | (byte & 0x3FU))};
        }
    }
    return text;
}

std::string nameOf(ModuleState state) {
    switch (state) {
    case ModuleState::Complete:
        return "complete";
    case ModuleState::Incomplete:
        return "incomplete";
    case ModuleState::InflateFailed:
        return "inflate-failed";
    case ModuleState::InflateLimit:
        return "inflate-limit";
    case ModuleState::OriginalSize:
        return "original-size-differs";
    case ModuleState::BadBlockSize:
        return "bad-block-size";
    default:
        return "another state";
    }
}

std::string nameOf(const dsmcc::Entry& entry) {
    switch (entry.naming) {
    case Naming::None:
        return "unbound";
    case Naming::Unsafe:
        return "unsafe-name";
    case Naming::Duplicate:
        return "duplicate-name";
    default:
        break;
    }
    switch (entry.state) {
    case EntryState::Complete:
        return "ok";
    case EntryState::ModuleIncomplete:
    case EntryState::ModuleRefused:
        return "module-" + nameOf(entry.module->state);
    case EntryState::ModuleNotAnnounced:
        return "module-not-announced";
    case EntryState::NoSuchObject:
        return "no-such-object";
    case EntryState::OtherCarousel:
        return "other-carousel";
    case EntryState::UnknownKind:
        return "unknown-kind";
    default:
        return "cycle";
    }
}

std::string nameOf(dsmcc::ObjectKind kind) {
    static const char* const NAMES[] = {"fil", "dir", "srg", "str", "ste", "mod", "unknown"};
    return NAMES[static_cast<std::size_t>(kind)];
}

json asTruth(const dsmcc::Module& module) {
    json truth = {{"id", module.id},
                  {"version", module.version},
                  {"size", module.info.size},
                  {"blocks", module.blockCount},
                  {"received", module.received()},
                  {"state", nameOf(module.state)}};
    if (module.originalSize) {
        truth["compressed"] = true;
        truth["original_size"] = *module.originalSize;
    }
    if (module.whole()) {
        truth["sha256"] = sha256(module.bytes);
    }
    if (module.state == ModuleState::Complete) {
        truth["payload_size"] = module.content().size;
        truth["payload_sha256"] = sha256(bytesOf(module.content()));
    }
    return truth;
}

json asTruth(const dsmcc::Entry& entry) {
    json truth = {{"path", entry.naming == Naming::None ? json() : json(utf8(entry.path))},
                  {"kind", nameOf(entry.kind)},
                  {"state", nameOf(entry)}};
    if (entry.state == EntryState::Complete &&
        (entry.kind == dsmcc::ObjectKind::File || entry.kind == dsmcc::ObjectKind::Module)) {
        truth["size"] = entry.content().size;
        truth["sha256"] = sha256(bytesOf(entry.content()));
    }
    if (entry.object != nullptr && entry.object->stream && !entry.object->stream->events.empty()) {
        for (const dsmcc::StreamEvent& event : entry.object->stream->events) {
            truth["events"][event.name] = event.id;
        }
    }
    return truth;
}

json sorted(json list) {
    std::sort(list.begin(), list.end());
    return list;
}

/// A carousel by one of its groups.
json asTruth(const Given& given, std::uint32_t downloadId) {
    json modules = json::array();
    json files = json::array();
    for (dsmcc::Carousel carousel : given.carousels()) {
        auto& groups = carousel.groups;
        groups.erase(std::remove_if(groups.begin(), groups.end(),
                                    [&](const dsmcc::Group& each) {
                                        return each.dii == nullptr || each.dii->downloadId != downloadId;
                                    }),
                     groups.end());
        if (groups.empty()) {
            continue;
        }
        for (const dsmcc::Group& group : groups) {
            for (const dsmcc::Module* const module : group.modules) {
                EXPECT_TRUE(module->refusals.empty()) << module->refusals[0].text;
                modules.push_back(asTruth(*module));
            }
        }
        const dsmcc::Tree tree = given.tree(carousel);
        for (const dsmcc::Entry& entry : tree.entries) {
            files.push_back(asTruth(entry));
        }
        return {{"type", carousel.type == dsmcc::CarouselType::Object ? "object" : "data"},
                {"dsi", carousel.dsi != nullptr},
                {"modules", sorted(modules)},
                {"files", sorted(files)}};
    }
    return {};
}

class RecordedCarousels : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override { SKIP_WITHOUT_RECORDINGS(); }
};

} // namespace

TEST_P(RecordedCarousels, HoldWhatIsKnownOfThem) {
    std::ifstream file(FOLDER + GetParam() + ".json");
    const json truth = json::parse(file);
    for (const json& each : truth["carousels"]) {
        const json& last = each["history"].back();
        const json expected = {{"type", each["type"]},
                               {"dsi", each["dsi"]},
                               {"modules", sorted(last["modules"])},
                               {"files", sorted(last["files"])}};
        const Given given = read(GetParam(), each["pids"][0]);
        EXPECT_EQ(asTruth(given, each["download_id"]), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(, RecordedCarousels,
                         testing::Values("gen-arib", "gen-compressed-nested", "gen-plain", "gen-stream-events",
                                         "gen-two-layer", "gen-why-mixed", "opencaster-ocdir1", "rustdvb-m6",
                                         "tsduck-179.1", "tsduck-203.1"),
                         [](const auto& each) {
                             std::string name = each.param;
                             std::replace_if(
                                 name.begin(), name.end(), [](char letter) { return letter == '-' || letter == '.'; },
                                 '_');
                             return name;
                         });

TEST_F(RecordedTest, EveryDescriptorOfModules) {
    const Given given = read("tsduck-185", 0x00C8);
    const auto& info = given.module(1).info;
    std::vector<unsigned> tags;
    for (const dsmcc::Descriptor& each : info.descriptors) {
        tags.push_back(each.tag);
    }
    EXPECT_EQ(tags, (std::vector<unsigned>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 0x70, 0x71, 0x72}));
    EXPECT_EQ(info.text(dsmcc::Descriptor::TYPE), "foo");
    EXPECT_EQ(info.text(dsmcc::Descriptor::LABEL), "foo-bar");
    EXPECT_EQ(info.moduleTimeOut, 4U);
    EXPECT_EQ(given.module(1).originalSize, 0x87654321U);
    EXPECT_EQ(given.carousels()[0].groups[0].dii->downloadId, 0x12345678U);
    EXPECT_EQ(given.carousels()[0].groups[0].dii->blockSize, 0x2345);
}
