#include "Inspection.h"
#include "inputs/Signals.h"
#include "terminal/LogFile.h"

#include <csignal>
#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {

void complain(const std::string& message) {
    std::fprintf(stderr, "isdbt-inspect: %s\n", message.c_str());
}

inspect::Status fail(inspect::Status status, const std::string& message) {
    complain(message);
    return status;
}

inspect::Status inspectAll(const inspect::Options& options) {
    const inspect::Interruption interruption;
    const inspect::Signals signals(interruption);
    const auto log = options.log ? std::make_unique<inspect::LogFile>(*options.log) : nullptr;
    inspect::ProgressLine progress(STDERR_FILENO);
    const auto sink = log ? std::make_shared<inspect::Sink>(log->descriptor(), *options.log, &progress)
                          : std::make_shared<inspect::Sink>(STDOUT_FILENO, "standard output", &progress);
    sink->rescueOnce(inspect::Signals::came);
    try {
        const inspect::Status status = inspect::Inspection(options, interruption, sink, progress, complain).run();
        return sink->hasRescued() ? inspect::InputUnreadable : status;
    } catch (const inspect::OutputClosed&) {
        if (options.exportTo) {
            return fail(inspect::InputUnreadable,
                        *options.exportTo + ": incomplete, as the output was not read to its end");
        }
        return sink->hasRescued() ? inspect::InputUnreadable : inspect::AllWell; // the reader has seen enough
    }
}

} // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const std::optional<inspect::Options> options = inspect::readOptions({argv + 1, argv + argc});
        return options ? inspectAll(*options) : inspect::AllWell;
    } catch (const inspect::UsageError& error) {
        return fail(inspect::WrongUsage, std::string(error.what()) + "\nRun with --help for more information.");
    } catch (const std::exception& error) {
        return fail(inspect::InputUnreadable, error.what());
    }
}
