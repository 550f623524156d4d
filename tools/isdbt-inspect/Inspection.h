#pragma once

#include "Options.h"
#include "inputs/Interruption.h"
#include "metrics/Metrics.h"
#include "pages/PageFile.h"
#include "reports/Renderer.h"
#include "serving/PageServer.h"
#include "terminal/ProgressLine.h"
#include "terminal/Spool.h"

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>

namespace inspect {

/// Exit status, as scripts know it.
enum Status { AllWell = 0, InputUnreadable = 1, WrongUsage = 2, FaultFound = 3 };

/// Goes through all that the user gives: each input by itself, in turn; live ones that stand side by side at once.
class Inspection {
public:
    /// Says what is wrong.
    using Complain = std::function<void(const std::string& message)>;

    /// @param sink where all is written
    /// @param progress shows how far files are read
    Inspection(const Options& options, const Interruption& interruption, std::shared_ptr<Sink> sink,
               ProgressLine& progress, Complain complain);

    /// Goes to the end, or to where the user interrupts. An input that cannot be read is complained of, and does not
    /// keep the others from being shown.
    Status run();

private:
    /// What writes what is found.
    struct Form {
        Output output;
        std::unique_ptr<Renderer> renderer;
    };

    /// What came of a file that is read beside others.
    struct Piece {
        Spool spool;
        std::string complaint;
    };

    std::unique_ptr<Form> makeForm(std::shared_ptr<Sink> sink, Colour colour) const;
    template <class Work> std::string complaintOf(Work work);
    template <class Work> void attempt(Work work);
    void inspectInTurn();
    void inspectSideBySide();
    std::unique_ptr<Piece> inspectApart(const std::string& path);
    bool mergeRanges();
    void inspectAtOnce(const std::vector<std::string>& addresses);
    std::unique_ptr<Input> open(const std::string& path, std::size_t queueSize, const Output& output);
    void tellSilence(const std::string& path, const Output& output, const Silence& silence) const;
    bool inspectInput(Input& input, const std::string& path, Renderer& renderer);
    void tell(const std::string& path, const Extraction& extraction) const;
    bool inspectHex();
    bool inspectDescriptors();

    const Options& m_options;
    const Interruption& m_interruption;
    std::shared_ptr<Sink> m_sink;
    ProgressLine& m_progress;
    Complain m_complain;
    std::unique_ptr<Metrics> m_metrics;   ///< null when they are not served
    std::unique_ptr<PageFile> m_page;     ///< null when none is asked for
    std::unique_ptr<PageServer> m_server; ///< the same
    std::unique_ptr<Form> m_form;         ///< of inputs in turn
    std::unique_ptr<Exporter> m_exporter; ///< null when nothing is exported
    unsigned m_jobs;                      ///< files that are read at once
    std::mutex m_mutex;                   ///< of what follows
    std::condition_variable m_jobEnded;
    unsigned m_jobsRunning = 0;
    Status m_status = AllWell;
    std::exception_ptr m_failure; ///< that ends all
};

} // namespace inspect
