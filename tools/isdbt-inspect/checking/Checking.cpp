#include "checking/Checking.h"

#include "checking/Checks.h"
#include "describing/FieldLookup.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

class Checker {
public:
    Checker(const Multiplex& multiplex, const std::vector<ApplicationReport>& applications)
        : m_multiplex(multiplex), m_tables(multiplex.tables()), m_applications(applications) {}

    Faults takeAll() {
        if (m_multiplex.networks().empty() && m_multiplex.unlisted().empty()) {
            checkNothing();
        }
        for (const Network& network : m_multiplex.networks()) {
            checkNetwork(network);
        }
        for (const TransportStream& stream : m_multiplex.unlisted()) {
            checkUnlisted(stream);
            checkStream(stream);
        }
        for (const Unclaimed& unclaimed : m_multiplex.unclaimed()) {
            checkUnclaimed(unclaimed);
        }
        for (const std::uint8_t tableId : {TOT, SDTT}) {
            for (const Table* const table : m_tables.of(tableId)) {
                checkSections(m_faults, subject(*table), *table);
            }
        }
        for (const auto& [table, position] : m_tables.silentChangesElsewhere()) {
            addSilentChange(m_faults, subject(m_multiplex), table, position);
        }
        return std::move(m_faults);
    }

private:
    template <class Part>
    void addOf(const Part& part, FaultKind kind, const FaultPlace& place, std::string text,
               std::optional<Position> since = {}) {
        m_faults.add(subject(part), {kind, place, std::move(text), since});
    }

    /// Nothing shows which transport stream this is, or that it is one.
    void checkNothing() {
        for (const TableKind& kind : TABLE_KINDS) {
            if (kind.pids.front() && m_tables.misses(kind.id)) {
                addOf(m_multiplex, faults::TABLE_MISSING, {kind.pids.front(), kind.id, std::nullopt},
                      fmt::format("no {} came", kind.name));
            }
        }
    }

    void checkNetwork(const Network& network) {
        const Table& nit = *network.nit;
        checkSections(m_faults, subject(network), nit);
        // Receivers that believe the PAT do not find another one.
        for (const Table* const pat : m_tables.of(PAT)) {
            const std::int64_t said = numberIn(pat->beside("programs"), "network_pid").value_or(0);
            if (nit.key.pid && said != 0 && said != *nit.key.pid) {
                addShown(m_faults, subject(network), faults::WRONG_PID, nit,
                         fmt::format("the NIT came on PID 0x{:04X}, but the PAT says 0x{:04X}", *nit.key.pid, said));
            }
        }
        for (const TransportStream& stream : network.streams) {
            checkStream(stream);
        }
        if (nit.complete() && network.streams.empty()) {
            addShown(m_faults, subject(network), faults::TABLE_EMPTY, nit, "the NIT has no transport stream");
        }
    }

    void checkUnlisted(const TransportStream& stream) {
        if (m_tables.misses(NIT)) {
            addOf(stream, faults::TABLE_MISSING, {std::nullopt, NIT, std::nullopt}, "no NIT came");
        } else if (stream.id && areWhole(m_tables.of(NIT))) {
            addOf(stream, faults::NOT_IN_NIT, {std::nullopt, NIT, stream.id}, "not in the NIT");
        }
    }

    void checkStream(const TransportStream& stream) {
        if (stream.isRepeated) {
            return;
        }
        if (stream.isThisOne && m_tables.misses(PAT)) {
            addOf(stream, faults::TABLE_MISSING, {std::nullopt, PAT, stream.id}, "no PAT came");
        }
        if (stream.id) {
            checkPrograms(stream);
            checkDescriptions(stream);
        }
        const bool described = !(stream.id ? m_tables.of(SDT, *stream.id) : m_tables.of(SDT)).empty();
        if (stream.isThisOne && !described && m_tables.expects(SDT)) {
            addOf(stream, faults::TABLE_MISSING, {std::nullopt, SDT, stream.id}, "no SDT came");
        }
        for (const Service& service : stream.services) {
            checkService(m_faults, m_multiplex, stream, service, m_applications);
        }
    }

