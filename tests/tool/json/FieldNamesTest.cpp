#include "tool/json/Schema.h"

#include "tool/Process.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

namespace {

/// The names of all members of all objects.
void addNames(std::set<std::string>& names, const nlohmann::json& schema) {
    for (const auto& [key, value] : schema.items()) {
        if (key == "properties") {
            for (const auto& [name, property] : value.items()) {
                names.insert(name);
            }
        }
        if (value.is_structured()) {
            addNames(names, value);
        }
    }
}

/// What stands in lines beside the fields, and begins like the name of one.
const std::set<std::string> WORDS{"alarm",
                                  "are",
                                  "area",
                                  "begin",
                                  "behind",
                                  "block",
                                  "byte",
                                  "carousel",
                                  "clear",
                                  "complete",
                                  "component",
                                  "connection",
                                  "directory",
                                  "discontinuity",
                                  "end",
                                  "ended",
                                  "errors",
                                  "failed",
                                  "faults",
                                  "file",
                                  "from",
                                  "gateway",
                                  "highest",
                                  "icons",
                                  "interleaving",
                                  "interval",
                                  "is",
                                  "jumps",
                                  "location",
                                  "longest",
                                  "lost",
                                  "lowest",
                                  "mean",
                                  "modulation",
                                  "module",
                                  "names",
                                  "new",
                                  "no",
                                  "none",
                                  "nothing",
                                  "ok",
                                  "once",
                                  "original_network",
                                  "passed",
                                  "place",
                                  "places",
                                  "prefetch",
                                  "profile",
                                  "provider",
                                  "rate",
                                  "remark",
                                  "schedule",
                                  "section",
                                  "service",
                                  "shortest",
                                  "silent_change",
                                  "starts",
                                  "tag",
                                  "there",
                                  "time",
                                  "times",
                                  "to",
                                  "transport",
                                  "turn",
                                  "visible",
                                  "warning",
                                  "yes"};

} // namespace

/// A field is looked up by its name, and one that is misspelt is found nowhere: nobody would see that it is missing.
TEST(FieldNames, AreThoseOfTheSchema) {
    std::set<std::string> names = WORDS;
    addNames(names, nlohmann::json::parse(readText(SCHEMA_FILE)));
    const std::regex literal("\"([a-z][a-z0-9_]*)\"");
    std::size_t looked = 0;
    for (const char* const room : {"arranging", "checking", "comparing", "counting", "multiplex", "starting", "text"}) {
        for (const auto& file :
             std::filesystem::directory_iterator(PROJECT_FOLDER "/tools/isdbt-inspect/" + std::string(room))) {
            const std::string source = file.path().extension() == ".cpp" ? readText(file.path()) : "";
            for (std::sregex_iterator each(source.begin(), source.end(), literal), end; each != end; ++each, ++looked) {
                EXPECT_EQ(names.count((*each)[1]), 1U) << (*each)[1] << " in " << file.path().filename();
            }
        }
    }
    EXPECT_GT(looked, 150U);
}
