#include "json/ExtractionJson.h"

#include "describing/Conversion.h"
#include "json/FieldJson.h"
#include "json/JsonValues.h"

#include <nlohmann/json.hpp>

namespace inspect {

std::string extractionLine(const std::string& source, const Extraction& extraction) {
    constexpr const char* KINDS[] = {"renamed", "partial", "incomplete", "refused", "no_file"};
    nlohmann::ordered_json object = lineObject("extraction", source);
    object["folder"] = extraction.folder;
    object["pid"] = extraction.pid;
    object["carousel_id"] = orNull(extraction.carouselId);
    object["version"] = extraction.version;
    object["files"] = extraction.files;
    object["bytes"] = extraction.bytes;
    object["partial"] = extraction.partial;
    object["incomplete"] = extraction.incomplete;
    object["refused"] = extraction.refused;
    object["others"] = nlohmann::ordered_json::array();
    for (const NotAsAnnounced& each : extraction.others) {
        nlohmann::ordered_json other{{"kind", KINDS[static_cast<std::size_t>(each.kind)]},
                                     {"path", orNull(shownName(each.path))}};
        other["path_hex"] = hexJson({each.path.begin(), each.path.end()});
        other["written_as"] = orNull(shownName(each.writtenAs));
        other["text"] = each.text;
        object["others"].push_back(std::move(other));
    }
    return jsonLine(object);
}

} // namespace inspect
