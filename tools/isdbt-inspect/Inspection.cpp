#include "Inspection.h"

#include "DescriptorReports.h"
#include "extracting/Extractor.h"
#include "inputs/AheadInput.h"
#include "inputs/DatagramInput.h"
#include "inputs/DecompressedInput.h"
#include "inputs/FileInput.h"
#include "inputs/Lines.h"
#include "inputs/MeasuredInput.h"
#include "inputs/MemoryInput.h"
#include "inputs/WatchedInput.h"
#include "metrics/MeteredRenderer.h"
#include "pages/PageRenderer.h"
#include "text/ExtractionText.h"
#include "text/SilenceText.h"
#include "json/ExtractionJson.h"
#include "json/RangeMerger.h"
#include "json/SilenceJson.h"

#include <algorithm>
#include <bitstream/mpeg/ts.h>
#include <deque>
#include <fmt/format.h>
#include <future>
#include <thread>

namespace inspect {

namespace {

constexpr const char* HEX = "--hex";

bool endsWith(std::string_view text, std::string_view ending) {
    return text.size() > ending.size() && text.substr(text.size() - ending.size()) == ending;
}

/// Section filters record files of that name; they may be compressed.
bool isNameOfSections(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char each) { return std::tolower(each); });
    std::string_view path = name;
    for (const std::string_view ending : {".gz", ".xz", ".zst"}) {
        if (endsWith(path, ending)) {
            path.remove_suffix(ending.size());
            break;
        }
    }
    return endsWith(path, ".sec");
}

/// Transport packets have a sync byte, and no table has that table_id.
bool arePackets(const std::vector<std::uint8_t>& bytes) {
    return bytes.size() % TS_SIZE == 0 && ts_validate(bytes.data());
}

/// What waits of one input, and what waits of all. Some seconds of a multiplex, and a second when there are a hundred.
constexpr std::size_t LARGEST_QUEUE = std::size_t{32} << 20;
constexpr std::size_t ALL_QUEUES = std::size_t{256} << 20;

Style styleOf(const Options& options, int descriptor) {
    Style style = styleFor(descriptor, options.width);
    style.full = options.full;
    style.namesInputs = options.inputs.size() > 1;
    return style;
}

Conventions conventionsOf(const Options& options) {
    return {Charset(options.charset), options.zone};
}

} // namespace

Inspection::Inspection(const Options& options, const Interruption& interruption, std::shared_ptr<Sink> sink,
                       ProgressLine& progress, Complain complain)
    : m_options(options), m_interruption(interruption), m_sink(std::move(sink)), m_progress(progress),
      m_complain(std::move(complain)),
      m_metrics(options.metrics ? std::make_unique<Metrics>(*options.metrics) : nullptr),
      m_page(options.report ? std::make_unique<PageFile>(*options.report) : nullptr),
      m_server(options.serve ? std::make_unique<PageServer>(*options.serve) : nullptr),
      m_form(makeForm(m_sink, options.colour)), m_exporter(options.exportTo ? exporterTo(*options.exportTo) : nullptr),
      m_jobs(options.jobs != 0 ? options.jobs : std::max(1U, std::thread::hardware_concurrency())) {}

std::unique_ptr<Inspection::Form> Inspection::makeForm(std::shared_ptr<Sink> sink, Colour colour) const {
    auto form = std::make_unique<Form>(Form{Output(std::move(sink), colour), nullptr});
    form->renderer = m_options.json ? m_options.view->json(form->output)
                                    : m_options.view->text(form->output, styleOf(m_options, m_sink->descriptor()));
    if (m_page || m_server) {
        form->renderer = std::make_unique<PageRenderer>(std::move(form->renderer), m_page.get(), m_server.get(),
                                                        m_options.interest.bytes);
    }
    if (m_metrics) {
        form->renderer = std::make_unique<MeteredRenderer>(std::move(form->renderer), *m_metrics);
    }
    return form;
}

Status Inspection::run() {
    if (m_options.descriptorOf) {
        attempt([this] { return inspectDescriptors(); });
    } else if (m_options.hex) {
        attempt([this] { return inspectHex(); });
    }
    const std::vector<std::string>& inputs = m_options.inputs;
    if (std::any_of(inputs.begin(), inputs.end(), StreamAddress::isOne)) {
        m_progress.follow();
    } else {
        m_progress.expect(totalSize(inputs));
    }
    if (m_options.merge) {
        attempt([this] { return mergeRanges(); });
    } else if (m_jobs > 1 && inputs.size() > 1) {
        inspectSideBySide();
    } else {
        inspectInTurn();
    }
    if (m_page) {
        m_page->end();
    }
    if (const std::string remark = m_exporter ? m_exporter->remark() : ""; !remark.empty()) {
        m_progress.erase();
        m_complain(remark);
    }
    return m_status == FaultFound && m_options.lenient ? AllWell : m_status;
}

