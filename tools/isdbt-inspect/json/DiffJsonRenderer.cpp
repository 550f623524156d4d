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

} // namespace

Json DiffJsonRenderer::changeJson(const char* event, const SectionReport& report) const {
    Json object = sectionJson("change", m_input, report);
    object["event"] = event;
    return object;
}

void DiffJsonRenderer::tellNew(const SectionReport& report) {
    m_output.write(jsonLine(changeJson("new", report)));
}

void DiffJsonRenderer::tellReturn(const SectionReport& report) {
    m_output.write(jsonLine(changeJson("returned", report)));
}

void DiffJsonRenderer::tellChange(const SectionReport& former, const SectionReport& report,
                                  const std::vector<Change>& changes) {
    Json object = changeJson("changed", report);
    object["former_pid"] = orNull(former.pid);
    object["former_version"] = former.header ? Json(former.header->version) : Json();
    object["changes"] = changesJson(changes);
    m_output.write(jsonLine(object));
}

void DiffJsonRenderer::tellRejection(const SectionReport& report) {
    Json object = changeJson("rejected", report);
    addRejection(object, *report.rejection);
    m_output.write(jsonLine(object));
}

void DiffJsonRenderer::tellEnd(const SectionReport& last, unsigned number) {
    Json object = changeJson("ended", last);
    object["section_number"] = number;
    m_output.write(jsonLine(object));
}

void DiffJsonRenderer::tellMissing(const SectionReport& report) {
    m_output.write(jsonLine(changeJson("missing", report)));
}

void DiffJsonRenderer::tellAlarm(const Alarm& alarm) {
    m_output.write(alarmLine(m_input, alarm));
}

void DiffJsonRenderer::tellOutcome(const Summary& summary, const Faults& faults) {
    m_output.write(transmissionLine(m_input, summary) + faultLines(m_input, faults));
}

} // namespace inspect
