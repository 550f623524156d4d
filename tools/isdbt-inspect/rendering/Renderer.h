#pragma once

#include "rendering/Report.h"

namespace inspect {

/// A form of output.
class Renderer {
public:
    Renderer() = default;
    virtual ~Renderer() = default;
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    virtual void section(const SectionReport& report) = 0;
    virtual void summary(const Summary& summary) = 0;
};

} // namespace inspect
