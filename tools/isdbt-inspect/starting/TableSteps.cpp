#include "starting/TableSteps.h"

#include "describing/FieldLookup.h"
#include "pmt/TProgramMap.h"
#include "starting/Descriptors.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

constexpr std::string_view LABEL = "transport_protocol_label";

constexpr std::int64_t AUTOSTART = 1;
constexpr std::int64_t INTERNET = 2; // protocol_id

Evidence evidenceOf(const Table& table) {
    return {placeOf(table), sinceOf(table), {}};
}

/// The last of a kind counts.
const RawDescriptor* lastOf(const DescriptorLoop& loop, std::string_view name) {
    const auto found =
        std::find_if(loop.descriptors.rbegin(), loop.descriptors.rend(),
                     [name](const RawDescriptor& each) { return each.kind != nullptr && each.kind->name == name; });
    return found == loop.descriptors.rend() ? nullptr : &*found;
}

/// The stream that is read, where its services are; null when no table tells which it is.
const TransportStream* thisStreamOf(const Multiplex& multiplex) {
    const auto in = [](const std::vector<TransportStream>& streams) -> const TransportStream* {
        const auto found = std::find_if(streams.begin(), streams.end(),
                                        [](const TransportStream& each) { return each.isThisOne && !each.isRepeated; });
        return found == streams.end() ? nullptr : &*found;
    };
    for (const Network& network : multiplex.networks()) {
        if (const TransportStream* const found = in(network.streams)) {
            return found;
        }
    }
    return in(multiplex.unlisted());
}

/// Whether the stream is the one of a remote connection.
bool isThatOf(const TransportStream& stream, const Fields& connection) {
    constexpr std::string_view NETWORK = "original_network_id";
    return stream.id == numberIn(connection, "transport_stream_id") &&
           (stream.entry == nullptr || numberIn(*stream.entry, NETWORK) == numberIn(connection, NETWORK));
}

std::uint64_t keyOf(const Fields& application) {
    const Fields& id = inner(application, "application_identifier");
    return static_cast<std::uint64_t>(numberIn(id, "organization_id").value_or(0)) << 16U |
           static_cast<std::uint64_t>(numberIn(id, "application_id").value_or(0));
}

/// Whether a receiver has a profile in the version that an application is for, or a higher one.
bool hasProfile(const ReceiverProfiles& receiver, const Fields& profile) {
    const auto has = receiver.find(static_cast<std::uint16_t>(numberIn(profile, "application_profile").value_or(0)));
    const auto version = [&profile](std::string_view part) {
        return static_cast<std::uint8_t>(numberIn(profile, part).value_or(0));
    };
    return has != receiver.end() &&
           has->second >= ReceiverProfiles::mapped_type{version("version_major"), version("version_minor"),
                                                        version("version_micro")};
}

std::string textOf(const ReceiverProfiles& receiver) {
    std::vector<std::string> profiles;
    for (const auto& [profile, version] : receiver) {
        profiles.push_back(fmt::format("profile 0x{:04X} version {}", profile, fmt::join(version, ".")));
    }
    return fmt::format("{}", fmt::join(profiles, ", "));
}

} // namespace

bool carriesCarousel(const Component& component) {
    using Quor::TProgramMap;
    return component.streamType >= TProgramMap::STREAM_TYPE_0X0A &&
           component.streamType <= TProgramMap::STREAM_TYPE_0X0D;
}

Evidence Candidate::descriptor(std::string_view name) const {
    Evidence evidence{placeOf(ait), section.position, {}};
    for (const bool own : {true, false}) {
        for (const DescriptorLoop& loop : loops) {
            const bool isIt = own ? loop.key == keyOf(application) : !loop.key.has_value();
            const RawDescriptor* const found = isIt ? lastOf(loop, name) : nullptr;
            if (found != nullptr) {
                evidence.bytes = found->bytes();
                return evidence;
            }
        }
    }
    return evidence;
}

std::string starterOf(const Fields& application) {
    const Field* const code = find(application, "control_code");
    const std::int64_t value = numberIn(application, "control_code").value_or(0);
    const bool hasName = code != nullptr && !code->codeName.empty();
    return value == AUTOSTART ? "" : "control code " + (hasName ? code->codeName : fmt::format("0x{:02X}", value));
}

void TableSteps::goTables() {
    goProgram();
    goAit();
    goDescriptors();
}

