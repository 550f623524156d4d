#include "json/SectionJson.h"

#include "describing/OnWire.h"
#include "parsing/SectionParser.h"
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

Json loopsJson(const std::vector<LoopOnWire>& loops) {
    Json array = Json::array();
    for (const LoopOnWire& loop : loops) {
        Json object{{"loop", loop.name}};
        if (!loop.remark.empty()) {
            object["loop_reading"] = loop.remark;
        }
        object["descriptors"] = Json::array();
        for (const DescriptorOnWire& descriptor : loop.descriptors) {
            object["descriptors"].push_back(descriptorJson(descriptor));
        }
        array.push_back(std::move(object));
    }
    return array;
}

} // namespace

void addPlace(Json& object, const FaultPlace& place) {
    object["pid"] = orNull(place.pid);
    object["table"] = place.tableId ? orNull(std::string(tableName(*place.tableId))) : Json();
    object["table_id"] = orNull(place.tableId);
    object["table_id_extension"] = orNull(place.extension);
}

const char* severityName(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    case Severity::Remark:
        break;
    }
    return "remark";
}

Json sectionJson(const char* type, const std::string& source, const SectionReport& report) {
    Json object = lineObject(type, source);
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

Json descriptorJson(const DescriptorOnWire& descriptor) {
    const RawDescriptor& raw = descriptor.raw;
    Json object{{"offset", raw.offset}, {"descriptor_tag", raw.tag}};
    object["descriptor_tag_name"] = orNull(std::string(raw.name));
    object["known"] = raw.kind != nullptr;
    object["length"] = orNull(raw.length);
    object["fits"] = raw.fits();
    object["error_code"] = orNull(descriptor.errorCode);
    object["error_code_name"] = descriptor.errorCode ? orNull(std::string(errorName(*descriptor.errorCode))) : Json();
    object["error_code_reading"] = orNull(std::string(descriptor.errorReading()));
    object["refused_though_right"] = orNull(std::string(descriptor.becauseOf));
    object["bytes"] = hexJson(raw.body);
    object["at_fault"] = descriptor.atFault();
    return object;
}

void addError(Json& object, const Rejection& rejection) {
    object["error"] = {{"code", rejection.errorCode}, {"name", rejection.errorName}};
    object["log"] = rejection.logLines;
}

void addRejection(Json& object, const Rejection& rejection) {
    addError(object, rejection);
    object["loops"] = loopsJson(rejection.loops);
    object["bytes"] = hexJson(rejection.section);
}

std::string sectionLine(const std::string& source, const SectionReport& report, const FieldPlaces* places) {
    Json object = sectionJson("section", source, report);
    if (report.rejection) {
        addRejection(object, *report.rejection);
    } else {
        object["fields"] = fieldsJson(report.fields);
        if (places != nullptr) {
            object["places"] = places->empty() ? Json() : placesJson(report.fields, *places);
        }
    }
    if (!report.bytes.empty()) {
        object["loops"] = loopsJson(describeDescriptors(report.bytes.data(), report.bytes.size()));
        object["bytes"] = hexJson(report.bytes);
    }
    return jsonLine(object);
}

std::string faultLines(const std::string& source, const Faults& faults) {
    std::string lines;
    std::map<std::string, std::uint64_t> known;
    for (const Fault& fault : faults.all()) {
        Json object = lineObject("fault", source);
        const std::uint64_t before = known[eventId(fault.kind.name, fault.place, fault.since)]++;
        object["id"] = eventId(fault.kind.name, fault.place, fault.since, before);
        object["fault"] = fault.kind.name;
        object["severity"] = severityName(fault.kind.severity);
        object["about"] = fault.about;
        object["text"] = fault.text;
        addPlace(object, fault.place);
        addPosition(object, fault.since);
        lines += jsonLine(object);
    }
    return lines;
}

} // namespace inspect
