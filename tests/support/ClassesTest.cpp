#include "support/TypedRows.h"

#include <fstream>
#include <set>

namespace {

bool isTable(const std::string& name) {
    const std::string end = "Table";
    return name.size() > end.size() && name.compare(name.size() - end.size(), end.size(), end) == 0;
}

} // namespace

/// Any other class would go untested.
TEST(Classes, EachThatParsesStandsInTheList) {
    std::set<std::string> listed;
    forEachRow(classRows(), [&](const auto& row) {
        using Row = std::decay_t<decltype(row)>;
        listed.insert(nameOf<typename Row::Class>());
        if constexpr (Row::Items::HOLDS != Holds::NOTHING) {
            listed.insert(nameOf<typename Row::Items::Item>());
        }
    });
    std::ifstream parsing(CLASSES_WITH_PARSE);
    std::size_t count = 0;
    for (std::string name; std::getline(parsing, name); ++count) {
        EXPECT_TRUE(isTable(name) || listed.count(name) == 1) << name << " does not stand in support/Classes.h";
    }
    EXPECT_GT(count, listed.size() / 2) << "where is " CLASSES_WITH_PARSE "?";
}
