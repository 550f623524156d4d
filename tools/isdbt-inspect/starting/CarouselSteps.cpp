#include "starting/CarouselSteps.h"

#include "describing/FieldLookup.h"
#include "starting/Descriptors.h"
#include "starting/Paths.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

constexpr std::int64_t JAVA_LOCATION = 4; // descriptor_tag
constexpr std::int64_t DATA_CAROUSEL = 4; // protocol_id

std::optional<std::int64_t> carouselIdOf(const Component& component) {
    return numberIn(inner(*component.fields, "carousel_identifier_descriptor"), "carousel_id");
}

bool isArchive(std::string_view path) {
    const auto endsWith = [path](std::string_view end) {
        return path.size() >= end.size() && equalWithoutCase(path.substr(path.size() - end.size()), end);
    };
    return endsWith(".jar") || endsWith(".zip");
}

/// The event ids of the stream descriptors that came on a PID.
std::set<std::int64_t> eventsOn(const Tables& tables, Pid pid) {
    std::set<std::int64_t> ids;
    for (const Table* const table : tables.on(pid, DSMCC_STREAM_DESCRIPTORS)) {
        for (const TakenSection* const section : table->taken) {
            if (const std::optional<std::int64_t> id =
                    numberIn(inner(section->fields, descriptors::STREAM_EVENT), "event_id")) {
                ids.insert(*id);
            }
            for (const Field& displaced : elements(section->fields, "displaced_descriptors")) {
                const Field* const tag = find(inner(displaced), "descriptor_tag");
                const Field* const field = find(inner(displaced), "bytes");
                const auto* const body = field == nullptr ? nullptr : std::get_if<Bytes>(&field->value);
                if (tag != nullptr && tag->codeName == descriptors::STREAM_EVENT && body != nullptr &&
                    body->bytes.size() >= 2) {
                    ids.insert(body->bytes[0] << 8U | body->bytes[1]);
                }
            }
        }
    }
    return ids;
}

} // namespace

CarouselIndex::CarouselIndex(const std::vector<CarouselPid>& pids) : m_pids(pids) {
    for (const CarouselPid& pid : pids) {
        for (const CarouselReport& each : pid.carousels) {
            m_files[pid.pid].emplace_back(each);
        }
    }
}

const CarouselPid* CarouselIndex::pid(Pid pid) const {
    const auto found =
        std::find_if(m_pids.begin(), m_pids.end(), [pid](const CarouselPid& each) { return each.pid == pid; });
    return found == m_pids.end() ? nullptr : &*found;
}

const CarouselFiles* CarouselIndex::files(Pid pid, std::optional<std::int64_t> carouselId) const {
    const auto found = m_files.find(pid);
    if (found == m_files.end()) {
        return nullptr;
    }
    const CarouselFiles* best = nullptr;
    int most = -1;
    for (const CarouselFiles& each : found->second) {
        const dsmcc::Carousel& carousel = each.carousel();
        const bool hasGateway = carousel.dsi != nullptr && carousel.dsi->gateway;
        const int fits = (hasGateway ? 4 : 0) + (carouselId && carousel.id == *carouselId ? 2 : 0) +
                         (carousel.type == dsmcc::CarouselType::Object ? 1 : 0);
        if (fits > most) {
            most = fits;
            best = &each;
        }
    }
    return best;
}

CarouselSteps::CarouselSteps(Steps& steps, const Candidate& candidate, const CarouselIndex& index,
                             const Component* component, const Components* components)
    : m_steps(steps), m_candidate(candidate), m_component(component), m_components(components),
      m_location(inner(candidate.application, descriptors::LOCATION)),
      m_base(normalised(textIn(m_location, "base_directory"))),
      m_isLookedAt(component != nullptr && candidate.summary.gathered[component->pid] &&
                   (index.pid(component->pid) != nullptr || !index.isFull())) {
    if (component == nullptr) {
        return;
    }
    for (const PidStatistics& each : candidate.summary.statistics) {
        m_traffic = each.pid == component->pid ? &each.traffic : m_traffic;
    }
    m_pid = index.pid(component->pid);
    m_files = index.files(component->pid, carouselIdOf(*component));
}

void CarouselSteps::go() {
    goPackets();
    goMessages();
    goFiles();
    if (m_files != nullptr) {
        goUses();
    }
}

