#pragma once

#include "json/InJson.h"

namespace inspect {

/// Each section, or descriptor that came by itself, as an object in JSON, one a line, when it is first seen and at each
/// change. Nothing else is written, so that every line is an object: what the summary says, the exit status and the
/// statistics tell.
class JsonRenderer : public InJson<Renderer> {
public:
    using InJson::InJson;

    void section(const SectionReport& report) override;
    void descriptor(const DescriptorReport& report) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
};

} // namespace inspect
