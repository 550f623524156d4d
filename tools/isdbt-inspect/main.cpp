#include "Inspection.h"

#include <csignal>
#include <memory>
#include <unistd.h>

namespace {

inspect::Style styleFor(const inspect::Options& options) {
    inspect::Style style = inspect::styleFor(STDOUT_FILENO, options.width);
    style.full = options.full;
    style.namesInputs = options.inputs.size() > 1;
    return style;
}

inspect::Status fail(inspect::Status status, const std::string& message) {
    inspect::complain(message);
    return status;
}

inspect::Status inspectAll(const inspect::Options& options) {
    inspect::ProgressLine progress(STDERR_FILENO);
    inspect::Output output(STDOUT_FILENO, options.colour, &progress);
    const std::unique_ptr<inspect::Renderer> renderer =
        options.json ? options.view->json(output) : options.view->text(output, styleFor(options));
    try {
        return inspect::Inspection(options, *renderer, progress).run();
    } catch (const inspect::OutputClosed&) {
        if (options.exportTo) {
            return fail(inspect::InputUnreadable,
                        *options.exportTo + ": incomplete, as the output was not read to its end");
        }
        return inspect::AllWell; // the reader has seen enough
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
