#include "QuorLogger.h"

#include "pat/TPATTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

/// Sets or unsets the variable that limits the level.
class QuorLogger : public testing::Test {
protected:
    void SetUp() override { unsetenv("QUOR_LOG_LEVEL"); }
    void TearDown() override { unsetenv("QUOR_LOG_LEVEL"); }

    static void limit(const char* level) { setenv("QUOR_LOG_LEVEL", level, 1); }
};

/// What arrives on standard error while @p work runs.
template <class Work> std::string printed(Work work) {
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
}

std::string printedAtLevel(int level) {
    return printed([=] { quor_log_std_generic(level, "tag", "level %d", level); });
}

} // namespace

TEST_F(QuorLogger, WritesOneLinePerCall) {
    EXPECT_EQ(printed([] {
                  quor_log_std_generic(4, "tag", "%s: first: %u < %u", "tag", 2U, 3U);
                  quor_log_std_generic(4, "tag", "%s: second: 0x%02X", "tag", 0x0AU);
              }),
              "tag: first: 2 < 3\n"
              "tag: second: 0x0A\n");
}

TEST_F(QuorLogger, WritesNothingToStandardOutput) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(printedAtLevel(4), "level 4\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(QuorLogger, LongLinesStayWhole) {
    const std::string text(100000, 'x');
    EXPECT_EQ(printed([&] { quor_log_std_generic(4, "tag", "%s", text.c_str()); }), text + "\n");
}

TEST_F(QuorLogger, EmptyLineIsALine) {
    EXPECT_EQ(printed([] { quor_log_std_generic(4, "tag", "%s", ""); }), "\n");
}

TEST_F(QuorLogger, WritesEveryLevelWithoutALimit) {
    EXPECT_EQ(printedAtLevel(0), "level 0\n");
    EXPECT_EQ(printedAtLevel(4), "level 4\n");
    EXPECT_EQ(printedAtLevel(99), "level 99\n");
}

TEST_F(QuorLogger, DropsLinesAboveTheLimit) {
    limit("3");
    EXPECT_EQ(printedAtLevel(4), "");
    EXPECT_EQ(printedAtLevel(3), "level 3\n");
    limit("4");
    EXPECT_EQ(printedAtLevel(5), "");
    EXPECT_EQ(printedAtLevel(4), "level 4\n");
    limit("0");
    EXPECT_EQ(printedAtLevel(1), "");
    EXPECT_EQ(printedAtLevel(0), "level 0\n");
}

TEST_F(QuorLogger, LimitMayHaveSeveralDigits) {
    limit("10");
    EXPECT_EQ(printedAtLevel(9), "level 9\n");
    EXPECT_EQ(printedAtLevel(10), "level 10\n");
    EXPECT_EQ(printedAtLevel(11), "");
}

TEST_F(QuorLogger, HandsALineOverInOneWrite) {
    // A datagram socket keeps each write apart from the next one.
    int sockets[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_DGRAM, 0, sockets), 0);
    const int standardError = dup(STDERR_FILENO);
    dup2(sockets[0], STDERR_FILENO);
    quor_log_std_generic(4, "tag", "%s: %d", "tag", 1);
    quor_log_std_generic(4, "tag", "%s: %d", "tag", 2);
    dup2(standardError, STDERR_FILENO);
    char text[64];
    const ssize_t first = recv(sockets[1], text, sizeof text, MSG_DONTWAIT);
    EXPECT_EQ(std::string(text, first < 0 ? 0 : static_cast<std::size_t>(first)), "tag: 1\n");
    const ssize_t second = recv(sockets[1], text, sizeof text, MSG_DONTWAIT);
    EXPECT_EQ(std::string(text, second < 0 ? 0 : static_cast<std::size_t>(second)), "tag: 2\n");
    for (const int descriptor : {sockets[0], sockets[1], standardError}) {
        close(descriptor);
    }
}

TEST_F(QuorLogger, LinesOfSeveralThreadsStayWhole) {
    constexpr int THREADS = 8;
    constexpr int LINES = 500;
    const auto line = [](int thread, int number) {
        return std::to_string(thread) + " " + std::to_string(number) + " " +
               std::string(200, static_cast<char>('a' + thread));
    };
    const std::string text = printed([&] {
        std::vector<std::thread> threads;
        for (int thread = 0; thread < THREADS; ++thread) {
            threads.emplace_back([=] {
                for (int number = 0; number < LINES; ++number) {
                    quor_log_std_generic(4, "tag", "%s", line(thread, number).c_str());
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    std::vector<std::string> expected;
    for (int thread = 0; thread < THREADS; ++thread) {
        for (int number = 0; number < LINES; ++number) {
            expected.push_back(line(thread, number));
        }
    }
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string each; std::getline(stream, each);) {
        lines.push_back(each);
    }
    EXPECT_TRUE(std::is_permutation(lines.begin(), lines.end(), expected.begin(), expected.end()));
}

TEST_F(QuorLogger, LinesOfTheLibraryArriveHere) {
    EXPECT_EQ(printed([] { Quor::TPATTable::parse(nullptr, 0, 1, 1, nullptr, nullptr); }),
              "ISDBTUtils: TISDBTTable::parse: Invalid data. Aborting!\n");
    limit("3");
    EXPECT_EQ(printed([] { Quor::TPATTable::parse(nullptr, 0, 1, 1, nullptr, nullptr); }), "");
}