    void checkPrograms(const TransportStream& stream) {
        for (const Table* const pat : m_tables.of(PAT, *stream.id)) {
            checkSections(m_faults, subject(stream), *pat);
            if (pat->complete() && pat->entries("programs").empty()) {
                addShown(m_faults, subject(stream), faults::TABLE_EMPTY, *pat, "the PAT has no program");
            }
        }
    }

    void checkDescriptions(const TransportStream& stream) {
        constexpr std::int64_t NONE = -1;
        const std::int64_t listed =
            stream.entry == nullptr ? NONE : numberIn(*stream.entry, "original_network_id").value_or(NONE);
        for (const Table* const sdt : m_tables.of(SDT, *stream.id)) {
            checkSections(m_faults, subject(stream), *sdt);
            const std::int64_t network = numberIn(sdt->beside("services"), "original_network_id").value_or(listed);
            if (listed != NONE && network != listed) {
                addShown(m_faults, subject(stream), faults::NETWORKS_DIFFER, *sdt,
                         fmt::format("the SDT says original network 0x{:04X}, the NIT 0x{:04X}", network, listed));
            }
        }
    }

    void checkUnclaimed(const Unclaimed& unclaimed) {
        if (unclaimed.pid && m_tables.expects(PMT)) {
            addOf(unclaimed, faults::PID_UNANNOUNCED, {unclaimed.pid, std::nullopt, std::nullopt},
                  "no PMT names this PID", sinceOf(*unclaimed.tables.front()));
        }
        for (const Table* const table : unclaimed.tables) {
            checkCarried(m_faults, *table, m_applications);
        }
    }

    const Multiplex& m_multiplex;
    const Tables& m_tables;
    const std::vector<ApplicationReport>& m_applications;
    Faults m_faults;
};

/// Whether the time of day goes by the same clock as the events. In Brazil that of events is local; a time that is
/// three hours off goes by UTC, or the other way round.
void checkTime(Faults& faults, const Table& tot, const PresentEvents& events) {
    constexpr std::int64_t THREE_HOURS = std::int64_t{3} * 60 * 60;
    const std::optional<std::int64_t> time = numberIn(tot.beside({}), "unix_time");
    const std::optional<Position> position = sinceOf(tot);
    if (!time || !position) {
        return;
    }
    const std::int64_t now = static_cast<std::uint32_t>(*time); // negative from 2038 on
    const bool isAhead = events.have(now - THREE_HOURS, *position);
    const bool isBehind = events.have(now + THREE_HOURS, *position);
    // Events of several services that would fit to both tell nothing.
    if (isAhead != isBehind && !events.have(now, *position)) {
        addShown(
            faults, subject(tot), faults::CLOCKS_DIFFER, tot,
            fmt::format("the clock of the TOT is three hours {} that of the EIT", isAhead ? "ahead of" : "behind"));
    }
}

/// The fault at the end that says the same as an alarm; empty when there is none.
std::string_view sameAs(std::string_view check) {
    if (check == "silent_change") {
        return faults::CHANGED_SILENTLY.name;
    }
    return check == "original_network" ? faults::NETWORKS_DIFFER.name : std::string_view();
}

} // namespace

Faults check(const Multiplex& multiplex, const PresentEvents& events, const Summary& summary) {
    Faults faults = Checker(multiplex, summary.applications).takeAll();
    for (const Table* const tot : multiplex.tables().of(TOT)) {
        checkTime(faults, *tot, events);
    }
    if (summary.transmission) {
        checkTransmission(faults, *summary.transmission, multiplex);
    }
    for (const Alarm& alarm : summary.alarms) {
        if (alarm.kind.severity != Severity::Remark) {
            faults.addInPlaceOf(sameAs(alarm.kind.name), {nullptr, titleOf(multiplex)},
                                {alarm.kind, alarm.place, alarm.text, alarm.since});
        }
    }
    checkDamages(faults, titleOf(multiplex), summary);
    return faults;
}

} // namespace inspect
