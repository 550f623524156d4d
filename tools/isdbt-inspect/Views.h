#pragma once

#include "reports/Renderer.h"
#include "terminal/Output.h"

#include <memory>
#include <string>
#include <vector>

namespace inspect {

/// What is made of an input.
struct View {
    std::string name; ///< as --view takes it
    std::string help;
    std::unique_ptr<Renderer> (*text)(Output& output, const Style& style); ///< null: it is for programs
    std::unique_ptr<Renderer> (*json)(Output& output);
    bool ofCarousels; ///< it tells of carousels, too
};

/// All views; the first is the usual one.
const std::vector<View>& views();

} // namespace inspect
