#pragma once

#include "multiplex/Multiplex.h"
#include "reports/Report.h"
#include "starting/Steps.h"
#include "walking/DescriptorLoops.h"

namespace inspect {

/// An application of an AIT.
struct Candidate {
    const Multiplex& multiplex;
    const Summary& summary;
    const ReceiverProfiles& receiver;
    const Table& ait;
    const TakenSection& section;              ///< of the AIT, that has it
    const std::vector<DescriptorLoop>& loops; ///< of that section
    const Fields& application;
    const Multiplex::Claim* claim; ///< the component of the AIT; null when no PMT has it

    /// What the AIT says of it in a descriptor; its own one, or that of all applications.
    Evidence descriptor(std::string_view name) const;
};

constexpr std::string_view CONTROL_CODE = "control code"; ///< the step

/// What starts an application: "control code PRESENT"; nothing when it starts by itself.
std::string starterOf(const Fields& application);

/// Whether its stream type is one of carousels.
bool carriesCarousel(const Component& component);

/// What leads from the PAT to the component of an application's carousel.
class TableSteps {
public:
    TableSteps(Steps& steps, const Candidate& candidate) : m_steps(steps), m_candidate(candidate) {}

    /// From the PAT to the descriptors.
    void goTables();

    /// From the label of a transport protocol to a component. Null when it is none of this stream.
    const Component* goTransport();

    /// The components beside that one.
    const Components* components() const { return m_components; }

private:
    void goProgram();
    void goAit();
    void goDescriptors();
    void goLabels(std::int64_t has);
    Outcome ait() const;
    Outcome aitVersion() const;
    Outcome aitSound() const;
    Outcome profile() const;
    Outcome connection();
    Outcome component(std::int64_t tag, const Component*& found) const;
    const TableStatistics* aitStatistics() const;

    Steps& m_steps;
    const Candidate& m_candidate;
    const Components* m_components = nullptr;
};

} // namespace inspect