void TableSteps::goProgram() {
    const Tables& tables = m_candidate.multiplex.tables();
    const std::optional<Pid> pid = m_candidate.ait.key.pid;
    if (m_candidate.claim == nullptr) {
        m_steps.add("PMT",
                    !pid ? notSeen("its AIT came without packets")
                    : tables.expects(PMT)
                        ? failed({}, fmt::format("no PMT names PID 0x{:04X}, on which its AIT is", *pid))
                        : notSeen("no PMT was looked at"),
                    {});
        return;
    }
    const Service& service = *m_candidate.claim->service;
    for (const Table* const pat : tables.of(PAT)) {
        m_steps.add("PAT",
                    service.programMapPid
                        ? passed(fmt::format("the PAT has its service 0x{:04X}, whose PMT is on PID 0x{:04X}",
                                             service.id, *service.programMapPid))
                        : failed({}, fmt::format("the PAT does not have its service 0x{:04X}", service.id)),
                    evidenceOf(*pat));
    }
    if (tables.of(PAT).empty()) {
        m_steps.add("PAT", tables.misses(PAT) ? failed({}, "no PAT came") : notSeen("no PAT was looked at"), {});
    }
    for (const ProgramMap& map : service.programMaps) {
        if (&map.components == m_candidate.claim->components) {
            m_components = &map.components;
            const Component& component = *m_candidate.claim->component;
            m_steps.add("PMT",
                        passed(fmt::format("the PMT has the component of its AIT, PID 0x{:04X}{}", component.pid,
                                           carriesApplicationInformation(component)
                                               ? ", and says that it is one"
                                               : fmt::format(", of stream type 0x{:02X}", component.streamType))),
                        evidenceOf(*map.table));
        }
    }
}

const TableStatistics* TableSteps::aitStatistics() const {
    for (const PidStatistics& pid : m_candidate.summary.statistics) {
        for (const TableStatistics& table : pid.tables) {
            if (pid.pid == m_candidate.ait.key.pid && table.tableId == AIT) {
                return &table;
            }
        }
    }
    return nullptr;
}

void TableSteps::goAit() {
    const Evidence evidence{placeOf(m_candidate.ait), m_candidate.section.position, {}};
    m_steps.add("AIT", ait(), evidence);
    m_steps.add("AIT version", aitVersion(), evidence, Need::Use);
    if (aitStatistics() != nullptr) {
        m_steps.add("AIT CRC_32", aitSound(), evidence, Need::Use);
    }
}

Outcome TableSteps::ait() const {
    const std::optional<LongHeader>& header = m_candidate.section.header;
    return passed(fmt::format("its AIT{} came{}",
                              m_candidate.ait.key.pid ? fmt::format(" on PID 0x{:04X}", *m_candidate.ait.key.pid) : "",
                              header ? fmt::format(", version {}", header->version) : ""));
}

/// A receiver that already runs an application looks at each version anew.
Outcome TableSteps::aitVersion() const {
    if (!m_candidate.ait.silentChanges.empty()) {
        return failed({}, "its AIT changed without a new version");
    }
    const TableStatistics* const statistics = aitStatistics();
    const std::size_t tables = m_candidate.multiplex.tables().on(m_candidate.ait.key.pid, AIT).size();
    // Once round all of them is no return.
    if (statistics == nullptr || statistics->versions.size() < 2 ||
        statistics->versionChanges <= tables * (statistics->versions.size() - 1)) {
        return passed("no version of its AIT came back");
    }
    std::vector<unsigned> versions;
    for (const auto& [version, sections] : statistics->versions) {
        versions.push_back(version);
    }
    return failed(faults::APPLICATION_TABLE_UNSTABLE,
                  fmt::format("its AIT goes to and fro between versions {}: {} changes", fmt::join(versions, ", "),
                              statistics->versionChanges));
}

Outcome TableSteps::aitSound() const {
    const TableStatistics& statistics = *aitStatistics();
    const std::string of =
        fmt::format("of {} {} of its AIT", statistics.sections, statistics.sections == 1 ? "section" : "sections");
    return statistics.crcErrors == 0
               ? passed(of + ", all are sound")
               : failed({}, fmt::format("{}, {} came with a wrong CRC_32", of, statistics.crcErrors));
}

void TableSteps::goDescriptors() {
    const Fields& application = m_candidate.application;
    const std::string starter = starterOf(application);
    m_steps.add(CONTROL_CODE, starter.empty() ? passed("control code AUTOSTART") : failed({}, starter),
                {placeOf(m_candidate.ait), m_candidate.section.position, {}}, Need::Use);
    m_steps.add("profile", profile(), m_candidate.descriptor(descriptors::APPLICATION));
}

/// Which profiles a receiver has is its own. One that the application is for is enough.
Outcome TableSteps::profile() const {
    const Field* const descriptor = find(m_candidate.application, descriptors::APPLICATION);
    if (descriptor == nullptr) {
        return failed(faults::DESCRIPTOR_MISSING, fmt::format("no {}", descriptors::APPLICATION));
    }
    const Fields& fields = inner(*descriptor);
    std::vector<std::string> profiles;
    bool isMet = m_candidate.receiver.empty();
    for (const Field& each : elements(fields, "profiles")) {
        const Field* const profile = find(inner(each), "application_profile");
        isMet = isMet || hasProfile(m_candidate.receiver, inner(each));
        profiles.push_back(fmt::format("profile {} {}", std::get<Number>(profile->value).digits(), profile->reading));
    }
    if (!isMet && !profiles.empty()) {
        return failed(faults::PROFILE_MISSING, fmt::format("it is for {}, and the receiver has {}",
                                                           fmt::join(profiles, ", "), textOf(m_candidate.receiver)));
    }
    return passed(fmt::format("it is {}bound to its service, and for {}", isSet(fields, "service_bound") ? "" : "not ",
                              profiles.empty() ? "no profile" : fmt::format("{}", fmt::join(profiles, ", "))));
}

