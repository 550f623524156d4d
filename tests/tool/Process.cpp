#include "Process.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

/// Who runs the tests in the background of a shell has them, and what they start, ignore it.
[[maybe_unused]] const auto INTERRUPTIBLE = std::signal(SIGINT, SIG_DFL);

constexpr int MODE = 0600;

struct Pipe {
    int readEnd;
    int writeEnd;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    return {ends[0], ends[1]};
}

/// Feeds a program that may stop reading before the end.
void feed(int descriptor, const Start& start) {
    const std::size_t chunk = start.chunk == 0 ? std::max<std::size_t>(start.input.size(), 1) : start.chunk;
    for (std::size_t at = 0; at < start.input.size();) {
        const ssize_t count = write(descriptor, start.input.data() + at, std::min(chunk, start.input.size() - at));
        if (count < 0) {
            break;
        }
        at += static_cast<std::size_t>(count);
    }
    close(descriptor);
}

} // namespace

Finished runProgram(const std::string& program, const std::vector<std::string>& arguments, const Start& start) {
    std::signal(SIGPIPE, SIG_IGN);
    const TemporaryFile output;
    const TemporaryFile errors;
    const std::string outputPath = start.outputFile.empty() ? output.path() : start.outputFile;
    const Pipe input = makePipe();
    const Pipe unread = makePipe();
    close(unread.readEnd);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.readEnd, STDIN_FILENO);
    if (start.outputIsClosed) {
        posix_spawn_file_actions_adddup2(&actions, unread.writeEnd, STDOUT_FILENO);
    } else {
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputPath.c_str(), O_WRONLY | O_APPEND, MODE);
    }
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.path().c_str(), O_WRONLY | O_APPEND, MODE);

    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    std::transform(words.begin(), words.end(), std::back_inserter(argv), [](std::string& word) { return word.data(); });
    argv.push_back(nullptr);

    pid_t child = 0;
    const int failed = posix_spawnp(&child, argv.front(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input.readEnd);
    close(unread.writeEnd);
    if (failed != 0) {
        close(input.writeEnd);
        throw std::runtime_error("cannot run " + program);
    }
    std::thread writer(feed, input.writeEnd, std::cref(start));
    int status = 0;
    waitpid(child, &status, 0);
    writer.join();
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readText(output.path()), readText(errors.path())};
}

std::vector<std::string> commandOf(const std::string& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> words{program};
    if (*EMULATOR != '\0') {
        words.insert(words.begin(), EMULATOR);
    }
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

Finished runBuilt(const std::string& program, const std::vector<std::string>& arguments, const Start& start) {
    const std::vector<std::string> words = commandOf(program, arguments);
    return runProgram(words.front(), {words.begin() + 1, words.end()}, start);
}

Finished inspect(const std::vector<std::string>& arguments, const Start& start) {
    return runBuilt(INSPECT_PROGRAM, arguments, start);
}

Finished inspectTables(std::vector<std::string> arguments, const Start& start) {
    arguments.insert(arguments.end(), {"--view", "tables"});
    return inspect(arguments, start);
}

TemporaryFile::TemporaryFile(const ByteVector& bytes) {
    const char* const folder = std::getenv("TMPDIR");
    m_path = std::string(folder == nullptr ? "/tmp" : folder) + "/isdbt-inspect-test-XXXXXX";
    const int descriptor = mkostemp(m_path.data(), O_CLOEXEC);
    if (descriptor < 0) {
        throw std::runtime_error("no temporary file");
    }
    close(descriptor);
    std::ofstream(m_path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

TemporaryFile::~TemporaryFile() {
    unlink(m_path.c_str());
}

Finished inspectBytes(const ByteVector& stream, std::vector<std::string> arguments) {
    const TemporaryFile file(stream);
    arguments.push_back(file.path());
    Finished finished = inspectTables(std::move(arguments));
    const std::size_t at = finished.errors.find(file.path());
    if (at != std::string::npos) {
        finished.errors.replace(at, file.path().size(), "FILE");
    }
    return finished;
}

Finished inspectOnly(const std::string& tables, const ByteVector& stream) {
    return inspectBytes(stream, {"--table", tables});
}

ByteVector readFile(const std::string& path) {
    const std::string content = readText(path);
    return ByteVector(content.begin(), content.end());
}

std::string readText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("no file " + path);
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}