Evidence CarouselSteps::onPid() const {
    return {{m_component == nullptr ? std::nullopt : std::optional(m_component->pid), {}, {}}, {}, {}};
}

std::string CarouselSteps::pidText() const {
    return fmt::format("PID 0x{:04X}", m_component->pid);
}

bool CarouselSteps::isData() const {
    return numberIn(inner(m_candidate.application, descriptors::TRANSPORT), "protocol_id") == DATA_CAROUSEL;
}

void CarouselSteps::goPackets() {
    const Evidence first{onPid().place,
                         m_traffic == nullptr || m_traffic->packets == 0 ? std::nullopt
                                                                         : std::optional(m_traffic->first),
                         {}};
    if (m_component != nullptr && !carriesCarousel(*m_component)) {
        m_steps.add("stream type",
                    failed(faults::CAROUSEL_IS_NONE,
                           fmt::format("the component 0x{:02X} of its carousel is no DSM-CC (stream type 0x{:02X})",
                                       m_component->tag.value_or(0), m_component->streamType)),
                    {placeOf(m_candidate.ait), m_candidate.section.position, {}},
                    m_files == nullptr ? Need::Start : Need::Use);
    }
    m_steps.go("packets", first, [&] { return packets(); });
    m_steps.go("clear", first, [&] {
        return m_pid == nullptr && m_candidate.multiplex.tables().isScrambled(m_component->pid)
                   ? failed(faults::SCRAMBLED, fmt::format("its carousel on {} is scrambled", pidText()))
                   : passed(fmt::format("{} is not scrambled", pidText()));
    });
    m_steps.go("sections", first, [&] { return sections(); });
}

Outcome CarouselSteps::packets() const {
    const std::uint64_t count = m_traffic == nullptr ? 0 : m_traffic->packets;
    return count != 0
               ? passed(fmt::format("{} on {}", counted(count, "packet", "packets"), pidText()))
               : missing(m_candidate.multiplex.tables().isSilent(m_component->pid) &&
                             m_candidate.summary.gathered[m_component->pid],
                         faults::CAROUSEL_SILENT, fmt::format("no packet came on {} of its carousel", pidText()));
}

Outcome CarouselSteps::sections() const {
    const std::uint64_t damaged = m_pid == nullptr ? 0 : m_pid->crcErrors;
    if (m_files != nullptr) {
        return passed(fmt::format("{} of a carousel on {}{}", counted(m_pid->sections, "section", "sections"),
                                  pidText(),
                                  damaged == 0 ? "" : fmt::format(", {} more with a wrong CRC_32", damaged)));
    }
    if (!m_isLookedAt) {
        return notSeen(fmt::format("the sections of {} were not looked at", pidText()));
    }
    if (m_pid != nullptr && !m_pid->refusals.empty()) {
        return missing(
            m_candidate.multiplex.tables().areLong(), faults::CAROUSEL_WITHOUT_SECTIONS,
            fmt::format("what came on {} is no carousel: {}", pidText(), m_pid->refusals.front().refusal.text));
    }
    std::string text = fmt::format("no sound section of a carousel came on {}", pidText());
    text += damaged == 0 ? "" : fmt::format(", {} with a wrong CRC_32", damaged);
    if (m_traffic != nullptr && m_traffic->discontinuities != 0) {
        text += ", " + counted(m_traffic->discontinuities, "discontinuity", "discontinuities");
    }
    return missing(m_candidate.multiplex.tables().areLong(), faults::CAROUSEL_WITHOUT_SECTIONS, std::move(text));
}

const dsmcc::Ior* CarouselSteps::gateway() const {
    const dsmcc::DownloadServerInitiate* const dsi = m_files->carousel().dsi;
    return dsi == nullptr || !dsi->gateway ? nullptr : &*dsi->gateway;
}

Evidence CarouselSteps::ofMessage(std::uint16_t identification) const {
    Evidence evidence = onPid();
    if (m_pid != nullptr) {
        if (const auto found = m_pid->messages.find(identification); found != m_pid->messages.end()) {
            evidence.position = found->second.position;
            evidence.bytes = found->second.bytes;
        }
    }
    return evidence;
}

void CarouselSteps::goMessages() {
    constexpr std::uint16_t DSI = 0;
    m_steps.go("DSI", ofMessage(DSI), [&] { return dsi(); });
    m_steps.go("carousel id", onPid(), [&] { return carouselId(); });
    const std::optional<std::uint16_t> named = m_files == nullptr ? std::nullopt : namedDii();
    m_steps.go("DII", named ? ofMessage(*named) : onPid(), [&] { return dii(); });
}

