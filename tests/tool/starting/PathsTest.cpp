#include "starting/Paths.h"

#include <gtest/gtest.h>

using inspect::distance;
using inspect::equalWithoutCase;
using inspect::fileOfClass;
using inspect::normalised;
using inspect::pathFrom;
using inspect::split;

TEST(Paths, OfAnAitAreNormalised) {
    EXPECT_EQ(normalised("/guia"), "guia");
    EXPECT_EQ(normalised("guia/"), "guia");
    EXPECT_EQ(normalised("//guia/./fotos//"), "guia/fotos");
    EXPECT_EQ(normalised("/"), "");
    EXPECT_EQ(normalised(""), "");
    EXPECT_EQ(normalised("../guia"), "../guia");
}

TEST(Paths, LeadFromADirectoryOrFromTheRoot) {
    EXPECT_EQ(pathFrom("guia", "principal.ncl"), "guia/principal.ncl");
    EXPECT_EQ(pathFrom("", "principal.ncl"), "principal.ncl");
    EXPECT_EQ(pathFrom("guia", "/lib"), "lib");
    EXPECT_EQ(pathFrom("guia", ""), "guia");
}

TEST(Paths, OfClassesHaveSlashesForDots) {
    EXPECT_EQ(fileOfClass("guia.Principal"), "guia/Principal.class");
    EXPECT_EQ(fileOfClass("Principal"), "Principal.class");
}

TEST(Paths, AreSplitAtASign) {
    EXPECT_EQ(split("a;b;", ';'), (std::vector<std::string_view>{"a", "b", ""}));
    EXPECT_EQ(split("", ';'), std::vector<std::string_view>{""});
}

TEST(Paths, AreComparedWithoutCase) {
    EXPECT_TRUE(equalWithoutCase("guia/Principal.NCL", "Guia/principal.ncl"));
    EXPECT_FALSE(equalWithoutCase("guia", "guias"));
    EXPECT_FALSE(equalWithoutCase("[", "{"));
}

TEST(Paths, AreAsFarApartAsTheyHaveDifferences) {
    EXPECT_EQ(distance("principal.ncl", "principal.ncl", 0), 0U);
    EXPECT_EQ(distance("principal.ncl", "principla.ncl", 3), 2U);
    EXPECT_EQ(distance("principal.ncl", "principal.nc", 3), 1U);
    EXPECT_EQ(distance("principal.ncl", "prinzipal.ncl", 1), 1U);
    EXPECT_EQ(distance("kitten", "sitting", 3), 3U);
    EXPECT_EQ(distance("kitten", "sitting", 2), std::nullopt);
    EXPECT_EQ(distance("", "abc", 3), 3U);
    EXPECT_EQ(distance("abc", "", 3), 3U);
    EXPECT_EQ(distance("abc", "abcdefgh", 3), std::nullopt);
    EXPECT_EQ(distance("abcdefgh", "bcdefghi", 2), 2U);
}
