#pragma once

#include "json/JsonRenderer.h"

#include <optional>

namespace inspect {

/// What all views say of a source when it ends.
/// @param step in seconds, for when blocks of carousels came; without it that is not told
std::string allLines(const std::string& source, const Summary& summary, const Faults& faults,
                     std::optional<double> step = {});

/// Each section when it is new, and all else when the input ends: a database wants to read a recording once.
class AllJsonRenderer : public JsonRenderer {
public:
    using JsonRenderer::JsonRenderer;

    void endRange(const Summary& summary) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
};

} // namespace inspect
