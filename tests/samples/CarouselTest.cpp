// Files are broadcast and come out again.

#include "CarouselWriter.h"
#include "Multiplexer.h"
#include "Sample.h"
#include "dsmcc/Carousels.h"
#include "support/StreamSections.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <random>
#include <set>

using sample::CarouselEntry;
using sample::CarouselPlan;
using sample::CarouselWriter;

namespace {

constexpr unsigned PID = 0x0140;

using Files = std::map<std::string, ByteVector>;

/// Carousels that take sections one after the other.
class Receiver {
public:
    void take(const std::vector<ByteVector>& sections) {
        for (const ByteVector& each : sections) {
            m_seconds += 0.001;
            m_carousels.take({each.data(), each.size()}, m_seconds);
        }
    }

    /// Of the only carousel, those that are complete.
    Files files() const {
        Files all;
        for (const dsmcc::Carousel& carousel : m_carousels.carousels()) {
            for (const dsmcc::Entry& each : m_carousels.tree(carousel).entries) {
                if (each.kind == dsmcc::ObjectKind::File && each.state == dsmcc::EntryState::Complete &&
                    each.naming == dsmcc::Naming::Good) {
                    const dsmcc::ByteView content = each.content();
                    all[each.path] = ByteVector(content.begin(), content.end());
                }
            }
        }
        return all;
    }

    dsmcc::Carousel carousel() const { return m_carousels.carousels().at(0); }

    std::vector<dsmcc::Entry> entries() const { return m_carousels.tree(carousel()).entries; }

    std::vector<const dsmcc::Module*> modules() const {
        std::vector<const dsmcc::Module*> all;
        for (const dsmcc::Carousel& carousel : m_carousels.carousels()) {
            for (const dsmcc::Group& each : carousel.groups) {
                all.insert(all.end(), each.modules.begin(), each.modules.end());
            }
        }
        return all;
    }

private:
    dsmcc::Carousels m_carousels;
    double m_seconds = 0;
};

/// Files of many sizes, in folders of 20 and folders of those.
Files someFiles(unsigned count) {
    std::mt19937 random(count);
    Files all;
    for (unsigned at = 0; at < count; ++at) {
        const std::string folder = "folder" + std::to_string(at / 400) + "/" + std::to_string(at / 20) + "/";
        ByteVector content(random() % 2000);
        // Half of them do not compress.
        std::generate(content.begin(), content.end(),
                      [&] { return static_cast<QUOR_U8>(at % 2 == 0 ? random() : random() % 4); });
        all[(at % 7 == 0 ? "" : folder) + "file" + std::to_string(at)] = std::move(content);
    }
    return all;
}

std::vector<CarouselEntry> entriesOf(const Files& files) {
    std::vector<CarouselEntry> entries;
    for (const auto& [path, content] : files) {
        entries.push_back({path, content});
    }
    return entries;
}

/// A stream of 20 Mbit/s that is a third full.
std::vector<ByteVector> multiplexed(const CarouselWriter& carousel, unsigned turns) {
    constexpr unsigned BIT_RATE = 20000000;
    sample::Multiplexer multiplexer(BIT_RATE);
    std::size_t packets = 0;
    for (const ByteVector& each : carousel.turn()) {
        packets += each.size() / 184 + 1;
    }
    const sample::Ticks turn = packets * 3 * 188 * 8 * sample::SECOND / BIT_RATE;
    multiplexer.repeatCarousel(PID, carousel, turn, turn, 0);
    ByteVector stream;
    while (multiplexer.now() < turn * turns) {
        const sample::Packet packet = multiplexer.next();
        stream.insert(stream.end(), packet.begin(), packet.end());
    }
    return sectionsOf(stream, PID);
}

CarouselPlan plan(bool compressed, std::uint16_t blockSize = 4066) {
    CarouselPlan made;
    made.compressed = compressed;
    made.blockSize = blockSize;
    return made;
}

} // namespace

class CarouselOfFiles : public testing::TestWithParam<std::tuple<unsigned, bool>> {};

TEST_P(CarouselOfFiles, ComesOutAsItWentIn) {
    const auto [count, compressed] = GetParam();
    const Files files = someFiles(count);
    Receiver receiver;
    receiver.take(multiplexed(CarouselWriter(plan(compressed), entriesOf(files)), 1));
    EXPECT_TRUE(receiver.files() == files);
}

