#include "checking/Checking.h"

#include "checking/ApplicationChecks.h"
#include "checking/DamageChecks.h"
#include "checking/SectionChecks.h"
#include "checking/ServiceChecks.h"
#include "checking/TimeChecks.h"
#include "checking/TransmissionChecks.h"
#include "describing/FieldLookup.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

class Checker {
public:
    explicit Checker(const Multiplex& multiplex) : m_multiplex(multiplex), m_tables(multiplex.tables()) {}

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
    /// Nothing shows which transport stream this is, or that it is one.
    void checkNothing() {
        for (const TableKind& kind : TABLE_KINDS) {
            if (kind.pids.front() && m_tables.misses(kind.id)) {
                m_faults.add(subject(m_multiplex), {faults::TABLE_MISSING,
                                                    {kind.pids.front(), kind.id, std::nullopt},
                                                    fmt::format("no {} came", kind.name),
                                                    {}});
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
                m_faults.add(subject(network), {faults::WRONG_PID, placeOf(nit),
                                                fmt::format("the NIT came on PID 0x{:04X}, but the PAT says 0x{:04X}",
                                                            *nit.key.pid, said),
                                                sinceOf(nit)});
            }
        }
        for (const TransportStream& stream : network.streams) {
            checkStream(stream);
        }
        if (nit.complete() && network.streams.empty()) {
            m_faults.add(subject(network),
                         {faults::TABLE_EMPTY, placeOf(nit), "the NIT has no transport stream", sinceOf(nit)});
        }
    }

    void checkUnlisted(const TransportStream& stream) {
        if (m_tables.misses(NIT)) {
            m_faults.add(subject(stream),
                         {faults::TABLE_MISSING, {std::nullopt, NIT, std::nullopt}, "no NIT came", {}});
        } else if (stream.id && areWhole(m_tables.of(NIT))) {
            m_faults.add(subject(stream), {faults::NOT_IN_NIT, {std::nullopt, NIT, stream.id}, "not in the NIT", {}});
        }
    }

    void checkStream(const TransportStream& stream) {
        if (stream.isRepeated) {
            return;
        }
        if (stream.isThisOne && m_tables.misses(PAT)) {
            m_faults.add(subject(stream), {faults::TABLE_MISSING, {std::nullopt, PAT, stream.id}, "no PAT came", {}});
        }
        if (stream.id) {
            checkPrograms(stream);
            checkDescriptions(stream);
        }
        const bool described = !(stream.id ? m_tables.of(SDT, *stream.id) : m_tables.of(SDT)).empty();
        if (stream.isThisOne && !described && m_tables.expects(SDT)) {
            m_faults.add(subject(stream), {faults::TABLE_MISSING, {std::nullopt, SDT, stream.id}, "no SDT came", {}});
        }
        for (const Service& service : stream.services) {
            checkService(m_faults, m_multiplex, stream, service);
        }
    }

    void checkPrograms(const TransportStream& stream) {
        for (const Table* const pat : m_tables.of(PAT, *stream.id)) {
            checkSections(m_faults, subject(stream), *pat);
            if (pat->complete() && pat->entries("programs").empty()) {
                m_faults.add(subject(stream),
                             {faults::TABLE_EMPTY, placeOf(*pat), "the PAT has no program", sinceOf(*pat)});
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
                m_faults.add(subject(stream),
                             {faults::NETWORKS_DIFFER, placeOf(*sdt),
                              fmt::format("the SDT says original network 0x{:04X}, the NIT 0x{:04X}", network, listed),
                              sinceOf(*sdt)});
            }
        }
    }

    void checkUnclaimed(const Unclaimed& unclaimed) {
        if (unclaimed.pid && m_tables.expects(PMT)) {
            m_faults.add(subject(unclaimed), {faults::PID_UNANNOUNCED,
                                              {unclaimed.pid, std::nullopt, std::nullopt},
                                              "no PMT names this PID",
                                              sinceOf(*unclaimed.tables.front())});
        }
        for (const Table* const table : unclaimed.tables) {
            checkCarried(m_faults, *table, nullptr);
        }
    }

    const Multiplex& m_multiplex;
    const Tables& m_tables;
    Faults m_faults;
};

} // namespace

Faults check(const Multiplex& multiplex, const PresentEvents& events, const Summary& summary) {
    Faults faults = Checker(multiplex).takeAll();
    for (const Table* const tot : multiplex.tables().of(TOT)) {
        checkTime(faults, *tot, events);
    }
    if (summary.transmission) {
        checkTransmission(faults, *summary.transmission, multiplex);
    }
    for (const Alarm& alarm : summary.alarms) {
        if (alarm.kind.severity != Severity::Remark) {
            faults.add({nullptr, titleOf(multiplex)}, {alarm.kind, alarm.place, alarm.text, alarm.since});
        }
    }
    checkDamages(faults, titleOf(multiplex), summary);
    return faults;
}

} // namespace inspect