void Inspection::inspectInTurn() {
    const std::vector<std::string>& inputs = m_options.inputs;
    for (auto at = inputs.begin(); at != inputs.end() && !m_interruption.happened();) {
        const auto behind = std::find_if_not(at, inputs.end(), StreamAddress::isOne);
        if (behind - at > 1) {
            inspectAtOnce({at, behind});
            at = behind;
        } else {
            attempt(
                [this, at] { return inspectInput(*open(*at, LARGEST_QUEUE, m_form->output), *at, *m_form->renderer); });
            ++at;
        }
    }
}

/// Some more files are begun than are read at once, so that a long one keeps no core waiting. What is said of them
/// comes in their order.
void Inspection::inspectSideBySide() {
    constexpr std::size_t AHEAD = 8; // files for each that is read
    std::deque<std::future<std::unique_ptr<Piece>>> pieces;
    const auto tellFirst = [&] {
        const std::unique_ptr<Piece> piece = pieces.front().get();
        pieces.pop_front();
        piece->spool.writeTo(*m_sink);
        if (!piece->complaint.empty()) {
            const auto erased = m_progress.erase();
            m_complain(piece->complaint);
        }
    };
    try {
        for (const std::string& path : m_options.inputs) {
            if (pieces.size() == AHEAD * m_jobs) {
                tellFirst();
            }
            pieces.push_back(std::async(std::launch::async, [this, &path] { return inspectApart(path); }));
        }
        while (!pieces.empty()) {
            tellFirst();
        }
    } catch (...) {
        m_interruption.interrupt(); // the others end, too
        throw;
    }
}

std::unique_ptr<Inspection::Piece> Inspection::inspectApart(const std::string& path) {
    {
        std::unique_lock lock(m_mutex);
        m_jobEnded.wait(lock, [this] { return m_jobsRunning < m_jobs; });
        ++m_jobsRunning;
    }
    auto piece = std::make_unique<Piece>();
    std::exception_ptr failure;
    try {
        if (!m_interruption.happened()) {
            const std::unique_ptr<Form> form = makeForm(piece->spool.sink(), m_form->output.colour());
            piece->complaint = complaintOf(
                [&] { return inspectInput(*open(path, LARGEST_QUEUE, form->output), path, *form->renderer); });
        }
    } catch (...) {
        failure = std::current_exception();
    }
    {
        const std::lock_guard lock(m_mutex);
        --m_jobsRunning;
    }
    m_jobEnded.notify_one();
    if (failure) {
        std::rethrow_exception(failure);
    }
    return piece;
}

bool Inspection::mergeRanges() {
    RangeMerger merger([this](const std::string& line) { m_form->output.write(line); });
    const std::vector<std::string>& inputs = m_options.inputs;
    for (const std::string& path : inputs) {
        std::uint64_t number = 0;
        try {
            forEachLine(*open(path, LARGEST_QUEUE, m_form->output), [&](const std::string& line) {
                ++number;
                merger.take(line);
            });
        } catch (const MergeError& error) {
            throw InputError(path, fmt::format("line {} {}", number, error.what()));
        }
    }
    try {
        merger.finish();
    } catch (const MergeError& error) {
        throw InputError(inputs.back(), error.what());
    }
    return merger.foundFault();
}

/// Does something that may find a fault, or come upon an input that cannot be read.
template <class Work> void Inspection::attempt(Work work) {
    if (const std::string complaint = complaintOf(work); !complaint.empty()) {
        const auto erased = m_progress.erase();
        m_complain(complaint);
    }
}

/// @return why the input cannot be read; empty when it can
template <class Work> std::string Inspection::complaintOf(Work work) {
    try {
        const bool foundFault = work();
        const std::lock_guard lock(m_mutex);
        if (foundFault && m_status == AllWell) {
            m_status = FaultFound;
        }
    } catch (const InputError& error) {
        const std::lock_guard lock(m_mutex);
        m_status = InputUnreadable;
        return error.what();
    }
    return {};
}

