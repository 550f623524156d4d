#include "following/Following.h"

#include "TISDBTTable.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sections/TableIds.h"

#include <limits>
#include <memory>
#include <tuple>

namespace inspect {

namespace {

/// SDTTs have two PIDs: one for fixed receivers, one for portable ones.
constexpr std::pair<Pid, std::uint8_t> ALWAYS_CARRIED[] = {
    {0x0000, PAT}, {0x0010, NIT}, {0x0011, SDT}, {0x0014, TOT}, {0x0023, SDTT}, {0x0028, SDTT},
};

} // namespace

Following::Following(const PidSet& byHand) : m_byHand(byHand) {
    gather();
}

PidSet Following::pids() const {
    PidSet pids = m_byHand;
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
    if (!section.pid() || !header || !header->current) {
        return false;
    }
    // There is one PAT: another transport_stream_id takes the place of the former.
    const std::uint16_t extension = section.tableId() == PAT ? std::uint16_t{0} : header->extension;
    const Carried carried{*section.pid(), section.tableId()};
    forgetBeyond({carried, extension, header->lastSectionNumber});
    CarriedSet signalled = signalledBy(table);
    const Source source{carried, extension, header->sectionNumber};
    if (signalled.empty()) {
        m_signalled.erase(source);
    } else if (m_signalled.size() < CAPACITY || m_signalled.count(source) != 0) {
        m_signalled[source] = std::move(signalled);
    }
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
    case Quor::TISDBTTable::PMT:
        return signalledByPmt(static_cast<const Quor::TPMTTable&>(table));
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
    if (pat.getNetworkPid() != 0) {
        signalled.insert({pat.getNetworkPid(), NIT});
    }
    return signalled;
}

Following::CarriedSet Following::signalledByPmt(const Quor::TPMTTable& pmt) {
    CarriedSet signalled;
    for (unsigned at = 0; at < pmt.size() && at <= std::numeric_limits<QUOR_U8>::max(); ++at) {
        signalled.merge(carriedIn(*pmt.getProgramMap(static_cast<QUOR_U8>(at))));
    }
    return signalled;
}

/// An AIT is announced by its data component; many stations leave that out, and any private sections may be one.
Following::CarriedSet Following::carriedIn(const Quor::TProgramMap& stream) {
    using Quor::TDataComponentDescriptor;
    using Quor::TProgramMap;
    const TDataComponentDescriptor* const component = stream.getDataComponentDescriptor(0, nullptr);
    CarriedSet carried;
    if (stream.getStreamType() == TProgramMap::STREAM_TYPE_SECTION ||
        (component != nullptr &&
         component->getDataComponentID() == TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE)) {
        carried.insert({stream.getElementaryPID(), AIT});
    }
    if (stream.getStreamType() == TProgramMap::STREAM_TYPE_0X0C ||
        stream.getStreamType() == TProgramMap::STREAM_TYPE_0X0D) {
        carried.insert({stream.getElementaryPID(), DSMCC_STREAM_DESCRIPTORS});
    }
    return carried;
}

/// Puts together what is carried. A source that is no longer carried itself signals nothing any more, which may end
/// other sources in turn.
void Following::gather() {
    std::size_t sources = 0;
    do {
        sources = m_signalled.size();
        m_carried = CarriedSet(std::begin(ALWAYS_CARRIED), std::end(ALWAYS_CARRIED));
        for (std::size_t pid = 0; pid < m_byHand.size(); ++pid) {
            if (m_byHand[pid]) {
                m_carried.insert({static_cast<Pid>(pid), PMT});
            }
        }
        for (const auto& [source, signalled] : m_signalled) {
            m_carried.insert(signalled.begin(), signalled.end());
        }
        for (auto source = m_signalled.begin(); source != m_signalled.end();) {
            source = m_carried.count(source->first.carried) != 0 ? std::next(source) : m_signalled.erase(source);
        }
    } while (m_signalled.size() != sources);
}

} // namespace inspect
