#include "tool/Process.h"

#include <gtest/gtest.h>

namespace {

/// What a page says that is typed, and what it says that comes of it.
struct Shown {
    std::string command;
    std::string output;
};

/// The blocks of a page that begin with the tool.
std::vector<Shown> shownIn(const std::string& page) {
    const std::string begin = "```console\n$ isdbt-inspect ";
    std::vector<Shown> shown;
    for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
        const std::size_t command = at + begin.size();
        const std::size_t output = page.find('\n', command) + 1;
        shown.push_back(
            {page.substr(command, output - 1 - command), page.substr(output, page.find("```", output) - output)});
    }
    return shown;
}

void expectWhatTheToolWrites(const std::string& document, std::size_t count) {
    const std::vector<Shown> examples = shownIn(readText(PROJECT_FOLDER "/docs/" + document));
    ASSERT_EQ(examples.size(), count);
    for (const Shown& each : examples) {
        std::string command = "cd " PROJECT_FOLDER " &&";
        for (const std::string& word : commandOf(INSPECT_PROGRAM)) {
            command += ' ' + word;
        }
        const Finished finished = runProgram("/bin/sh", {"-c", command + ' ' + each.command});
        EXPECT_EQ(finished.output, each.output) << each.command;
    }
}

TEST(Documents, ShowWhatTheToolWrites) {
    expectWhatTheToolWrites("json.md", 6);
    expectWhatTheToolWrites("isdbt-inspect.md", 6);
}

} // namespace
