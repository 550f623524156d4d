#include "json/JsonRenderer.h"

#include "json/AlarmJson.h"
#include "json/FieldJson.h"
#include "json/JsonValues.h"
#include "json/SectionJson.h"
#include "json/TransmissionJson.h"

#include <nlohmann/json.hpp>

namespace inspect {

void JsonRenderer::section(const SectionReport& report) {
    nlohmann::ordered_json object = sectionJson("section", m_source, report);
    if (report.rejection) {
        addRejection(object, *report.rejection);
    } else {
        object["fields"] = fieldsJson(report.fields);
    }
    if (!report.bytes.empty()) {
        object["bytes"] = hexJson(report.bytes);
    }
    m_output.write(jsonLine(object));
}

void JsonRenderer::descriptor(const DescriptorReport& report) {
    nlohmann::ordered_json object = lineObject("descriptor", m_source);
    object["table"] = report.tableName;
    object["table_id"] = report.tableId;
    object["damaged"] = !report.onWire.raw.fits();
    object["on_wire"] = descriptorJson(report.onWire);
    if (report.rejection) {
        addError(object, *report.rejection);
    } else {
        object["fields"] = report.taken ? fieldsJson({*report.taken}) : nlohmann::ordered_json();
    }
    m_output.write(jsonLine(object));
}

void JsonRenderer::alarm(const Alarm& alarm) {
    m_output.write(alarmLine(m_source, alarm));
}

void JsonRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    m_output.write(transmissionLine(m_source, summary) + faultLines(m_source, faults));
}

} // namespace inspect
