#include "Inspection.h"
#include "terminal/LogFile.h"

#include <csignal>
#include <memory>
#include <unistd.h>

namespace {

inspect::Status fail(inspect::Status status, const std::string& message) {
    inspect::complain(message);
    return status;
}

inspect::Status inspectAll(const inspect::Options& options) {
    const inspect::Interruption interruption;
    const auto log = options.log ? std::make_unique<inspect::LogFile>(*options.log) : nullptr;
    inspect::ProgressLine progress(STDERR_FILENO);
    const auto sink = log ? std::make_shared<inspect::Sink>(log->descriptor(), *options.log, &progress)
                          : std::make_shared<inspect::Sink>(STDOUT_FILENO, "standard output", &progress);
    sink->rescueOnce(inspect::Interruption::wasSignalled);
    try {
        const inspect::Status status = inspect::Inspection(options, interruption, sink, progress).run();
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
        const std::optional<inspect::Options> options = inspect::readOptions(argc, argv);
        return options ? inspectAll(*options) : inspect::AllWell;
    } catch (const inspect::UsageError& error) {
        return fail(inspect::WrongUsage, std::string(error.what()) + "\nRun with --help for more information.");
    } catch (const std::exception& error) {
        return fail(inspect::InputUnreadable, error.what());
    }
}
