#include "Inspector.h"

#include "checking/Checking.h"
#include "counting/Since.h"
#include "describing/Describing.h"
#include "describing/FieldLookup.h"
#include "inputs/AttendedInput.h"
#include "inputs/ReadablePart.h"
#include "multiplex/CarouselStreams.h"
#include "packets/AdaptationField.h"
#include "sections/SectionReader.h"
#include "starting/Starting.h"
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
constexpr const char* NO_CLOCK_FOR_RANGE = "has no clock (PCR) by which --from and --to could be counted";
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
    std::optional<Position> PidCounts::*firstOfSections;
    std::optional<Position> PidTraffic::*firstOfPackets;
};

constexpr DamageKind DAMAGES[] = {
    {"CRC error", "CRC errors", Damage::CrcError, &PidCounts::crcErrors, nullptr, true, false,
     &PidCounts::firstCrcError, nullptr},
    {"discontinuity", "discontinuities", Damage::Discontinuity, nullptr, &PidTraffic::discontinuities, true, true,
     nullptr, &PidTraffic::firstDiscontinuity},
    {"section cut short", "sections cut short", Damage::SectionCutShort, &PidCounts::cutShort, nullptr, false, false,
     &PidCounts::firstCutShort, nullptr},
    {"malformed packet", "malformed packets", Damage::MalformedPacket, &PidCounts::malformedPackets, nullptr, false,
     true, &PidCounts::firstMalformedPacket, nullptr},
    {"packet marked as damaged", "packets marked as damaged", Damage::TransportError, nullptr,
     &PidTraffic::transportErrors, false, true, nullptr, &PidTraffic::firstTransportError},
};

