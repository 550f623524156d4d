#pragma once

#include "json/InJson.h"

namespace inspect {

/// A line for each application of a source.
std::string applicationLines(const std::string& source, const Summary& summary);

/// An object for each application, one a line, when the input ends.
class ApplicationsJsonRenderer : public InJson<Renderer> {
public:
    using InJson::InJson;

    void section(const SectionReport& /*report*/) override {}
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
};

} // namespace inspect
