#include "rendering/JsonRenderer.h"

#include "rendering/FieldJson.h"
#include "rendering/JsonValues.h"
#include "rendering/SectionJson.h"

#include <nlohmann/json.hpp>

namespace inspect {

void JsonRenderer::section(const SectionReport& report) {
    nlohmann::ordered_json object = sectionJson("section", m_input, report);
    if (report.rejection) {
        addRejection(object, *report.rejection);
    } else {
        object["fields"] = fieldsJson(report.fields);
    }
    m_output.write(jsonLine(object));
}

} // namespace inspect
