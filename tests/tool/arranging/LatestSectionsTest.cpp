#include "multiplex/LatestSections.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Latest = inspect::LatestSections<std::string, 4>;

constexpr inspect::TableKey SDT{0x0011, 0x42, 0x0735};
constexpr inspect::TableKey OTHER_SDT{0x0011, 0x42, 0x0736};

/// All contents in the order of their places.
std::vector<std::string> contents(const Latest& latest) {
    std::vector<std::string> texts;
    latest.forEach([&texts](const inspect::TableKey& /*table*/, const std::string& text) { texts.push_back(text); });
    return texts;
}

} // namespace

TEST(LatestSections, KeepsTheLastOfAPlace) {
    Latest latest;
    latest.put({SDT, 0}, "first");
    latest.put({SDT, 1}, "other section");
    latest.put({OTHER_SDT, 0}, "other table");
    latest.put({SDT, 0}, "last");
    EXPECT_EQ(contents(latest), (std::vector<std::string>{"last", "other section", "other table"}));
    EXPECT_EQ(latest.forgotten(), 0U);
}

TEST(LatestSections, ForgetsWhatATableHasNoMore) {
    Latest latest;
    latest.put({SDT, 0}, "stays");
    latest.put({SDT, 1}, "stays, too");
    latest.put({SDT, 255}, "goes");
    latest.put({OTHER_SDT, 2}, "of another table");
    latest.forgetBeyond({SDT, 1});
    EXPECT_EQ(contents(latest), (std::vector<std::string>{"stays", "stays, too", "of another table"}));
}

TEST(LatestSections, ForgetsTablesThatAnotherReplaces) {
    Latest latest;
    latest.put({SDT, 0}, "goes");
    latest.put({OTHER_SDT, 0}, "stays");
    latest.put({{0x0012, 0x42, 0x0735}, 0}, "of another PID");
    latest.put({{0x0011, 0x40, 0x0735}, 0}, "of another table_id");
    latest.forgetOthers(OTHER_SDT);
    EXPECT_EQ(contents(latest), (std::vector<std::string>{"of another table_id", "stays", "of another PID"}));
}

TEST(LatestSections, ForgetsTheOldestOfTheTableThatHasMost) {
    Latest latest;
    latest.put({{0x0000, 0x00, 1}, 0}, "PAT");
    latest.put({SDT, 1}, "second");
    latest.put({SDT, 0}, "first");
    latest.put({SDT, 1}, "second, again");
    latest.put({{0x0100, 0x02, 1}, 0}, "PMT");
    latest.put({OTHER_SDT, 0}, "third");
    EXPECT_EQ(contents(latest), (std::vector<std::string>{"PAT", "second, again", "third", "PMT"}));
    EXPECT_EQ(latest.forgotten(), 1U);
}
