#pragma once

#include "dsmcc/Carousel.h"
#include "dsmcc/Limits.h"

#include <map>
#include <set>

namespace dsmcc {

/// What came with one downloadId: the carousel's DSI, its DIIs by their identifications, and modules.
class Download {
public:
    struct AnnouncedGroup {
        DownloadInfoIndication dii;
        Repetition repetition;
        std::vector<Refusal> refusals;
    };

    Download(std::uint32_t id, const Limits& limits) : m_id(id), m_limits(limits) {}

    void heard(double seconds);

    void take(DownloadServerInitiate dsi, double seconds);
    std::optional<Refusal> take(DownloadInfoIndication dii, double seconds);
    std::optional<Refusal> take(const DownloadDataBlock& ddb, double seconds);

    std::uint32_t id() const { return m_id; }
    double lastHeard() const { return m_last; }
    bool hasGateway() const { return m_dsi.has_value(); }
    const std::map<std::uint16_t, AnnouncedGroup>& groups() const { return m_groups; }

    /// About how many bytes it takes.
    std::size_t memory() const;

    /// A group with its modules.
    Group group(std::uint16_t identification) const;

    /// Without its groups.
    Carousel carousel() const;

private:
    /// What is known of a module id.
    struct Slot {
        std::optional<Module> announced;
        std::set<std::uint16_t> groups; // those that announce it
        std::optional<Module> unannounced;
    };

    Slot* slotOf(std::uint16_t moduleId);
    void announce(std::uint16_t identification, AnnouncedGroup& group);
    void announce(std::uint16_t identification, Slot& slot, Module fresh, std::vector<Refusal>& refusals);
    void adopt(Module& module, Slot& slot);
    void withdraw(std::uint16_t identification, const std::set<std::uint16_t>& kept);
    void forgetWhatIsSilent(std::uint16_t identification, double seconds);
    std::optional<Refusal> add(Module& module, const DownloadDataBlock& ddb, double seconds);
    void finishIfWhole(Module& module, double seconds);
    ModuleState inflate(Module& module, Bytes& content) const;
    void drop(std::optional<Module>& module);
    bool makeRoom(const Module& module, std::size_t size);

    std::uint32_t m_id;
    Limits m_limits;
    std::optional<DownloadServerInitiate> m_dsi;
    Repetition m_repetition;
    std::map<std::uint16_t, AnnouncedGroup> m_groups;
    std::map<std::uint16_t, Slot> m_slots;
    std::size_t m_memory = 0;
    std::size_t m_objects = 0;       // with what is in them
    std::size_t m_announcements = 0; // bytes that the groups take
    bool m_heard = false;
    double m_first = 0;
    double m_last = 0;
    std::uint64_t m_revision = 0;
};

} // namespace dsmcc
