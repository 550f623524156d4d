#pragma once

#include "comparing/ChangesRenderer.h"
#include "terminal/Output.h"

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace inspect {

/// What changes from version to version of a table and from one input to the next: an object in JSON for each section
/// that something becomes of, with its fields that differ.
class DiffJsonRenderer : public ChangesRenderer {
public:
    explicit DiffJsonRenderer(Output& output) : m_output(output) {}

private:
    void tellInput(const std::string& name) override { m_source = name; }
    void tellNew(const SectionReport& report) override;
    void tellReturn(const SectionReport& report) override;
    void tellChange(const SectionReport& former, const SectionReport& report,
                    const std::vector<Change>& changes) override;
    void tellRejection(const SectionReport& report) override;
    void tellEnd(const SectionReport& last, unsigned number) override;
    void tellMissing(const SectionReport& report) override;
    void tellOutcome(const Summary& summary, const Faults& faults) override;

    nlohmann::ordered_json changeJson(const char* event, const SectionReport& report) const;

    Output& m_output;
    std::string m_source;
};

} // namespace inspect
