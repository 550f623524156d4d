#include "Inspector.h"

#include "describing/Describing.h"

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

} // namespace

Inspector::Inspector(Renderer& renderer, const Interest& interest, const Charset& charset)
    : m_renderer(renderer), m_interest(interest), m_charset(charset), m_following(interest.pids) {
    m_gatherer.setPids(m_following.pids());
}

void Inspector::run(Input& input) {
    m_renderer.begin(input.name());
    PacketReader packets(input);
    while (const std::uint8_t* const packet = packets.next(m_gatherer.pids())) {
        const Position position{packets.packets(), packets.offset(), packets.seconds()};
        for (const Section& section : m_gatherer.push(packet, position)) {
            take(section);
        }
    }
    const Summary last = summary(packets);
    m_foundFault = last.rejected != 0 || last.skippedBytes != 0;
    for (const Finding& finding : last.damages) {
        m_foundFault = m_foundFault || finding.count != 0;
    }
    m_renderer.end(last);
    if (packets.cutOffBytes() != 0) {
        throw InputError(input.name(), fmt::format("cut off in its last packet ({} of {} bytes)", packets.cutOffBytes(),
                                                   packets.spacing()));
    }
}

bool Inspector::isOfInterest(std::uint8_t tableId) const {
    return m_interest.tables.empty() || m_interest.tables.count(tableId) != 0;
}

void Inspector::take(const Section& section) {
    if (!section.sound() || tableName(section.tableId()).empty()) {
        return;
    }
    const SeenSections::News news = m_seen.look(section).news;
    if (news != SeenSections::News::Repetition) {
        show(section, news);
    }
}

void Inspector::show(const Section& section, SeenSections::News news) {
    ParsedSection parsed = parse(section);
    SectionReport report{section.pid(),
                         section.tableId(),
                         std::string(parsed.tableName),
                         section.position(),
                         section.longHeader(),
                         news == SeenSections::News::SameVersion,
                         !section.sound(),
                         {},
                         std::nullopt};
    if (parsed.table != nullptr && m_following.follow(section, *parsed.table)) {
        m_gatherer.setPids(m_following.pids());
    }
    if (!isOfInterest(section.tableId())) {
        return;
    }
    if (parsed.table != nullptr) {
        report.fields = describe(*parsed.table, m_charset);
        ++m_shown;
    } else {
        report.rejection = rejectionOf(section, parsed);
        ++m_rejected;
    }
    m_renderer.section(report);
}

Summary Inspector::summary(const PacketReader& packets) const {
    PidCounts all;
    for (const auto& [pid, counts] : m_gatherer.counts()) {
        all += counts;
    }
    return {packets.packets(), packets.spacing(), m_gatherer.counts().size(),     all.sections,
            m_shown,           m_rejected,        damagesIn(m_gatherer.counts()), packets.skippedBytes()};
}

} // namespace inspect
