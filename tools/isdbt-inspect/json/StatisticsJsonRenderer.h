#pragma once

#include "json/InJson.h"

namespace inspect {

/// The lines of all PIDs.
/// @param interim in seconds since the input began; nothing at its end
std::string statisticsLines(const std::string& source, const Summary& summary, std::optional<double> interim);

/// What is said with statistics of a range: those of all PIDs, which are said already when it ends with the input.
std::string rangeLines(const std::string& source, const Summary& summary);

/// The statistics of a source when it ends: an object in JSON for each PID, and behind it one for each of its tables;
/// and at last one for the stream.
class StatisticsJsonRenderer : public InJson<Renderer> {
public:
    using InJson::InJson;

    void section(const SectionReport& /*report*/) override {}
    void interim(const Summary& summary, double seconds) override;
    void endRange(const Summary& summary) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
};

} // namespace inspect
