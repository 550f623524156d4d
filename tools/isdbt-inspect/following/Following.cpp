#include "following/Following.h"

#include "TISDBTTable.h"
#include "pat/TPATTable.h"

#include <limits>
#include <memory>
#include <tuple>

namespace inspect {

namespace {

constexpr std::uint8_t PAT = 0x00;
constexpr std::uint8_t PMT = 0x02;
constexpr std::uint8_t TOT = 0x73;

constexpr std::pair<Pid, std::uint8_t> ALWAYS_CARRIED[] = {
    {0x0000, PAT},
    {0x0014, TOT},
};

} // namespace

Following::Following() {
    gather();
}

PidSet Following::pids() const {
    PidSet pids;
    for (const auto& [pid, tableId] : m_carried) {
        pids.set(pid);
    }
    return pids;
}

bool Following::Source::operator<(const Source& other) const {
    return std::tie(carried, extension, sectionNumber) < std::tie(other.carried, other.extension, other.sectionNumber);
}

bool Following::follow(const Section& section, const Quor::TISDBTTable& table) {
    const std::optional<LongHeader> header = section.longHeader();
    if (!header || !header->current) {
        return false;
    }
    // There is one PAT: another transport_stream_id takes the place of the former.
    const std::uint16_t extension = section.tableId() == PAT ? std::uint16_t{0} : header->extension;
    const Carried carried{section.pid(), section.tableId()};
    forgetBeyond({carried, extension, header->lastSectionNumber});
    m_signalled[{carried, extension, header->sectionNumber}] = signalledBy(table);
    const CarriedSet before = m_carried;
    gather();
    return m_carried != before;
}

/// Forgets the sections that a table has no more.
void Following::forgetBeyond(const Source& last) {
    const Source end{last.carried, last.extension, std::numeric_limits<std::uint8_t>::max()};
    m_signalled.erase(m_signalled.upper_bound(last), m_signalled.upper_bound(end));
}

Following::CarriedSet Following::signalledBy(const Quor::TISDBTTable& table) {
    switch (table.getType()) {
    case Quor::TISDBTTable::PAT:
        return signalledByPat(static_cast<const Quor::TPATTable&>(table));
    default:
        return {};
    }
}

Following::CarriedSet Following::signalledByPat(const Quor::TPATTable& pat) {
    CarriedSet signalled;
    const std::unique_ptr<std::list<QUOR_U16>> programs(pat.getProgramNumbers());
    for (const QUOR_U16 program : *programs) {
        signalled.insert({pat.get(program)->getProgramMapPid(), PMT});
    }
    return signalled;
}

/// Puts together what is carried. A source that is no longer carried itself signals nothing any more, which may end
/// other sources in turn.
void Following::gather() {
    std::size_t sources = 0;
    do {
        sources = m_signalled.size();
        m_carried = CarriedSet(std::begin(ALWAYS_CARRIED), std::end(ALWAYS_CARRIED));
        for (const auto& [source, signalled] : m_signalled) {
            m_carried.insert(signalled.begin(), signalled.end());
        }
        for (auto source = m_signalled.begin(); source != m_signalled.end();) {
            source = m_carried.count(source->first.carried) != 0 ? std::next(source) : m_signalled.erase(source);
        }
    } while (m_signalled.size() != sources);
}

} // namespace inspect