/// Each has a thread and a form of its own. What one fails at that is not its input ends them all.
void Inspection::inspectAtOnce(const std::vector<std::string>& addresses) {
    const std::size_t queueSize = std::min(LARGEST_QUEUE, ALL_QUEUES / addresses.size());
    std::vector<std::thread> threads;
    threads.reserve(addresses.size());
    for (const std::string& address : addresses) {
        threads.emplace_back([this, &address, queueSize] {
            try {
                attempt([this, &address, queueSize] {
                    const std::unique_ptr<Form> form = makeForm(m_sink, m_options.colour);
                    return inspectInput(*open(address, queueSize, form->output), address, *form->renderer);
                });
            } catch (...) {
                const std::lock_guard lock(m_mutex);
                m_failure = m_failure ? m_failure : std::current_exception();
                m_interruption.interrupt();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
}

/// @param output is told when nothing comes
std::unique_ptr<Input> Inspection::open(const std::string& path, std::size_t queueSize, const Output& output) {
    const auto measured = [this](std::unique_ptr<Input> input) {
        return std::make_unique<MeasuredInput>(std::move(input),
                                               [this](std::size_t count) { m_progress.advance(count); });
    };
    if (StreamAddress::isOne(path)) {
        auto input = measured(std::make_unique<DatagramInput>(path, m_interruption, queueSize));
        if (!m_options.times.noData) {
            return input;
        }
        return std::make_unique<WatchedInput>(
            std::move(input), *m_options.times.noData,
            [this, path, &output](const Silence& silence) { tellSilence(path, output, silence); });
    }
    auto file = std::make_unique<DecompressedInput>(measured(std::make_unique<FileInput>(path, m_interruption)));
    const bool hasCoreToSpare = m_jobs > m_options.inputs.size() && totalSize({path}); // a pipe may make it wait
    return hasCoreToSpare ? std::unique_ptr<Input>(std::make_unique<AheadInput>(std::move(file))) : std::move(file);
}

void Inspection::tellSilence(const std::string& path, const Output& output, const Silence& silence) const {
    if (m_options.json) {
        output.write(silenceLine(path, silence));
    } else {
        output.write({silenceText(silence)});
    }
    if (m_metrics) {
        m_metrics->alarm(path, faults::NO_DATA.name, {}, !silence.isOver);
    }
}

bool Inspection::inspectInput(Input& input, const std::string& path, Renderer& renderer) {
    const Conventions conventions = conventionsOf(m_options);
    Times times = m_options.times;
    times.moreAndMoreRarely = StreamAddress::isOne(path) && !m_options.json && mayEndBefore(m_sink->descriptor());
    Inspector inspector(renderer, m_options.interest, conventions, m_exporter.get(), times);
    if (m_options.bitRate) {
        inspector.setBitRate(*m_options.bitRate);
    }
    if (m_options.range.isPart()) {
        inspector.setRange(m_options.range);
    }
    std::optional<Extractor> extractor;
    if (m_options.extraction) {
        extractor.emplace(*m_options.extraction, [&](const Extraction& extraction) { tell(path, extraction); });
        inspector.extractWith(*extractor);
    }
    if (m_options.sections || isNameOfSections(path)) {
        inspector.runSections(input, Repetitions::Hidden);
    } else {
        inspector.run(input);
    }
    if (extractor && extractor->folders() == 0) {
        const auto erased = m_progress.erase();
        m_complain(path + ": nothing to extract, as no carousel came with its DII");
    }
    return inspector.foundFault() || (extractor && !extractor->wroteAll());
}

void Inspection::tell(const std::string& path, const Extraction& extraction) const {
    if (m_options.json) {
        m_form->output.write(extractionLine(path, extraction));
    } else {
        m_form->output.write(extractionText(extraction));
    }
}

bool Inspection::inspectHex() {
    MemoryInput input(HEX, *m_options.hex);
    const Conventions conventions = conventionsOf(m_options);
    if (arePackets(*m_options.hex)) {
        Interest interest = m_options.interest;
        interest.pids.set(); // nothing says what each one carries
        Inspector inspector(*m_form->renderer, interest, conventions, m_exporter.get());
        inspector.runPackets(input);
        return inspector.foundFault();
    }
    Inspector inspector(*m_form->renderer, m_options.interest, conventions, m_exporter.get());
    inspector.runSections(input, Repetitions::Shown);
    if (!inspector.foundKnownTable()) {
        throw InputError(HEX, "no section of a table that the library knows (a descriptor needs --descriptor TABLE)");
    }
    return inspector.foundFault();
}

bool Inspection::inspectDescriptors() {
    Renderer& renderer = *m_form->renderer;
    renderer.begin(HEX);
    bool foundFault = false;
    for (const DescriptorReport& report :
         reportDescriptors(*m_options.descriptorOf, *m_options.hex, conventionsOf(m_options))) {
        foundFault = foundFault || report.rejection || report.onWire.atFault();
        renderer.descriptor(report);
    }
    return foundFault;
}

} // namespace inspect
