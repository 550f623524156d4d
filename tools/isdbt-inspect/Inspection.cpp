#include "Inspection.h"

#include "DescriptorReports.h"
#include "inputs/DatagramInput.h"
#include "inputs/DecompressedInput.h"
#include "inputs/FileInput.h"
#include "inputs/MeasuredInput.h"
#include "inputs/MemoryInput.h"

#include <bitstream/mpeg/ts.h>
#include <cstdio>

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

} // namespace

Inspection::Inspection(const Options& options, Renderer& renderer, ProgressLine& progress)
    : m_options(options), m_renderer(renderer),
      m_progress(progress), m_conventions{Charset(options.charset), options.zone},
      m_exporter(options.exportTo ? exporterTo(*options.exportTo) : nullptr) {}

Status Inspection::run() {
    if (m_options.descriptorOf) {
        attempt([this] { return inspectDescriptors(); });
    } else if (m_options.hex) {
        attempt([this] { return inspectHex(); });
    }
    m_progress.expect(totalSize(m_options.inputs));
    for (const std::string& path : m_options.inputs) {
        attempt([this, &path] { return inspectInput(path); });
        if (m_interruption.happened()) {
            break;
        }
    }
    if (const std::string remark = m_exporter ? m_exporter->remark() : ""; !remark.empty()) {
        m_progress.erase();
        complain(remark);
    }
    return m_status == FaultFound && m_options.lenient ? AllWell : m_status;
}

/// Does something that may find a fault, or come upon an input that cannot be read.
template <class Work> void Inspection::attempt(Work work) {
    try {
        if (work() && m_status == AllWell) {
            m_status = FaultFound;
        }
    } catch (const InputError& error) {
        m_progress.erase();
        complain(error.what());
        m_status = InputUnreadable;
    }
}

std::unique_ptr<Input> Inspection::open(const std::string& path) {
    if (StreamAddress::isOne(path)) {
        return std::make_unique<DatagramInput>(path, m_interruption);
    }
    return std::make_unique<DecompressedInput>(std::make_unique<MeasuredInput>(
        std::make_unique<FileInput>(path, m_interruption), [this](std::size_t count) { m_progress.advance(count); }));
}

bool Inspection::inspectInput(const std::string& path) {
    const std::unique_ptr<Input> input = open(path);
    Inspector inspector(m_renderer, m_options.interest, m_conventions, m_exporter.get());
    if (m_options.sections || isNameOfSections(path)) {
        inspector.runSections(*input, Repetitions::Hidden);
    } else {
        inspector.run(*input);
    }
    return inspector.foundFault();
}

bool Inspection::inspectHex() {
    MemoryInput input(HEX, *m_options.hex);
    if (arePackets(*m_options.hex)) {
        Interest interest = m_options.interest;
        interest.pids.set(); // nothing says what each one carries
        Inspector inspector(m_renderer, interest, m_conventions, m_exporter.get());
        inspector.runPackets(input);
        return inspector.foundFault();
    }
    Inspector inspector(m_renderer, m_options.interest, m_conventions, m_exporter.get());
    inspector.runSections(input, Repetitions::Shown);
    if (!inspector.foundKnownTable()) {
        throw InputError(HEX, "no section of a table that the library knows (a descriptor needs --descriptor TABLE)");
    }
    return inspector.foundFault();
}

bool Inspection::inspectDescriptors() {
    m_renderer.begin(HEX);
    bool foundFault = false;
    for (const DescriptorReport& report : reportDescriptors(*m_options.descriptorOf, *m_options.hex, m_conventions)) {
        foundFault = foundFault || report.rejection || report.onWire.atFault();
        m_renderer.descriptor(report);
    }
    return foundFault;
}

void complain(const std::string& message) {
    std::fprintf(stderr, "isdbt-inspect: %s\n", message.c_str());
}

} // namespace inspect
