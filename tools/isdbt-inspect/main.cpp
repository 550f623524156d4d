#include "Inspection.h"
#include "text/DiffRenderer.h"
#include "text/StatisticsRenderer.h"
#include "text/TablesRenderer.h"
#include "text/TreeRenderer.h"
#include "json/DiffJsonRenderer.h"
#include "json/JsonRenderer.h"
#include "json/StatisticsJsonRenderer.h"

#include <csignal>
#include <memory>
#include <unistd.h>

namespace {

inspect::Style styleFor(const inspect::Options& options) {
    inspect::Style style = inspect::styleFor(STDOUT_FILENO, options.colour, options.width);
    style.namesInputs = options.inputs.size() > 1;
    return style;
}

std::unique_ptr<inspect::Renderer> jsonRendererFor(inspect::View view, inspect::Output& output) {
    if (view == inspect::View::Stats) {
        return std::make_unique<inspect::StatisticsJsonRenderer>(output);
    }
    if (view == inspect::View::Diff) {
        return std::make_unique<inspect::DiffJsonRenderer>(output);
    }
    return std::make_unique<inspect::JsonRenderer>(output);
}

std::unique_ptr<inspect::Renderer> rendererFor(const inspect::Options& options, inspect::Output& output) {
    if (options.json) {
        return jsonRendererFor(options.view, output);
    }
    const inspect::Style style = styleFor(options);
    switch (options.view) {
    case inspect::View::Tables:
        return std::make_unique<inspect::TablesRenderer>(output, style);
    case inspect::View::Stats:
        return std::make_unique<inspect::StatisticsRenderer>(output, style);
    case inspect::View::Diff:
        return std::make_unique<inspect::DiffRenderer>(output, style);
    default:
        return std::make_unique<inspect::TreeRenderer>(output, style, options.interest.tables);
    }
}

inspect::Status inspectAll(const inspect::Options& options) {
    inspect::ProgressLine progress(STDERR_FILENO);
    inspect::Output output(STDOUT_FILENO, &progress);
    const std::unique_ptr<inspect::Renderer> renderer = rendererFor(options, output);
    return inspect::Inspection(options, *renderer, progress).run();
}

int fail(inspect::Status status, const std::string& message) {
    inspect::complain(message);
    return status;
}

} // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const std::optional<inspect::Options> options = inspect::readOptions(argc, argv);
        return options ? inspectAll(*options) : inspect::AllWell;
    } catch (const inspect::UsageError& error) {
        return fail(inspect::WrongUsage, std::string(error.what()) + "\nRun with --help for more information.");
    } catch (const inspect::OutputClosed&) {
        return inspect::AllWell; // the reader has seen enough
    } catch (const std::exception& error) {
        return fail(inspect::InputUnreadable, error.what());
    }
}
