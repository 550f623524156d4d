#include "json/AlarmJson.h"

#include "tables/TableKinds.h"
#include "json/JsonValues.h"
#include "json/SectionJson.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

const char* eventOf(Alarm::Stage stage) {
    switch (stage) {
    case Alarm::Stage::Begun:
        return "begin";
    case Alarm::Stage::Worse:
        return "worse";
    case Alarm::Stage::Ended:
        break;
    }
    return "end";
}

/// The worst that came of it.
const char* resultOf(const CheckResult& check) {
    if (check.alarms != 0) {
        return "alarm";
    }
    if (check.warnings != 0) {
        return "warning";
    }
    return check.remarks != 0 ? "remark" : check.whyUnmeasured.empty() ? "ok" : "not_measured";
}

std::optional<double> durationOf(const Alarm& alarm) {
    return alarm.until && alarm.until->seconds && alarm.since.seconds
               ? std::optional(*alarm.until->seconds - *alarm.since.seconds)
               : std::nullopt;
}

} // namespace

std::string alarmLine(const std::string& source, const Alarm& alarm) {
    Json object = lineObject("alarm", source);
    object["id"] = eventId(alarm.kind.name, alarm.place, alarm.since);
    object["event"] = eventOf(alarm.stage);
    object["check"] = alarm.kind.name;
    object["indicator"] = orNull(std::string(alarm.indicator));
    object["severity"] = severityName(alarm.kind.severity);
    object["text"] = alarm.text;
    addPlace(object, alarm.place);
    addPosition(object, alarm.at);
    object["duration"] = measured(durationOf(alarm));
    object["limit"] = measured(alarm.limit);
    object["limit_source"] = alarm.limitSource;
    object["proposal"] = alarm.isProposal;
    object["count"] = alarm.count;
    object["worst"] = measured(alarm.worst);
    return jsonLine(object);
}

std::string checkLines(const std::string& source, const Summary& summary) {
    std::string lines;
    for (const CheckResult& check : summary.checks) {
        Json object = lineObject("check", source);
        object["check"] = check.check;
        object["indicator"] = orNull(std::string(check.indicator));
        object["what"] = check.what;
        object["limits"] = orNull(check.limits);
        object["result"] = resultOf(check);
        object["alarms"] = check.alarms;
        object["warnings"] = check.warnings;
        object["remarks"] = check.remarks;
        object["why_not_measured"] = orNull(check.whyUnmeasured);
        addTime(object, summary.last);
        lines += jsonLine(object);
    }
    return lines;
}

} // namespace inspect
