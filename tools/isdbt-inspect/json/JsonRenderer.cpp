#include "json/JsonRenderer.h"

#include "json/FieldJson.h"
#include "json/JsonValues.h"
#include "json/SectionJson.h"
#include "json/TransmissionJson.h"

#include <nlohmann/json.hpp>

namespace inspect {

void JsonRenderer::section(const SectionReport& report) {
    write(sectionLine(source(), report));
}

void JsonRenderer::descriptor(const DescriptorReport& report) {
    nlohmann::ordered_json object = lineObject("descriptor", source());
    object["table"] = report.tableName;
    object["table_id"] = report.tableId;
    object["damaged"] = !report.onWire.raw.fits();
    object["on_wire"] = descriptorJson(report.onWire);
    if (report.rejection) {
        addError(object, *report.rejection);
    } else {
        object["fields"] = report.taken ? fieldsJson({*report.taken}) : nlohmann::ordered_json();
    }
    write(jsonLine(object));
}

void JsonRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    write(transmissionLine(source(), summary) + faultLines(source(), faults));
}

} // namespace inspect
