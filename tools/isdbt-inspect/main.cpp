#include "Inspector.h"
#include "rendering/TextRenderer.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace {

/// Exit status, as scripts know it.
enum Status { AllWell = 0, InputUnreadable = 1, WrongUsage = 2, FaultFound = 3 };

int fail(Status status, const std::string& message) {
    std::fprintf(stderr, "isdbt-inspect: %s\n", message.c_str());
    return status;
}

int inspectFile(const std::string& path) {
    inspect::Output output(STDOUT_FILENO);
    inspect::TextRenderer renderer(output);
    inspect::FileInput input(path);
    inspect::Inspector inspector(renderer);
    inspector.run(input);
    return inspector.foundFault() ? FaultFound : AllWell;
}

int run(int argc, char** argv) {
    CLI::App app("Shows the tables that an ISDB-T transport stream carries, as a receiver with the Ginga middleware "
                 "understands them.",
                 "isdbt-inspect");
    std::string path;
    app.add_option("FILE", path, "transport stream with packets of 188, 192 or 204 bytes; - is standard input")
        ->required();
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
    return inspectFile(path);
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
