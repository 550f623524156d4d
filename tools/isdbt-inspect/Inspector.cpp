#include "Inspector.h"

#include "checking/Checking.h"
#include "describing/Describing.h"
#include "sections/SectionReader.h"
#include "tables/TableKinds.h"

#include <fmt/format.h>

namespace inspect {

namespace {

Rejection rejectionOf(const Section& section, ParsedSection& parsed) {
    return {parsed.errorCode, std::string(errorName(parsed.errorCode)), std::move(parsed.logLines),
            describeDescriptors(section.data(), section.size()),
            std::vector(section.data(), section.data() + section.size())};
}

struct DamageKind {
    const char* singular;
    const char* plural;
    std::uint64_t PidCounts::*count;
    bool alwaysSaid;
};

constexpr DamageKind DAMAGES[] = {
    {"CRC error", "CRC errors", &PidCounts::crcErrors, true},
    {"discontinuity", "discontinuities", &PidCounts::discontinuities, true},
    {"section cut short", "sections cut short", &PidCounts::cutShort, false},
    {"malformed packet", "malformed packets", &PidCounts::malformedPackets, false},
    {"packet marked as damaged", "packets marked as damaged", &PidCounts::transportErrors, false},
};

std::vector<Finding> damagesIn(const std::map<Pid, PidCounts>& counts) {
    std::vector<Finding> findings;
    for (const DamageKind& kind : DAMAGES) {
        Finding finding{kind.singular, kind.plural, 0, {}};
        for (const auto& [pid, ofPid] : counts) {
            if (const std::uint64_t count = ofPid.*kind.count; count != 0) {
                finding.count += count;
                finding.pids.push_back(pid);
            }
        }
        if (finding.count != 0 || kind.alwaysSaid) {
            findings.push_back(std::move(finding));
        }
    }
    return findings;
}

/// The same without PIDs, and without what only packets can suffer.
std::vector<Finding> damagesIn(const PidCounts& counts) {
    std::vector<Finding> findings{{"CRC error", "CRC errors", counts.crcErrors, {}}};
    if (counts.cutShort != 0) {
        findings.push_back({"section cut short", "sections cut short", counts.cutShort, {}});
    }
    return findings;
}

} // namespace

Inspector::Inspector(Renderer& renderer, const Interest& interest, const Charset& charset)
    : m_renderer(renderer), m_interest(interest), m_charset(charset), m_following(interest.pids) {
    m_gatherer.setPids(m_following.pids());
}

void Inspector::run(Input& input) {
    read(input, expected());
}

void Inspector::runPackets(Input& input) {
    read(input, {});
}

void Inspector::read(Input& input, std::set<std::uint8_t> expected) {
    m_renderer.begin(input.name());
    PacketReader packets(input);
    while (const std::uint8_t* const packet = packets.next(m_gatherer.pids())) {
        const Position position{packets.packets(), packets.offset(), packets.seconds()};
        for (const Section& section : m_gatherer.push(packet, position)) {
            take(section);
        }
    }
    finish(summary(packets), input, std::move(expected));
    if (packets.cutOffBytes() != 0) {
        throw InputError(input.name(), fmt::format("cut off in its last packet ({} of {} bytes)", packets.cutOffBytes(),
                                                   packets.spacing()));
    }
}

void Inspector::runSections(Input& input, Repetitions repetitions) {
    m_renderer.begin(input.name());
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
    last.sections = counts.sections;
    last.shown = m_shown;
    last.rejected = m_rejected;
    last.damages = damagesIn(counts);
    const PacketsOfPids noPackets{};
    last.statistics = m_statistics.of({noPackets, 0, {}, std::nullopt}, m_interest.tables);
    m_foundKnownTable = last.sections != last.unknown;
    finish(std::move(last), input, {}); // they are single ones: nobody misses the others
}

/// Leaves nothing out: who has no packets, but a section in hand, wants to know what a receiver says to it.
void Inspector::takeAsItIs(const Section& section, Repetitions repetitions) {
    if (section.sound() && repetitions == Repetitions::Hidden) {
        take(section);
        return;
    }
    m_statistics.take(section, section.sound() ? std::optional(m_seen.look(section)) : std::nullopt);
    if (!tableName(section.tableId()).empty()) {
        show(section, SeenSections::News::New);
    }
}

/// Tables that every multiplex has.
std::set<std::uint8_t> Inspector::expected() const {
    std::set<std::uint8_t> expected;
    for (const TableKind& kind : TABLE_KINDS) {
        if (kind.ofEveryMultiplex && isOfInterest(kind.id)) {
            expected.insert(kind.id);
        }
    }
    return expected;
}

void Inspector::finish(Summary last, const Input& input, std::set<std::uint8_t> expected) {
    for (const Loss& loss : input.losses()) {
        last.damages.push_back({loss.singular, loss.plural, loss.count, {}});
    }
    m_foundFault = last.rejected != 0 || last.skippedBytes != 0;
    for (const Finding& finding : last.damages) {
        m_foundFault = m_foundFault || finding.count != 0;
    }
    last.forgotten = m_current.taken().forgotten();
    std::set<Pid> scrambled;
    for (const auto& [pid, counts] : m_gatherer.counts()) {
        if (counts.scrambled != 0 && counts.sections == 0) {
            scrambled.insert(pid);
        }
    }
    const Tables tables(m_current, std::move(expected), std::move(scrambled));
    const Multiplex multiplex(tables);
    const Faults faults = check(multiplex);
    m_foundFault = m_foundFault || !faults.all().empty();
    m_renderer.end(last, multiplex, faults);
}

bool Inspector::isOfInterest(std::uint8_t tableId) const {
    return m_interest.tables.empty() || m_interest.tables.count(tableId) != 0;
}

void Inspector::take(const Section& section) {
    if (!section.sound()) {
        m_statistics.take(section, std::nullopt);
        return;
    }
    const bool understood = !tableName(section.tableId()).empty();
    const SeenSections::Sight sight = (understood ? m_seen : m_seenOfOthers).look(section);
    m_statistics.take(section, sight);
    if (understood && sight.news != SeenSections::News::Repetition) {
        show(section, sight.news);
    }
}

void Inspector::show(const Section& section, SeenSections::News news) {
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
        m_statistics.reject(section);
        report.rejection = rejectionOf(section, parsed);
    } else {
        report.fields = describe(*parsed.table, m_charset, m_coding);
        if (section.tableId() == PMT) {
            m_statistics.learn(report.fields);
        }
        if (m_following.follow(section, *parsed.table)) {
            m_gatherer.setPids(m_following.pids());
        }
    }
    if (!isOfInterest(section.tableId())) {
        return;
    }
    ++(report.rejection ? m_rejected : m_shown);
    m_current.take(report);
    m_renderer.section(report);
}

Summary Inspector::summary(const PacketReader& packets) const {
    PidCounts all;
    for (const auto& [pid, counts] : m_gatherer.counts()) {
        all += counts;
    }
    const Traffic traffic{packets.packetsOfPids(), packets.packets(), m_gatherer.counts(), packets.duration()};
    return {packets.packets(),
            packets.spacing(),
            m_gatherer.counts().size(),
            all.sections,
            m_shown,
            m_rejected,
            damagesIn(traffic.gathered),
            packets.skippedBytes(),
            traffic.seconds,
            m_statistics.of(traffic, m_interest.tables),
            0,
            0,
            {}};
}

} // namespace inspect
