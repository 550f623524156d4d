#pragma once

#include "multiplex/Titles.h"
#include "reports/Fault.h"

#include <map>
#include <string>
#include <vector>

namespace inspect {

/// The part of the multiplex that a fault is about.
struct Subject {
    const void* part; ///< the Network, TransportStream, Service, ...
    std::string title;
};

template <class Part> Subject subject(const Part& part) {
    return {&part, titleOf(part)};
}

/// What was found, each about a part of a multiplex.
class Faults {
public:
    void add(const Subject& subject, Fault fault);

    /// The same of an alarm, in the place of the one of this name that says the same of the same place.
    void addInPlaceOf(std::string_view name, const Subject& subject, Fault alarm);

    /// The texts of those about a part.
    std::vector<std::string> of(const void* part) const;

    const std::vector<Fault>& all() const { return m_all; }

private:
    std::vector<Fault> m_all;
    std::multimap<const void*, std::size_t> m_byPart; ///< their places among all
};

} // namespace inspect
