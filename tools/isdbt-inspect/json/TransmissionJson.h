#pragma once

#include "reports/Report.h"

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace inspect {

/// "A"; null where packets do not tell their layers.
nlohmann::ordered_json layersJson(const std::optional<LayerSet>& layers);

/// A line that says how the stream of a source is to be sent; none when it does not say.
std::string transmissionLine(const std::string& source, const Summary& summary);

} // namespace inspect
