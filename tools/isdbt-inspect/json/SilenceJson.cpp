#include "json/SilenceJson.h"

#include "json/JsonValues.h"

#include <fmt/chrono.h>
#include <nlohmann/json.hpp>

namespace inspect {

std::string silenceLine(const std::string& source, const Silence& silence) {
    nlohmann::ordered_json object = lineObject("no_data", source);
    object["over"] = silence.isOver;
    object["duration"] = measured(silence.seconds);
    object["time"] = fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(silence.at));
    return jsonLine(object);
}

} // namespace inspect