/// That which the service gateway's reference names; its version changes.
std::optional<std::uint16_t> CarouselSteps::namedDii() const {
    const dsmcc::Ior* const ior = gateway();
    if (ior == nullptr || ior->taps.empty() || !ior->taps.front().transactionId) {
        return std::nullopt;
    }
    return dsmcc::identificationOf(*ior->taps.front().transactionId);
}

Outcome CarouselSteps::dsi() const {
    if (isData()) {
        return passed("a data carousel needs no DSI");
    }
    if (m_files == nullptr) {
        return notSeen(fmt::format("nothing of a carousel came on {}", pidText()));
    }
    const dsmcc::Carousel& carousel = m_files->carousel();
    if (gateway() == nullptr) {
        return missing(m_files->isLong(), faults::DSI_MISSING,
                       fmt::format("no DSI with a service gateway came on {}", pidText()));
    }
    Outcome outcome = passed(fmt::format("a DSI came {}, version {}, with the service gateway",
                                         counted(carousel.repetition.count, "time", "times"),
                                         dsmcc::versionOf(carousel.dsi->transactionId)));
    outcome.completed = carousel.repetition.first;
    return outcome;
}

Outcome CarouselSteps::carouselId() const {
    const std::optional<std::int64_t> told = carouselIdOf(*m_component);
    if (!told) {
        return passed("the PMT does not say which carousel it is");
    }
    if (m_files == nullptr || !m_files->carousel().id) {
        return passed(fmt::format("the PMT says carousel 0x{:08X}", *told));
    }
    const std::uint32_t id = *m_files->carousel().id;
    return *told == id ? passed(fmt::format("it is carousel 0x{:08X}, as the PMT says", id))
                       : failed(faults::CAROUSEL_ID_DIFFERS,
                                fmt::format("the PMT says carousel 0x{:08X}, but on {} {} 0x{:08X}", *told, pidText(),
                                            gateway() == nullptr ? "there is" : "the DSI is that of", id));
}

Outcome CarouselSteps::dii() const {
    if (m_files == nullptr) {
        return notSeen(fmt::format("nothing of a carousel came on {}", pidText()));
    }
    const std::optional<std::uint16_t> named = namedDii();
    const bool isNamed = named.has_value();
    std::vector<std::string> others;
    for (const dsmcc::Group& group : m_files->carousel().groups) {
        if (group.dii == nullptr) {
            continue;
        }
        const std::uint32_t id = group.dii->transactionId;
        if (!isNamed || named.value_or(0) == dsmcc::identificationOf(id)) {
            Outcome outcome =
                passed(fmt::format("the DII 0x{:04X} came {}, version {}, with {}", dsmcc::identificationOf(id),
                                   counted(group.repetition.count, "time", "times"), dsmcc::versionOf(id),
                                   counted(group.modules.size(), "module", "modules")));
            outcome.completed = group.repetition.first;
            return outcome;
        }
        others.push_back(fmt::format("0x{:04X}", dsmcc::identificationOf(id)));
    }
    std::string text = isNamed ? fmt::format("the DSI names DII 0x{:04X}, which did not come", named.value_or(0))
                               : std::string("no DII came");
    text += others.empty() ? "" : fmt::format(", but {}", fmt::join(others, ", "));
    return missing(m_files->isLong(), faults::DII_MISSING, std::move(text));
}

void CarouselSteps::goFiles() {
    const Evidence evidence = onPid();
    if (!isData()) {
        m_steps.go("gateway module", evidence, [&] { return gatewayModule(); });
        m_steps.go("gateway", evidence, [&] { return m_files->lookForGateway(); });
        m_steps.go("base directory", m_candidate.descriptor(descriptors::LOCATION),
                   [&] { return m_files->lookFor("base directory", m_base, true, faults::BASE_DIRECTORY_MISSING); });
    }
    m_steps.go("initial class", m_candidate.descriptor(descriptors::LOCATION), [&] { return initialClass(); });
}

Outcome CarouselSteps::gatewayModule() const {
    const dsmcc::Ior* const ior = gateway();
    return ior == nullptr || !ior->location ? notSeen("the DSI does not say where the service gateway is")
                                            : m_files->lookForModule(ior->location->moduleId);
}

