#include "tool/Process.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

/// What a page says that is typed, and what it says that comes of it.
struct Shown {
    std::string command;
    std::string output;
};

/// The blocks of a page.
std::vector<Shown> shownIn(const std::string& page) {
    const std::string begin = "```console\n$ ";
    std::vector<Shown> shown;
    for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
        const std::size_t command = at + begin.size();
        const std::size_t output = page.find('\n', command) + 1;
        shown.push_back(
            {page.substr(command, output - 1 - command), page.substr(output, page.find("```", output) - output)});
    }
    return shown;
}

/// A folder for what the examples write, with the samples in it.
class Desk {
public:
    Desk() {
        std::string path = (std::filesystem::temp_directory_path() / "isdbt-inspect-test-XXXXXX").string();
        m_path = mkdtemp(path.data());
        std::filesystem::create_symlink(PROJECT_FOLDER "/samples", m_path + "/samples");
    }
    ~Desk() { std::filesystem::remove_all(m_path); }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

void expectWhatTheToolWrites(const std::string& document, std::size_t count) {
    const std::vector<Shown> examples = shownIn(readText(PROJECT_FOLDER "/docs/" + document));
    ASSERT_EQ(examples.size(), count);
    const Desk desk;
    std::string tool = "isdbt-inspect() {";
    for (const std::string& word : commandOf(INSPECT_PROGRAM)) {
        tool += ' ' + word;
    }
    tool += " \"$@\"; }\n";
    for (const Shown& each : examples) {
        const Finished finished = runProgram("/bin/bash", {"-c", "cd " + desk.path() + '\n' + tool + each.command});
        EXPECT_EQ(finished.output, each.output) << each.command;
    }
}

TEST(Documents, ShowWhatTheToolWrites) {
    expectWhatTheToolWrites("json.md", 7);
    expectWhatTheToolWrites("isdbt-inspect.md", 12);
}

} // namespace
