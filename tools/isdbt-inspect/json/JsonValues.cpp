#include "json/JsonValues.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace inspect {

using Json = nlohmann::ordered_json;

std::string jsonLine(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

Json orNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json orNull(std::optional<std::uint64_t> number) {
    return number ? Json(*number) : Json();
}

Json measured(std::optional<double> value) {
    constexpr double STEPS = 1e6;
    return value ? Json(std::round(*value * STEPS) / STEPS) : Json();
}

Json rounded(std::optional<double> value) {
    return value ? Json(std::llround(*value)) : Json();
}

} // namespace inspect
