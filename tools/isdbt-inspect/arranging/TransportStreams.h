#pragma once

#include "arranging/ServiceNodes.h"

namespace inspect {

/// Puts the transport streams together: what NIT, PAT and SDT say of them, and their services.
class TransportStreams {
public:
    explicit TransportStreams(const Tables& tables);

    /// A transport stream as an entry of a NIT has it.
    Node listedNode(const Fields& entry);

    /// Those that no NIT has.
    std::vector<Node> unlistedNodes();

    /// What is carried on PIDs that no PMT names. All transport streams must have been put together before.
    std::vector<Node> unclaimed() const { return m_services.unclaimed(); }

private:
    using Sources = std::map<std::uint16_t, ServiceNodes::Sources>;

    bool isThisOne(std::optional<std::uint16_t> id) const { return id == m_thisOne; }
    void append(Node& node, std::optional<std::uint16_t> id, const Fields& entry);
    void addProgramMaps(Node& node, Sources& sources) const;
    void addPrograms(Node& node, std::uint16_t id, Sources& sources) const;
    void addDescriptions(Node& node, std::uint16_t id, const Fields& entry, Sources& sources) const;
    void checkService(Node& node, const ServiceNodes::Sources& service, std::optional<std::uint16_t> id,
                      const Fields& entry) const;

    const Tables& m_tables;
    ServiceNodes m_services;
    std::optional<std::uint16_t> m_thisOne; ///< the transport_stream_id of the stream that is read, if it is known
    std::set<std::optional<std::uint16_t>> m_shown;
};

} // namespace inspect
