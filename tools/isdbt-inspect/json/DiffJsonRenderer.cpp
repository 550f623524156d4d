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

} // namespace

Json DiffJsonRenderer::changeJson(const char* event, const SectionReport& report) const {
    Json object = sectionJson("change", m_source, report);
    object["event"] = event;
    const std::optional<std::uint8_t> section =
        report.header ? std::optional(report.header->sectionNumber) : std::nullopt;
    const std::optional<std::uint16_t> extension =
        report.header ? std::optional(report.header->extension) : std::nullopt;
    object["id"] = eventId(event, {report.pid, report.tableId, extension}, report.position, section.value_or(0));
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

void DiffJsonRenderer::tellOutcome(const Summary& summary, const Faults& faults) {
    m_output.write(transmissionLine(m_source, summary) + faultLines(m_source, faults));
}

} // namespace inspect