/// Descriptors refer to the protocol by its label.
void TableSteps::goLabels(std::int64_t has) {
    const std::vector<std::int64_t> labels =
        numbersIn(inner(m_candidate.application, descriptors::APPLICATION), "transport_protocols");
    const bool isNamed = labels.empty() || std::find(labels.begin(), labels.end(), has) != labels.end();
    const auto check = [&](std::string_view name, std::int64_t label, Need need) {
        if (label != has && m_steps.hasRoomFor("transport label")) {
            m_steps.add("transport label",
                        failed(faults::LABEL_UNKNOWN,
                               fmt::format("{} names transport protocol label 0x{:02X}, but the receiver has 0x{:02X}",
                                           name, label, has)),
                        m_candidate.descriptor(name), need);
        }
    };
    for (const std::int64_t label : labels) {
        check(descriptors::APPLICATION, label, isNamed ? Need::Use : Need::Start);
    }
    for (const std::string_view name : {descriptors::PREFETCH, descriptors::DII_LOCATION}) {
        if (const std::optional<std::int64_t> label = numberIn(inner(m_candidate.application, name), LABEL)) {
            check(name, *label, Need::Use);
        }
    }
}

const Component* TableSteps::goTransport() {
    const Evidence evidence = m_candidate.descriptor(descriptors::TRANSPORT);
    const Fields& transport = inner(m_candidate.application, descriptors::TRANSPORT);
    const std::int64_t label = numberIn(transport, LABEL).value_or(0);
    m_steps.go("transport protocol", evidence, [&] {
        return find(m_candidate.application, descriptors::TRANSPORT) == nullptr
                   ? failed(faults::DESCRIPTOR_MISSING, fmt::format("no {}", descriptors::TRANSPORT))
                   : passed(
                         fmt::format("transport protocol label 0x{:02X} is {}", label,
                                     find(transport, "type") == nullptr ? "there" : find(transport, "type")->codeName));
    });
    if (find(m_candidate.application, descriptors::LOCATION) == nullptr) {
        m_steps.add("location", failed(faults::DESCRIPTOR_MISSING, fmt::format("no {}", descriptors::LOCATION)),
                    m_candidate.descriptor(descriptors::LOCATION));
    }
    if (m_steps.goesOn()) {
        goLabels(label);
    }
    m_steps.go("connection", evidence, [&] { return connection(); });
    const Component* found = nullptr;
    const std::int64_t tag = numberIn(transport, "component_tag").value_or(0);
    m_steps.go("component", evidence, [&] { return component(tag, found); });
    return found;
}

Outcome TableSteps::connection() {
    const Fields& transport = inner(m_candidate.application, descriptors::TRANSPORT);
    if (numberIn(transport, "protocol_id") == INTERNET) {
        std::vector<std::string> urls;
        for (const Field& url : elements(transport, "urls")) {
            urls.push_back(std::get<Text>(url.value).decoded);
        }
        return notSeen(fmt::format("it comes by IP, not in this stream: {}", fmt::join(urls, " ")));
    }
    if (!isSet(transport, "remote_connection")) {
        return passed("its carousel comes with its service");
    }
    const std::int64_t stream = numberIn(transport, "transport_stream_id").value_or(0);
    const std::int64_t id = numberIn(transport, "service_id").value_or(0);
    const std::string where =
        fmt::format("its carousel comes with service 0x{:04X} of transport stream 0x{:04X}", id, stream);
    const TransportStream* const here = thisStreamOf(m_candidate.multiplex);
    if (here == nullptr || !isThatOf(*here, transport)) {
        return notSeen(where + ", not in this stream");
    }
    const auto service =
        std::find_if(here->services.begin(), here->services.end(), [id](const Service& each) { return each.id == id; });
    const bool isKnown = service != here->services.end();
    if (isKnown && !service->programMaps.empty()) {
        m_components = &service->programMaps.front().components;
        return passed(where);
    }
    const Tables& tables = m_candidate.multiplex.tables();
    if (isKnown && service->programMapPid) {
        const std::string text = where + ", whose PMT did not come";
        return tables.areLong() ? failed({}, text) : notSeen(text);
    }
    return tables.of(PAT).empty() ? notSeen(where + ", and no PAT came")
                                  : failed(faults::CAROUSEL_MISSING, where + ", which the PAT does not have");
}

Outcome TableSteps::component(std::int64_t tag, const Component*& found) const {
    if (m_components == nullptr) {
        return notSeen(
            fmt::format("its carousel has component tag 0x{:02X}, and there is no PMT that says where it is", tag));
    }
    found = withTag(*m_components, tag);
    return found == nullptr
               ? failed(faults::CAROUSEL_MISSING,
                        fmt::format("its carousel has component tag 0x{:02X}, which the PMT does not have", tag))
               : passed(fmt::format(
                     "component tag 0x{:02X} is PID 0x{:04X}{}", tag, found->pid,
                     carriesCarousel(*found) ? "" : fmt::format(", of stream type 0x{:02X}", found->streamType)));
}

} // namespace inspect
