#include "arranging/DownloadNodes.h"

#include "describing/FieldLookup.h"
#include "multiplex/Titles.h"

#include <fmt/format.h>

namespace inspect {

namespace {

/// Its component need not be in the PMT: it comes when the schedule says.
Node contentNode(const Fields& content) {
    Fields rest = content;
    Node node(fmt::format("Version {}", numberIn(content, "new_version").value_or(0)));
    take(rest, "new_version");
    node.say("", take(rest, "download_level"));
    node.say("", take(rest, "version_indicator"), Extent::Full);
    node.say("target version", take(rest, "target_version"), Extent::Full);
    node.say("group", take(rest, "group"), Extent::Full);
    node.say("schedule time shift", take(rest, "schedule_time_shift_info"), Extent::Full);
    for (Field schedule : elements(content, "schedule_infos")) {
        schedule.name = "schedule";
        node.details.push_back({{}, std::move(schedule)});
    }
    take(rest, "schedule_infos");
    node.tell("", std::move(rest));
    return node;
}

} // namespace

Node downloadNode(const Table& sdtt, const Faults& faults) {
    Fields rest = sdtt.beside("download_contents");
    Node node(titleOf(sdtt));
    for (const std::string_view said : {"table_id_extension", "maker_id", "model_id"}) {
        take(rest, said);
    }
    node.say("service", take(rest, "service_id"));
    node.say("transport stream", take(rest, "transport_stream_id"), Extent::Full);
    node.say("original network", take(rest, "original_network_id"), Extent::Full);
    node.sayVersion(sdtt);
    node.faults = faults.of(&sdtt);
    node.tell("", std::move(rest));
    for (const Fields* const content : sdtt.entries("download_contents")) {
        node.children.push_back(contentNode(*content));
    }
    return node;
}

} // namespace inspect
