#include "json/DiffJsonRenderer.h"

#include "json/AlarmJson.h"
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

} // namespace

void DiffJsonRenderer::tell(const Event& event) {
    Json object = sectionJson("change", m_input, event.report);
    object["event"] = EVENTS[event.kind];
    if (event.kind == Event::Changed) {
        object["former_pid"] = orNull(event.former->pid);
        object["former_version"] = event.former->header ? Json(event.former->header->version) : Json();
        object["changes"] = changesJson(event.changes);
    } else if (event.kind == Event::Rejected) {
        addRejection(object, *event.report.rejection);
    } else if (event.kind == Event::Ended) {
        object["section_number"] = event.ended;
    }
    m_output.write(jsonLine(object));
}

void DiffJsonRenderer::tellAlarm(const Alarm& alarm) {
    m_output.write(alarmLine(m_input, alarm));
}

void DiffJsonRenderer::tellOutcome(const Summary& summary, const Faults& faults) {
    m_output.write(transmissionLine(m_input, summary) + faultLines(m_input, faults));
}

} // namespace inspect
