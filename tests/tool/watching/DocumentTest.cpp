#include "watching/Check.h"
#include "watching/Profile.h"

#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

namespace {

using namespace inspect;

/// What a profile does with a check, as the page says it.
std::string cellOf(const Profile& profile, const Check& check) {
    const Limit* const limit = profile.of(check.name);
    if (limit == nullptr) {
        return "-";
    }
    if (!check.impossible.empty()) {
        return "not measured";
    }
    if (check.limited != Check::Limited::Never) {
        return limit->text();
    }
    const Bound& bound = limit->bounds.front();
    const char* const severity = bound.severity == Severity::Error     ? "alarm"
                                 : bound.severity == Severity::Warning ? "warning"
                                                                       : "remark";
    return severity + std::string(bound.isProposal() ? "*" : "");
}

std::string tableOfChecks() {
    std::string table = "| check | TR 101 290 | what | `always` | `dvb` | `isdbt` |\n"
                        "| --- | --- | --- | --- | --- | --- |\n";
    const Profile dvb = Profile::named("dvb");
    const Profile isdbt = Profile::named("isdbt");
    for (const Check& check : checks()) {
        table += fmt::format("| `{}` | {} | {} | {} | {} | {} |\n", check.name, check.indicator, check.what,
                             cellOf(Profile::always(), check), cellOf(dvb, check), cellOf(isdbt, check));
    }
    return table;
}

TEST(LimitsDocument, HasAllChecks) {
    std::ifstream file(LIMITS_PAGE);
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    EXPECT_THAT(page, testing::HasSubstr(tableOfChecks()));
}

} // namespace
