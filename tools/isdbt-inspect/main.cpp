#include "Options.h"
#include "rendering/DiffRenderer.h"
#include "rendering/StatisticsRenderer.h"
#include "rendering/TablesRenderer.h"

#include <csignal>
#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {

/// Exit status, as scripts know it.
enum Status { AllWell = 0, InputUnreadable = 1, WrongUsage = 2, FaultFound = 3 };

int fail(Status status, const std::string& message) {
    std::fprintf(stderr, "isdbt-inspect: %s\n", message.c_str());
    return status;
}

inspect::Style styleFor(const inspect::Options& options) {
    inspect::Style style = inspect::styleFor(STDOUT_FILENO, options.colour, options.width);
    style.namesInputs = options.inputs.size() > 1;
    return style;
}

std::unique_ptr<inspect::Renderer> rendererFor(const inspect::Options& options, inspect::Output& output) {
    const inspect::Style style = styleFor(options);
    switch (options.view) {
    case inspect::View::Stats:
        return std::make_unique<inspect::StatisticsRenderer>(output, style);
    case inspect::View::Diff:
        return std::make_unique<inspect::DiffRenderer>(output, style);
    default:
        return std::make_unique<inspect::TablesRenderer>(output, style);
    }
}

/// Goes through the inputs in turn. One that cannot be read does not keep the others from being shown.
Status inspectAll(const inspect::Options& options) {
    inspect::Output output(STDOUT_FILENO);
    const std::unique_ptr<inspect::Renderer> renderer = rendererFor(options, output);
    const inspect::Charset charset(options.charset);
    Status status = AllWell;
    for (const std::string& path : options.inputs) {
        inspect::Inspector inspector(*renderer, options.interest, charset);
        try {
            inspect::FileInput input(path);
            inspector.run(input);
            if (inspector.foundFault() && status == AllWell) {
                status = FaultFound;
            }
        } catch (const inspect::InputError& error) {
            status = static_cast<Status>(fail(InputUnreadable, error.what()));
        }
    }
    return status == FaultFound && options.lenient ? AllWell : status;
}

} // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const std::optional<inspect::Options> options = inspect::readOptions(argc, argv);
        return options ? inspectAll(*options) : AllWell;
    } catch (const inspect::UsageError& error) {
        return fail(WrongUsage, std::string(error.what()) + "\nRun with --help for more information.");
    } catch (const inspect::OutputClosed&) {
        return AllWell; // the reader has seen enough
    } catch (const std::exception& error) {
        return fail(InputUnreadable, error.what());
    }
}
