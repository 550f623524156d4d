#include "json/SilenceJson.h"

#include "json/JsonValues.h"

#include <nlohmann/json.hpp>

namespace inspect {

std::string silenceLine(const std::string& source, const Silence& silence) {
    nlohmann::ordered_json object = lineObject("no_data", source);
    object["over"] = silence.isOver;
    object["duration"] = measured(silence.seconds);
    constexpr std::int64_t SECOND = 1000;
    addTime(object, {0, 0, std::nullopt, WallTime{std::int64_t{silence.at} * SECOND, WallTime::Source::Arrival}});
    return jsonLine(object);
}

} // namespace inspect
