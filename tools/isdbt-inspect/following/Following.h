#pragma once

#include "sections/Place.h"

#include <map>
#include <set>
#include <utility>

namespace Quor {
class TISDBTTable;
class TPATTable;
class TPMTTable;
class TProgramMap;
} // namespace Quor

namespace inspect {

/// Knows which PIDs carry which tables: some always do, the others are signalled by tables.
class Following {
public:
    /// How many sections may signal others. No multiplex comes near; a broken stream must not fill the memory.
    static constexpr std::size_t CAPACITY = 1024;

    /// @param byHand PIDs to look at, whatever is signalled. Program maps on them are followed, too.
    /// @param carousels whether components that are made for carousels are looked at, too
    explicit Following(const PidSet& byHand, bool carousels = false);

    /// The PIDs that carry tables.
    const PidSet& pids() const { return m_pids; }

    /// Looks at a PID from now on, as if by hand, but for program maps.
    void add(Pid pid);

    /// Learns from a parsed section what it signals. What an earlier version of the section signalled is forgotten.
    /// @return whether the PIDs changed.
    bool follow(const Section& section, const Quor::TISDBTTable& table);

private:
    /// A table on a PID.
    using Carried = std::pair<Pid, std::uint8_t>;
    using CarriedSet = std::set<Carried>;

    using Signalled = std::map<Place, CarriedSet>; ///< by the section that signals them

    void signal(const Place& source, CarriedSet signalled);
    void forget(Signalled::iterator begin, Signalled::iterator end);
    void begin(const Carried& carried);
    void cease(const Carried& carried);
    CarriedSet signalledBy(const Quor::TISDBTTable& table) const;
    static CarriedSet signalledByPat(const Quor::TPATTable& pat);
    CarriedSet signalledByPmt(const Quor::TPMTTable& pmt) const;
    CarriedSet carriedIn(const Quor::TProgramMap& stream) const;

    Signalled m_signalled;
    std::map<Carried, unsigned> m_carried; ///< with the number of sources that say so
    bool m_carousels;
    PidSet m_byHand;
    PidSet m_pids;
};

} // namespace inspect
