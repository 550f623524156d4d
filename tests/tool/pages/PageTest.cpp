#include "pages/Page.h"

#include <gtest/gtest.h>

/// As RFC 4648 has it.
TEST(Page, HasBytesInBase64) {
    EXPECT_EQ(inspect::base64(""), "");
    EXPECT_EQ(inspect::base64("f"), "Zg==");
    EXPECT_EQ(inspect::base64("fo"), "Zm8=");
    EXPECT_EQ(inspect::base64("foo"), "Zm9v");
    EXPECT_EQ(inspect::base64("foob"), "Zm9vYg==");
    EXPECT_EQ(inspect::base64("foobar"), "Zm9vYmFy");
    EXPECT_EQ(inspect::base64("\xFB\xEF\xFF"), "++//");
}

TEST(Page, HasLinesInPartsOfIts) {
    const std::string part = inspect::pagePart("</script><script>alert(1)</script>");
    EXPECT_EQ(part.substr(0, part.find('>') + 1), "<script type=\"application/gzip;base64\">");
    EXPECT_EQ(part.find("alert"), std::string::npos);
    EXPECT_EQ(part.find('<', 1), part.size() - std::string("</script>\n").size());
}

TEST(Page, CompressesWithGzip) {
    const std::string bytes = inspect::compressed(std::string(100000, 'x'));
    EXPECT_EQ(bytes.substr(0, 3), "\x1F\x8B\x08");
    EXPECT_LT(bytes.size(), 1000U);
}
