#pragma once

#include "json/InJson.h"

namespace inspect {

/// The carousels of a source when it ends: an object in JSON for each PID of some, and behind it one for each of them.
class CarouselsJsonRenderer : public InJson<Renderer> {
public:
    using InJson::InJson;

    void section(const SectionReport& /*report*/) override {}
    void interim(const Summary& summary, double seconds) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
};

} // namespace inspect