std::vector<std::string> CarouselSteps::classPath() const {
    std::vector<std::string> paths;
    const std::string extension = textIn(m_location, "classpath_extension");
    for (const std::string_view each : split(extension, ';')) {
        if (!each.empty()) {
            paths.push_back(pathFrom(m_base, each));
        }
    }
    return paths;
}

/// A class may lie below each entry of the class path; an archive is not opened.
Outcome CarouselSteps::initialClass() const {
    constexpr std::string_view WHAT = "initial class";
    const std::string name = textIn(m_location, "initial_class");
    if (name.empty()) {
        return find(m_candidate.application, descriptors::LOCATION) == nullptr
                   ? notSeen("what to start is not said")
                   : failed(faults::INITIAL_CLASS_MISSING, "the location names no initial class");
    }
    const bool isClass = numberIn(m_location, "descriptor_tag") == JAVA_LOCATION;
    const std::string file = isClass ? fileOfClass(name) : name.substr(0, name.find('?'));
    const std::string path = pathFrom(m_base, file);
    Outcome outcome = m_files->lookFor(WHAT, path, false, faults::INITIAL_CLASS_MISSING);
    if (outcome.passed() || !isClass) {
        return outcome;
    }
    for (const std::string& directory : classPath()) {
        if (isArchive(directory) && m_files->has(directory)) {
            return notSeen(
                fmt::format("{} {} may be in {}, which is not opened", WHAT, shownPath(file), shownPath(directory)));
        }
        const std::string there = pathFrom(directory, file);
        if (m_files->has(there)) {
            return m_files->lookFor(WHAT, there, false, faults::INITIAL_CLASS_MISSING);
        }
    }
    return outcome;
}

void CarouselSteps::goUses() {
    const bool hasDii = std::any_of(m_files->carousel().groups.begin(), m_files->carousel().groups.end(),
                                    [](const dsmcc::Group& each) { return each.dii != nullptr; });
    if (!hasDii) {
        return;
    }
    useLabels();
    useDiis();
    if (isData() || m_files->lookForGateway().passed()) {
        useClassPath();
        useIcons();
        useModules();
        useEvents();
    }
}

void CarouselSteps::useClassPath() {
    for (const std::string& path : classPath()) {
        if (!m_steps.hasRoomFor("class path")) {
            break;
        }
        m_steps.add("class path",
                    m_files->lookFor("class path entry", path, !isArchive(path), faults::CLASS_PATH_MISSING),
                    m_candidate.descriptor(descriptors::LOCATION), Need::Use);
    }
}

/// From the base directory or from the root: stations differ.
void CarouselSteps::useIcons() {
    const std::string locator = textIn(inner(m_candidate.application, descriptors::ICON), "icon_locator");
    if (locator.empty()) {
        return;
    }
    const auto lookFrom = [&](std::string_view directory) {
        const std::string path = pathFrom(directory, normalised(locator));
        return m_files->lookFor("icon directory", path, true, faults::ICONS_MISSING);
    };
    const Outcome below = lookFrom(m_base);
    m_steps.add("icons", below.passed() ? below : lookFrom({}), m_candidate.descriptor(descriptors::ICON), Need::Use);
}

void CarouselSteps::useLabels() {
    for (const Field& item : elements(inner(m_candidate.application, descriptors::PREFETCH), "items")) {
        if (!m_steps.hasRoomFor("prefetch")) {
            break;
        }
        const std::string label = textIn(inner(item), "label");
        const dsmcc::Module* found = nullptr;
        for (const dsmcc::Group& group : m_files->carousel().groups) {
            for (const dsmcc::Module* const module : group.modules) {
                const bool hasIt = module->info.descriptor(dsmcc::Descriptor::LABEL) != nullptr &&
                                   module->info.text(dsmcc::Descriptor::LABEL) == label;
                found = found == nullptr && hasIt ? module : found;
            }
        }
        m_steps.add(
            "prefetch",
            found == nullptr
                ? missing(m_files->isLong(), faults::PREFETCH_UNKNOWN,
                          fmt::format("no module has the label {} of the {}", shownPath(label), descriptors::PREFETCH))
                : passed(fmt::format("label {} is that of module 0x{:04X}", shownPath(label), found->id)),
            m_candidate.descriptor(descriptors::PREFETCH), Need::Use);
    }
}