std::vector<Finding> damagesIn(const std::map<Pid, PidCounts>& sections, const TrafficCounter& traffic) {
    std::vector<Finding> findings;
    for (const DamageKind& kind : DAMAGES) {
        Finding finding{kind.singular, kind.plural, 0, {}, kind.damage};
        const auto add = [&finding](Pid pid, std::uint64_t count, const std::optional<Position>& first) {
            if (count != 0) {
                finding.count += count;
                finding.pids.push_back(pid);
                finding.first = !finding.first || first->packet < finding.first->packet ? first : finding.first;
            }
        };
        for (const Pid pid : traffic.pids()) {
            if (kind.ofPackets != nullptr) {
                add(pid, traffic.of(pid)->*kind.ofPackets, traffic.of(pid)->*kind.firstOfPackets);
            } else if (const auto found = sections.find(pid); found != sections.end()) {
                add(pid, found->second.*kind.ofSections, found->second.*kind.firstOfSections);
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

/// How many sections of each table on each PID had a wrong CRC_32.
std::map<std::pair<Pid, std::uint8_t>, std::uint64_t> crcErrorsOf(const Summary& summary) {
    std::map<std::pair<Pid, std::uint8_t>, std::uint64_t> errors;
    for (const PidStatistics& pid : summary.statistics) {
        for (const TableStatistics& table : pid.tables) {
            if (pid.pid && table.crcErrors != 0) {
                errors[{*pid.pid, table.tableId}] = table.crcErrors;
            }
        }
    }
    return errors;
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
      m_following(interest.pids, interest.carousels),
      m_history(renderer.wantsHistory() ? std::make_unique<History>() : nullptr), m_times(times), m_timetable(times) {
    gather(m_following.pids());
}

void Inspector::setRange(const Range& range) {
    m_range = range;
    m_renderer.setSilent(range.from.has_value());
}

void Inspector::gather(const PidSet& pids) {
    constexpr Pid CONDITIONAL_ACCESS = 0x0001; // its table names PIDs, too
    m_gatherer.setPids(PidSet(pids).set(CONDITIONAL_ACCESS));
    m_read = m_gatherer.pids() | m_watch.pids() | m_presentEvents.pids();
    m_read.set(INFORMATION_PID);
}

/// Tells what has happened, and that time has passed.
void Inspector::watch(const Position& now) {
    constexpr double TICK = 0.1;
    for (Event& event : m_events) {
        event.at.seconds = event.at.seconds ? event.at.seconds : now.seconds;
        if (!event.at.time) {
            event.at.time = m_isLive ? now.time : m_wallClock.at(event.at.seconds);
        }
        if (m_history) {
            m_history->take(event);
        }
    }
    if (m_now.seconds && *m_now.seconds >= m_nextTick) { // the sections of the packet before have been taken
        m_watch.tick(m_now);
        m_nextTick = *m_now.seconds + TICK;
    }
    m_watch.take(m_events, now);
    m_events.clear();
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
    AttendedInput input(readable, [&] { return attend(*reader, readable, expected); });
    PacketReader packets(input, m_events);
    reader = &packets;
    Position position;
    Reached reached;
    while (const std::uint8_t* const packet = packets.next()) {
        if (!takeNext(packet, packets)) {
            position = look(packet, packets);
            if (!m_before && m_range.hasBegun(position)) {
                beginRange(reached);
            }
            if (m_range.isOver(position)) {
                endRange(reached);
                return;
            }
            if (!m_isLive && position.seconds && !keepTime(packets, readable, *position.seconds)) {
                break;
            }
            take(packet, packets.trailer(), position);
            m_nextDue = nextDue(packets);
        }
        if (m_range.isPart()) {
            reached = reachedBy(packets);
        }
    }
    if (!m_before) {
        beginRange(reached);
    }
    position = position.packet < m_now.packet ? m_now : position;
    m_traffic.finish();
    watch(position);
    if (packets.packets() == 0) {
        readable.complain();
    }
    position.seconds = m_clock.seconds(position.packet);
    m_watch.finish(position);
    tellAlarms();
    finish(summary(reachedBy(packets)), input, expected);
    readable.complain();
    complain(packets, input);
}

/// @throws InputError when the end is not one, or a clock was asked for and there was none
void Inspector::complain(const PacketReader& packets, const Input& input) const {
    if (packets.cutOffBytes() != 0) {
        throw InputError(input.name(), fmt::format("cut off in its last packet ({} of {} bytes)", packets.cutOffBytes(),
                                                   packets.spacing()));
    }
    if (m_interest.isTimed() && !m_clock.seconds(packets.packets())) {
        throw InputError(input.name(), NO_CLOCK);
    }
    if (m_range.isTimed() && !m_clock.seconds(packets.packets())) {
        throw InputError(input.name(), NO_CLOCK_FOR_RANGE);
    }
    if (m_times.areOfStream() && !m_isLive && !m_clock.seconds(packets.packets())) {
        throw InputError(input.name(), NO_CLOCK_FOR_TIMES);
    }
}

Inspector::Reached Inspector::reachedBy(const PacketReader& packets) {
    return {packets.packets(), packets.offset(), packets.skippedBytes(), packets.spacing(), &packets};
}

/// What comes from now on is told. What goes on, like an interval or a section, counts where it ends.
void Inspector::beginRange(const Reached& reached) {
    if (!m_range.isPart()) {
        m_before = Summary{};
        return;
    }
    m_before = summary(reached);
    m_traffic.beginPeriod();
    m_statistics.beginPeriod();
    m_renderer.setSilent(false);
}

/// More follows, and nothing is finished.
void Inspector::endRange(const Reached& reached) {
    if (!m_before) {
        beginRange(reached);
    }
    m_renderer.endRange(inRange(summary(reached), false));
}

/// @param ended whether the range ends with the input
Summary Inspector::inRange(const Summary& whole, bool ended) const {
    Summary range = since(whole, *m_before);
    range.range = {m_before->packets, whole.packets, whole.seconds, ended, m_foundFault};
    if (!ended) {
        range.last.time = std::nullopt; // another TOT may set it anew
    }
    return range;
}

/// Where a packet is, and when it came.
Position Inspector::look(const std::uint8_t* packet, const PacketReader& packets) {
    Position position{packets.packets(), packets.offset(), {}, {}};
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
        const auto secondsOf = [this](std::uint64_t number) { return m_clock.seconds(number); };
        m_statistics.date(secondsOf);
        m_carousels.date(secondsOf);
    }
    return position;
}

/// Does what look() and take() do with most packets of a file, which go on with what others have begun: they are
/// counted, and of most nobody reads more than the header. @return whether it is one of them; else nothing is done
bool Inspector::takeNext(const std::uint8_t* packet, const PacketReader& packets) {
    const std::uint64_t number = packets.packets();
    if (!isPayloadAlone(packet) || !m_events.empty() || !m_clock.isSteady(number)) {
        return false;
    }
    Position position{number, packets.offset(), m_clock.seconds(number), {}};
    if (!m_nextDue || !position.seconds || *position.seconds >= *m_nextDue ||
        (m_range.isPart() && (m_range.hasBegun(position) != m_before.has_value() || m_range.isOver(position)))) {
        return false;
    }
    position.time = m_wallClock.at(position.seconds);
    if (!m_traffic.takeNext(packet, position)) {
        return false;
    }
    m_now = position;
    if (m_read[ts_get_pid(packet)]) {
        read(packet, nullptr, position);
        m_nextDue = nextDue(packets);
    }
    return true;
}

/// When something is to be done whatever the packets are, in seconds of the stream. Nothing as long as each of them
/// matters: those of a live input, of a BTS, and where something is to be told with the next.
std::optional<double> Inspector::nextDue(const PacketReader& packets) const {
    if (!m_isDated || packets.arrival() || packets.trailer() != nullptr || m_transmission.isBroadcast() ||
        !m_watch.isIdle() || m_now.seconds >= m_nextTick || (m_wallClock.isSet() && !m_begin)) {
        return std::nullopt;
    }
    const double due = std::min({m_nextTick, m_timetable.next(), m_traffic.endOfSecond()});
    return m_history ? std::min(due, m_history->endOfStep(m_now)) : due;
}

void Inspector::take(const std::uint8_t* packet, const std::uint8_t* trailer, const Position& position) {
    if (m_history && m_history->stepOf(position) != m_step) {
        recordPackets();
        m_step = m_history->stepOf(position);
    }
    m_traffic.take(packet, position);
    watch(position);
    m_now = position;
    read(packet, trailer, position);
}

/// Looks into it.
void Inspector::read(const std::uint8_t* packet, const std::uint8_t* trailer, const Position& position) {
    m_transmission.take(packet, trailer, position);
    if (m_transmission.isBroadcast()) {
        m_clock.takeBroadcast(m_transmission.lostPackets());
    }
    m_presentEvents.take(packet, position);
    if (m_interest.carousels && !m_gatherer.pids()[ts_get_pid(packet)] && CarouselCollector::isBegunIn(packet)) {
        m_following.add(ts_get_pid(packet));
        gather(m_following.pids());
    }
    if (!m_gatherer.pids()[ts_get_pid(packet)]) {
        m_watch.take(packet, position);
        return;
    }
    for (const Section& section : m_gatherer.push(packet, position)) {
        take(section);
    }
}

/// Those that came since the last call, all in the step of the last of them.
void Inspector::recordPackets() {
    for (const auto& [pid, packets] : m_traffic.news()) {
        m_history->take(pid, packets, m_now);
    }
}

/// Does what is due by this machine's clock. @return whether the input goes on.
bool Inspector::attend(const PacketReader& packets, const Input& input, const std::set<std::uint8_t>& expected) {
    constexpr double INTERVAL = 1;
    const double now = m_arrival.seconds();
    if (packets.packets() != m_heard.packets) {
        m_heard = {packets.packets(), now};
    } else if (m_isLive) { // nothing comes, and nothing of the stream says how late it is
        const double silence = now - m_heard.seconds;
        const auto late = m_now.seconds ? std::optional(*m_now.seconds + silence) : std::nullopt;
        m_watch.tickInSilence({m_now.packet, m_now.offset, late, arrivalTime()}, silence, m_times.noData);
        tellAlarms();
    }
    if (now >= m_nextUpdate) {
        m_nextUpdate = now + INTERVAL;
        if (m_renderer.wantsUpdates()) {
            m_renderer.update(summary(reachedBy(packets), input));
        }
        if (m_renderer.wantsAll()) {
            Summary soFar = summary(reachedBy(packets));
            tellAll(soFar, input, expected, [&](const Multiplex& multiplex, const Faults& faults) {
                m_renderer.updateAll(soFar, multiplex, faults);
            });
        }
    }
    return !m_isLive || keepTime(packets, input, now);
}

/// Does what is due by the clock of the input. @return whether it goes on.
bool Inspector::keepTime(const PacketReader& packets, const Input& input, double now) {
    if (m_timetable.isInterimDue(now)) {
        Summary soFar = summary(reachedBy(packets), input);
        const Tables tables(m_current);
        addCarousels(soFar, Multiplex(tables));
        m_renderer.interim(soFar, now);
    }
    return !m_timetable.isOver(now);
}

void Inspector::runSections(Input& source, Repetitions repetitions) {
    if (m_interest.isTimed() || m_times.areOfStream()) {
        throw InputError(source.name(), m_interest.isTimed() ? NO_CLOCK : NO_CLOCK_FOR_TIMES);
    }
    if (m_range.isPart()) {
        throw InputError(source.name(), "holds sections: --from and --to are for packets");
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

/// @param tell is called with the multiplex and its faults
template <class Tell>
void Inspector::tellAll(Summary& last, const Input& input, const std::set<std::uint8_t>& expected, const Tell& tell) {
    addLosses(last, input);
    last.notChosen = m_notChosen;
    last.alarms = m_watch.alarms();
    if (m_interest.limits.name() != Profile::always().name()) {
        last.checks = m_watch.results();
    }
    last.forgotten = m_current.taken().forgotten();
    if (m_interest.carousels) {
        last.gathered = m_gatherer.pids();
    }
    std::set<Pid> scrambled;
    for (const auto& [pid, counts] : m_gatherer.counts()) {
        if (m_traffic.of(pid)->scrambled != 0 && counts.sections == 0) {
            scrambled.insert(pid);
        }
    }
    const Tables tables(m_current, expected, std::move(scrambled), carriedPids(last, m_interest), crcErrorsOf(last));
    const Multiplex multiplex(tables);
    addCarousels(last, multiplex);
    last.applications = applicationsOf(multiplex, last, m_interest.receiver);
    const Faults faults = check(multiplex, m_presentEvents, last);
    tell(multiplex, faults);
}

void Inspector::finish(Summary last, const Input& input, const std::set<std::uint8_t>& expected) {
    tellAll(last, input, expected, [&](const Multiplex& multiplex, const Faults& faults) {
        m_foundFault = last.rejected != 0 || !faults.all().empty();
        if (m_range.isPart()) {
            const Summary range = inRange(last, true);
            m_renderer.end(range, multiplex, faults);
            m_renderer.endRange(range);
        } else {
            m_renderer.end(last, multiplex, faults);
        }
    });
    m_carousels.finish();
}

void Inspector::take(const Section& section) {
    m_watch.take(section);
    if (m_interest.carousels) {
        m_carousels.take(section);
    }
    const bool understood = !tableName(section.tableId()).empty();
    if (!section.sound()) {
        count(section, std::nullopt);
        if (m_interest.damaged && (understood || isCarouselTable(section.tableId()))) {
            show(read(section, SeenSections::News::New)); // nothing is learnt from it
        }
        return;
    }
    const SeenSections::News news = (understood ? m_seen : m_seenOfOthers).look(section);
    count(section, news);
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

void Inspector::count(const Section& section, const std::optional<SeenSections::News>& news) {
    m_statistics.take(section, news);
    if (m_history && section.pid()) {
        m_history->take(section, news);
    }
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
    if (isCarouselTable(section.tableId())) {
        report.fields = {number("size", static_cast<std::int64_t>(section.size())).in("bytes")};
    } else if (parsed.table == nullptr) {
        report.rejection = rejectionOf(section, parsed);
    } else {
        report.fields = describe(*parsed.table, m_conventions, m_coding);
        if (m_localTime && m_localTime->utc != zoneOf(m_conventions, m_coding).utc(m_localTime->local)) {
            setWallClock();
        }
        if (report.tableId == TOT && !report.damaged) {
            tellTime(report);
        }
    }
    if ((m_interest.bytes || m_history) && !report.rejection) {
        report.bytes = bytesOf(section);
    }
    return {section, std::move(parsed), std::move(report)};
}

/// Only the TOT says what time it is: by the station's clock.
void Inspector::tellTime(SectionReport& report) {
    const auto time = static_cast<std::int32_t>(numberIn(report.fields, "unix_time").value_or(0));
    if (m_isLive) {
        report.otherZone = m_conventions.zone.otherBy(time, std::time(nullptr));
    } else if (report.position.seconds) {
        m_localTime = {*report.position.seconds, time, 0};
        setWallClock();
        report.position.time = m_wallClock.at(report.position.seconds);
    }
}

/// A table may tell later by which zone the station's clock goes.
void Inspector::setWallClock() {
    const std::int64_t utc = zoneOf(m_conventions, m_coding).utc(m_localTime->local);
    if (m_localTime->utc != 0 && m_localTime->utc != utc) {
        m_wallClock = WallClock();
    }
    m_localTime->utc = utc;
    m_wallClock.set(m_localTime->seconds, utc);
}

/// Takes a section for what the multiplex is now.
void Inspector::learn(const Reading& reading) {
    const auto& [section, parsed, report] = reading;
    m_watch.learn(section);
    if (report.rejection) {
        m_statistics.reject(section);
        if (m_history && section.pid()) {
            m_history->reject(section);
        }
    } else {
        m_statistics.learn(report.tableId, report.fields);
        learnBlockStreams(report);
        if (m_following.follow(section, *parsed.table)) {
            gather(m_following.pids());
        }
    }
    if (m_interest.isOf(report.tableId)) {
        m_current.take(report, bytesOf(section));
    }
}

/// Blocks of a carousel may come on another PID than what announces them.
void Inspector::learnBlockStreams(const SectionReport& report) {
    if (!m_interest.carousels || !report.header || !report.header->current) {
        return;
    }
    if (report.tableId == PAT) {
        m_carousels.blockStreams().learn(report.header->extension);
    } else if (report.tableId == PMT) {
        m_carousels.blockStreams().learn(report.header->extension, report.fields);
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
std::optional<double> Inspector::end(std::uint64_t packets) const {
    constexpr double SHORT = 1; // seconds: packets come in bursts
    std::optional<double> end = m_clock.seconds(packets);
    const double silence = m_isLive ? m_arrival.seconds() - m_heard.seconds : 0;
    return end && silence > SHORT ? *end + silence : end;
}

Summary Inspector::summary(const Reached& reached) {
    std::uint64_t sections = 0;
    for (const auto& [pid, counts] : m_gatherer.counts()) {
        sections += counts.sections;
    }
    const Traffic traffic{&m_traffic, reached.packets, m_clock.duration(reached.packets), end(reached.packets),
                          m_transmission.layersOfPids()};
    const Position last{reached.packets, reached.offset, traffic.end,
                        m_isLive ? arrivalTime() : m_wallClock.at(traffic.end)};
    Summary summary{};
    summary.packets = reached.packets;
    summary.packetSpacing = reached.spacing;
    summary.pids = m_gatherer.counts().size();
    summary.sections = sections;
    summary.shown = m_shown;
    summary.rejected = m_rejected;
    summary.damages = damagesIn(m_gatherer.counts(), m_traffic);
    summary.skippedBytes = reached.skippedBytes;
    summary.firstSkipped = reached.reader != nullptr ? reached.reader->firstSkipped() : std::nullopt;
    if (summary.firstSkipped) {
        summary.firstSkipped->seconds = m_clock.seconds(summary.firstSkipped->packet);
        summary.firstSkipped->time = m_wallClock.at(summary.firstSkipped->seconds);
    }
    summary.seconds = traffic.seconds;
    summary.statistics = statisticsOf(traffic);
    summary.transmission = TransmissionReader(m_transmission).finish(); // more may follow
    summary.traffic = Statistics::totalOf(m_traffic);
    summary.first = m_isLive ? m_begin : m_wallClock.atBegin();
    summary.last = last;
    summary.bitRate = bitRate(reached.packets, traffic.seconds);
    if (m_history) {
        recordPackets();
        summary.history = m_history.get();
    }
    return summary;
}

void Inspector::addCarousels(Summary& summary, const Multiplex& multiplex) {
    summary.carousels = m_carousels.carousels();
    for (CarouselPid& each : summary.carousels) {
        each.streams = streamsOn(each.pid, multiplex);
    }
}

/// What came so far.
Summary Inspector::summary(const Reached& reached, const Input& input) {
    Summary soFar = summary(reached);
    addLosses(soFar, input);
    soFar.notChosen = m_notChosen;
    return soFar;
}

} // namespace inspect
