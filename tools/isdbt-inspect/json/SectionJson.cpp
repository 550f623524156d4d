#include "json/SectionJson.h"

#include "tables/TableKinds.h"
#include "json/FieldJson.h"
#include "json/JsonValues.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

/// A part of the header; null when there is none.
template <class Part> Json ofHeader(const std::optional<LongHeader>& header, Part LongHeader::*part) {
    return header ? Json((*header).*part) : Json();
}

void addPosition(Json& object, const Position& position) {
    object["packet"] = position.packet != 0 ? Json(position.packet) : Json();
    object["offset"] = position.offset;
    object["seconds"] = measured(position.seconds);
}

Json descriptorLoops(const Fields& loops) {
    Json array = Json::array();
    for (const Field& loop : loops) {
        Json descriptors = Json::array();
        for (const Field& descriptor : std::get<List>(loop.value).elements) {
            descriptors.push_back(descriptorJson(descriptor));
        }
        Json object{{"loop", loop.name}};
        if (!loop.reading.empty()) {
            object["loop_reading"] = loop.reading;
        }
        object["descriptors"] = std::move(descriptors);
        array.push_back(std::move(object));
    }
    return array;
}

} // namespace

Json sectionJson(const char* type, const std::string& input, const SectionReport& report) {
    Json object{{"type", type}, {"input", input}};
    object["pid"] = orNull(report.pid);
    object["table"] = report.tableName;
    object["table_id"] = report.tableId;
    object["table_id_extension"] = ofHeader(report.header, &LongHeader::extension);
    object["version"] = ofHeader(report.header, &LongHeader::version);
    object["current"] = ofHeader(report.header, &LongHeader::current);
    object["section_number"] = ofHeader(report.header, &LongHeader::sectionNumber);
    object["last_section_number"] = ofHeader(report.header, &LongHeader::lastSectionNumber);
    addPosition(object, report.position);
    object["same_version"] = report.sameVersion;
    object["damaged"] = report.damaged;
    return object;
}

Json descriptorJson(const Field& descriptor) {
    Json object = fieldsJson(std::get<Object>(descriptor.value).fields);
    object["at_fault"] = !object["fits"].get<bool>() || !object["error_code"].is_null();
    return object;
}

void addError(Json& object, const Rejection& rejection) {
    object["error"] = {{"code", rejection.errorCode}, {"name", rejection.errorName}};
    object["log"] = rejection.logLines;
}

void addRejection(Json& object, const Rejection& rejection) {
    addError(object, rejection);
    object["loops"] = descriptorLoops(rejection.descriptors);
    object["bytes"] = hexJson(rejection.section);
}

std::string faultLines(const std::string& input, const Faults& faults) {
    std::string lines;
    for (const Fault& fault : faults.all()) {
        Json object{{"type", "fault"}, {"input", input}};
        object["fault"] = fault.kind.name;
        object["severity"] = fault.kind.severity == Severity::Error ? "error" : "warning";
        object["about"] = fault.about;
        object["text"] = fault.text;
        object["pid"] = orNull(fault.place.pid);
        object["table"] = fault.place.tableId ? orNull(std::string(tableName(*fault.place.tableId))) : Json();
        object["table_id"] = orNull(fault.place.tableId);
        object["table_id_extension"] = orNull(fault.place.extension);
        if (fault.since) {
            addPosition(object, *fault.since);
        } else {
            object.update({{"packet", nullptr}, {"offset", nullptr}, {"seconds", nullptr}});
        }
        lines += jsonLine(object);
    }
    return lines;
}

} // namespace inspect