void CarouselSteps::useDiis() {
    for (const Field& item : elements(inner(m_candidate.application, descriptors::DII_LOCATION), "items")) {
        if (!m_steps.hasRoomFor("DII location")) {
            break;
        }
        const std::int64_t id = numberIn(inner(item), "dii_identification").value_or(0);
        const auto& groups = m_files->carousel().groups;
        const bool isThere = std::any_of(groups.begin(), groups.end(), [id](const dsmcc::Group& each) {
            return each.dii != nullptr && dsmcc::identificationOf(each.dii->transactionId) == id;
        });
        m_steps.add("DII location",
                    isThere
                        ? passed(fmt::format("DII 0x{:04X} of the {} came", id, descriptors::DII_LOCATION))
                        : missing(m_files->isLong(), faults::DII_MISSING,
                                  fmt::format("DII 0x{:04X} of the {} did not come", id, descriptors::DII_LOCATION)),
                    m_candidate.descriptor(descriptors::DII_LOCATION), Need::Use);
    }
}

void CarouselSteps::useModules() {
    const std::set<std::uint16_t> modules = m_files->modulesBelow(isData() ? "" : m_base);
    const Step* const failed = m_steps.first(Step::Result::Failed, Need::Start);
    const std::string why = failed == nullptr ? "" : failed->text;
    std::size_t complete = 0;
    for (const std::uint16_t id : modules) {
        Outcome outcome = m_files->lookForModule(id);
        if (outcome.passed()) {
            ++complete;
        } else if (m_steps.hasRoomFor("modules")) {
            if (why.find(outcome.text) != std::string::npos) {
                outcome.fault.reset(); // it is that of the start already
            }
            m_steps.add("modules", std::move(outcome), onPid(), Need::Use);
        }
    }
    const std::uint64_t turns = m_files->wholeTurns();
    if (complete != 0) {
        m_steps.add("modules",
                    passed(fmt::format("{} of {} modules with its files {} complete; {} of the carousel came", complete,
                                       modules.size(), modules.size() == 1 ? "is" : "are",
                                       turns == 0 ? "no whole turn" : counted(turns, "whole turn", "whole turns"))),
                    onPid(), Need::Use);
    }
}

/// Events come when something happens: that none came is no fault.
void CarouselSteps::useEvents() {
    for (const dsmcc::Entry* const entry : m_files->streamEvents()) {
        if (!m_steps.hasRoomFor("stream events")) {
            break;
        }
        if (m_base.empty() || entry->path.compare(0, m_base.size() + 1, m_base + "/") == 0) {
            m_steps.add("stream events", events(*entry), onPid(), Need::Use);
        }
    }
}

Outcome CarouselSteps::events(const dsmcc::Entry& entry) const {
    const dsmcc::StreamInfo& stream = *entry.object->stream;
    std::vector<std::string> announced;
    std::vector<std::string> came;
    const dsmcc::Tap* const tap = stream.taps.empty() ? nullptr : &stream.taps.front();
    const Component* const component =
        tap == nullptr || m_components == nullptr ? nullptr : withTag(*m_components, tap->associationTag & 0xFFU);
    const std::string subject = fmt::format("stream events of {}", shownPath(entry.path));
    if (component == nullptr) {
        return tap == nullptr || m_components == nullptr
                   ? notSeen(subject + " name no component")
                   : failed(faults::EVENTS_UNKNOWN,
                            fmt::format("{} are on component tag 0x{:02X}, which the PMT does not have", subject,
                                        tap->associationTag & 0xFFU));
    }
    const std::set<std::int64_t> ids = eventsOn(m_candidate.multiplex.tables(), component->pid);
    for (const dsmcc::StreamEvent& event : stream.events) {
        announced.push_back(fmt::format("{} ({})", shownPath(event.name), event.id));
        if (ids.count(event.id) != 0) {
            came.push_back(announced.back());
        }
    }
    if (announced.empty()) {
        return notSeen(fmt::format("{} has no stream events", shownPath(entry.path)));
    }
    return came.empty()
               ? notSeen(fmt::format("{} did not come on PID 0x{:04X}: {}", subject, component->pid,
                                     fmt::join(announced, ", ")))
               : passed(fmt::format("{} came on PID 0x{:04X}: {}", subject, component->pid, fmt::join(came, ", ")));
}

} // namespace inspect
