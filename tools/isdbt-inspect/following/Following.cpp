#include "following/Following.h"

#include "TISDBTTable.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "tables/TableKinds.h"

#include <limits>
#include <memory>

namespace inspect {

namespace {

/// Whether a component is there to carry a carousel. Others may do so, too.
bool isForCarousel(const Quor::TProgramMap& stream) {
    using Quor::TDataComponentDescriptor;
    using Quor::TProgramMap;
    const TDataComponentDescriptor* const component = stream.getDataComponentDescriptor(0, nullptr);
    const QUOR_U8 type = stream.getStreamType();
    return (type >= TProgramMap::STREAM_TYPE_0X0A && type <= TProgramMap::STREAM_TYPE_0X0D) ||
           type == TProgramMap::STREAM_TYPE_DOWN_SYNC_PROTOCOL ||
           stream.getCarouselIdentifierDescriptor(0, nullptr) != nullptr ||
           (component != nullptr &&
            component->getDataComponentID() == TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_EXECUTING_ENGINE);
}

} // namespace

Following::Following(const PidSet& byHand, bool carousels) : m_carousels(carousels), m_byHand(byHand), m_pids(byHand) {
    for (const TableKind& kind : TABLE_KINDS) {
        for (const std::optional<Pid>& pid : kind.pids) {
            if (pid) {
                begin({*pid, kind.id});
            }
        }
    }
    for (std::size_t pid = 0; pid < byHand.size(); ++pid) {
        if (byHand[pid]) {
            begin({static_cast<Pid>(pid), PMT});
        }
    }
}

void Following::add(Pid pid) {
    m_byHand.set(pid);
    m_pids.set(pid);
}

bool Following::follow(const Section& section, const Quor::TISDBTTable& table) {
    const std::optional<LongHeader> header = section.longHeader();
    if (!section.pid() || !header || !header->current) {
        return false;
    }
    const Carried carried{*section.pid(), section.tableId()};
    if (m_carried.count(carried) == 0) {
        return false;
    }
    const Place source = Place::of(section.pid(), section.tableId(), header).inTheOnlyPat();
    const PidSet before = m_pids;
    const auto [beyond, end] = behind(m_signalled, {source.table, header->lastSectionNumber});
    forget(beyond, end);
    signal(source, signalledBy(table));
    return m_pids != before;
}

/// Takes down what a source signals now, in place of what it did before.
void Following::signal(const Place& source, CarriedSet signalled) {
    const auto before = m_signalled.find(source);
    if (before == m_signalled.end() && (signalled.empty() || m_signalled.size() >= CAPACITY)) {
        return;
    }
    // What goes on must not cease in between: what it signals itself would be forgotten.
    for (const Carried& carried : signalled) {
        begin(carried);
    }
    if (before != m_signalled.end()) {
        forget(before, std::next(before));
    }
    if (!signalled.empty()) {
        m_signalled.emplace(source, std::move(signalled));
    }
}

/// Forgets sources, and with them what is carried because of them alone.
void Following::forget(Signalled::iterator begin, Signalled::iterator end) {
    Signalled forgotten;
    while (begin != end) {
        forgotten.insert(m_signalled.extract(begin++));
    }
    for (const auto& [source, signalled] : forgotten) {
        for (const Carried& carried : signalled) {
            cease(carried);
        }
    }
}

void Following::begin(const Carried& carried) {
    ++m_carried[carried];
    m_pids.set(carried.first);
}

/// One source less says that a table is carried. A table that is no longer carried signals nothing any more.
void Following::cease(const Carried& carried) {
    const auto found = m_carried.find(carried);
    if (--found->second != 0) {
        return;
    }
    m_carried.erase(found);
    const auto [pid, tableId] = carried;
    const auto other = m_carried.lower_bound({pid, std::uint8_t{0}});
    m_pids.set(pid, m_byHand[pid] || (other != m_carried.end() && other->first.first == pid));
    constexpr std::uint16_t HIGHEST = std::numeric_limits<std::uint16_t>::max();
    forget(m_signalled.lower_bound({{pid, tableId, 0}, 0}),
           m_signalled.upper_bound(Place{{pid, tableId, HIGHEST}, 0}.last()));
}

Following::CarriedSet Following::signalledBy(const Quor::TISDBTTable& table) const {
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

Following::CarriedSet Following::signalledByPmt(const Quor::TPMTTable& pmt) const {
    CarriedSet signalled;
    for (unsigned at = 0; at < pmt.size() && at <= std::numeric_limits<QUOR_U8>::max(); ++at) {
        signalled.merge(carriedIn(*pmt.getProgramMap(static_cast<QUOR_U8>(at))));
    }
    return signalled;
}

/// An AIT is announced by its data component; many stations leave that out, and any private sections may be one.
Following::CarriedSet Following::carriedIn(const Quor::TProgramMap& stream) const {
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
    if (m_carousels && isForCarousel(stream)) {
        carried.insert({stream.getElementaryPID(), DSMCC_MESSAGES});
    }
    return carried;
}

} // namespace inspect
