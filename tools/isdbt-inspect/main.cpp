#include "Inspector.h"
#include "rendering/TextRenderer.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <optional>
#include <unistd.h>

namespace {

/// Exit status, as scripts know it.
enum Status { AllWell = 0, InputUnreadable = 1, WrongUsage = 2, FaultFound = 3 };

int fail(Status status, const std::string& message) {
    std::fprintf(stderr, "isdbt-inspect: %s\n", message.c_str());
    return status;
}

struct Options {
    std::string path;
    inspect::PidSet pids;
    std::string charset = inspect::Charset::USUAL;
};

/// A PID as people write it: decimal, or hexadecimal behind 0x. A leading zero has no meaning.
std::optional<inspect::Pid> readPid(const std::string& text) {
    const bool hexadecimal = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const char* const begin = text.data() + (hexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    inspect::Pid pid = 0;
    const auto [behind, error] = std::from_chars(begin, end, pid, hexadecimal ? 16 : 10);
    if (error != std::errc() || behind != end || pid >= inspect::NULL_PID) {
        return std::nullopt;
    }
    return pid;
}

std::string checkPid(const std::string& text) {
    return readPid(text) ? "" : text + " is no PID (0 to 8190, or 0x0000 to 0x1FFE)";
}

std::string checkCharset(const std::string& name) {
    try {
        const inspect::Charset charset(name);
        return {};
    } catch (const inspect::UnknownCharset& error) {
        return error.what();
    }
}

int inspectFile(const Options& options) {
    inspect::Output output(STDOUT_FILENO);
    inspect::TextRenderer renderer(output);
    inspect::FileInput input(options.path);
    const inspect::Charset charset(options.charset);
    inspect::Inspector inspector(renderer, options.pids, charset);
    inspector.run(input);
    return inspector.foundFault() ? FaultFound : AllWell;
}

int run(int argc, char** argv) {
    CLI::App app("Shows the tables that an ISDB-T transport stream carries, as a receiver with the Ginga middleware "
                 "understands them.",
                 "isdbt-inspect");
    Options options;
    app.add_option("FILE", options.path, "transport stream with packets of 188, 192 or 204 bytes; - is standard input")
        ->required();
    app.add_option_function<std::vector<std::string>>(
           "--pid",
           [&options](const std::vector<std::string>& pids) {
               for (const std::string& pid : pids) {
                   options.pids.set(*readPid(pid));
               }
           },
           "also look at this PID, decimal or 0x hexadecimal; may be given several times")
        ->type_name("PID")
        ->allow_extra_args(false)
        ->check(checkPid);
    app.add_option("--charset", options.charset, "character set of the texts, any that iconv --list names")
        ->type_name("NAME")
        ->capture_default_str()
        ->check(checkCharset);
    app.set_version_flag("--version", std::string("isdbt-inspect ") + ISDBT_INSPECT_VERSION);
    app.footer("Exit status: 0 all well, 1 the input could not be read to its end, 2 wrong usage, "
               "3 something was rejected or damaged.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& wish) {
        return app.exit(wish);
    } catch (const CLI::ParseError& error) {
        return fail(WrongUsage, std::string(error.what()) + "\nRun with --help for more information.");
    }
    return inspectFile(options);
}

} // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return run(argc, argv);
    } catch (const inspect::OutputClosed&) {
        return AllWell; // the reader has seen enough
    } catch (const std::exception& error) {
        return fail(InputUnreadable, error.what());
    }
}
