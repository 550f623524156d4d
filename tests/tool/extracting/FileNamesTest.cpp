#include "extracting/FileNames.h"

#include <gtest/gtest.h>

using inspect::fileNameOf;
using inspect::filePathOf;
using inspect::plainFileNameOf;

TEST(FileNames, SafeOnesStay) {
    for (const char* const name : {"main.ncl", "...", "a b", "100%", "a%2Fb", "-rf", "\xC3\xA1", "\xE1", "~", "1:b"}) {
        EXPECT_EQ(fileNameOf(name), name);
    }
    EXPECT_EQ(fileNameOf(std::string(255, 'a')), std::string(255, 'a'));
}

TEST(FileNames, OthersAreEscaped) {
    EXPECT_EQ(fileNameOf(""), "%");
    EXPECT_EQ(fileNameOf("."), "%2E");
    EXPECT_EQ(fileNameOf(".."), "%2E%2E");
    EXPECT_EQ(fileNameOf("/etc/passwd"), "%2Fetc%2Fpasswd");
    EXPECT_EQ(fileNameOf("..\\a"), "..%5Ca");
    EXPECT_EQ(fileNameOf("C:a:b"), "C%3Aa%3Ab");
    EXPECT_EQ(fileNameOf("a\n\x1B[2J\x7F"), "a%0A%1B[2J%7F");
    EXPECT_EQ(fileNameOf("50%/"), "50%25%2F");
    EXPECT_EQ(fileNameOf(std::string("a\0b", 3)), "a%00b");
}

TEST(FileNames, LongOnesHaveAHash) {
    const std::string one = fileNameOf(std::string(256, 'a') + 'b');
    EXPECT_EQ(one.size(), 230U);
    EXPECT_EQ(one.substr(218), "aa%~1770CCE5");
    EXPECT_NE(one, fileNameOf(std::string(256, 'a') + 'c'));
}

TEST(FileNames, PlainOnes) {
    EXPECT_EQ(plainFileNameOf("a-b_c.1"), "a-b_c.1");
    EXPECT_EQ(plainFileNameOf("a:b \xC3\xA1"), "a%3Ab%20%C3%A1");
}

TEST(FileNames, OfPaths) {
    EXPECT_EQ(filePathOf("media/film.ts"), "media/film.ts");
    EXPECT_EQ(filePathOf("media/../film.ts"), "media%2F..%2Ffilm.ts");
    EXPECT_EQ(filePathOf("media//film.ts"), "media%2F%2Ffilm.ts");
    EXPECT_EQ(filePathOf("/media"), "%2Fmedia");
    EXPECT_EQ(filePathOf("media/"), "media%2F");
}
