#pragma once

#include "starting/CarouselFiles.h"
#include "starting/TableSteps.h"

namespace inspect {

/// The carousels of a stream, ready to be looked into.
class CarouselIndex {
public:
    explicit CarouselIndex(const std::vector<CarouselPid>& pids);

    /// Null when no section of a carousel came on it.
    const CarouselPid* pid(Pid pid) const;

    /// The carousel of a PID that brings applications: the one that the PMT tells, or else one with a service gateway.
    const CarouselFiles* files(Pid pid, std::optional<std::int64_t> carouselId) const;

    /// Whether carousels of further PIDs were not looked at.
    bool isFull() const { return m_pids.size() >= MOST_CAROUSEL_PIDS; }

private:
    const std::vector<CarouselPid>& m_pids;
    std::map<Pid, std::vector<CarouselFiles>> m_files;
};

/// What leads from the component of a carousel to an application's files.
class CarouselSteps {
public:
    /// @param components those of the service, by which taps are understood
    CarouselSteps(Steps& steps, const Candidate& candidate, const CarouselIndex& index, const Component* component,
                  const Components* components);

    void go();

private:
    void goPackets();
    void goMessages();
    void goFiles();
    void goUses();
    void useClassPath();
    void useIcons();
    void useLabels();
    void useDiis();
    void useModules();
    void useEvents();

    Outcome packets() const;
    Outcome sections() const;
    Outcome dsi() const;
    Outcome carouselId() const;
    Outcome dii() const;
    Outcome gatewayModule() const;
    Outcome initialClass() const;
    Outcome events(const dsmcc::Entry& entry) const;

    const dsmcc::Ior* gateway() const;
    bool isData() const;
    std::vector<std::string> classPath() const;
    std::string pidText() const;
    Evidence onPid() const;
    Evidence ofMessage(std::uint16_t identification) const;
    std::optional<std::uint16_t> namedDii() const;

    Steps& m_steps;
    const Candidate& m_candidate;
    const Component* m_component;
    const Components* m_components;
    const Fields& m_location;
    std::string m_base;
    const PidTraffic* m_traffic = nullptr;
    const CarouselPid* m_pid = nullptr;
    const CarouselFiles* m_files = nullptr;
    bool m_isLookedAt; ///< its PID
};

} // namespace inspect
