#pragma once

#include "multiplex/Table.h"

namespace inspect {

/// A component of a service, as its PMT names it.
struct Component {
    const Fields* fields;
    Pid pid;
    std::int64_t streamType;
    std::optional<std::int64_t> tag; ///< by which other tables refer to it
};

using Components = std::vector<Component>;

Components componentsOf(const Table& pmt);

/// The first component with a tag; null when there is none.
const Component* withTag(const Components& components, std::int64_t tag);

/// Whether its data component is said to be applications.
bool carriesApplications(const Component& component);

/// Whether its data component is said to be an AIT.
bool carriesApplicationInformation(const Component& component);

/// The tag of the component whose carousel brings an application. Nothing when it comes otherwise, or with another
/// service.
std::optional<std::int64_t> carouselTag(const Fields& application);

} // namespace inspect
