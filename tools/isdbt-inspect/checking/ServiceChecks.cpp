#include "checking/Checks.h"

#include "describing/FieldLookup.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::string_view INFORMATION = "ts_information_descriptor";

/// Finds what is wrong with one service.
class ServiceChecker {
public:
    ServiceChecker(Faults& faults, const Multiplex& multiplex, const TransportStream& stream, const Service& service,
                   const std::vector<ApplicationReport>& applications)
        : m_faults(faults), m_multiplex(multiplex), m_tables(multiplex.tables()), m_stream(stream), m_service(service),
          m_applications(applications) {}

    void checkAll() {
        if (m_service.programMapPid && m_service.programMaps.empty() && m_tables.expects(PMT)) {
            const bool scrambled = m_tables.isScrambled(*m_service.programMapPid);
            add(scrambled ? faults::SCRAMBLED : faults::TABLE_MISSING, {m_service.programMapPid, PMT, m_service.id},
                scrambled ? "its PMT is scrambled" : "no PMT came");
        }
        for (const ProgramMap& pmt : m_service.programMaps) {
            checkProgramMap(pmt);
        }
        compare();
    }

private:
    void add(FaultKind kind, const FaultPlace& place, std::string text, std::optional<Position> since = {}) {
        m_faults.add(subject(m_service), {kind, place, std::move(text), since});
    }

    void checkProgramMap(const ProgramMap& pmt) {
        const Table& table = *pmt.table;
        if (m_service.programMapPid && table.key.pid && table.key.pid != m_service.programMapPid) {
            addShown(m_faults, subject(m_service), faults::WRONG_PID, table,
                     fmt::format("a PMT came on PID 0x{:04X}, but the PAT says 0x{:04X}", *table.key.pid,
                                 *m_service.programMapPid));
        }
        checkSections(m_faults, subject(m_service), table);
        for (const Component& component : pmt.components) {
            checkComponent(pmt, component);
        }
        if (table.complete() && pmt.components.empty()) {
            addShown(m_faults, subject(m_service), faults::TABLE_EMPTY, table, "its PMT has no component");
        }
        checkApplications(pmt);
    }

    /// Without an AIT, a receiver starts nothing of what the carousels bring.
    void checkApplications(const ProgramMap& pmt) {
        const bool announced =
            std::any_of(pmt.components.begin(), pmt.components.end(), [this](const Component& component) {
                return carriesApplicationInformation(component) || !m_tables.on(component.pid, AIT).empty();
            });
        for (const Component& component : pmt.components) {
            if (!announced && carriesApplications(component)) {
                add(faults::APPLICATION_TABLE_MISSING, {component.pid, AIT, std::nullopt},
                    fmt::format("PID 0x{:04X} is for applications, but no component carries their AIT", component.pid),
                    sinceOf(*pmt.table));
            }
        }
    }

    void checkComponent(const ProgramMap& pmt, const Component& component) {
        checkUnique(pmt, component);
        const std::vector<const Table*> applications = m_tables.on(component.pid, AIT);
        if (applications.empty() && carriesApplicationInformation(component) && m_tables.expects(AIT)) {
            const bool scrambled = m_tables.isScrambled(component.pid);
            const std::uint64_t crcErrors = m_tables.crcErrorsOn(component.pid, AIT);
            m_faults.add(subject(component),
                         {scrambled ? faults::SCRAMBLED : faults::TABLE_MISSING,
                          {component.pid, AIT, std::nullopt},
                          scrambled        ? "its AIT is scrambled"
                          : crcErrors != 0 ? fmt::format("no AIT came, but {} with a wrong CRC_32", crcErrors)
                                           : "no AIT came",
                          {}});
        }
        const Multiplex::Claim* const claim = m_multiplex.claimOf(component.pid);
        if (claim != nullptr && claim->component == &component) {
            for (const std::uint8_t tableId : {AIT, DSMCC_STREAM_DESCRIPTORS}) {
                for (const Table* const table : m_tables.on(component.pid, tableId)) {
                    checkCarried(m_faults, *table, m_applications);
                }
            }
        }
    }

    /// Receivers find a component by its tag, and a stream by its PID.
    void checkUnique(const ProgramMap& pmt, const Component& component) {
        const FaultPlace place{component.pid, PMT, m_service.id};
        const Component* const ofTag = component.tag ? withTag(pmt.components, *component.tag) : &component;
        if (ofTag != &component) {
            m_faults.add(subject(component), {faults::TAG_TWICE, place,
                                              fmt::format("component tag 0x{:02X} is that of PID 0x{:04X}, too",
                                                          *component.tag, ofTag->pid),
                                              sinceOf(*pmt.table)});
        }
        const auto ofPid = std::find_if(pmt.components.begin(), pmt.components.end(),
                                        [&component](const Component& other) { return other.pid == component.pid; });
        if (&*ofPid != &component) {
            m_faults.add(subject(component),
                         {faults::PID_TWICE, place, "another component has this PID, too", sinceOf(*pmt.table)});
        }
    }

    /// What one table has, and another does not.
    void compare() {
        if (!m_stream.isThisOne || !areWhole(m_tables.of(PAT))) {
            return;
        }
        if (!m_service.programMapPid) {
            const FaultPlace place{std::nullopt, PAT, m_service.id};
            if (m_service.description != nullptr) {
                add(faults::NOT_IN_PAT, place, "the SDT has it, but not the PAT");
            }
            for (const std::string& descriptor : m_service.listedIn) {
                add(descriptor == SERVICE_LIST ? faults::ONLY_IN_SERVICE_LIST : faults::NOT_IN_PAT, place,
                    fmt::format("the NIT has it in its {}, but not the PAT", descriptor));
            }
            if (!m_service.programMaps.empty()) {
                add(faults::NOT_IN_PAT, place, "it has a PMT, but the PAT does not name it, or no longer");
            }
            return;
        }
        if (m_service.description == nullptr && areWhole(m_tables.of(SDT, *m_stream.id))) {
            add(faults::NOT_IN_SDT, {std::nullopt, SDT, m_service.id}, "the PAT has it, but not the SDT");
        }
        if (m_stream.entry == nullptr) {
            return;
        }
        if (find(*m_stream.entry, INFORMATION) != nullptr && !isListedIn(INFORMATION)) {
            addNotListed(faults::NOT_IN_TS_INFORMATION, INFORMATION);
        }
        if (!standardServiceList(*m_stream.entry).empty() && !isListedIn(SERVICE_LIST)) {
            addNotListed(faults::NOT_IN_SERVICE_LIST, SERVICE_LIST);
        }
    }

    bool isListedIn(std::string_view descriptor) const {
        return std::find(m_service.listedIn.begin(), m_service.listedIn.end(), descriptor) != m_service.listedIn.end();
    }

    void addNotListed(FaultKind kind, std::string_view descriptor) {
        add(kind, {std::nullopt, NIT, m_service.id},
            fmt::format("the PAT has it, but not the {} of the NIT", descriptor));
    }

    Faults& m_faults;
    const Multiplex& m_multiplex;
    const Tables& m_tables;
    const TransportStream& m_stream;
    const Service& m_service;
    const std::vector<ApplicationReport>& m_applications;
};

} // namespace

void checkService(Faults& faults, const Multiplex& multiplex, const TransportStream& stream, const Service& service,
                  const std::vector<ApplicationReport>& applications) {
    ServiceChecker(faults, multiplex, stream, service, applications).checkAll();
}

} // namespace inspect
