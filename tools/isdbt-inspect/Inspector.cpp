#include "Inspector.h"

#include "describing/Describing.h"

#include <fmt/format.h>

namespace inspect {

namespace {

std::optional<Place> placeOf(const Section& section) {
    const std::optional<LongHeader> header = section.longHeader();
    if (!header) {
        return std::nullopt;
    }
    return Place{header->version, header->current, header->sectionNumber, header->lastSectionNumber};
}

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

Inspector::Inspector(Renderer& renderer, const PidSet& byHand, const Charset& charset)
    : m_renderer(renderer), m_charset(charset), m_following(byHand) {
    m_gatherer.setPids(m_following.pids());
}

void Inspector::run(Input& input) {
    PacketReader packets(input);
    while (const std::uint8_t* const packet = packets.next(m_gatherer.pids())) {
        for (const Section& section : m_gatherer.push(packet, packets.packets())) {
            take(section);
        }
    }
    const Summary last = summary(packets);
    m_foundFault = last.rejected != 0 || last.skippedBytes != 0;
    for (const Finding& finding : last.damages) {
        m_foundFault = m_foundFault || finding.count != 0;
    }
    m_renderer.summary(last);
    if (packets.cutOffBytes() != 0) {
        throw InputError(input.name(), fmt::format("cut off in its last packet ({} of {} bytes)", packets.cutOffBytes(),
                                                   packets.spacing()));
    }
}

void Inspector::take(const Section& section) {
    if (tableName(section.tableId()).empty()) {
        return;
    }
    const SeenSections::News news = m_seen.look(section);
    if (news == SeenSections::News::Repetition) {
        return;
    }
    ParsedSection parsed = parse(section);
    SectionReport report{section.pid(),
                         section.tableId(),
                         std::string(parsed.tableName),
                         section.packet(),
                         placeOf(section),
                         news == SeenSections::News::SameVersion,
                         {},
                         std::nullopt};
    if (parsed.table != nullptr) {
        report.fields = describe(*parsed.table, m_charset);
        ++m_shown;
        if (m_following.follow(section, *parsed.table)) {
            m_gatherer.setPids(m_following.pids());
        }
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
