#include "multiplex/Pruning.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;

std::vector<std::string> namesOf(const Fields& fields) {
    std::vector<std::string> names;
    for (const Field& field : fields) {
        names.push_back(field.name);
    }
    return names;
}

using Names = std::vector<std::string>;

} // namespace

TEST(Pruning, LeavesOutWhatHoldsNothing) {
    const Fields fields{absent("aac_type"), text("text", ""),       bytes("additional_info", nullptr, 0),
                        list("items", {}),  flag("aligned", false), number("priority", 0)};
    EXPECT_EQ(namesOf(pruned(fields)), (Names{"aligned", "priority"}));
}

TEST(Pruning, KeepsAnEmptyListWithARemark) {
    EXPECT_EQ(namesOf(pruned({list("items", {}).reads("of 4 sent")})), Names{"items"});
}

/// That a descriptor is there may be all that it says.
TEST(Pruning, KeepsAnEmptyObject) {
    EXPECT_EQ(namesOf(pruned({object("prefetch_descriptor", {})})), Names{"prefetch_descriptor"});
}

TEST(Pruning, LeavesOutTheLengthOfWhatFollows) {
    const std::uint8_t data[] = {0xAA, 0xBB};
    EXPECT_EQ(namesOf(pruned({number("size", 2), bytes("data", data, 2)})), Names{"data"});
    EXPECT_EQ(namesOf(pruned({number("count", 1), list("ids", {number("", 7)})})), Names{"ids"});
    EXPECT_EQ(namesOf(pruned({number("size", 0), bytes("data", data, 0)})), Names{});
}

TEST(Pruning, KeepsNumbersThatSayMore) {
    const std::uint8_t data[] = {0xAA, 0xBB};
    EXPECT_EQ(namesOf(pruned({number("size", 3), bytes("data", data, 2)})), (Names{"size", "data"}));
    EXPECT_EQ(namesOf(pruned({identifier("id", 2, 4), bytes("data", data, 2)})), (Names{"id", "data"}));
    EXPECT_EQ(namesOf(pruned({number("size", 2), number("data", 2)})), (Names{"size", "data"}));
}

TEST(Pruning, GoesDown) {
    const Fields left = pruned({list("items", {object("", {absent("nothing"), number("something", 1)})})});
    const Fields& elements = std::get<List>(left.front().value).elements;
    ASSERT_EQ(elements.size(), 1U);
    EXPECT_EQ(namesOf(std::get<Object>(elements.front().value).fields), Names{"something"});
}
