#include "json/RangeJson.h"

#include "json/JsonValues.h"

#include <nlohmann/json.hpp>

namespace inspect {

std::string rangeLine(const std::string& source, const Summary& summary) {
    using Json = nlohmann::ordered_json;
    const RangeReport& range = *summary.range;
    Json object = lineObject("range", source);
    object["packets_before"] = range.packetsBefore;
    object["packets_until"] = range.packetsUntil;
    object["ended"] = range.ended;
    object["fault_found"] = range.ended ? Json(range.foundFault) : Json();
    object["duration_until"] = range.seconds ? Json(*range.seconds) : Json(); // exact, as rates are made of it
    addTime(object, summary.last);
    return jsonLine(object);
}

} // namespace inspect
