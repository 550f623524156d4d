#pragma once

#include "Options.h"
#include "inputs/Interruption.h"
#include "reports/Renderer.h"
#include "terminal/ProgressLine.h"

namespace inspect {

/// Exit status, as scripts know it.
enum Status { AllWell = 0, InputUnreadable = 1, WrongUsage = 2, FaultFound = 3 };

/// Goes through all that the user gives: each input by itself, in turn.
class Inspection {
public:
    /// @param progress shows how far files are read
    Inspection(const Options& options, Renderer& renderer, ProgressLine& progress);

    /// Goes to the end, or to where the user interrupts. An input that cannot be read is complained of, and does not
    /// keep the others from being shown.
    Status run();

private:
    template <class Work> void attempt(Work work);
    std::unique_ptr<Input> open(const std::string& path);
    bool inspectInput(const std::string& path);
    bool inspectHex();
    bool inspectDescriptors();

    const Options& m_options;
    Renderer& m_renderer;
    ProgressLine& m_progress;
    Conventions m_conventions;
    std::unique_ptr<Exporter> m_exporter; ///< null when nothing is exported
    Interruption m_interruption;
    Status m_status = AllWell;
};

/// Says on standard error what is wrong.
void complain(const std::string& message);

} // namespace inspect