INSTANTIATE_TEST_SUITE_P(Trees, CarouselOfFiles, testing::Combine(testing::Values(1, 50, 2000), testing::Bool()),
                         [](const auto& each) {
                             return std::to_string(std::get<0>(each.param)) +
                                    (std::get<1>(each.param) ? "Compressed" : "Plain");
                         });

/// The section_number of a block wraps at 256.
TEST(CarouselBlocks, MoreThanASectionNumberCounts) {
    std::mt19937 random(1);
    Files files;
    for (const char* const name : {"one", "two"}) {
        ByteVector& content = files[name];
        content.resize(1200000);
        std::generate(content.begin(), content.end(), [&] { return static_cast<QUOR_U8>(random()); });
    }
    for (const bool compressed : {false, true}) {
        const CarouselWriter carousel(plan(compressed), entriesOf(files));
        EXPECT_EQ(carousel.blocks().size(), 1U + 296U + 296U); // the directory, and two modules
        const ByteVector& last = carousel.blocks().back();
        EXPECT_EQ(ByteVector(last.begin() + 6, last.begin() + 8), hex("27 27"));  // section_number, last_section_number
        EXPECT_EQ(ByteVector(last.begin() + 24, last.begin() + 26), hex("0127")); // block_number
        Receiver receiver;
        receiver.take(multiplexed(carousel, 1));
        EXPECT_TRUE(receiver.files() == files);
    }
}

/// More modules than a DII announces.
TEST(CarouselModules, OfOneFileEach) {
    const Files files = someFiles(200);
    CarouselPlan each = plan(true);
    each.moduleSize = 1;
    const CarouselWriter carousel(each, entriesOf(files));
    EXPECT_EQ(carousel.announcements().size(), 5U); // the DSI, and DIIs of 64 modules
    Receiver receiver;
    receiver.take(multiplexed(carousel, 1));
    EXPECT_EQ(receiver.modules().size(), 212U); // with the root, and 11 folders
    EXPECT_TRUE(receiver.files() == files);
}

/// Who sees one version after the other has the files of each.
TEST(CarouselVersions, FollowOneAnother) {
    Files files = someFiles(50);
    CarouselPlan small = plan(true);
    small.moduleSize = 4096;
    CarouselWriter carousel(small, entriesOf(files));
    Receiver receiver;
    receiver.take(multiplexed(carousel, 2));
    EXPECT_TRUE(receiver.files() == files);

    files["file0"] = text("another one");
    carousel.update(entriesOf(files));
    receiver.take(multiplexed(carousel, 2));
    EXPECT_TRUE(receiver.files() == files);
    EXPECT_EQ(receiver.carousel().dsi->transactionId, 0x80010001U);
    std::set<unsigned> versions;
    for (const dsmcc::Module* const each : receiver.modules()) {
        versions.insert(each->version);
    }
    EXPECT_EQ(versions, (std::set<unsigned>{0, 1})); // what is the same stays

    files.erase("file7");
    files["new/folder/file"] = text("a new one");
    carousel.update(entriesOf(files));
    receiver.take(multiplexed(carousel, 2));
    EXPECT_TRUE(receiver.files() == files);
    EXPECT_EQ(receiver.carousel().dsi->transactionId, 0x80020000U);
}

namespace {

/// What has come of a carousel whose modules hold an object each, by the packets that did: module 1 is the root,
/// modules 2 and 3 are folders, and the files follow in the order of their paths.
class Arrival {
public:
    explicit Arrival(const std::vector<ByteVector>& sections) {
        for (const ByteVector& each : sections) {
            m_missing.insert(each);
        }
    }

    void came(const ByteVector& section) { m_missing.erase(section); }

