#include "watching/Watch.h"

#include <algorithm>
#include <bitstream/mpeg/ts.h>
#include <fmt/format.h>
#include <limits>
#include <utility>

namespace inspect {

namespace {

/// How long a table may take that would say what a PID is, or which services there are.
constexpr double PATIENCE = 10;

/// How often is looked for packets that nobody announces, in seconds.
constexpr double PERIOD = 0.5;

/// So long it may take until it is known that packets were lost: many a table comes each second, and the clock may need
/// half of one more.
constexpr double UNDECIDED = 1.6;

/// A loss that is shorter, in seconds, takes a packet of a table with it here and there.
constexpr double SHORT_LOSS = 0.1;

/// Packets that are sent in time may come so much later than those before.
constexpr double JITTER = 0.3;

constexpr std::uint8_t CAT_ID = 0x01;
constexpr std::uint8_t BIT_ID = 0xC4;
constexpr std::uint8_t EIT_PRESENT_ID = 0x4E;
constexpr std::uint8_t FOLLOWING = 1; ///< section_number of what follows the present event

/// What happens, by the check that it is for.
struct Happening {
    EventKind kind;
    std::string_view check;
    std::string (*text)(const Event& event);
};

std::string onPid(const Event& event) {
    return event.pid ? fmt::format(" on PID 0x{:04X}", *event.pid) : "";
}

constexpr Happening HAPPENINGS[] = {
    {EventKind::SyncLost, "sync_loss", [](const Event& /*event*/) { return std::string("sync was lost"); }},
    {EventKind::BytesSkipped, "sync_byte",
     [](const Event& event) { return fmt::format("{:.0f} bytes that are no packets", event.amount); }},
    {EventKind::SyncByteError, "sync_byte", [](const Event& /*event*/) { return std::string("wrong sync byte"); }},
    {EventKind::Discontinuity, "continuity",
     [](const Event& event) { return "wrong continuity_counter" + onPid(event); }},
    {EventKind::TransportError, "transport_error",
     [](const Event& event) { return "packet marked as damaged" + onPid(event); }},
    {EventKind::PcrJump, "pcr_jump",
     [](const Event& event) {
         return fmt::format("PCR{} jumps from {:.3f} s to {:.3f} s, which nothing announces", onPid(event), event.from,
                            event.to);
     }},
    {EventKind::PcrFrozen, "pcr_frozen", [](const Event& event) { return "PCR stands still" + onPid(event); }},
    {EventKind::PcrCeased, "pcr_ceased", [](const Event& event) { return "no more PCR" + onPid(event); }},
    {EventKind::SlowClock, "slow_clock",
     [](const Event& event) {
         return fmt::format("the stream comes slower than its PCRs say: {:.3g} s of them in {:.3g} s",
                            event.from * (1 - event.amount), event.from);
     }},
    {EventKind::Pause, "pause", [](const Event& event) { return "the sender paused for " + lengthText(event.amount); }},
    {EventKind::NewStream, "new_stream", [](const Event& /*event*/) { return std::string("new stream from here"); }},
    {EventKind::Looped, "looped",
     [](const Event& event) { return fmt::format("the stream begins again after {:.3f} s", event.amount); }}};

/// What follows has nothing to do with what was before.
bool isBreak(const Event& event) {
    return event.kind == EventKind::Loss || event.kind == EventKind::Pause || event.kind == EventKind::NewStream ||
           event.kind == EventKind::Looped;
}

/// PIDs that ISDB assigns, from one to another.
constexpr std::pair<Pid, Pid> PIDS_OF_ISDB[] = {{0x0020, 0x002F}, {0x1FC8, 0x1FCF}, {0x1FF0, 0x1FF0}};

bool isOfIsdb(Pid pid) {
    return std::any_of(std::begin(PIDS_OF_ISDB), std::end(PIDS_OF_ISDB),
                       [pid](const auto& range) { return pid >= range.first && pid <= range.second; });
}

/// PIDs whose sections are looked at: those of tables that have a limit.
PidSet pidsFor(const Profile& profile) {
    PidSet pids;
    for (const Check& check : checks()) {
        if (check.table && check.table->pid && profile.of(check.name) != nullptr) {
            pids.set(*check.table->pid);
        }
    }
    return profile.of("wrong_table_id") == nullptr ? pids : pids | SectionWatch::reservedPids();
}

} // namespace

Watch::Watch(const TrafficCounter& traffic, const StreamClock& clock, const Profile& profile)
    : m_traffic(traffic), m_clock(clock), m_profile(profile), m_alarms(profile), m_silences(m_alarms, clock),
      m_sections(m_alarms) {
    m_gatherer.setPids(pidsFor(profile));
}

/// What breaks off comes first: what a packet says else is measured from there on.
void Watch::take(const Events& events, const Position& now) {
    endSilence(now);
    resume(now);
    for (const Event& event : events) {
        takeStopped(event);
    }
    for (const bool breaks : {true, false}) {
        for (const Event& event : events) {
            if (isBreak(event) == breaks) {
                take(event, now);
            }
        }
    }
}

void Watch::take(const Event& event, const Position& now) {
    const FaultPlace place{event.pid, std::nullopt, std::nullopt};
    switch (event.kind) {
    case EventKind::PcrInterval:
        m_hasPcr = true;
        m_silences.cameIfExpected({"pcr_interval", place}, event.at, event.amount);
        m_silences.cameIfExpected({"pcr_one_seg_interval", place}, event.at, event.amount);
        return;
    case EventKind::PtsInterval:
        if (const Pid pid = event.pid.value_or(NULL_PID);
            m_announcements.isVideoOrAudio(pid) && !m_announcements.isStill(pid)) {
            m_silences.came({"pts_interval", place}, event.at, event.amount);
        }
        return;
    case EventKind::Scrambled:
        takeScrambled(event);
        return;
    case EventKind::SlowClock:
        m_slowUntil = 2 * event.from + event.at.seconds.value_or(0);
        break;
    case EventKind::Discontinuity:
        if (!event.at.seconds) {
            break; // nobody sees which others were broken at the same time
        }
        m_silences.excuse(now.seconds ? now : event.at, m_breaks.take(event) ? std::nullopt : event.pid);
        if (m_breaks.isFull()) {
            decide(now, std::numeric_limits<double>::infinity());
        }
        return;
    default:
        break;
    }
    if (isBreak(event)) {
        takeBreak(event, now);
    } else {
        happened(event);
    }
}

void Watch::takeBreak(const Event& event, const Position& now) {
    const bool isTold =
        (event.kind == EventKind::Loss || event.kind == EventKind::Pause) && m_breaks.explainsAsGap(event);
    const Position& at = event.at.seconds > now.seconds ? event.at : now;
    if (event.kind == EventKind::NewStream || event.kind == EventKind::Looped) {
        m_breaks.clear();
    }
    if (event.kind == EventKind::Loss && !isTold) {
        m_breaks.takeLoss(event);
    } else if (!isTold) {
        happened(event);
    }
    if (event.kind == EventKind::Loss && event.amount < SHORT_LOSS) {
        m_silences.excuse(at);
        return;
    }
    m_resumesAt = at.seconds;
    restart(at);
    if (event.kind == EventKind::NewStream || event.kind == EventKind::Looped) {
        m_silences.restart(at);
    }
}

/// A PCR that stops is told of once, and is a fault until it goes on, or nobody announces it any more.
void Watch::takeStopped(const Event& event) {
    switch (event.kind) {
    case EventKind::PcrFrozen:
    case EventKind::PcrCeased:
        m_stopped[event.pid.value_or(NULL_PID)] = event.kind == EventKind::PcrFrozen ? "pcr_frozen" : "pcr_ceased";
        break;
    case EventKind::PcrInterval:
    case EventKind::PcrJump:
    case EventKind::PcrSplice:
        m_stopped.erase(event.pid.value_or(NULL_PID));
        break;
    default:
        break;
    }
}

void Watch::forgetStopped() {
    for (auto each = m_stopped.begin(); each != m_stopped.end();) {
        const bool isClock = std::any_of(m_announcements.maps().begin(), m_announcements.maps().end(),
                                         [&each](const auto& map) { return map.second.clock == each->first; });
        each = isClock ? std::next(each) : m_stopped.erase(each);
    }
}

void Watch::happened(const Event& event) {
    const bool isOfPid = event.kind != EventKind::SlowClock;
    const FaultPlace place{isOfPid ? event.pid : std::nullopt, std::nullopt, std::nullopt};
    for (const Happening& happening : HAPPENINGS) {
        if (happening.kind == event.kind) {
            const std::optional<double> worst = event.amount != 0 ? std::optional(event.amount) : std::nullopt;
            m_alarms.happened({happening.check, place}, event.at, happening.text(event), worst);
        }
    }
}

void Watch::lost(const Breaks::Break& loss) {
    std::string text = loss.counters.empty()
                           ? "packets lost"
                           : fmt::format("at least {:.0f} packets of {} PIDs lost at once", loss.lost(), loss.pids());
    const std::optional<double> seconds = loss.seconds != 0 ? std::optional(loss.seconds) : std::nullopt;
    if (seconds) {
        text += fmt::format(", {} of the stream", lengthText(*seconds));
    }
    m_alarms.happened({"loss", {}}, loss.begin, text, seconds);
}

/// What a loss may explain, or another stream, is told of once it is clear that it does not.
void Watch::decide(const Position& now, double until) {
    for (const Breaks::Break& each : m_breaks.decided(until)) {
        if (each.isLoss()) {
            lost(each);
            continue;
        }
        for (const Event& counter : each.counters) {
            happened(counter);
        }
    }
    if (!m_clock.maySeeLoss(now.packet) || until > now.seconds.value_or(0)) {
        m_silences.decide(until);
    }
}

void Watch::finish(const Position& end) {
    tick(end);
    if (end.seconds) {
        decide(end, std::numeric_limits<double>::infinity());
    }
}

/// Whatever should have come by now does not, for this one reason.
void Watch::tickInSilence(const Position& now, double silence, std::optional<double> toldAfter) {
    m_isReceived = true;
    if (silence < JITTER) {
        return;
    }
    const Spot all{"no_packets"};
    m_isSilenceTold = toldAfter && silence >= *toldAfter;
    if (!toldAfter && m_alarms.breaksLimit(all, silence)) {
        const bool isNew = !m_alarms.breaksLimit(all, m_silence.value_or(0));
        m_isSilenceTold = true;
        m_alarms.lasted(all, now, fmt::format("no {} for {}", textOf(all), lengthText(silence)), silence, isNew);
    }
    m_silence = silence;
    m_alarms.tick(now);
}

/// How long it was is known, and all that should have come is waited for anew.
void Watch::endSilence(const Position& now) {
    if (!m_silence || !now.seconds) {
        return;
    }
    m_alarms.recover({"no_packets"}, now, *m_silence);
    if (std::exchange(m_isSilenceTold, false)) {
        m_breaks.takeGap(now);
    }
    m_silence.reset();
    restart(now);
}

void Watch::takeScrambled(const Event& event) {
    if (event.pid && m_announcements.isMapOrPat(*event.pid)) {
        m_alarms.happened({"scrambled_table", {event.pid, std::nullopt, std::nullopt}}, event.at,
                          fmt::format("PID 0x{:04X} of the PAT or a PMT is scrambled", *event.pid));
    }
    m_silences.forget({"pts_interval", {event.pid, std::nullopt, std::nullopt}}); // nobody can read them now
    if (m_profile.of("cat_interval") != nullptr) {
        m_isScrambled = true;
        m_silences.expectToo({"cat_interval", {Pid{0x0001}, CAT_ID, std::nullopt}}, event.at);
    }
}

/// From now on nothing is missed that was before.
void Watch::restart(const Position& at) {
    m_sections.restart();
    m_stopped.clear();
    m_start.reset();
    begin(at);
    m_silences.resume(at, m_now);
}

/// The time that was lost may be counted only behind the packet that showed the loss.
void Watch::resume(const Position& now) {
    if (m_resumesAt && now.seconds >= m_resumesAt) {
        m_resumesAt.reset();
        restart(now);
    }
}

void Watch::begin(const Position& at) {
    if (!m_start && at.seconds) {
        m_start = at;
        m_waited = false;
        expectAll(at);
        m_silences.keepQuiet(*at.seconds + m_profile.settle());
    }
}

void Watch::take(const std::uint8_t* packet, const Position& position) {
    if (!m_gatherer.pids()[ts_get_pid(packet)]) {
        return;
    }
    for (const Section& section : m_gatherer.push(packet, position)) {
        take(section);
    }
}

void Watch::take(const Section& section) {
    resume(section.position());
    m_sections.take(section);
    if (!section.sound()) {
        return;
    }
    takeTables(section);
    if (section.tableId() == CAT_ID) {
        m_announcements.learn(section);
    } else if (section.tableId() == BIT_ID) {
        const std::map<std::string_view, double> cycles = cyclesIn(section);
        m_alarms.forgetCycles();
        for (const auto& [check, cycle] : cycles) {
            m_alarms.declareCycle(check, cycle);
        }
        m_hasCycles = m_hasCycles || !cycles.empty();
    }
}

void Watch::takeTables(const Section& section) {
    if (section.tableId() == PMT && section.pid()) {
        const std::optional<LongHeader> header = section.longHeader();
        for (const std::string_view check : {"pmt_interval", "pmt_one_seg_interval", "pmt_engineering_interval"}) {
            m_silences.cameIfExpected({check, {section.pid(), PMT, header ? header->extension : std::uint16_t{0}}},
                                      section.position());
        }
        return;
    }
    for (const Check& check : checks()) {
        if (check.table && section.tableId() >= check.table->first && section.tableId() <= check.table->last &&
            (!check.table->pid || check.table->pid == section.pid()) && m_alarms.limitOf(check.name) != nullptr) {
            takeTable(section, check, *check.table);
        }
    }
}

void Watch::takeTable(const Section& section, const Check& check, const Check::TableOf& table) {
    const Spot any{check.name, {section.pid(), section.tableId(), std::nullopt}};
    const std::optional<LongHeader> header = section.longHeader();
    if (table.each == Check::Each::OnPid || !header) {
        m_silences.came(any, section.position());
        return;
    }
    m_silences.cameIfExpected(any, section.position());
    m_silences.forget(any);
    Spot spot{check.name, {section.pid(), section.tableId(), header->extension}};
    if (table.each == Check::Each::Section) {
        m_silences.forgetBeyond(spot, header->lastSectionNumber);
        spot.section = header->sectionNumber;
    }
    m_silences.came(spot, section.position());
    if (section.tableId() == EIT_PRESENT_ID && header->sectionNumber <= FOLLOWING && header->lastSectionNumber != 0) {
        spot.section = static_cast<std::uint8_t>(FOLLOWING - header->sectionNumber);
        m_silences.expectToo(spot, section.position());
    }
}

void Watch::learn(const Section& section) {
    const Position& at = section.position();
    if (m_announcements.learn(section) && at.seconds) {
        expectAll(at);
        forgetStopped();
        if (section.tableId() != SDT) {
            m_silences.keepQuiet(*at.seconds + m_profile.settle());
        }
    }
}

void Watch::expectAll(const Position& at) {
    m_silences.expect(expected(), at);
}

/// What has to come, with what tables say.
std::set<Spot> Watch::expected() const {
    std::set<Spot> spots;
    for (const Check& check : checks()) {
        const Limit* const limit = m_profile.of(check.name);
        if (limit != nullptr && check.table && check.table->pid &&
            (limit->isRequired || (m_isScrambled && check.table->first == CAT_ID))) {
            spots.insert({check.name, {check.table->pid, check.table->first, std::nullopt}});
        }
    }
    for (const Announcements::Program& program : m_announcements.programs()) {
        spots.insert({intervalOfMap(program), {program.pid, PMT, program.number}});
    }
    for (const auto& [program, map] : m_announcements.maps()) {
        if (map.clock != NULL_PID) {
            const bool isOwn = program.isOneSeg() && m_profile.of("pcr_one_seg_interval") != nullptr;
            spots.insert({isOwn ? "pcr_one_seg_interval" : "pcr_interval", {map.clock, std::nullopt, std::nullopt}});
        }
        for (const Announcements::Component& component : map.components) {
            if (component.isStill) {
                continue; // a picture may stay for a minute
            }
            spots.insert({component.isVideoOrAudio ? "video_audio_pid" : "other_pid",
                          {component.pid, std::nullopt, std::nullopt}});
        }
    }
    return spots;
}

/// As long as it is not known which services are for downloads, any may be.
std::string_view Watch::intervalOfMap(const Announcements::Program& program) const {
    constexpr std::string_view ENGINEERING = "pmt_engineering_interval";
    constexpr std::string_view ONE_SEG = "pmt_one_seg_interval";
    if (program.isOneSeg() && m_profile.of(ONE_SEG) != nullptr) {
        return ONE_SEG;
    }
    const bool mayBe = m_announcements.isEngineering(program.number) || !isKnown(m_announcements.knowsServices());
    return mayBe && m_profile.of(ENGINEERING) != nullptr ? ENGINEERING : "pmt_interval";
}

bool Watch::isKnown(bool said) const {
    return said || m_waited;
}

void Watch::tick(const Position& now) {
    if (!now.seconds) {
        return;
    }
    m_now = now;
    resume(now);
    begin(now);
    decide(now, *now.seconds - UNDECIDED);
    if (!m_waited && *now.seconds - *m_start->seconds > PATIENCE) {
        m_waited = true;
        if (!m_announcements.knowsServices()) {
            expectAll(now);
        }
    }
    checkPackets("video_audio_pid");
    checkPackets("other_pid");
    m_silences.tick(now, m_clock.maySeeLoss(now.packet)             ? Silences::Doubt::Great
                         : m_clock.isJudging() || m_breaks.isOpen() ? Silences::Doubt::Some
                                                                    : Silences::Doubt::None);
    if (*now.seconds >= m_nextLook) {
        m_nextLook = *now.seconds + PERIOD;
        checkUnreferenced("unreferenced_pid");
        checkUnreferenced("unreferenced_pid_isdb");
    }
    for (const auto& [pid, check] : m_stopped) {
        m_alarms.goesOn({check, {pid, std::nullopt, std::nullopt}}, now);
    }
    if (*now.seconds < m_slowUntil) {
        m_alarms.goesOn({"slow_clock"}, now);
    }
    m_alarms.tick(now);
}

/// Of packets it is known which one came last, not that it came.
void Watch::checkPackets(std::string_view check) {
    for (const Spot& spot : m_silences.of(check)) {
        if (const PidTraffic* const traffic = m_traffic.of(*spot.place.pid)) {
            m_silences.cameIfExpected(spot, traffic->last);
        }
    }
}

void Watch::checkUnreferenced(std::string_view check) {
    constexpr Pid FIRST = 0x0020;
    const Limit* const limit = m_profile.of(check);
    const bool knowsMaps = m_announcements.maps().size() == m_announcements.programs().size();
    if (limit == nullptr || m_announcements.programs().empty() || !isKnown(m_announcements.knowsKeys() && knowsMaps)) {
        return;
    }
    for (const Pid pid : m_traffic.pids()) {
        if (pid < FIRST || pid == NULL_PID || m_announcements.names(pid) ||
            (check == "unreferenced_pid_isdb" && isOfIsdb(pid))) {
            continue;
        }
        const PidTraffic* const traffic = m_traffic.of(pid);
        const double seconds = *m_now.seconds - traffic->first.seconds.value_or(0);
        const bool isPresent = *m_now.seconds - traffic->last.seconds.value_or(0) < PERIOD;
        const Spot spot{check, {pid, std::nullopt, std::nullopt}};
        if (isPresent && m_alarms.breaksLimit(spot, seconds)) {
            m_alarms.lasted(spot, m_now, fmt::format("no table names PID 0x{:04X}", pid), seconds, false);
        }
    }
}

std::vector<CheckResult> Watch::results() const {
    std::vector<CheckResult> results;
    for (const Check& check : checks()) {
        if (const Limit* const limit = m_profile.of(check.name)) {
            const std::uint64_t alarms = m_alarms.countOf(check.name, Severity::Error);
            const std::uint64_t warnings = m_alarms.countOf(check.name, Severity::Warning);
            const std::uint64_t remarks = m_alarms.countOf(check.name, Severity::Remark);
            results.push_back({check.name, check.indicator, check.what, limit->text(), alarms, warnings, remarks,
                               alarms + warnings + remarks == 0 ? whyUnmeasured(check) : ""});
        }
    }
    return results;
}

std::string Watch::whyUnmeasured(const Check& check) const {
    constexpr std::string_view CLOCK = "pcr_";
    if (!check.impossible.empty()) {
        return std::string(check.impossible);
    }
    if (check.name == "no_packets") {
        return m_isReceived ? "" : "the input does not come live";
    }
    if (check.limited == Check::Limited::Times) {
        return m_hasCycles ? "" : "no BIT declares any";
    }
    if (check.name.substr(0, CLOCK.size()) == CLOCK && !m_hasPcr) {
        return "no PCR came";
    }
    if (check.limited == Check::Limited::Seconds && !m_now.seconds) {
        return "the stream has no clock";
    }
    if (!check.isSilence || m_silences.measured(check.name)) {
        return "";
    }
    return m_silences.of(check.name).empty() ? "none came" : "the stream is too short";
}

} // namespace inspect
