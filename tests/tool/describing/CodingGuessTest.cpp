#include "describing/CodingGuess.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;

Fields networkOf(std::uint32_t id, bool isTerrestrial) {
    Fields stream{identifier("original_network_id", id, 4)};
    if (isTerrestrial) {
        stream.push_back(object("terrestrial_delivery_system_descriptor", {}));
    }
    return {list("transport_streams", {object("", stream)})};
}

Fields withLanguage(std::string_view code) {
    return {
        list("elementary_streams", {object("", {object("component_descriptor", {isoCode("language_code", code)})})})};
}

Coding guessed(const std::vector<Fields>& tables) {
    CodingGuess guess;
    for (const Fields& table : tables) {
        guess.learn(table);
    }
    return guess.coding();
}

TEST(CodingGuess, IsLatinAmericaWithoutAWord) {
    EXPECT_EQ(guessed({}), Coding::LatinAmerica);
    EXPECT_EQ(guessed({{identifier("original_network_id", 0x20FA, 4)}}), Coding::LatinAmerica);
}

TEST(CodingGuess, GoesByTheNetwork) {
    EXPECT_EQ(guessed({{identifier("original_network_id", 0x7FE8, 4)}}), Coding::Japan);
    EXPECT_EQ(guessed({{identifier("network_id", 0x7000, 4)}}), Coding::Japan);
    EXPECT_EQ(guessed({{identifier("network_id", 0x8000, 4)}}), Coding::LatinAmerica);
    EXPECT_EQ(guessed({networkOf(0x7ED4, true)}), Coding::Japan);
    EXPECT_EQ(guessed({networkOf(0x0004, false)}), Coding::Japan);
    EXPECT_EQ(guessed({networkOf(0x0004, true)}), Coding::LatinAmerica);
}

TEST(CodingGuess, GoesByLanguagesAndCountries) {
    EXPECT_EQ(guessed({withLanguage("jpn")}), Coding::Japan);
    EXPECT_EQ(guessed({withLanguage("jpn"), withLanguage("por")}), Coding::LatinAmerica);
    EXPECT_EQ(guessed({withLanguage("por"), withLanguage("eng")}), Coding::LatinAmerica);
    EXPECT_EQ(guessed({{text("text", "jpn")}}), Coding::LatinAmerica); // no language
}

TEST(CodingGuess, BelievesNetworksRatherThanLanguages) {
    EXPECT_EQ(guessed({networkOf(0x7ED4, true), withLanguage("por")}), Coding::Japan);
    EXPECT_EQ(guessed({withLanguage("jpn"), networkOf(0x02E1, true)}), Coding::LatinAmerica);
    EXPECT_EQ(guessed({networkOf(0x02E1, true), withLanguage("jpn")}), Coding::LatinAmerica);
}

} // namespace