    Files complete(const Files& all) const {
        unsigned module = 4;
        std::set<unsigned> incomplete;
        bool announced = true;
        for (const ByteVector& each : m_missing) {
            if (each[0] == 0x3C) {
                incomplete.insert(static_cast<unsigned>(each[20] << 8U | each[21]));
            } else if (each[11] == 0x02) { // the DII; without the DSI, a gateway is found all the same
                announced = false;
            }
        }
        Files found;
        for (const auto& [path, content] : all) {
            const unsigned folder = path[0] == 'a' ? 2 : 3;
            const std::set<unsigned> needed{1, folder, module++};
            const bool whole =
                std::none_of(needed.begin(), needed.end(), [&](unsigned each) { return incomplete.count(each) != 0; });
            if (announced && whole) {
                found[path] = content;
            }
        }
        return found;
    }

private:
    std::set<ByteVector> m_missing;
};

} // namespace

class CarouselWithLosses : public testing::TestWithParam<unsigned> {};

/// After each cycle there are the files whose blocks have all come, and no other.
TEST_P(CarouselWithLosses, HasWhatHasCome) {
    Files files;
    std::mt19937 random(GetParam());
    for (const std::string folder : {"a/", "b/"}) {
        for (unsigned at = 10; at < 35; ++at) {
            files[folder + std::to_string(at)] = ByteVector(random() % 5000, static_cast<QUOR_U8>(at));
        }
    }
    CarouselPlan each = plan(false, 1024);
    each.moduleSize = 1;
    const std::vector<ByteVector> turn = CarouselWriter(each, entriesOf(files)).turn();
    Arrival arrival(turn);
    Receiver receiver;
    unsigned continuity = 0;
    unsigned cycles = 0;
    for (Files complete; complete != files && cycles < 100; ++cycles) {
        ByteVector stream;
        for (const ByteVector& section : turn) {
            bool whole = true;
            for (const ByteVector& packet : packetsOf(section, PID, continuity)) {
                if (random() % 100 < GetParam()) {
                    whole = false;
                } else {
                    stream.insert(stream.end(), packet.begin(), packet.end());
                }
            }
            if (whole) {
                arrival.came(section);
            }
        }
        receiver.take(sectionsOf(stream, PID));
        complete = arrival.complete(files);
        EXPECT_TRUE(receiver.files() == complete) << "cycle " << cycles;
    }
    const std::map<unsigned, unsigned> expected{{1, 2}, {5, 4}, {20, 20}};
    EXPECT_EQ(cycles, expected.at(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Percent, CarouselWithLosses, testing::Values(1, 5, 20));

namespace {

Files filesOnDisk(const std::filesystem::path& folder) {
    Files all;
    for (const auto& each : std::filesystem::recursive_directory_iterator(folder)) {
        if (each.is_regular_file()) {
            std::ifstream file(each.path(), std::ios::binary);
            all[each.path().lexically_relative(folder).generic_string()] =
                ByteVector(std::istreambuf_iterator<char>(file), {});
        }
    }
    return all;
}

} // namespace

/// Two seconds of it have at least two whole turns: a block comes three times.
TEST(SampleCarousel, HasTheFilesOfTheApplications) {
    Receiver receiver;
    receiver.take(sectionsOf(sample::shortSample(), PID));
    EXPECT_EQ(receiver.files(), filesOnDisk(APPLICATIONS));
    EXPECT_EQ(receiver.carousel().id, 1U);
    for (const dsmcc::Module* const each : receiver.modules()) {
        EXPECT_GE(each->repetition.count, 3U) << each->id;
        EXPECT_EQ(each->state, dsmcc::ModuleState::Complete) << each->id;
    }
    EXPECT_GT(receiver.modules().at(0)->blockCount, 1U);
}

TEST(SampleCarousel, HasAStreamEventObject) {
    Receiver receiver;
    receiver.take(sectionsOf(sample::shortSample(), PID));
    for (const dsmcc::Entry& each : receiver.entries()) {
        if (each.kind == dsmcc::ObjectKind::StreamEvent) {
            EXPECT_EQ(each.path, "enquete/eventos");
            const dsmcc::StreamInfo& stream = *each.object->stream;
            ASSERT_EQ(stream.events.size(), 1U);
            EXPECT_EQ(stream.events[0].name, "gol");
            EXPECT_EQ(stream.events[0].id, 7U);
            ASSERT_EQ(stream.taps.size(), 1U);
            EXPECT_EQ(stream.taps[0].use, 0x000CU);
            EXPECT_EQ(stream.taps[0].associationTag, 0x0050U);
            return;
        }
    }
    ADD_FAILURE() << "none there";
}
