#pragma once

#include "arranging/Components.h"
#include "arranging/Tables.h"

namespace inspect {

/// Puts the services of a transport stream together.
class ServiceNodes {
public:
    explicit ServiceNodes(const Tables& tables) : m_tables(tables) {}

    /// What the tables say of a service.
    struct Sources {
        std::uint16_t id;
        std::optional<Pid> programMapPid;  ///< as the PAT says
        const Fields* description;         ///< in the SDT; null when it is not there
        std::vector<std::string> listedIn; ///< descriptors of the NIT that name it
        std::vector<const Table*> programMaps;
    };

    Node serviceNode(const Sources& sources);

    /// What is carried on PIDs that no PMT names.
    std::vector<Node> unclaimed() const;

private:
    void appendProgramMap(Node& node, const Table& pmt);
    void checkApplications(Node& node, const Components& components) const;
    Node componentNode(const Component& component, const Components& components, const std::string& service);
    void appendCarried(Node& node, const Component& component, const Components& components,
                       const std::string& service);

    const Tables& m_tables;
    std::map<Pid, std::string> m_shown; ///< where what these PIDs carry is shown already
};

} // namespace inspect
