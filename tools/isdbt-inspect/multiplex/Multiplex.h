#pragma once

#include "multiplex/Tables.h"

#include <map>

namespace inspect {

/// A component of a service, as its PMT names it.
struct Component {
    const Fields* fields;
    Pid pid;
    std::int64_t streamType;
    std::optional<std::int64_t> tag; ///< by which other tables refer to it
};

using Components = std::vector<Component>;

/// The first component with a tag; null when there is none.
const Component* withTag(const Components& components, std::int64_t tag);

/// Whether its data component is said to be applications.
bool carriesApplications(const Component& component);

/// Whether its data component is said to be an AIT.
bool carriesApplicationInformation(const Component& component);

/// The tag of the component whose carousel brings an application. Nothing when it comes otherwise, or with another
/// service.
std::optional<std::int64_t> carouselTag(const Fields& application);

/// A program map with its components.
struct ProgramMap {
    const Table* table;
    Components components;
};

/// A service: what all tables say that speak of it.
struct Service {
    std::uint16_t id = 0;
    std::optional<Pid> programMapPid;    ///< as the PAT says
    const Fields* description = nullptr; ///< in the SDT; null when it is not there
    std::vector<std::string> listedIn;   ///< descriptors of the NIT that name it
    std::vector<ProgramMap> programMaps;
};

/// A transport stream. Its services are those of the first place where it comes up.
struct TransportStream {
    std::optional<std::uint16_t> id; ///< nothing when no table tells
    const Fields* entry = nullptr;   ///< in a NIT; null when it is not there
    bool isThisOne = false;          ///< the one that is read
    bool isRepeated = false;         ///< it came up before
    std::vector<Service> services;   ///< by service_id
};

struct Network {
    const Table* nit;
    std::vector<TransportStream> streams;
};

/// What is carried on a PID that no program map names.
struct Unclaimed {
    std::optional<Pid> pid; ///< nothing for sections that did not come in packets
    std::vector<const Table*> tables;
};

constexpr std::string_view SERVICE_LIST = "service_list_descriptor";

/// The services that an entry of the NIT lists as the standard has it: receivers read a service_id with eight bits
/// only.
const Fields& standardServiceList(const Fields& entry);

/// The tables of a stream, put together.
class Multiplex {
public:
    /// A component on which tables came, and those beside it.
    struct Claim {
        const Service* service;
        const Components* components;
        const Component* component;
    };

    explicit Multiplex(const Tables& tables);
    Multiplex(const Multiplex&) = delete;
    Multiplex& operator=(const Multiplex&) = delete;

    const Tables& tables() const { return m_tables; }
    const std::vector<Network>& networks() const { return m_networks; }

    /// Those that no NIT has.
    const std::vector<TransportStream>& unlisted() const { return m_unlisted; }

    const std::vector<Unclaimed>& unclaimed() const { return m_unclaimed; }

    /// The first component of a PID on which applications or events came. Null when there is none.
    const Claim* claimOf(Pid pid) const;

private:
    using Services = std::map<std::uint16_t, Service>;

    TransportStream makeStream(std::optional<std::uint16_t> id, const Fields* entry);
    void addPrograms(Services& services, std::uint16_t id) const;
    void claim(const std::vector<TransportStream>& streams);
    void gatherUnclaimed();

    const Tables& m_tables;
    std::optional<std::uint16_t> m_thisOne; ///< the transport_stream_id of the stream that is read, if it is known
    std::set<std::optional<std::uint16_t>> m_known;
    std::vector<Network> m_networks;
    std::vector<TransportStream> m_unlisted;
    std::map<Pid, Claim> m_claims;
    std::vector<Unclaimed> m_unclaimed;
};

} // namespace inspect
