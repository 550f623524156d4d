#pragma once

#include "reports/Report.h"
#include "sections/Section.h"

#include <memory>
#include <mutex>
#include <string>

namespace inspect {

/// Writes sections as they are, byte for byte: for a test, or for whoever made them. Nothing that is there already is
/// written over.
class Exporter {
public:
    Exporter() = default;
    virtual ~Exporter() = default;
    Exporter(const Exporter&) = delete;
    Exporter& operator=(const Exporter&) = delete;

    /// Threads may call it at the same time.
    /// @throws std::runtime_error when it cannot be written
    void take(const Section& section, const SectionReport& report) {
        const std::lock_guard lock(m_mutex);
        write(section, report);
    }

    /// What of that was not written, and why; empty when all was.
    virtual std::string remark() const { return {}; }

private:
    virtual void write(const Section& section, const SectionReport& report) = 0;

    std::mutex m_mutex;
};

/// Why sections cannot be exported to a place; empty when they can.
std::string objectionTo(const std::string& path);

/// Exports to "FILE.sec" sections one behind the other, to "FILE.hex" text that --hex reads, to a folder a file for
/// each. Files and folder are made when the first section comes.
std::unique_ptr<Exporter> exporterTo(const std::string& path);

} // namespace inspect
