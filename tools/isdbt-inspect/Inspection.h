#pragma once

#include "Options.h"
#include "inputs/Interruption.h"
#include "metrics/Metrics.h"
#include "reports/Renderer.h"
#include "terminal/ProgressLine.h"

#include <exception>
#include <mutex>

namespace inspect {

/// Exit status, as scripts know it.
enum Status { AllWell = 0, InputUnreadable = 1, WrongUsage = 2, FaultFound = 3 };

/// Goes through all that the user gives: each input by itself, in turn; live ones that stand side by side at once.
class Inspection {
public:
    /// @param sink where all is written
    /// @param progress shows how far files are read
    Inspection(const Options& options, const Interruption& interruption, std::shared_ptr<Sink> sink,
               ProgressLine& progress);

    /// Goes to the end, or to where the user interrupts. An input that cannot be read is complained of, and does not
    /// keep the others from being shown.
    Status run();

private:
    /// What writes what is found.
    struct Form {
        Output output;
        std::unique_ptr<Renderer> renderer;
    };

    std::unique_ptr<Form> makeForm() const;
    template <class Work> void attempt(Work work);
    void inspectAtOnce(const std::vector<std::string>& addresses);
    std::unique_ptr<Input> open(const std::string& path, std::size_t queueSize, const Output& output);
    void tellSilence(const std::string& path, const Output& output, const Silence& silence) const;
    bool inspectInput(Input& input, const std::string& path, Renderer& renderer);
    bool inspectHex();
    bool inspectDescriptors();

    const Options& m_options;
    const Interruption& m_interruption;
    std::shared_ptr<Sink> m_sink;
    ProgressLine& m_progress;
    std::unique_ptr<Metrics> m_metrics;   ///< null when they are not served
    std::unique_ptr<Form> m_form;         ///< of inputs in turn
    std::unique_ptr<Exporter> m_exporter; ///< null when nothing is exported
    std::mutex m_mutex;                   ///< of what follows
    Status m_status = AllWell;
    std::exception_ptr m_failure; ///< that ends all
};

/// Says on standard error what is wrong.
void complain(const std::string& message);

} // namespace inspect
