#include "Inspector.h"

#include "checking/Checking.h"
#include "describing/Describing.h"
#include "describing/FieldLookup.h"
#include "inputs/AttendedInput.h"
#include "inputs/ReadablePart.h"
#include "sections/SectionReader.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <bitstream/mpeg/ts.h>
#include <ctime>
#include <fmt/format.h>

namespace inspect {

namespace {

std::vector<std::uint8_t> bytesOf(const Section& section) {
    return {section.data(), section.data() + section.size()};
}

Rejection rejectionOf(const Section& section, ParsedSection& parsed) {
    return {parsed.errorCode, std::string(errorName(parsed.errorCode)), std::move(parsed.logLines),
            describeDescriptors(section.data(), section.size()), bytesOf(section)};
}

constexpr const char* NO_CLOCK = "has no clock (PCR) by which --since and --until could be counted";
constexpr const char* NO_CLOCK_FOR_TIMES = "has no clock (PCR) by which --every and --seconds could be counted";

/// A count of sections or of packets.
struct DamageKind {
    const char* singular;
    const char* plural;
    Damage damage;
    std::uint64_t PidCounts::*ofSections;
    std::uint64_t PidTraffic::*ofPackets;
    bool alwaysSaid;
    bool inPackets; ///< sections outside of packets cannot suffer it
};

constexpr DamageKind DAMAGES[] = {
    {"CRC error", "CRC errors", Damage::CrcError, &PidCounts::crcErrors, nullptr, true, false},
    {"discontinuity", "discontinuities", Damage::Discontinuity, nullptr, &PidTraffic::discontinuities, true, true},
    {"section cut short", "sections cut short", Damage::SectionCutShort, &PidCounts::cutShort, nullptr, false, false},
    {"malformed packet", "malformed packets", Damage::MalformedPacket, &PidCounts::malformedPackets, nullptr, false,
     true},
    {"packet marked as damaged", "packets marked as damaged", Damage::TransportError, nullptr,
     &PidTraffic::transportErrors, false, true},
};

std::vector<Finding> damagesIn(const std::map<Pid, PidCounts>& sections, const TrafficCounter& traffic) {
    std::vector<Finding> findings;
    for (const DamageKind& kind : DAMAGES) {
        Finding finding{kind.singular, kind.plural, 0, {}, kind.damage};
        const auto add = [&finding](Pid pid, std::uint64_t count) {
            if (count != 0) {
                finding.count += count;
                finding.pids.push_back(pid);
            }
        };
        for (const Pid pid : traffic.pids()) {
            if (kind.ofPackets != nullptr) {
                add(pid, traffic.of(pid)->*kind.ofPackets);
            } else if (const auto found = sections.find(pid); found != sections.end()) {
                add(pid, found->second.*kind.ofSections);
            }
        }
        if (finding.count != 0 || kind.alwaysSaid) {
            findings.push_back(std::move(finding));
        }
    }
    return findings;
}

/// The same of sections outside of packets.
std::vector<Finding> damagesIn(const PidCounts& counts) {
    std::vector<Finding> findings;
    for (const DamageKind& kind : DAMAGES) {
        const std::uint64_t count = kind.inPackets ? 0 : counts.*kind.ofSections;
        if (!kind.inPackets && (count != 0 || kind.alwaysSaid)) {
            findings.push_back({kind.singular, kind.plural, count, {}, kind.damage});
        }
    }
    return findings;
}

/// The PIDs on which anything came. Nothing when the statistics are of some alone, or the stream is too short: captions
/// pause for seconds.
std::optional<PidSet> carriedPids(const Summary& summary, const Interest& interest) {
    constexpr double LONG_ENOUGH = 5; // seconds
    if (summary.seconds.value_or(0) < LONG_ENOUGH || !interest.tables.empty()) {
        return std::nullopt;
    }
    PidSet carried;
    for (const PidStatistics& each : summary.statistics) {
        carried.set(each.pid.value_or(NULL_PID), each.traffic.packets != 0);
    }
    return carried;
}

void addLosses(Summary& summary, const Input& input) {
    for (const Loss& loss : input.losses()) {
        const Damage damage = loss.kind == Loss::Kind::Silence ? Damage::NoData : Damage::InputLoss;
        summary.damages.push_back({loss.singular, loss.plural, loss.count, {}, damage});
    }
}

} // namespace

Inspector::Inspector(Renderer& renderer, const Interest& interest, const Conventions& conventions, Exporter* exporter,
                     const Times& times)
    : m_renderer(renderer), m_interest(interest), m_conventions(conventions), m_exporter(exporter),
      m_following(interest.pids), m_times(times), m_timetable(times) {
    gather(m_following.pids());
}

void Inspector::gather(const PidSet& pids) {
    constexpr Pid CONDITIONAL_ACCESS = 0x0001; // its table names PIDs, too
    m_gatherer.setPids(PidSet(pids).set(CONDITIONAL_ACCESS));
}

/// Tells what has happened, and that time has passed.
void Inspector::watch(const Position& now) {
    constexpr double TICK = 0.1;
    for (Event& event : m_events) {
        event.at.seconds = event.at.seconds ? event.at.seconds : now.seconds;
        if (!event.at.time) {
            event.at.time = m_isLive ? now.time : m_wallClock.at(event.at.seconds);
        }
    }
    m_watch.take(m_events, now);
    m_events.clear();
    if (now.seconds && *now.seconds >= m_nextTick) {
        m_watch.tick(now);
        m_nextTick = *now.seconds + TICK;
    }
    tellAlarms();
}

void Inspector::tellAlarms() {
    for (const Alarm& alarm : m_watch.news()) {
        m_renderer.alarm(alarm);
    }
}

void Inspector::run(Input& source) {
    inspect(source, expected());
}

void Inspector::runPackets(Input& source) {
    inspect(source, {});
}

void Inspector::inspect(Input& source, std::set<std::uint8_t> expected) {
    m_renderer.begin(source.name());
    ReadablePart readable(source);
    m_isLive = readable.isLive();
    const PacketReader* reader = nullptr;
    AttendedInput input(readable, [&] { return attend(*reader, readable); });
    PacketReader packets(input, m_events);
    reader = &packets;
    Position position;
    while (const std::uint8_t* const packet = packets.next()) {
        position = {packets.packets(), packets.offset(), {}, {}};
        const std::optional<Arrival> arrival = packets.arrival();
        if (arrival) {
            m_clock.takeArrival(position.packet, arrival->seconds);
        }
        m_clock.take(packet, position);
        position.time =
            arrival ? WallTime{arrival->milliseconds, WallTime::Source::Arrival} : m_wallClock.at(position.seconds);
        m_begin = m_begin ? m_begin : position.time;
        if (position.seconds && !m_isDated) {
            m_isDated = true;
            m_statistics.date([this](std::uint64_t number) { return m_clock.seconds(number); });
        }
        if (!m_isLive && position.seconds && !keepTime(packets, readable, *position.seconds)) {
            break;
        }
        m_traffic.take(packet, position);
        watch(position);
        m_now = position;
        m_transmission.take(packet, packets.trailer(), position);
        if (m_transmission.isBroadcast()) {
            m_clock.takeBroadcast(m_transmission.lostPackets());
        }
        m_presentEvents.take(packet, position);
        if (!m_gatherer.pids()[ts_get_pid(packet)]) {
            m_watch.take(packet, position);
            continue;
        }
        for (const Section& section : m_gatherer.push(packet, position)) {
            take(section);
        }
    }
    m_traffic.finish();
    watch(position);
    if (packets.packets() == 0) {
        readable.complain();
    }
    position.seconds = m_clock.seconds(position.packet);
    m_watch.finish(position);
    tellAlarms();
    finish(summary(packets), input, std::move(expected));
    readable.complain();
    if (packets.cutOffBytes() != 0) {
        throw InputError(input.name(), fmt::format("cut off in its last packet ({} of {} bytes)", packets.cutOffBytes(),
                                                   packets.spacing()));
    }
    if (m_interest.isTimed() && !m_clock.seconds(packets.packets())) {
        throw InputError(input.name(), NO_CLOCK);
    }
    if (m_times.areOfStream() && !m_isLive && !m_clock.seconds(packets.packets())) {
        throw InputError(input.name(), NO_CLOCK_FOR_TIMES);
    }
}

/// Does what is due by this machine's clock. @return whether the input goes on.
bool Inspector::attend(const PacketReader& packets, const Input& input) {
    constexpr double INTERVAL = 1;
    const double now = m_arrival.seconds();
    if (packets.packets() != m_heard.packets) {
        m_heard = {packets.packets(), now};
    } else if (m_isLive && m_now.seconds) { // nothing comes, and nothing of the stream says how late it is
        watch({m_now.packet, m_now.offset, *m_now.seconds + now - m_heard.seconds, arrivalTime()});
    }
    if (m_renderer.wantsUpdates() && now >= m_nextUpdate) {
        m_renderer.update(summary(packets, input));
        m_nextUpdate = now + INTERVAL;
    }
    return !m_isLive || keepTime(packets, input, now);
}

/// Does what is due by the clock of the input. @return whether it goes on.
bool Inspector::keepTime(const PacketReader& packets, const Input& input, double now) {
    if (m_timetable.isInterimDue(now)) {
        m_renderer.interim(summary(packets, input), now);
    }
    return !m_timetable.isOver(now);
}

void Inspector::runSections(Input& source, Repetitions repetitions) {
    if (m_interest.isTimed() || m_times.areOfStream()) {
        throw InputError(source.name(), m_interest.isTimed() ? NO_CLOCK : NO_CLOCK_FOR_TIMES);
    }
    m_renderer.begin(source.name());
    ReadablePart input(source);
    SectionReader sections(input);
    Summary last{};
    PidCounts counts;
    while (const std::optional<Section> section = sections.next()) {
        ++counts.sections;
        counts.cutShort += section->complete() ? 0U : 1U;
        counts.crcErrors += section->complete() && !section->sound() ? 1U : 0U;
        if (tableName(section->tableId()).empty()) {
            ++last.unknown;
            last.unknownTables.insert(section->tableId());
        }
        takeAsItIs(*section, repetitions);
    }
    if (counts.sections == 0) {
        input.complain();
    }
    last.sections = counts.sections;
    last.shown = m_shown;
    last.rejected = m_rejected;
    last.damages = damagesIn(counts);
    last.statistics = statisticsOf({});
    m_foundKnownTable = last.sections != last.unknown;
    finish(std::move(last), input, {}); // they are single ones: nobody misses the others
    input.complain();
}

/// Leaves nothing out: who has no packets, but a section in hand, wants to know what a receiver says to it.
void Inspector::takeAsItIs(const Section& section, Repetitions repetitions) {
    if (section.sound() && repetitions == Repetitions::Hidden) {
        take(section);
        return;
    }
    m_statistics.take(section, section.sound() ? std::optional(m_seen.look(section)) : std::nullopt);
    if (!tableName(section.tableId()).empty()) {
        const Reading reading = read(section, SeenSections::News::New);
        learn(reading);
        show(reading);
    }
}

/// Tables that every multiplex has.
std::set<std::uint8_t> Inspector::expected() const {
    std::set<std::uint8_t> expected;
    for (const TableKind& kind : TABLE_KINDS) {
        if (kind.ofEveryMultiplex && m_interest.isOf(kind.id)) {
            expected.insert(kind.id);
        }
    }
    return expected;
}

void Inspector::finish(Summary last, const Input& input, std::set<std::uint8_t> expected) {
    addLosses(last, input);
    last.notChosen = m_notChosen;
    last.alarms = m_watch.alarms();
    if (m_interest.limits.name() != Profile::always().name()) {
        last.checks = m_watch.results();
    }
    last.forgotten = m_current.taken().forgotten();
    std::set<Pid> scrambled;
    for (const auto& [pid, counts] : m_gatherer.counts()) {
        if (m_traffic.of(pid)->scrambled != 0 && counts.sections == 0) {
            scrambled.insert(pid);
        }
    }
    const Tables tables(m_current, std::move(expected), std::move(scrambled), carriedPids(last, m_interest));
    const Multiplex multiplex(tables);
    const Faults faults = check(multiplex, m_presentEvents, last);
    m_foundFault = last.rejected != 0 || !faults.all().empty();
    m_renderer.end(last, multiplex, faults);
}

void Inspector::take(const Section& section) {
    m_watch.take(section);
    const bool understood = !tableName(section.tableId()).empty();
    if (!section.sound()) {
        m_statistics.take(section, std::nullopt);
        if (understood && m_interest.damaged) {
            show(read(section, SeenSections::News::New)); // nothing is learnt from it
        }
        return;
    }
    const SeenSections::News news = (understood ? m_seen : m_seenOfOthers).look(section);
    m_statistics.take(section, news);
    const bool isNew = news != SeenSections::News::Repetition;
    if (isNew) {
        m_statistics.learnKeys(section);
    }
    const bool isFirst = understood && isFirstSince(section);
    if (!understood || (!isNew && !isFirst)) {
        return;
    }
    const Reading reading = read(section, news);
    if (isNew) {
        learn(reading);
    }
    show(reading);
}

/// Whether only those before it, which are not shown, were like it.
bool Inspector::isFirstSince(const Section& section) {
    return m_interest.since && m_interest.hasBegun(section.position()) &&
           m_seenSince.look(section) != SeenSections::News::Repetition;
}

Inspector::Reading Inspector::read(const Section& section, SeenSections::News news) {
    ParsedSection parsed = parse(section);
    SectionReport report{section.pid(),
                         section.tableId(),
                         std::string(tableName(section.tableId())),
                         section.position(),
                         section.longHeader(),
                         news == SeenSections::News::SameVersion,
                         !section.sound(),
                         {},
                         std::nullopt,
                         section.fingerprint()};
    if (parsed.table == nullptr) {
        report.rejection = rejectionOf(section, parsed);
    } else {
        report.fields = describe(*parsed.table, m_conventions, m_coding);
        if (report.tableId == TOT && !report.damaged) {
            tellTime(report);
        }
        if (m_interest.bytes) {
            report.bytes = bytesOf(section);
        }
    }
    return {section, std::move(parsed), std::move(report)};
}

/// Only the TOT says what time it is: by the station's clock.
void Inspector::tellTime(SectionReport& report) {
    const auto time = static_cast<std::int32_t>(numberIn(report.fields, "unix_time").value_or(0));
    if (m_isLive) {
        report.otherZone = m_conventions.zone.otherBy(time, std::time(nullptr));
    } else if (report.position.seconds) {
        m_wallClock.set(*report.position.seconds, zoneOf(m_conventions, m_coding).utc(time));
        report.position.time = m_wallClock.at(report.position.seconds);
    }
}

/// Takes a section for what the multiplex is now.
void Inspector::learn(const Reading& reading) {
    const auto& [section, parsed, report] = reading;
    m_watch.learn(section);
    if (report.rejection) {
        m_statistics.reject(section);
    } else {
        m_statistics.learn(report.tableId, report.fields);
        if (m_following.follow(section, *parsed.table)) {
            gather(m_following.pids());
        }
    }
    if (m_interest.isOf(report.tableId)) {
        m_current.take(report);
    }
}

void Inspector::show(const Reading& reading) {
    const SectionReport& report = reading.report;
    if (!m_interest.isOf(report.tableId)) {
        return;
    }
    if (!m_interest.chooses(report)) {
        ++m_notChosen;
        return;
    }
    ++(report.rejection ? m_rejected : m_shown);
    if (m_exporter != nullptr) {
        m_exporter->take(reading.section, report);
    }
    m_renderer.section(report);
}

/// Without the tables that are not to be shown, and the PIDs that carry nothing else.
std::vector<PidStatistics> Inspector::statisticsOf(const Traffic& traffic) const {
    std::vector<PidStatistics> statistics = m_statistics.of(traffic, m_interest.tables);
    const auto isLeftOut = [this](const TableStatistics& table) { return !m_interest.isOf(table.tableId); };
    for (auto pid = statistics.begin(); pid != statistics.end();) {
        const bool hadTables = !pid->tables.empty();
        pid->tables.erase(std::remove_if(pid->tables.begin(), pid->tables.end(), isLeftOut), pid->tables.end());
        pid = hadTables && pid->tables.empty() ? statistics.erase(pid) : pid + 1;
    }
    return statistics;
}

/// When the last packet was sent; where it was some time ago and nothing has come since, now.
std::optional<double> Inspector::end(const PacketReader& packets) const {
    constexpr double SHORT = 1; // seconds: packets come in bursts
    std::optional<double> end = m_clock.seconds(packets.packets());
    const double silence = m_isLive ? m_arrival.seconds() - m_heard.seconds : 0;
    return end && silence > SHORT ? *end + silence : end;
}

Summary Inspector::summary(const PacketReader& packets) {
    std::uint64_t sections = 0;
    for (const auto& [pid, counts] : m_gatherer.counts()) {
        sections += counts.sections;
    }
    const Traffic traffic{&m_traffic, packets.packets(), m_clock.duration(packets.packets()), end(packets),
                          m_transmission.layersOfPids()};
    const Position last{packets.packets(), packets.offset(), traffic.end,
                        m_isLive ? arrivalTime() : m_wallClock.at(traffic.end)};
    Summary summary{};
    summary.packets = packets.packets();
    summary.packetSpacing = packets.spacing();
    summary.pids = m_gatherer.counts().size();
    summary.sections = sections;
    summary.shown = m_shown;
    summary.rejected = m_rejected;
    summary.damages = damagesIn(m_gatherer.counts(), m_traffic);
    summary.skippedBytes = packets.skippedBytes();
    summary.seconds = traffic.seconds;
    summary.statistics = statisticsOf(traffic);
    summary.transmission = TransmissionReader(m_transmission).finish(); // more may follow
    summary.traffic = Statistics::totalOf(m_traffic);
    summary.first = m_isLive ? m_begin : m_wallClock.atBegin();
    summary.last = last;
    summary.bitRate = bitRate(packets.packets(), traffic.seconds);
    return summary;
}

/// What came so far.
Summary Inspector::summary(const PacketReader& packets, const Input& input) {
    Summary soFar = summary(packets);
    addLosses(soFar, input);
    soFar.notChosen = m_notChosen;
    return soFar;
}

} // namespace inspect
