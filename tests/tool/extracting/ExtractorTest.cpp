#include "extracting/Extractor.h"

#include "CarouselMessages.h"
#include "support/Bytes.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace wire;
using testing::ElementsAre;

namespace {

namespace fs = std::filesystem;

constexpr inspect::Pid PID = 0x0140;

/// What is extracted from sections into a folder, which goes with the object.
class Extracting {
public:
    explicit Extracting(std::size_t mostFolders, std::uint64_t mostOfAll = 1000000) {
        std::string path = (fs::temp_directory_path() / "isdbt-inspect-test-XXXXXX").string();
        m_path = mkdtemp(path.data());
        inspect::ExtractionWishes wishes;
        wishes.folder = m_path;
        wishes.mostFolders = mostFolders;
        wishes.mostOfAll = mostOfAll;
        wishes.effort = std::uint64_t{1} << 20;
        m_extractor.emplace(wishes, [this](const inspect::Extraction& extraction) {
            m_told.push_back(std::to_string(extraction.version) + ": " + std::to_string(extraction.files) + " " +
                             (extraction.others.empty() ? "" : extraction.others.front().text));
        });
        m_collector.tell(*m_extractor);
    }
    ~Extracting() { fs::remove_all(m_path); }
    Extracting(const Extracting&) = delete;
    Extracting& operator=(const Extracting&) = delete;

    void take(const ByteVector& bytes, std::uint64_t offset = 0) {
        inspect::Section::Memory memory(static_cast<std::uint8_t*>(std::malloc(bytes.size())));
        std::copy(bytes.begin(), bytes.end(), memory.get());
        m_collector.take({PID, std::move(memory), {1, offset, 0}});
    }

    void finish() { m_collector.finish(); }

    const inspect::Extractor& extractor() const { return *m_extractor; }

    /// Version, files and what is said first of each folder.
    const std::vector<std::string>& told() const { return m_told; }

    std::ptrdiff_t folders() const { return std::distance(fs::directory_iterator(m_path), fs::directory_iterator()); }

private:
    std::string m_path;
    std::vector<std::string> m_told;
    std::optional<inspect::Extractor> m_extractor;
    inspect::CarouselCollector m_collector;
};

} // namespace

TEST(Extractor, WritesNoMoreFoldersThanItMay) {
    Extracting extracting(2);
    for (unsigned version = 1; version < 6; ++version) {
        extracting.take(dataDii({2, 4}, {{1, 1, version}}));
        extracting.take(block({1, 0, version}, hex("0" + std::to_string(version))));
    }
    extracting.finish();
    EXPECT_THAT(extracting.told(), ElementsAre("1: 1 ", "2: 1 ", "3: 0 2 folders are written, and no more will be"));
    EXPECT_EQ(extracting.folders(), 2);
    EXPECT_EQ(extracting.extractor().folders(), 2U);
    EXPECT_FALSE(extracting.extractor().wroteAll());
}

/// More of the stream, and more may be written.
TEST(Extractor, WritesNotFarMoreBytesThanCame) {
    Extracting extracting(100, 5);
    const auto send = [&](unsigned version, std::uint64_t offset) {
        extracting.take(dataDii({2, 4}, {{1, 3, version}}), offset);
        extracting.take(block({1, 0, version}, hex("0102 0" + std::to_string(version))), offset);
    };
    for (unsigned version = 1; version < 6; ++version) {
        send(version, 0);
    }
    const std::string left = "3: 0 6 bytes are written, and no more will be before more comes";
    EXPECT_THAT(extracting.told(), ElementsAre("1: 1 ", "2: 1 ", left));
    EXPECT_EQ(extracting.folders(), 2);
    EXPECT_FALSE(extracting.extractor().wroteAll());
    send(6, 1); // sixteen bytes for one
    send(7, 1);
    send(8, 1);
    EXPECT_THAT(extracting.told(), ElementsAre("1: 1 ", "2: 1 ", left, "3: 1 ", "4: 1 ", "5: 1 "));
}

/// An empty module that changes with each DII would have all others compared each time.
TEST(Extractor, DoesNotCompareWithoutEndWhatDiisChange) {
    constexpr std::size_t SIZE = std::size_t{1} << 16;
    constexpr std::size_t BLOCK_SIZE = 4066;
    Extracting extracting(2);
    const auto announce = [&](unsigned version, std::uint64_t offset) {
        extracting.take(dataDii({2, BLOCK_SIZE}, {{1, SIZE}, {2, 0, version}}), offset);
    };
    announce(0, 0);
    for (const ByteVector& each : blocks({1}, BLOCK_SIZE, fill(SIZE, 'x'))) {
        extracting.take(each);
    }
    for (unsigned version = 1; version < 12; ++version) {
        announce(version, 0);
    }
    EXPECT_THAT(extracting.told(), ElementsAre("1: 2 "));
    for (unsigned version = 12; version < 256; ++version) {
        announce(version, 0);
    }
    const std::string left = "2: 0 DIIs change so often that not each version is looked at";
    EXPECT_THAT(extracting.told(), ElementsAre("1: 2 ", left));
    EXPECT_FALSE(extracting.extractor().wroteAll());
    extracting.take(dataDii({2, 4}, {{1, 1, 9}}), SIZE); // so much of the stream later
    extracting.take(block({1, 0, 9}, hex("09")));
    extracting.finish();
    EXPECT_THAT(extracting.told(), ElementsAre("1: 2 ", left, "2: 1 "));
}
