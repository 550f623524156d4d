#include "text/Columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace inspect;
using testing::ElementsAre;

const std::vector<Column> COLUMNS{{"", "name", Column::Kind::Name},
                                  {"", "count"},
                                  {"largest", "interval", Column::Kind::Number, 1},
                                  {"", "rate", Column::Kind::Number, 2},
                                  {"", "content", Column::Kind::Rest}};

std::vector<std::string> rows(std::size_t width) {
    Page page;
    page.style.width = width;
    page.style.wraps = true;
    appendRows(page, COLUMNS, {{"日本", "1", "0.1 s", "2.0", "H.264 video and audio"}, {"é", "20", "-", "-", ""}});
    std::vector<std::string> texts;
    for (const Line& line : page.lines) {
        texts.push_back(line.text());
    }
    return texts;
}

TEST(Columns, StandApartAsTheLineHasRoom) {
    EXPECT_THAT(rows(70), ElementsAre("name   count   largest interval   rate   content",
                                      "日本       1              0.1 s    2.0   H.264 video and audio",
                                      "é         20                  -      -"));
}

TEST(Columns, PutQualifiersAboveAndCutTheRest) {
    EXPECT_THAT(rows(40), ElementsAre("            largest", "name count interval rate content",
                                      "日本     1    0.1 s  2.0 H.264 video ...", "é       20        -    -"));
}

TEST(Columns, LeaveOutWhatIsMissedLeastFirst) {
    EXPECT_THAT(rows(36), ElementsAre("            largest", "name count interval content",
                                      "日本     1    0.1 s H.264 video a...", "é       20        -"));
    EXPECT_THAT(rows(24), ElementsAre("name count content", "日本     1 H.264 vide...", "é       20"));
}

} // namespace
