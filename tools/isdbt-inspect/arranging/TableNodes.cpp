#include "arranging/TableNodes.h"

#include "describing/FieldLookup.h"
#include "describing/StandardReadings.h"
#include "multiplex/Titles.h"
#include "starting/Starting.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::string_view APPLICATION = "application_descriptor";
constexpr std::string_view NAMES = "application_name_descriptor";
constexpr std::string_view TRANSPORT = "transport_protocol_descriptor";
constexpr std::string_view REMOTE = "remote_connection";

/// Takes what the node's line says out of the list of an object, unless there is a remark on the list.
Fields takeElements(Fields& application, std::string_view descriptor, std::string_view list) {
    const Field* const field = find(inner(application, descriptor), list);
    if (field == nullptr || !field->reading.empty()) {
        return field == nullptr ? Fields{} : std::get<List>(field->value).elements;
    }
    return std::get<List>(take(application, descriptor, list)->value).elements;
}

void sayNames(Node& node, Fields& application) {
    for (const Field& item : takeElements(application, NAMES, "items")) {
        if (const Field* const name = find(inner(item), "name")) {
            node.names.push_back(*name);
            const Field* const language = find(inner(item), "language_code");
            node.names.back().unit = language == nullptr ? "" : std::get<Text>(language->value).decoded;
        }
    }
}

/// What is said above of all applications of the AIT is not told again.
void removeInherited(Fields& application) {
    application.erase(std::remove_if(application.begin(), application.end(),
                                     [](const Field& each) { return find(inner(each), "inherited") != nullptr; }),
                      application.end());
}

/// Takes out what a transport_protocol_descriptor has on the wire only if it leads to another service.
void takeUnsent(Fields& fields) {
    const Field* const remote = find(inner(fields, TRANSPORT), REMOTE);
    if (remote != nullptr && !std::get<bool>(remote->value)) {
        for (const std::string_view name : {"original_network_id", "transport_stream_id", "service_id"}) {
            take(fields, TRANSPORT, name);
        }
    }
}

Node applicationNode(const Fields& described, const Components* components, const Faults& faults,
                     const ApplicationReport* report) {
    Fields rest = described;
    Node node(titleOfApplication(described));
    sayNames(node, rest);
    for (const std::string_view said : {"hash_id", "application_identifier", "application_type"}) {
        take(rest, said);
    }
    node.mark = node.title.substr(node.title.find(' ') + 1);
    const std::optional<Field> control = take(rest, "control_code");
    node.kind = control && !control->codeName.empty() ? control->codeName : "Application";
    for (const Field& name : node.names) {
        node.kind += fmt::format(" \"{}\"", std::get<Text>(name.value).decoded);
    }
    node.say("", control);
    node.say("priority", take(rest, APPLICATION, "application_priority"), Extent::Full);
    node.say("visible", take(rest, APPLICATION, "visibility"), Extent::Full);
    node.say("service-bound", take(rest, APPLICATION, "service_bound"), Extent::Full);
    for (const Field& profile : takeElements(rest, APPLICATION, "profiles")) {
        node.say("profile", inner(profile).front(), Extent::Full);
    }
    for (const std::string_view said : {"visibile_for_users", "visibile_for_applications"}) {
        take(rest, APPLICATION, said);
    }
    const std::optional<std::int64_t> tag = carouselTag(described);
    const Component* const carousel = components == nullptr || !tag ? nullptr : withTag(*components, *tag);
    if (carousel != nullptr) {
        node.say("carousel PID", identifier("", carousel->pid, 4));
    }
    if (report != nullptr && report->verdict == ApplicationReport::Verdict::Starts) {
        node.say(report->seconds ? fmt::format("starts after {:.1f} s", *report->seconds) : "starts");
    }
    node.faults = faults.of(&described);
    removeInherited(rest);
    takeUnsent(rest);
    node.tell("", std::move(rest));
    return node;
}

Node applicationTableNode(const Table& ait, const Components* components, const Faults& faults,
                          const std::vector<ApplicationReport>& applications) {
    Fields rest = ait.beside("applications");
    take(rest, "application_type");
    Node node(titleOf(ait));
    takeUnsent(rest);
    node.sayVersionOnly(ait);
    node.faults = faults.of(&ait);
    node.tell("", std::move(rest));
    for (const Fields* const application : ait.entries("applications")) {
        node.children.push_back(
            applicationNode(*application, components, faults, reportOf(applications, ait, *application)));
    }
    return node;
}

/// DSM-CC stream descriptors: events, time references, modes.
Node eventNode(const Table& section, const Faults& faults) {
    Node node(titleOf(section));
    Fields rest = section.beside({});
    node.say("data event", take(rest, "data_event_id"));
    node.say("event message group", take(rest, "event_msg_group_id"));
    node.sayVersionOnly(section);
    node.faults = faults.of(&section);
    node.tell("", std::move(rest));
    return node;
}

constexpr std::int64_t OF_BRASILIA = -180; // minutes

/// Brazilian stations whose offsets count from UTC give three hours behind for most of the country.
bool countsFromUtc(const Fields& tot) {
    const Fields& regions = elements(inner(inner(tot, "local_time_offset_descriptor"), STANDARD), "regions");
    return std::any_of(regions.begin(), regions.end(), [](const Field& region) {
        const Field* const country = find(inner(region), "country_code");
        return std::get<Text>(country->value).raw == "BRA" &&
               numberIn(inner(region), "local_time_offset") == OF_BRASILIA;
    });
}

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

Node carriedNode(const Table& table, const Components* components, const Faults& faults,
                 const std::vector<ApplicationReport>& applications) {
    return table.key.tableId == AIT ? applicationTableNode(table, components, faults, applications)
                                    : eventNode(table, faults);
}

Node timeNode(const Table& tot, const Faults& faults) {
    Node node(titleOf(tot));
    Fields rest = tot.beside({});
    node.say("", take(rest, "unix_time"));
    if (countsFromUtc(rest)) {
        node.say("by its offset of 03:00 behind rather UTC");
    }
    if (!tot.taken.empty() && !tot.taken.front()->otherZone.empty()) {
        node.say("by this machine's clock rather " + tot.taken.front()->otherZone);
    }
    node.sayVersion(tot);
    node.faults = faults.of(&tot);
    node.tell("", std::move(rest));
    return node;
}

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
