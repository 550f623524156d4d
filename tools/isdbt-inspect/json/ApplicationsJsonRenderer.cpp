#include "json/ApplicationsJsonRenderer.h"

#include "json/FieldJson.h"
#include "json/JsonValues.h"
#include "json/SectionJson.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

const char* nameOf(Step::Result result) {
    switch (result) {
    case Step::Result::Passed:
        return "passed";
    case Step::Result::Failed:
        return "failed";
    default:
        return "not_seen";
    }
}

const char* nameOf(ApplicationReport::Verdict verdict) {
    switch (verdict) {
    case ApplicationReport::Verdict::Starts:
        return "starts";
    case ApplicationReport::Verdict::DoesNotStart:
        return "does_not_start";
    case ApplicationReport::Verdict::NotByItself:
        return "not_by_itself";
    default:
        return "not_known";
    }
}

Json stepJson(const Step& step) {
    Json object{{"step", step.name}, {"result", nameOf(step.result)}, {"needed", step.needed}, {"text", step.text}};
    object["fault"] = step.fault ? Json(step.fault->name) : Json();
    addPlace(object, step.place);
    addPosition(object, step.position);
    object["bytes"] = hexJson(step.bytes);
    return object;
}

} // namespace

std::string applicationLines(const std::string& source, const Summary& summary) {
    std::string lines;
    for (const ApplicationReport& report : summary.applications) {
        Json object = lineObject("application", source);
        object["service_id"] = orNull(report.serviceId);
        addPlace(object, report.place);
        object["organization_id"] = report.organisationId;
        object["application_id"] = report.applicationId;
        object["name"] = orNull(report.name);
        object["verdict"] = nameOf(report.verdict);
        object["text"] = report.text;
        object["starts_after"] = measured(report.seconds);
        object["steps"] = Json::array();
        for (const Step& step : report.steps) {
            object["steps"].push_back(stepJson(step));
        }
        lines += jsonLine(object);
    }
    return lines;
}

void ApplicationsJsonRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    write(applicationLines(source(), summary) + faultLines(source(), faults));
}

} // namespace inspect
