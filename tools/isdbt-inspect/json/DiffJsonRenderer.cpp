#include "json/DiffJsonRenderer.h"

#include "json/FieldJson.h"
#include "json/JsonValues.h"
#include "json/SectionJson.h"
#include "json/TransmissionJson.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

/// A field under a name that is always the same, since the path says which one it is. Null when there is none.
Json valueJson(const Field* field) {
    if (field == nullptr) {
        return nullptr;
    }
    Field value = *field;
    value.name = "value";
    return fieldsJson({value});
}

Json changesJson(const std::vector<Change>& changes) {
    Json array = Json::array();
    for (const Change& change : changes) {
        array.push_back(
            {{"path", change.path}, {"before", valueJson(change.before)}, {"after", valueJson(change.after)}});
    }
    return array;
}

/// By their kinds.
constexpr const char* EVENTS[] = {"new", "returned", "changed", "rejected", "ended", "missing"};

FaultPlace placeIn(const SectionReport& report) {
    return {report.pid, report.tableId, report.header ? std::optional(report.header->extension) : std::nullopt};
}

} // namespace

void DiffJsonRenderer::tell(const Fate& fate) {
    const SectionReport& report = fate.report;
    Json object = sectionJson("change", source(), report);
    object["event"] = EVENTS[fate.kind];
    const unsigned number = report.header ? report.header->sectionNumber : 0U;
    object["id"] =
        eventId(EVENTS[fate.kind], placeIn(report), report.position, fate.kind == Fate::Ended ? fate.ended : number);
    if (fate.kind == Fate::Changed) {
        object["former_pid"] = orNull(fate.former->pid);
        object["former_version"] = fate.former->header ? Json(fate.former->header->version) : Json();
        object["changes"] = changesJson(fate.changes);
    } else if (fate.kind == Fate::Rejected) {
        addRejection(object, *report.rejection);
    } else if (fate.kind == Fate::Ended) {
        object["section_number"] = fate.ended;
    }
    write(jsonLine(object));
}

void DiffJsonRenderer::tellOutcome(const Summary& summary, const Faults& faults) {
    write(transmissionLine(source(), summary) + faultLines(source(), faults));
}

} // namespace inspect
